#include "stats/one_sample_tests.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "numeric/tolerance.h"

namespace tarvika {
namespace {

struct GayenTerms {
  double p0 = 0, p1 = 0, p2 = 0;
};

// The terms of Gayen's probability of |t| for a parent whose density is the normal one
// times 1 + g1/6 H3 + g2/24 H4 + g1^2/72 H6 (Hermite polynomials): p0 the normal-theory
// one-sided tail, p1 the coefficient of the kurtosis (with a minus), p2 that of the squared
// skewness. Each term is the mean of the correction's weight over the normal samples with
// t above the given value. Given t that weight is a polynomial in x = 1/(1 + t^2/(n-1)),
// and the mean of x^k over the tail is the incomplete beta I_x((n-1)/2 + k, 1/2), so a
// term is a combination of these whose coefficients add up to 0:
//   p1 = (n-1)/24 I0 - (n-1)(n+2)/(12n) I1 + (n-1)(n+4)/(24n) I2,
//   p2 = (n-1)(2n+5)/72 I0 - (n-1)(2n^2+5n+8)/(24n) I1 + (n-1)(2n^2+5n+12)/(24n) I2
//        - (n-1)(2n^2+5n+12)/(72n) I3.
// They vanish at t = 0 and for large t; for large n, p2 tends to
// t phi(t) (t^4 + 2t^2 - 3)/(18n), the squared-skewness term of the Edgeworth expansion of
// the studentized mean. The odd term in g1 cancels between the tails.
// The coefficients grow as n^2 while the terms are of order 1/n, so the sums are taken over
// the differences D_k = I_k - I_(k+1), which have the closed form
// Gamma(a+k+1/2)/(Gamma(a+k+1) Gamma(1/2)) x^(a+k) sqrt(1 - x), a = (n-1)/2: the incomplete
// betas themselves are good to 3e-7, which coefficients near n^2/36 would turn into an
// error of 1e-3 at n = 500.
GayenTerms Gayen(double n, double t) {
  const double a = (n - 1) / 2, x = 1 / (1 + t * t / (n - 1));
  GayenTerms g;
  g.p0 = 0.5 * BETAI(a, 0.5, x);
  double d[3];
  d[0] = std::exp(std::lgamma(a + 0.5) - std::lgamma(a + 1) - 0.5 * std::log(3.141592653589793) + a * std::log(x)) *
         std::fabs(t) / std::sqrt(n - 1 + t * t);
  for (int k = 1; k < 3; ++k) d[k] = d[k - 1] * x * (a + k - 0.5) / (a + k);
  const double e = (n - 1) / (24 * n), q = 2 * n * n + 5 * n + 12;
  g.p1 = (n - 1) / 24 * d[0] - e * (n + 4) * d[1];
  g.p2 = (n - 1) * (2 * n + 5) / 72 * d[0] - e * q / 1.5 * d[1] + e * q / 3 * d[2];
  return g;
}

}  // namespace

TTest OneSampleT(const MomentAccumulator& m, double h) {
  const double n = m.count, sd = StandardDeviation(m);
  TTest out;
  out.df = m.count - 1;
  if (std::fabs(m.mean - h) >= kZeroTolerance) {
    out.t = ZeroVariance(m) ? 99 : std::sqrt(n) * (m.mean - h) / sd;
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

double GayenExpansionP(int n, double t, double skewness, double kurtosis) {
  const GayenTerms g = Gayen(n, std::fabs(t));
  return 2 * (g.p0 - kurtosis * g.p1 + skewness * skewness * g.p2);
}

PValue GayenP(const MomentAccumulator& m, double t) {
  return Marked(std::clamp(GayenExpansionP(m.count, t, Skewness(m), Kurtosis(m)), 0.0, 1.0));
}

double TrimmedMeanSE(const TrimmedStatistics& trim, int percent, int n) {
  return trim.winsorizedSD / ((1 - 2 * percent / 100.0) * std::sqrt(n));
}

TTest TrimmedT(const TrimmedStatistics& trim, int percent, int n, double h) {
  TTest out;
  out.df = trim.trimDF;
  if (std::fabs(trim.trimmedMean - h) >= kZeroTolerance) {
    out.t = trim.winsorizedSD <= 0 ? 99 : (trim.trimmedMean - h) / TrimmedMeanSE(trim, percent, n);
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
