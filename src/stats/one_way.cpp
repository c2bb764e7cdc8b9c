#include "stats/one_way.h"

#include <algorithm>
#include <cmath>

#include "numeric/tolerance.h"

namespace tarvika {

namespace {

constexpr double kTiny = kZeroTolerance;  // 1e-8, the threshold of every "is it zero" of this analysis

double Square(double x) {
  return x * x;
}

// The groups that take part: at least two cases.
std::vector<GroupSample> Active(std::span<const GroupSample> groups) {
  std::vector<GroupSample> active;
  for (const GroupSample& g : groups) {
    if (g.n > 1) active.push_back(g);
  }
  return active;
}

// The Welch statistic and its df over groups all of positive variance.
void Welch(const std::vector<GroupSample>& a, double& W, double& U, double& dfWelch) {
  const int k = static_cast<int>(a.size());
  double sw = 0, swm = 0;
  for (const GroupSample& g : a) {
    sw += g.n / g.variance;
    swm += g.n / g.variance * g.mean;
  }
  const double weighted = swm / sw;
  double s = 0;
  U = 0;
  for (const GroupSample& g : a) {
    const double w = g.n / g.variance;
    s += Square(1 - w / sw) / (g.n - 1);
    U += w * Square(g.mean - weighted);
  }
  const double spread = s / (k * k - 1);
  W = U / (1 + 2 * (k - 2) * spread) / (k - 1);
  dfWelch = spread > kTiny ? (1.0 / 3) / spread : 1;
}

struct BetweenWithin {
  int total = 0;
  double ssBetween = 0, ssWithin = 0;
};

BetweenWithin Sums(const std::vector<GroupSample>& a) {
  BetweenWithin s;
  double sumT = 0, sumMT = 0;
  for (const GroupSample& g : a) s.total += g.n;
  for (const GroupSample& g : a) {
    const double t = g.n * g.mean;
    sumT += t;
    sumMT += g.mean * t;
    s.ssWithin += (g.n - 1) * g.variance;
  }
  s.ssBetween = sumMT - sumT * sumT / s.total;
  return s;
}

}  // namespace

GroupSample SummarizeGroup(std::span<const double> values) {
  GroupSample g;
  g.n = static_cast<int>(values.size());
  if (g.n == 0) return g;
  double sum = 0;
  for (double x : values) sum += x;
  g.mean = sum / g.n;
  double ss = 0;
  for (double x : values) ss += Square(x - g.mean);
  if (g.n > 1 && ss > kTiny) g.variance = ss / (g.n - 1);
  return g;
}

AnovaFamilyResult AnovaFamily(std::span<const GroupSample> groups) {
  AnovaFamilyResult r;
  const std::vector<GroupSample> a = Active(groups);
  r.k = static_cast<int>(a.size());
  for (const GroupSample& g : a) r.total += g.n;
  r.df1 = r.k - 1;
  r.df2 = r.total - r.k;
  if (r.k < 2) return r;
  const BetweenWithin s = Sums(a);
  r.ssBetween = s.ssBetween;
  r.msWithin = s.ssWithin / r.df2;
  for (const GroupSample& g : a) {
    if (g.variance <= kTiny) r.zeroGroup = true;
  }
  if (s.ssWithin > kTiny) {
    r.F = r.msWithin > kTiny ? r.ssBetween / (r.df1 * r.msWithin) : 999999;
    double b = 0, bb = 0;
    for (const GroupSample& g : a) {
      const double bj = (1 - static_cast<double>(g.n) / r.total) * g.variance;
      b += bj;
      bb += bj * bj / (g.n - 1);
    }
    if (b > 0.0001) {
      const double c = bb / (b * b);
      r.BF = r.ssBetween / b;
      r.dfBF = c > 0.001 ? std::round(1 / c) : r.total;
    } else {
      r.BF = 999999;
      r.dfBF = r.df2;
    }
    if (r.zeroGroup) {
      r.W = -1;
      r.U = -1;
    } else {
      Welch(a, r.W, r.U, r.dfWelch);
    }
  }
  if (r.k == 2) {
    const double q1 = a[0].variance / a[0].n, q2 = a[1].variance / a[1].n;
    const double q = q1 + q2;
    if (q > kTiny) {
      r.W = Square(a[0].mean - a[1].mean) / q;
      r.dfWelch = q * q / (q1 * q1 / (a[0].n - 1) + q2 * q2 / (a[1].n - 1));
    } else {
      r.W = 0;
    }
  } else if (!r.zeroGroup && s.ssWithin > kTiny) {
    static constexpr std::string_view kTexts[] = {"  (p > 0.10)", "  (p < 0.10)", "  (p < 0.05)",
                                                  "  (p < 0.01)", "  (p < 0.001)"};
    static constexpr std::string_view kMarkers[] = {"", "+", "*", "**", "***"};
    int level = 0;
    while (level < 4 && r.U >= JamesCritical(a, level + 1)) ++level;
    r.jamesText = kTexts[level];
    r.jamesMarker = kMarkers[level];
  }
  return r;
}

WelchPairResult AnovaWelchPair(std::span<const GroupSample> groups) {
  WelchPairResult r;
  const std::vector<GroupSample> a = Active(groups);
  const int k = static_cast<int>(a.size());
  if (k < 2) return r;
  const BetweenWithin s = Sums(a);
  r.df1 = k - 1;
  r.df2 = s.total - k;
  if (s.ssBetween <= kTiny) return r;
  for (const GroupSample& g : a) {
    if (g.variance <= kTiny) {
      r.F = r.W = r.dfWelch = 999;
      return r;
    }
  }
  const double msWithin = s.ssWithin / r.df2;
  r.F = msWithin > kTiny ? s.ssBetween / (r.df1 * msWithin) : 999999;
  double U = 0;
  Welch(a, r.W, U, r.dfWelch);
  return r;
}

double ChiSquareQuantileByBisection(double alpha, int df) {
  double lo = 1, hi = 10000, mid = lo;
  for (int step = 0; step < 1000; ++step) {
    mid = 0.5 * (lo + hi);
    const double tail = ChiSquareP(mid, df).p;
    if (std::fabs(tail - alpha) <= 1e-9) break;
    if (tail > alpha) {
      lo = mid;
    } else {
      hi = mid;
    }
  }
  return mid;
}

double JamesCritical(std::span<const GroupSample> groups, int level) {
  static constexpr double kAlpha[] = {0.10, 0.05, 0.01, 0.001};
  const std::vector<GroupSample> a = Active(groups);
  const int k = static_cast<int>(a.size());
  const double c = ChiSquareQuantileByBisection(kAlpha[level - 1], k - 1);
  double X[5];
  double denominator = 1;
  for (int s = 1; s <= 4; ++s) {
    denominator *= k + 2 * s - 3;
    X[s] = std::pow(c, s) / denominator;
  }
  double sw = 0;
  for (const GroupSample& g : a) sw += g.n / g.variance;
  auto R = [&](int s, int t) {
    double sum = 0;
    for (const GroupSample& g : a) {
      const double term = std::pow((g.n / g.variance) / sw, t) / std::pow(g.n - 1.0, s);
      if (term > kTiny) sum += term;
    }
    return sum;
  };
  double S = 0;
  for (const GroupSample& g : a) S += Square(1 - (g.n / g.variance) / sw) / (g.n - 1);
  const double R10 = R(1, 0), R11 = R(1, 1), R12 = R(1, 2);
  const double R20 = R(2, 0), R21 = R(2, 1), R22 = R(2, 2), R23 = R(2, 3);
  const double X1 = X[1], X2 = X[2], X3 = X[3], X4 = X[4];
  const double A = 0.5 * (3 * X2 + X1) * S;
  const double P = (X1 - 1) * (2 * R23 - 4 * R22 + 2 * R21 - 2 * R12 * R12 + 4 * R11 * R12 - 2 * R11 * R11);
  const double Q = 0.25 * (3 * X2 - 2 * X1 - 1) *
                   (4 * R11 * R12 - R12 * R12 - 2 * R10 * R12 - 4 * R11 * R11 + 4 * R10 * R11 - R10 * R10);
  const double V = 8 * R23 - 10 * R22 + 4 * R21 - 6 * R12 * R12 + 8 * R11 * R12 - 4 * R11 * R11;
  return (c + A) + 0.25 * A * (1 - (k - 3) / c) + 0.5 * (3 * X2 + X1) * (P * Q * S + V) +
         (R23 - 3 * R22 + 3 * R21 - R20) * (5 * X3 + 2 * X2 + X1) +
         0.1875 * (R12 * R12 - 4 * R23 + 6 * R22 - 4 * R21 + R20) * (35 * X4 + 15 * X3 + 9 * X2 + 5 * X1) +
         0.0625 * (-2 * R22 + 4 * R21 - R20 + 2 * R12 * R10 - 4 * R11 * R10 + R10 * R10) *
             (9 * X4 - 3 * X3 - 5 * X2 - X1) +
         0.25 * (-R22 + R11 * R11) * (27 * X4 + 3 * X3 + X2 + X1) +
         0.25 * (R23 - R12 * R11) * (45 * X4 + 9 * X3 + 7 * X2 + 3 * X1);
}

namespace {

// A score group without spread (a constant group of the data) takes 0.33 times the smallest
// positive score SD of the groups, so that the test stays defined; 0 when there is none.
void SubstituteZeroSpread(std::span<const GroupSample> groups, std::vector<GroupSample>& scores) {
  double smallest = 0;
  for (std::size_t j = 0; j < groups.size(); ++j) {
    const double sd = std::sqrt(scores[j].variance);
    if (groups[j].n > 1 && sd >= kTiny && (smallest == 0 || sd < smallest)) smallest = sd;
  }
  for (std::size_t j = 0; j < groups.size(); ++j) {
    if (groups[j].n > 1 && std::sqrt(scores[j].variance) < kTiny)
      scores[j].variance = Square(0.33 * smallest);
  }
}

// The test on the scores of the groups: the ANOVA F when the sizes are equal or a group of the
// data has no variance, else Welch's W, whose weights need every score group to vary.
VarianceTest ScoreTest(std::span<const GroupSample> groups, const std::vector<GroupSample>& scores) {
  VarianceTest t;
  t.done = true;
  int minN = 0, maxN = 0;
  bool zeroSd = false;
  for (const GroupSample& g : groups) {
    if (g.n < 2) continue;
    minN = minN == 0 ? g.n : std::min(minN, g.n);
    maxN = std::max(maxN, g.n);
    if (g.variance < kTiny) zeroSd = true;
  }
  t.welchType = maxN != minN && !zeroSd;
  if (t.welchType) {
    std::vector<GroupSample> spread = scores;
    SubstituteZeroSpread(groups, spread);
    const WelchPairResult pair = AnovaWelchPair(spread);
    t.df1 = pair.df1;
    t.statistic = pair.W;
    t.df2 = pair.dfWelch;
  } else {
    const std::vector<GroupSample> a = Active(scores);
    const BetweenWithin s = Sums(a);
    t.df1 = static_cast<double>(a.size()) - 1;
    t.df2 = s.total - static_cast<double>(a.size());
    const double msWithin = s.ssWithin / t.df2;
    if (s.ssBetween > kTiny) t.statistic = msWithin > kTiny ? s.ssBetween / (t.df1 * msWithin) : 999999;
  }
  if (t.statistic < kTiny) t.statistic = 0;
  t.p = FProb(t.statistic, t.df1, t.df2);
  return t;
}

}  // namespace

VarianceTest LeveneTest(const std::vector<std::vector<double>>& values, std::span<const GroupSample> groups) {
  std::vector<GroupSample> scores(groups.size());
  for (std::size_t j = 0; j < groups.size(); ++j) {
    const GroupSample& g = groups[j];
    if (g.n < 2) continue;
    std::vector<double> d;
    d.reserve(values[j].size());
    for (double x : values[j]) d.push_back(std::fabs(x - g.mean));
    scores[j] = SummarizeGroup(d);
  }
  return ScoreTest(groups, scores);
}

VarianceTest OBrienTest(const std::vector<std::vector<double>>& values, std::span<const GroupSample> groups) {
  for (const GroupSample& g : groups) {
    if (g.n <= 2) return VarianceTest{};
  }
  std::vector<GroupSample> scores(groups.size());
  for (std::size_t j = 0; j < groups.size(); ++j) {
    const GroupSample& g = groups[j];
    const double v = g.n - 1;
    double ss = 0;
    for (double x : values[j]) {
      const double r = (Square(x - g.mean) * ((v - 0.5) / v) * (v + 1) - 0.5 * g.variance) / (g.n - 2);
      ss += Square(g.variance - r);
    }
    // The mean of a group's scores is its variance.
    scores[j].n = g.n;
    scores[j].mean = g.variance;
    scores[j].variance = ss >= kTiny ? ss / (g.n - 1) : 0;
  }
  return ScoreTest(groups, scores);
}

double WelchDf(double n1, double n2, double q1, double q2) {
  if (q1 + q2 < kTiny) return n1 + n2 - 2;
  return Square(q1 + q2) / (q1 * q1 / (n1 - 1) + q2 * q2 / (n2 - 1));
}

AnovaEffects Effects(const AnovaFamilyResult& a) {
  AnovaEffects e;
  if (a.ssBetween < kTiny) return e;
  const double ssTotal = a.ssBetween + a.df2 * a.msWithin;
  e.eta = std::sqrt(a.ssBetween / ssTotal);
  e.etaSquared = a.ssBetween / ssTotal;
  e.omegaSquared = (a.ssBetween - a.df1 * a.msWithin) / (ssTotal + a.msWithin);
  if (e.omegaSquared < kTiny) e.omegaSquared = 0;
  return e;
}

double CriticalF95(double df) {
  double lo = 0, hi = 1000;
  for (int step = 0; step < 100 && hi - lo > 1e-10; ++step) {
    const double mid = 0.5 * (lo + hi);
    if (StudentP2(mid, df).p > 0.05) {
      lo = mid;
    } else {
      hi = mid;
    }
  }
  return Square(0.5 * (lo + hi));
}

DifferenceInterval IntervalFromSE(double difference, double se, double criticalF) {
  const double half = se * std::sqrt(criticalF);
  return {difference - half, difference + half};
}

int IntervalDecimals(double low, double high) {
  const double size = std::max(std::fabs(low), std::fabs(high));
  if (size >= 1000000) return 0;
  if (size >= 1000) return 1;
  if (size >= 10) return 2;
  if (size >= 0.1) return 3;
  if (size >= 0.01) return 4;
  return 5;
}

TrimmedGroup TrimGroup(std::span<const double> sorted, int percent) {
  TrimmedGroup t;
  t.n = static_cast<int>(sorted.size());
  const int h = static_cast<int>(percent * 0.01 * t.n);
  t.kept = t.n - 2 * h;
  if (t.kept < 1) return t;
  t.minimum = sorted[h];
  t.maximum = sorted[t.n - h - 1];
  double sum = 0, wsum = h * (t.minimum + t.maximum),
         wss = h * (t.minimum * t.minimum + t.maximum * t.maximum);
  for (int i = h; i < t.n - h; ++i) {
    sum += sorted[i];
    wsum += sorted[i];
    wss += sorted[i] * sorted[i];
  }
  t.mean = sum / t.kept;
  const double ss = std::max(0.0, wss - wsum * wsum / t.n);
  if (t.kept > 1) t.yuenScale = ss / (t.kept - 1);
  if (t.n > 1) t.winsorizedSD = std::sqrt(ss / (t.n - 1));
  return t;
}

TrimmedTest YuenTest(const TrimmedGroup& a, const TrimmedGroup& b) {
  TrimmedTest r;
  r.df1 = 1;
  const double diff = a.mean - b.mean;
  const double q1 = a.yuenScale / a.kept, q2 = b.yuenScale / b.kept;
  if (a.yuenScale + b.yuenScale > kTiny) {
    r.statistic = diff / std::sqrt(q1 + q2);
  } else {
    r.statistic = std::fabs(diff) > kTiny ? 99 : 0;
  }
  r.df2 = WelchDf(a.kept, b.kept, q1, q2);
  r.p = StudentP2(r.statistic, r.df2);
  r.etaSquared = Square(r.statistic) / (a.kept + b.kept) / (1 + Square(r.statistic) / (a.kept + b.kept));
  const double pooled = ((a.kept - 1) * Square(a.winsorizedSD) + (b.kept - 1) * Square(b.winsorizedSD)) /
                        (a.kept - 1 + b.kept - 1);
  r.cohenD = pooled > kTiny ? diff / std::sqrt(pooled) : 0;
  return r;
}

TrimmedTest TrimmedWelch(std::span<const TrimmedGroup> groups) {
  TrimmedTest r;
  const int k = static_cast<int>(groups.size());
  double sw = 0, swm = 0;
  int kept = 0;
  for (const TrimmedGroup& g : groups) {
    sw += g.kept / g.yuenScale;
    swm += g.kept / g.yuenScale * g.mean;
    kept += g.kept;
  }
  const double weighted = swm / sw;
  double A = 0, L = 0;
  for (const TrimmedGroup& g : groups) {
    const double w = g.kept / g.yuenScale;
    A += w * Square(g.mean - weighted);
    L += Square(1 - w / sw) / (g.kept - 1);
  }
  A /= k - 1;
  const double B = 2.0 * (k - 2) * L / (k * k - 1);
  r.errorTerm = 1 + B;
  r.statistic = A / r.errorTerm;
  r.df1 = k - 1;
  r.df2 = (k * k - 1) / (3 * L);
  r.p = FProb(r.statistic, r.df1, r.df2);
  const double x = (k - 1) * r.statistic / kept;
  r.etaSquared = x / (1 + x);
  return r;
}

}  // namespace tarvika
