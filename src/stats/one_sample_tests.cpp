#include "stats/one_sample_tests.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "numeric/tolerance.h"

namespace tarvika {
namespace {

struct GayenTerms {
  double p0 = 0, p1s = 0, p1 = 0, p2 = 0;
};

// The terms of Gayen's probability of |t| under skewness and kurtosis: p0 the normal-theory
// one-sided tail, p1 the coefficient of the kurtosis, p2 that of the squared skewness.
// p1s, the first term of the skewness side, is computed for completeness; p does not use it.
GayenTerms Gayen(double n, double t) {
  const double x = 1 / (1 + t * t / (n - 1));
  auto I = [x](double a, double b) { return BETAI(a, b, x); };
  GayenTerms g;
  g.p0 = 0.5 * I((n - 1) / 2, 0.5);
  g.p1s =
      ((n - 0.5) * I((n - 1) / 2, 1) - (n - 1) * I((n + 1) / 2, 1)) / (3 * std::sqrt(2 * n * 3.141592654));
  const double c = (n - 1) / (24 * n);
  g.p1 = (n - 1) / 24 * I((n - 1) / 2, 0.5) - 2 * c * (n + 2) * I((n + 1) / 2, 0.5) +
         c * (n + 4) * I((n + 3) / 2, 0.5);
  const double d = n * n + 5 * n + 8, e = (n - 1) / (24 * n), f = (d + 4) * e;
  g.p2 = (n - 1) * (2 * n + 5) / 72 * I((n - 1) / 2, 0.5) - d * e * I((n + 1) / 2, 0.5) +
         f * I((n + 3) / 2, 0.5) - f / 3 * I((n + 5) / 2, 0.5);
  return g;
}

}  // namespace

TTest OneSampleT(const MomentAccumulator& m, double h) {
  const double n = m.count, sd = StandardDeviation(m);
  TTest out;
  out.df = m.count - 1;
  if (std::fabs(m.mean - h) >= kZeroTolerance) {
    out.t = sd < kZeroTolerance ? 99 : std::sqrt(n) * (m.mean - h) / sd;
  }
  out.p = StudentP2(out.t, n - 1);
  return out;
}

bool SkewnessCorrectionsApply(double t, int n) {
  return std::fabs(t) <= 10 && n < 500;
}

TTest JohnsonT(const MomentAccumulator& m, double t) {
  const double n = m.count;
  const double a = Skewness(m) / 3, q = std::sqrt(n);
  TTest out;
  out.t = t + 0.5 * a / q + a * t * t / q;
  out.df = m.count - 1;
  out.p = StudentP2(out.t, n - 1);
  return out;
}

PValue GayenP(const MomentAccumulator& m, double t) {
  const GayenTerms g = Gayen(m.count, std::fabs(t));
  const double skewness = Skewness(m);
  return Marked(2 * (g.p0 - Kurtosis(m) * g.p1 + skewness * skewness * g.p2));
}

double TrimmedMeanSE(const TrimmedStatistics& trim, int percent, int n) {
  return trim.winsorizedSD / ((1 - 2 * percent / 100.0) * std::sqrt(n));
}

TTest TrimmedT(const TrimmedStatistics& trim, int percent, int n, double h) {
  TTest out;
  out.df = trim.trimDF;
  if (std::fabs(trim.trimmedMean - h) >= kZeroTolerance) {
    out.t = trim.winsorizedSD < kZeroTolerance
                ? 99
                : (1 - 0.02 * percent) * (trim.trimmedMean - h) / TrimmedMeanSE(trim, percent, n);
  }
  out.p = StudentP2(out.t, trim.trimDF);
  return out;
}

SignedRankTest WilcoxonSignedRank(const SignedRanks& ranks, std::span<const double> deviations,
                                  int deviationCount) {
  SignedRankTest out;
  const int m = deviationCount;
  out.rPlus = ranks.rankSumPlus;
  double exactP = 1;
  if (m >= 2 && m <= 20) {
    std::vector<double> midRanks(deviations.begin(), deviations.end());
    MidRanks(midRanks, m);
    const double total = m * (m + 1) / 2.0;
    const double smaller = std::min(out.rPlus, total - out.rPlus);
    if (std::fabs(m * (m + 1) / 4.0 - smaller) > kZeroTolerance) {
      exactP = WilcoxonExactP(m, smaller, midRanks).p.p;
    }
  }
  const double big = ranks.n;
  out.rMinus = big * (big + 1) / 2 - out.rPlus;
  out.byNormal = ranks.n > 20;
  if (out.byNormal) {
    const double v = (big + 1) * big * (2 * big + 1) / 24 - ranks.tieCorrection;
    out.z = v > kZeroTolerance ? (out.rPlus - big * (big + 1) / 4) / std::sqrt(v) : 9;
    out.p = NormalP2(out.z);
  } else {
    out.p = Marked(exactP);
  }
  return out;
}

SignTest SignTestAround(const SignedRanks& ranks) {
  SignTest out;
  out.above = static_cast<int>(ranks.countPlus);
  out.below = ranks.n - out.above;
  const SignTestP2 test = SignTestP(out.above, ranks.n);
  out.byNormal = ranks.n > 50;
  out.z = test.z;
  out.p = test.p;
  return out;
}

}  // namespace tarvika
