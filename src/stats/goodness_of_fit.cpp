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
  out.p = KolmogorovP(out.dStar);
  return out;
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

MergedCells MergeSmallExpectedCells(std::span<double> expected, std::span<double> observed) {
  MergedCells out{0, static_cast<int>(expected.size()) - 1, true};
  if (expected.empty()) return out;
  int& first = out.first;
  int& last = out.last;
  auto smallCells = [&] {
    int small = 0;
    for (int e = first; e <= last; ++e) small += expected[e] < 5;
    return small;
  };
  auto tooMany = [&](int small) { return small > 0.2 * (last - first + 1); };
  const bool fromFirst = expected[first] <= expected[last];
  int small = smallCells();
  while (tooMany(small) && first < last) {
    if (fromFirst) {
      expected[first + 1] += expected[first];
      observed[first + 1] += observed[first];
      ++first;
    } else {
      expected[last - 1] += expected[last];
      observed[last - 1] += observed[last];
      --last;
    }
    small = smallCells();
  }
  out.fewSmall = !tooMany(small);
  return out;
}

ChiSquareNormalityTest ChiSquareNormality(std::span<const double> values,
                                          std::span<const std::int32_t> frequencies,
                                          const MomentAccumulator& m) {
  ChiSquareNormalityTest out;
  std::vector<double> expected = ExpectedNormalCounts(values, m);
  std::vector<double> observed(frequencies.begin(), frequencies.end());
  out.cells = static_cast<int>(expected.size());
  for (double e : expected) out.smallExpected += e < 5;
  const MergedCells merged = MergeSmallExpectedCells(expected, observed);
  if (merged.fewSmall) {
    for (int e = merged.first; e <= merged.last; ++e) {
      if (expected[e] > 0) out.chi += (expected[e] - observed[e]) * (expected[e] - observed[e]) / expected[e];
    }
  }
  out.df = merged.last - merged.first;
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
