#include "stats/correlation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "numeric/tolerance.h"

namespace tarvika {

bool PairMoments::VariesX() const { return sdX > kZeroTolerance && maxX - minX >= kZeroTolerance; }
bool PairMoments::VariesY() const { return sdY > kZeroTolerance && maxY - minY >= kZeroTolerance; }

PairMoments MomentsOf(std::span<const double> x, std::span<const double> y) {
  PairMoments m;
  // Running means and sums of squared deviations, so that data far from zero in small
  // units keep their digits.
  double ssX = 0, ssY = 0, sp = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const int k = ++m.n;
    if (k == 1) {
      m.minX = m.maxX = x[i];
      m.minY = m.maxY = y[i];
    }
    m.minX = std::min(m.minX, x[i]);
    m.maxX = std::max(m.maxX, x[i]);
    m.minY = std::min(m.minY, y[i]);
    m.maxY = std::max(m.maxY, y[i]);
    const double dx = x[i] - m.meanX, dy = y[i] - m.meanY;
    m.meanX += dx / k;
    m.meanY += dy / k;
    ssX += dx * (x[i] - m.meanX);
    ssY += dy * (y[i] - m.meanY);
    sp += dx * (y[i] - m.meanY);
  }
  if (m.n < 2) return m;
  m.sdX = std::sqrt(std::max(0.0, ssX) / (m.n - 1));
  m.sdY = std::sqrt(std::max(0.0, ssY) / (m.n - 1));
  if (m.sdX > kZeroTolerance && m.sdY > kZeroTolerance) {
    m.r = std::clamp(sp / std::sqrt(ssX * ssY), -1.0, 1.0);
  }
  return m;
}

BivariateRegression RegressionOf(const PairMoments& m) {
  BivariateRegression out;
  const bool related = std::fabs(m.r) > kZeroTolerance;
  out.xOnY.slope = related ? m.r * m.sdX / m.sdY : 0;
  out.xOnY.intercept = m.meanX - out.xOnY.slope * m.meanY;
  out.yOnX.slope = related ? m.r * m.sdY / m.sdX : 0;
  out.yOnX.intercept = m.meanY - out.yOnX.slope * m.meanX;
  out.df = std::max(0, m.n - 2);
  if (m.n <= 2) return out;
  const double unexplained = static_cast<double>(m.n - 1) / (m.n - 2) * (1 - m.r * m.r);
  out.msErrX = unexplained * m.sdX * m.sdX;
  out.msErrY = unexplained * m.sdY * m.sdY;
  out.seX = out.msErrX > kZeroTolerance ? std::sqrt(out.msErrX) : 0;
  out.seY = out.msErrY > kZeroTolerance ? std::sqrt(out.msErrY) : 0;
  return out;
}

double FisherZ(double r) {
  if (r == 0) return 0;
  if (std::fabs(r) >= 0.99999999) return std::copysign(kFisherZLimit, r);
  return 0.5 * std::log((1 + r) / (1 - r));
}

double FisherZInverse(double z) { return std::tanh(z); }

Limits FisherLimits(double r, int n, double z) {
  if (n - 3 < 1) return {-1, 1};
  const double z0 = FisherZ(r), h = z / std::sqrt(static_cast<double>(n - 3));
  return {FisherZInverse(z0 - h), FisherZInverse(z0 + h)};
}

PercentageBend PercentageBendOf(std::vector<double> values) {
  PercentageBend out;
  const int n = static_cast<int>(values.size());
  if (n == 0) return out;
  std::sort(values.begin(), values.end());
  const double median = n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
  std::vector<double> deviations(n);
  for (int i = 0; i < n; ++i) deviations[i] = std::fabs(values[i] - median);
  std::sort(deviations.begin(), deviations.end());
  const int m = std::clamp(static_cast<int>(std::round(0.9 * n + kZeroTolerance)), 1, n);
  out.omega = deviations[m - 1];
  if (out.omega <= kZeroTolerance) return out;
  int below = 0, above = 0;
  for (double v : values) {
    const double u = (v - median) / out.omega;
    below += u < -1;
    above += u > 1;
  }
  const double middle = std::accumulate(values.begin() + below, values.end() - above, 0.0);
  out.phi = (out.omega * (above - below) + middle) / (n - below - above);
  return out;
}

std::optional<double> PercentageBendCorrelation(std::span<const double> x, std::span<const double> y) {
  const PercentageBend bx = PercentageBendOf({x.begin(), x.end()});
  const PercentageBend by = PercentageBendOf({y.begin(), y.end()});
  if (bx.omega <= kZeroTolerance || by.omega <= kZeroTolerance) return std::nullopt;
  auto psi = [](double u) { return std::clamp(u, -1.0, 1.0); };
  double ab = 0, aa = 0, bb = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double a = psi((x[i] - bx.phi) / bx.omega), b = psi((y[i] - by.phi) / by.omega);
    ab += a * b;
    aa += a * a;
    bb += b * b;
  }
  if (aa * bb < kZeroTolerance) return 0.0;
  return std::clamp(ab / std::sqrt(aa * bb), -1.0, 1.0);
}

namespace {

// The values pulled in to the g-th smallest and the g-th largest.
std::vector<double> Winsorized(std::span<const double> v, int g) {
  std::vector<double> sorted(v.begin(), v.end());
  std::sort(sorted.begin(), sorted.end());
  const double low = sorted[g], high = sorted[sorted.size() - 1 - g];
  std::vector<double> out(v.size());
  for (std::size_t i = 0; i < v.size(); ++i) out[i] = std::clamp(v[i], low, high);
  return out;
}

}  // namespace

std::optional<double> WinsorizedCorrelation(std::span<const double> x, std::span<const double> y, int g) {
  const int n = static_cast<int>(x.size());
  if (g < 0 || n - 2 * g < 3) return std::nullopt;
  const std::vector<double> wx = Winsorized(x, g), wy = Winsorized(y, g);
  const PairMoments m = MomentsOf(wx, wy);
  if (m.sdX * m.sdX <= kZeroTolerance || m.sdY * m.sdY <= kZeroTolerance) return std::nullopt;
  return m.r;
}

namespace {

// Ranks with ties: equal numbers for values within the tolerance of the one before in
// sorted order, counted from 0. The sums t(t-1), t(t-1)(t-2) and t(t-1)(2t+5) over the
// runs of ties, as doubles for a million cases.
struct TieRanks {
  std::vector<std::int32_t> rank;
  std::vector<std::int64_t> countOfRank;
  double t1 = 0, t2 = 0, t3 = 0;
};

TieRanks RanksOf(std::span<const double> v) {
  const int n = static_cast<int>(v.size());
  std::vector<std::int32_t> order(n);
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return v[a] < v[b]; });
  TieRanks out;
  out.rank.assign(n, 0);
  for (int i = 0; i < n; ++i) {
    if (i > 0 && v[order[i]] - v[order[i - 1]] >= kZeroTolerance) out.countOfRank.push_back(0);
    if (i == 0) out.countOfRank.push_back(0);
    out.rank[order[i]] = static_cast<std::int32_t>(out.countOfRank.size() - 1);
    ++out.countOfRank.back();
  }
  for (std::int64_t c : out.countOfRank) {
    const double t = static_cast<double>(c);
    out.t1 += t * (t - 1);
    out.t2 += t * (t - 1) * (t - 2);
    out.t3 += t * (t - 1) * (2 * t + 5);
  }
  return out;
}

// Counts of the ranks added so far, with prefix sums in O(log n).
class Fenwick {
 public:
  explicit Fenwick(int size) : tree_(size + 1, 0) {}
  void Add(int rank) {
    for (int i = rank + 1; i < static_cast<int>(tree_.size()); i += i & -i) ++tree_[i];
  }
  // The number added with a rank below `rank`.
  std::int64_t Below(int rank) const {
    std::int64_t s = 0;
    for (int i = rank; i > 0; i -= i & -i) s += tree_[i];
    return s;
  }

 private:
  std::vector<std::int64_t> tree_;
};

}  // namespace

double TauNullSd(int n) { return n < 2 ? 0 : std::sqrt(2.0 * (2 * n + 5) / (9.0 * n * (n - 1))); }

KendallMeasures KendallOf(std::span<const double> x, std::span<const double> y) {
  KendallMeasures k;
  const int n = static_cast<int>(x.size());
  k.n = n;
  if (n < 2) return k;
  const TieRanks rx = RanksOf(x), ry = RanksOf(y);
  // The cases of y below each rank of y, over all cases.
  std::vector<std::int64_t> yBelow(ry.countOfRank.size() + 1, 0);
  for (std::size_t r = 0; r < ry.countOfRank.size(); ++r) yBelow[r + 1] = yBelow[r] + ry.countOfRank[r];

  std::vector<std::int32_t> order(n);
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(), [&](int a, int b) {
    return rx.rank[a] != rx.rank[b] ? rx.rank[a] < rx.rank[b] : ry.rank[a] < ry.rank[b];
  });
  // For each case: c - d over the other cases. Cases of a smaller x are concordant when y
  // is smaller, of a greater x when y is greater; cases of the same x are neither.
  Fenwick before(static_cast<int>(ry.countOfRank.size()));
  double concordant = 0, discordant = 0, sumSquares = 0;
  int seen = 0;
  for (int start = 0; start < n;) {
    int end = start;
    while (end < n && rx.rank[order[end]] == rx.rank[order[start]]) ++end;
    for (int i = start; i < end;) {
      // A run of equal y inside the x group: those before it in the group have smaller y.
      int runEnd = i;
      while (runEnd < end && ry.rank[order[runEnd]] == ry.rank[order[i]]) ++runEnd;
      const int rank = ry.rank[order[i]];
      const std::int64_t groupBelow = i - start, groupAbove = end - runEnd;
      const std::int64_t beforeBelow = before.Below(rank);
      const std::int64_t beforeAbove = seen - before.Below(rank + 1);
      const std::int64_t allBelow = yBelow[rank], allAbove = n - yBelow[rank + 1];
      const std::int64_t afterBelow = allBelow - beforeBelow - groupBelow;
      const std::int64_t afterAbove = allAbove - beforeAbove - groupAbove;
      const double c = static_cast<double>(beforeBelow + afterAbove);
      const double d = static_cast<double>(beforeAbove + afterBelow);
      const double t = (c - d) / (n - 1);
      const int cases = runEnd - i;
      concordant += cases * c;
      discordant += cases * d;
      sumSquares += cases * t * t;
      i = runEnd;
    }
    for (int i = start; i < end; ++i) before.Add(ry.rank[order[i]]);
    seen = end;
    start = end;
  }
  const double P = static_cast<double>(n) * (n - 1);
  const double S = concordant - discordant;
  k.concordant = concordant;
  k.discordant = discordant;
  k.tau = S / P;
  k.pPos = 100 * concordant / P;
  k.pNeg = 100 * discordant / P;
  // The sample variance of tau from the variance of the per-case means and that of the
  // signs of the single pairs.
  if (n > 2) {
    const double a = (sumSquares - n * k.tau * k.tau) / (n - 1);
    const double b = (concordant + discordant - k.tau * k.tau * P) / (P - 1);
    const double v = (4 * (n - 2) * a + 2 * b) / P;
    k.seTau = v > kZeroTolerance ? std::sqrt(v) : 0;
  }
  const double roots = std::sqrt(P - rx.t1) * std::sqrt(P - ry.t1);
  k.tauB = roots < kZeroTolerance ? 0 : std::clamp(S / roots, -1.0, 1.0);
  if (n > 2) {
    const double varS = ((2.0 * n + 5) * P - rx.t3 - ry.t3) / 18 + rx.t2 * ry.t2 / (9.0 * (n - 2) * P) +
                        0.5 * rx.t1 * ry.t1 / P;
    if (varS > kZeroTolerance) k.zTauB = 0.5 * S / std::sqrt(varS);
    if (std::fabs(k.zTauB) > kZeroTolerance) k.seTauB = std::fabs(k.tauB / k.zTauB);
  }
  return k;
}

LocalRegression LocalRegressionOf(std::span<const double> x, std::span<const double> y, int window, int points) {
  LocalRegression out;
  const int n = static_cast<int>(x.size());
  window = std::clamp(window, 3, n);
  const PairMoments all = MomentsOf(x, y);
  out.linearShare = all.r * all.r;
  std::vector<int> order(n);
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return x[a] < x[b]; });
  // Prefix sums of the centred values, so that a window's moments cost O(1).
  std::vector<double> sx(n + 1, 0), sy(n + 1, 0), sxx(n + 1, 0), sxy(n + 1, 0), syy(n + 1, 0);
  for (int k = 0; k < n; ++k) {
    const double u = x[order[k]] - all.meanX, v = y[order[k]] - all.meanY;
    sx[k + 1] = sx[k] + u;
    sy[k + 1] = sy[k] + v;
    sxx[k + 1] = sxx[k] + u * u;
    sxy[k + 1] = sxy[k] + u * v;
    syy[k + 1] = syy[k] + v * v;
  }
  // The line of the window around rank c: its means (centred), slope and r.
  auto line = [&](int c, double* mu, double* mv) {
    const int lo = std::clamp(c - window / 2, 0, n - window), hi = lo + window;
    const double m = window;
    *mu = (sx[hi] - sx[lo]) / m;
    *mv = (sy[hi] - sy[lo]) / m;
    const double cxx = sxx[hi] - sxx[lo] - m * *mu * *mu, cxy = sxy[hi] - sxy[lo] - m * *mu * *mv;
    const double cyy = syy[hi] - syy[lo] - m * *mv * *mv;
    LocalLine l{.left = x[order[lo]], .right = x[order[hi - 1]], .cases = window};
    if (cxx > kZeroTolerance) l.slope = cxy / cxx;
    if (cxx > kZeroTolerance && cyy > kZeroTolerance) l.r = std::clamp(cxy / std::sqrt(cxx * cyy), -1.0, 1.0);
    return l;
  };
  double residual = 0;
  for (int c = 0; c < n; ++c) {
    double mu = 0, mv = 0;
    const LocalLine l = line(c, &mu, &mv);
    const double u = x[order[c]] - all.meanX, v = y[order[c]] - all.meanY;
    const double fitted = mv + l.slope * (u - mu);
    residual += (v - fitted) * (v - fitted);
  }
  const double total = syy[n];
  out.smoothedShare = total > kZeroTolerance ? std::max(0.0, 1 - residual / total) : 0;
  for (int k = 0; k < points; ++k) {
    const int c = std::clamp(static_cast<int>((k + 0.5) * n / points), 0, n - 1);
    double mu = 0, mv = 0;
    LocalLine l = line(c, &mu, &mv);
    l.x = x[order[c]];
    out.lines.push_back(l);
  }
  return out;
}

namespace {

// tableByN[n - 2][level]: the critical tau of n cases at 0.10, 0.05, 0.01.
using TauTable = std::array<std::array<double, 3>, kTauTableLastN - kTauTableFirstN + 1>;

TauTable MakeTauTable() {
  TauTable table{};
  // The probabilities of k inversions among n items: each new item adds 0 to n-1
  // inversions with equal chance.
  std::vector<long double> p = {1};
  for (int n = 1; n <= kTauTableLastN; ++n) {
    std::vector<long double> next(p.size() + n - 1, 0);
    for (std::size_t k = 0; k < p.size(); ++k) {
      for (int add = 0; add < n; ++add) next[k + add] += p[k] / n;
    }
    p = std::move(next);
    if (n < kTauTableFirstN) continue;
    // S = pairs - 2 * inversions; the upper tail of S from the fewest inversions up.
    const int pairs = n * (n - 1) / 2;
    constexpr std::array<double, 3> kLevels = {0.10, 0.05, 0.01};
    for (int level = 0; level < 3; ++level) {
      double critical = 2;
      long double tail = 0;
      for (int inversions = 0; 2 * inversions < pairs; ++inversions) {
        tail += p[inversions];
        if (2 * tail > kLevels[level] * (1 + 1e-12L)) break;
        critical = static_cast<double>(pairs - 2 * inversions) / pairs;
      }
      table[n - kTauTableFirstN][level] = critical;
    }
  }
  return table;
}

}  // namespace

double TauCritical(int n, int level) {
  static const TauTable table = MakeTauTable();
  return table[n - kTauTableFirstN][level];
}

}  // namespace tarvika
