#include "numeric/probability.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <utility>

#include "numeric/tolerance.h"

namespace tarvika {

namespace {

// Intermediate arithmetic runs in extended precision; arguments and results are doubles.
using Real = long double;

DiagnosticHook& Diagnostics() {
  static DiagnosticHook hook = [](std::string_view message) { std::cerr << message << '\n'; };
  return hook;
}

void Complain(std::string_view message) {
  if (Diagnostics()) Diagnostics()(message);
}

Real LnGammaL(Real x) {
  const Real y = x - 1;
  Real t = y + 5.5L;
  t = (y + 0.5L) * std::log(t) - t;
  const Real series = 1 + 76.18009173L / (y + 1) - 86.50532033L / (y + 2) + 24.01409822L / (y + 3) -
                      1.231739516L / (y + 4) + 0.00120858003L / (y + 5) - 0.00000536382L / (y + 6);
  return t + std::log(2.50662827465L * series);
}

Real BetaCfL(Real a, Real b, Real x) {
  constexpr int kMaxRounds = 100;
  constexpr Real kTolerance = 3e-7L;
  Real am = 1, bm = 1, az = 1;
  const Real qab = a + b, qap = a + 1, qam = a - 1;
  Real bz = 1 - qab * x / qap;
  for (int m = 1; m <= kMaxRounds; ++m) {
    const Real em = m, tem = 2 * em;
    Real d = em * (b - em) * x / ((qam + tem) * (a + tem));
    const Real ap = az + d * am;
    const Real bp = bz + d * bm;
    d = -(a + em) * (qab + em) * x / ((a + tem) * (qap + tem));
    const Real app = ap + d * az;
    const Real bpp = bp + d * bz;
    const Real aold = az;
    am = ap / bpp;
    bm = bp / bpp;
    az = app / bpp;
    bz = 1;
    if (std::fabs(az - aold) < kTolerance * std::fabs(az)) return az;
  }
  Complain("Pause in BETACF - a or b too large, or itmax too small.");
  return az;
}

Real BetaIL(Real a, Real b, Real x) {
  if (x < 0 || x > 1) {
    Complain(
        fmt::format(" x = {:.2f}\nPause in routine BETAI - invalid x argument.", static_cast<double>(x)));
  }
  Real bt = 0;
  if (x != 0 && x != 1) {
    bt = std::exp(LnGammaL(a + b) - LnGammaL(a) - LnGammaL(b) + a * std::log(x) + b * std::log(1 - x));
  }
  if (x < (a + 1) / (a + b + 2) && a > 0.00001L) return bt * BetaCfL(a, b, x) / a;
  return 1 - bt * BetaCfL(b, a, 1 - x) / b;
}

Real NormalCdfL(Real z) {
  const Real u = 1 / (1 + 0.2316419L * std::fabs(z));
  // 0.356538 has one digit fewer than the textbook constant; the printed p-values rely on it.
  const Real poly = u * (0.3193815L + u * (-0.356538L + u * (1.781478L + u * (-1.821256L + u * 1.330274L))));
  const Real density = 0.3989423L * std::exp(-z * z / 2);
  const Real c = 1 - density * poly;
  return z > 0 ? c : 1 - c;
}

Real UpperNormal2(Real z) {
  return 2 * (1 - NormalCdfL(std::fabs(z)));
}

// The auxiliary function of the Peizer-Pratt approximation.
Real PeizerPrattG(Real w) {
  w = std::fabs(w);
  if (w < kZeroTolerance) return 1;
  if (std::fabs(w - 1) < kZeroTolerance) return 0;
  return (1 - w * w + 2 * w * std::log(w)) / ((1 - w) * (1 - w));
}

Real PeizerPrattFP(Real f, Real df1, Real df2) {
  const Real n = (df1 + df2 - 2) / 2;
  const Real x = df2 / (df1 * f + df2);
  const Real y = 1 - x;
  const Real a = (df2 - 1) / 2;
  const Real b = (df1 - 1) / 2;
  const Real c = (y / df2 - x / df1) + (y - 0.5L) / (df1 + df2);
  const Real d = (1.0L / 6 + a) - (1.0L / 3 + n) * x + 0.04L * c;
  const Real s = 1 + y * PeizerPrattG(a / (n * x)) + x * PeizerPrattG(b / (n * y));
  const Real v = s / ((1.0L / 6 + n) * x * y);
  const Real z = v <= kZeroTolerance ? 0 : d * std::sqrt(v);
  return 1 - NormalCdfL(z);
}

// Upper tail of chi-square for df above 100, a normal approximation in chi-square units:
// there is no factor 2 under the root, which the same form carries in gamma units.
Real LargeDfChiSquareP(Real x, int df) {
  if (std::fabs(x - df + 1) < kZeroTolerance) {
    const Real z = (df + 0.24L) / (3 * df * std::sqrt(2.0L * df - 2));
    return 1 - NormalCdfL(z);
  }
  const Real d = x - df + 1;
  const Real e = (x - df + 2.0L / 3) - 0.08L / df;
  const Real w = (df - 1) * std::log((df - 1) / x) + d;
  const Real z = e * std::sqrt(w) / std::fabs(d);
  return 1 - NormalCdfL(z);
}

// Exact upper tail for even df from 2 to 100.
Real EvenDfChiSquareP(Real x, int df) {
  const int m = (df - 1) / 2;
  Real sum = 1, product = 1;
  for (int j = 1; j <= m; ++j) {
    product *= 2 * j;
    sum += Power(static_cast<double>(x), j) / product;
  }
  return std::exp(-x / 2) * sum;
}

// Upper tail for odd df from 3 to 99; the normal part goes through NormalCdf.
Real OddDfChiSquareP(Real x, int df) {
  const int m = (df - 1) / 2;
  Real sum = 0, product = 1;
  for (int i = 1; i <= m; ++i) {
    if (i > 1) product *= 2 * i - 1;
    sum += Power(static_cast<double>(x), i - 0.5) / product;
  }
  return UpperNormal2(std::sqrt(x)) + 0.7978845608L * std::exp(-x / 2) * sum;
}

Real LnFactorial(int n) {
  Real sum = 0;
  for (int i = 2; i <= n; ++i) sum += std::log(static_cast<Real>(i));
  return sum;
}

// Hypergeometric probability of the 2 by 2 table with its margins, in logarithms so that
// no factorial overflows for large counts.
Real TableProbability(int a, int b, int c, int d) {
  auto lf = [](int k) { return std::lgamma(static_cast<Real>(k) + 1); };
  const int n = a + b + c + d;
  return std::exp(lf(a + b) + lf(c + d) + lf(a + c) + lf(b + d) - lf(n) - lf(a) - lf(b) - lf(c) - lf(d));
}

// The ratio p(x + 1) / p(x) of the probabilities of neighbouring 2 by 2 tables with row sums
// r1, r2 and first column sum c1, x being the first cell; the table with first cell x has
// r1 - x, c1 - x and r2 - c1 + x in its other cells.
Real NextTableRatio(int x, int r1, int r2, int c1) {
  return static_cast<Real>(r1 - x) * (c1 - x) / (static_cast<Real>(x + 1) * (r2 - c1 + x + 1));
}

// Counts the sign patterns of ranks[i..n-1] whose positive ranks, added to sum, stay at
// most limit. The ranks are added in order, as a nest of loops with the first index
// outermost would add them.
Real CountPatterns(std::span<const double> ranks, size_t i, Real sum, Real limit) {
  if (i == ranks.size()) return sum <= limit ? 1 : 0;
  return CountPatterns(ranks, i + 1, sum + ranks[i], limit) + CountPatterns(ranks, i + 1, sum, limit);
}

}  // namespace

std::string_view SignificanceMarker(double p) {
  if (p <= 0.001) return "***";
  if (p <= 0.01) return "**";
  if (p <= 0.05) return "*";
  if (p <= 0.1) return "+";
  return "";
}

PValue Marked(double p) {
  return {p, SignificanceMarker(p)};
}

void SetDiagnosticHook(DiagnosticHook hook) {
  Diagnostics() = std::move(hook);
}

double Power(double x, double y) {
  return static_cast<double>(std::exp(y * std::log(static_cast<Real>(x))));
}

double IntPower(double x, int k) {
  Real result = 1;
  for (int i = 0; i < k; ++i) result *= x;
  return static_cast<double>(result);
}

double LnGamma(double x) {
  return static_cast<double>(LnGammaL(x));
}

double BETACF(double a, double b, double x) {
  return static_cast<double>(BetaCfL(a, b, x));
}

double BETAI(double a, double b, double x) {
  return static_cast<double>(BetaIL(a, b, x));
}

double NormalCdf(double z) {
  return static_cast<double>(NormalCdfL(z));
}

PValue NormalP2(double z) {
  return Marked(static_cast<double>(UpperNormal2(z)));
}

PValue StudentP2(double t, double df) {
  if (df < 1) return Marked(1);
  if (df >= 100000) return NormalP2(t);
  return Marked(static_cast<double>(BetaIL(0.5L * df, 0.5L, 1 / (1 + static_cast<Real>(t) * t / df))));
}

PValue CorrelationP2(double r, int df) {
  if (df < 1) return Marked(1);
  const Real r2 = static_cast<Real>(r) * r;
  const Real t = r2 < 0.99999999L ? std::sqrt(df * r2 / (1 - r2)) : 100;
  return StudentP2(static_cast<double>(t), df);
}

double FProbBeta(double f, double df1, double df2) {
  const Real x = df2 / (df2 + static_cast<Real>(df1) * f);
  return static_cast<double>(BetaIL(0.5L * df2, 0.5L * df1, x));
}

PValue FProb(double f, double df1, double df2) {
  if (f < kZeroTolerance) return Marked(1);
  const double dmin = std::min(df1, df2), dmax = std::max(df1, df2);
  if (dmin >= 20 && f > 12) return Marked(0);
  if (dmin < 6 || (dmin < 20 && dmax < 2000)) return Marked(FProbBeta(f, df1, df2));
  return Marked(static_cast<double>(PeizerPrattFP(f, df1, df2)));
}

PValue ChiSquareP(double x, int df) {
  if (x < kZeroTolerance) return Marked(1);
  if (df < 1) return Marked(1);  // no test; callers never ask for it
  if (x > df + 100 * std::sqrt(static_cast<Real>(df))) return Marked(0);
  Real p = 0;
  if (df == 1) {
    p = UpperNormal2(std::sqrt(static_cast<Real>(x)));
  } else if (df > 100) {
    p = LargeDfChiSquareP(x, df);
  } else if (df % 2 == 0) {
    p = EvenDfChiSquareP(x, df);
  } else {
    p = OddDfChiSquareP(x, df);
  }
  return Marked(static_cast<double>(p));
}

double ChiSquareCritical(int index, int df) {
  static constexpr double kAlpha[] = {0.1, 0.05, 0.01, 0.001};
  const double target = kAlpha[std::clamp(index, 1, 4) - 1];
  double low = 0, high = 10000, mid = 0;
  for (int round = 1; round <= 1001; ++round) {
    mid = (low + high) / 2;
    const double p = ChiSquareP(mid, df).p;
    if (p >= target) low = mid;
    if (p <= target) high = mid;
    if (std::fabs(p - target) < 1e-9) break;
  }
  return mid;
}

PValue KolmogorovP(double d) {
  const Real dd = d;
  if (dd < 0.37L) return Marked(1);
  if (dd < 1) {
    const double q = static_cast<double>(std::exp(-1.233701L / (dd * dd)));
    return Marked(static_cast<double>(1 - 2.506628L * (q + IntPower(q, 9) + IntPower(q, 25)) / dd));
  }
  if (dd < 3.1L) {
    const double q = static_cast<double>(std::exp(-2 * dd * dd));
    return Marked(static_cast<double>(2 * (static_cast<Real>(q) - IntPower(q, 4) + IntPower(q, 9) - IntPower(q, 16))));
  }
  return Marked(0);
}

double BinomialHalfTerm(int k, int n) {
  if (k < n / 2) k = n - k;
  if (n > 10) {
    Real sum = n * std::log(0.5L);
    for (int i = n - k + 1; i <= n; ++i) sum += std::log(static_cast<Real>(i));
    for (int i = 2; i <= k; ++i) sum -= std::log(static_cast<Real>(i));
    return static_cast<double>(std::exp(sum));
  }
  long long numerator = 1, denominator = 1;
  for (int i = n - k + 1; i <= n; ++i) numerator *= i;
  for (int i = 2; i <= k; ++i) denominator *= i;
  return static_cast<double>(static_cast<Real>(numerator) / denominator * std::pow(0.5L, n));
}

double BinomialTerm(int k, int n, double p, double q) {
  // A power of 0 is 1, also of a zero probability.
  Real sum = LnFactorial(n) - LnFactorial(k) - LnFactorial(n - k);
  if (k > 0) sum += k * std::log(static_cast<Real>(p));
  if (n - k > 0) sum += (n - k) * std::log(static_cast<Real>(q));
  return static_cast<double>(std::exp(sum));
}

double BinomialTail(int k, int n, double p, double np) {
  const int step = k < np ? -1 : 1;
  const int end = k < np ? 0 : n;
  Real sum = 0;
  for (int i = k;; i += step) {
    const double term = BinomialTerm(i, n, p, 1 - p);
    sum += term;
    if (term < 0.0001 || i == end) break;
  }
  return static_cast<double>(sum);
}

SignTestP2 SignTestP(int k, int n) {
  SignTestP2 out;
  if (n < 2) return out;
  int sign = 1;
  if (k < n / 2.0) {
    k = n - k;
    sign = -1;
  }
  Real zz = 2 * k - n;
  if (zz > 1) zz -= 1;  // continuity
  if (std::fabs(zz) >= kZeroTolerance) zz /= std::sqrt(static_cast<Real>(n));
  out.z = static_cast<double>(sign * zz);
  if (n > 50) {
    out.p = NormalP2(out.z);
  } else {
    Real sum = 0;
    for (int i = k; i <= n; ++i) sum += BinomialHalfTerm(i, n);
    out.p = Marked(static_cast<double>(std::min<Real>(1, 2 * sum)));
  }
  return out;
}

EnumeratedP WilcoxonExactP(int n, double t, std::span<const double> ranks) {
  EnumeratedP out;
  if (n < 2 || n > 20 || static_cast<int>(ranks.size()) < n) return out;
  const Real count = CountPatterns(ranks.first(n), 0, 0, static_cast<Real>(t) + kZeroTolerance);
  out.patterns = static_cast<double>(count);
  const Real p = count == 0 ? 0 : std::min<Real>(1, 2 * std::exp(std::log(count) - n * std::log(2.0L)));
  out.p = Marked(static_cast<double>(p));
  return out;
}

FisherResult FisherExactP2(int a, int b, int c, int d) {
  if (a < 0 || b < 0 || c < 0 || d < 0) return {};
  // Two-sided p: the total probability of the tables with the observed margins that are no
  // more probable than the observed one. A table within a relative 1e-7 of it counts as
  // equally probable, so that the mirror image of a symmetric table is not lost to rounding.
  // Probabilities are taken relative to the observed table and built by the ratio of
  // neighbours, so that large counts do not overflow; a table 1e4900 times more probable
  // than the observed one makes the total infinite and p 0, as it all but is.
  const int r1 = a + b, r2 = c + d, c1 = a + c;
  const int first = std::max(0, c1 - r2), last = std::min(r1, c1);
  constexpr Real kAsProbable = 1 + 1e-7L;
  Real total = 1, tail = 1;
  Real w = 1;
  for (int x = a; x < last; ++x) {
    w *= NextTableRatio(x, r1, r2, c1);
    total += w;
    if (w <= kAsProbable) tail += w;
  }
  w = 1;
  for (int x = a; x > first; --x) {
    w /= NextTableRatio(x - 1, r1, r2, c1);
    total += w;
    if (w <= kAsProbable) tail += w;
  }
  return {static_cast<double>(std::min<Real>(1, tail / total)),
          static_cast<double>(TableProbability(a, b, c, d))};
}

}  // namespace tarvika
