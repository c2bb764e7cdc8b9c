#include "stats/goodness_of_fit.h"

#include <algorithm>
#include <cmath>

#include "numeric/tolerance.h"

namespace tarvika {

KolmogorovTest KolmogorovNormality(std::span<const double> values, std::span<const std::int32_t> frequencies,
                                   const MomentAccumulator& m) {
  KolmogorovTest out;
  const double n = m.count, sd = StandardDeviation(m);
  double c = 0;
  for (std::size_t e = 0; e < values.size(); ++e) {
    const double f = NormalCdf((values[e] - m.mean) / sd);
    for (int k = 0; k < frequencies[e]; ++k) {
      ++c;
      out.d = std::max({out.d, std::fabs(f - (c - 1) / n), std::fabs(f - c / n)});
    }
  }
  out.dStar = std::sqrt(n) * out.d;
  out.p = Marked(LillieforsP(out.d, m.count));
  return out;
}

double LillieforsP(double d, int n) {
  if (d <= 0) return 1;
  const double dallalWilkinson = std::exp(-7.01256 * d * d * (n + 2.78019) + 2.99587 * d * std::sqrt(n + 2.78019) -
                                          0.122119 + 0.974598 / std::sqrt(n) + 1.67997 / n);
  if (dallalWilkinson <= 0.1) return dallalWilkinson;
  // Molin and Abdi: p is a polynomial in A, the root of b2 A^2 + (b1 + n) A + b0 - 1/d^2.
  constexpr double b0 = 0.37872256037043, b1 = 1.30748185078790, b2 = 0.08861783849346;
  constexpr double c[] = {-0.37782822932809, 1.67819837908004, -3.02959249450445, 2.80015798142101,
                          -1.39874347510845, 0.40466213484419, -0.06353440854207, 0.00287462087623,
                          0.00069650013110,  -0.00011872227037, 0.00000575586834};
  const double a = (-(b1 + n) + std::sqrt((b1 + n) * (b1 + n) - 4 * b2 * (b0 - 1 / (d * d)))) / (2 * b2);
  double p = 0;
  for (int i = 10; i >= 0; --i) p = p * a + c[i];
  return std::clamp(p, 0.1, 1.0);
}

std::vector<double> ExpectedNormalCounts(std::span<const double> values, const MomentAccumulator& m) {
  const int k = static_cast<int>(values.size());
  const double n = m.count, sd = StandardDeviation(m);
  std::vector<double> expected(k);
  double before = 0;
  for (int e = 0; e < k; ++e) {
    double cumulative = 1;
    if (e < k - 1) {
      const double boundary = (values[e] + values[e + 1]) / 2;
      cumulative = sd < kZeroTolerance ? 0 : NormalCdf((boundary - m.mean) / sd);
    }
    expected[e] = n * (cumulative - before);
    before = cumulative;
  }
  return expected;
}

namespace {

constexpr double kSmallExpected = 5;
constexpr int kFewestNormalityCells = 4;

void MergeInto(MergedCells& cells, int from, int into) {
  cells.expected[into] += cells.expected[from];
  cells.observed[into] += cells.observed[from];
  cells.firstCell[into] = std::min(cells.firstCell[into], cells.firstCell[from]);
  cells.expected.erase(cells.expected.begin() + from);
  cells.observed.erase(cells.observed.begin() + from);
  cells.firstCell.erase(cells.firstCell.begin() + from);
}

int SmallCells(const MergedCells& cells) {
  return static_cast<int>(
      std::count_if(cells.expected.begin(), cells.expected.end(), [](double e) { return e < kSmallExpected; }));
}

}  // namespace

MergedCells MergeSmallExpectedCells(std::span<const double> expected, std::span<const double> observed) {
  MergedCells cells{{expected.begin(), expected.end()}, {observed.begin(), observed.end()}, {}};
  for (int e = 0; e < cells.Count(); ++e) cells.firstCell.push_back(e);
  auto small = [&](int c) { return cells.expected[c] < kSmallExpected; };
  while (cells.Count() > kFewestNormalityCells && SmallCells(cells) > 0.2 * cells.Count()) {
    // The tails first, from both sides inward: an end cell joins its inner neighbour when
    // one of the two is small, the end of the smaller pair first. Merging one end only would
    // swallow the middle while the other tail stays small, and end in a single cell.
    const int last = cells.Count() - 1;
    const std::vector<double>& e = cells.expected;
    const bool lowTail = small(0) || small(1), highTail = small(last) || small(last - 1);
    if (lowTail && (!highTail || e[0] + e[1] <= e[last] + e[last - 1])) {
      MergeInto(cells, 0, 1);
    } else if (highTail) {
      MergeInto(cells, last, last - 1);
    } else {
      // A small cell inside (values close together) joins the smaller of its neighbours.
      int smallest = 2;
      for (int c = 3; c < last - 1; ++c) {
        if (e[c] < e[smallest]) smallest = c;
      }
      MergeInto(cells, smallest, e[smallest - 1] <= e[smallest + 1] ? smallest - 1 : smallest + 1);
    }
  }
  return cells;
}

ChiSquareNormalityTest ChiSquareNormality(std::span<const double> values,
                                          std::span<const std::int32_t> frequencies,
                                          const MomentAccumulator& m) {
  ChiSquareNormalityTest out;
  const std::vector<double> expected = ExpectedNormalCounts(values, m);
  const std::vector<double> observed(frequencies.begin(), frequencies.end());
  out.cells = static_cast<int>(expected.size());
  for (double e : expected) out.smallExpected += e < kSmallExpected;
  if (out.cells < kFewestNormalityCells) return out;
  const MergedCells merged = MergeSmallExpectedCells(expected, observed);
  for (int c = 0; c < merged.Count(); ++c) {
    const double e = merged.expected[c], f = merged.observed[c];
    if (e > 0) out.chi += (e - f) * (e - f) / e;
  }
  out.df = merged.Count() - 3;
  out.p = ChiSquareP(out.chi, out.df);
  return out;
}

EqualFrequencyTest EqualFrequencies(std::span<const int> frequencies) {
  EqualFrequencyTest out;
  const int k = static_cast<int>(frequencies.size());
  int total = 0;
  for (int f : frequencies) total += f;
  out.expected = static_cast<double>(total) / k;
  const double e = out.expected;
  for (int f : frequencies) {
    const double residual = e > kZeroTolerance ? (f - e) / std::sqrt(e) : 0;
    out.chi += residual * residual;
    out.residuals.push_back(residual);
    out.residualMarkers.push_back(NormalP2(residual).marker);
    out.adjustedP.push_back(std::min(1.0, ChiSquareP(residual * residual, 1).p * k));
  }
  out.df = k - 1;
  out.p = ChiSquareP(out.chi, out.df);
  return out;
}

}  // namespace tarvika
