#include "stats/stochastic_equality.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

#include "numeric/tolerance.h"

namespace tarvika {

namespace {

constexpr double kTiny = kZeroTolerance;

double Square(double x) {
  return x * x;
}

// C(n, k) as a double: the counts of the exact test go beyond 64 bits.
double Binomial(int n, int k) {
  double c = 1;
  for (int i = 1; i <= k; ++i) c = c * (n - k + i) / i;
  return c;
}

GroupSample RankSample(const std::vector<double>& ranks) {
  GroupSample g;
  g.n = static_cast<int>(ranks.size());
  if (g.n == 0) return g;
  double sum = 0;
  for (double r : ranks) sum += r;
  g.mean = sum / g.n;
  double ss = 0;
  for (double r : ranks) ss += Square(r - g.mean);
  if (g.n > 1 && ss > kTiny) g.variance = ss / (g.n - 1);
  return g;
}

}  // namespace

RankedGroups RankGroups(const std::vector<std::vector<double>>& values) {
  struct Case {
    double value;
    int group, position;
  };
  std::vector<Case> cases;
  for (int g = 0; g < static_cast<int>(values.size()); ++g) {
    for (int i = 0; i < static_cast<int>(values[g].size()); ++i) cases.push_back({values[g][i], g, i});
  }
  std::sort(cases.begin(), cases.end(), [](const Case& a, const Case& b) { return a.value < b.value; });
  RankedGroups r;
  r.total = static_cast<int>(cases.size());
  r.ranks.resize(values.size());
  for (std::size_t g = 0; g < values.size(); ++g) r.ranks[g].resize(values[g].size());
  const double n = r.total;
  std::size_t i = 0;
  while (i < cases.size()) {
    std::size_t t = 1;
    while (i + t < cases.size() && cases[i + t].value - cases[i].value < kTiny) ++t;
    const double rank = static_cast<double>(i) + (t + 1) / 2.0;
    int first = 0, second = 0;
    for (std::size_t j = i; j < i + t; ++j) {
      r.ranks[cases[j].group][cases[j].position] = rank;
      if (cases[j].group == 0) ++first;
      if (cases[j].group == 1) ++second;
    }
    if (t > 1) r.tieCorrection += (Square(static_cast<double>(t)) * t - t) / (n * n * n - n);
    r.crossTies += static_cast<double>(first) * second;
    i += t;
  }
  for (const auto& ranks : r.ranks) r.samples.push_back(RankSample(ranks));
  return r;
}

KruskalWallisResult KruskalWallis(const RankedGroups& r) {
  KruskalWallisResult k;
  const double n = r.total;
  double sum = 0;
  for (const GroupSample& g : r.samples) {
    if (g.n > 0) sum += Square(g.mean * g.n) / g.n;
  }
  k.H = 12 / n * (sum / (n + 1)) - 3 * (n + 1);
  const double correction = 1 - r.tieCorrection;
  // Every value tied: no rank differs, and the statistic is 0 rather than 0/0.
  if (correction < kTiny) k.H = 0;
  else if (correction < 1) k.H /= correction;
  k.H = std::max(k.H, 0.0);
  k.df = static_cast<int>(r.samples.size()) - 1;
  k.p = ChiSquareP(k.H, k.df);
  double ssBetween = 0, ssWithin = 0;
  for (const GroupSample& g : r.samples) {
    ssBetween += g.n * Square(g.mean - (n + 1) / 2);
    ssWithin += (g.n - 1) * g.variance;
  }
  if (ssBetween + ssWithin > kTiny) k.rankEtaSquared = ssBetween / (ssBetween + ssWithin);
  return k;
}

Dominance StochasticDominance(const std::vector<std::vector<double>>& values, const RankedGroups& r) {
  Dominance d;
  const int k = static_cast<int>(values.size());
  const double n = r.total;
  for (const GroupSample& g : r.samples) d.weighted.push_back((g.mean - 0.5) / n);
  // The mean of P(x > Y) + P(x = Y)/2 over x of group i, Y of group j, from the ranks of the
  // pair: (mean rank of i among i and j - (n_i + 1)/2)/n_j.
  std::vector<double> effect(static_cast<std::size_t>(k) * k, 0.5);
  for (int i = 0; i < k; ++i) {
    for (int j = i + 1; j < k; ++j) {
      const RankedGroups pair = RankGroups({values[i], values[j]});
      const double ni = pair.samples[0].n, nj = pair.samples[1].n;
      effect[i * k + j] = (pair.samples[0].mean - (ni + 1) / 2) / nj;
      effect[j * k + i] = 1 - effect[i * k + j];
    }
  }
  for (int i = 0; i < k; ++i) {
    double sum = 0;
    for (int j = 0; j < k; ++j) sum += effect[i * k + j];
    d.unweighted.push_back(sum / k);
  }
  return d;
}

BrunnerMunzelResult BrunnerMunzelZ(double n1, double n2, double A, double q1, double q2) {
  BrunnerMunzelResult b;
  if (q1 + q2 < kTiny) {
    b.z = 99;
    b.df = n1 + n2 - 2;
    b.p = Marked(0);
    return b;
  }
  b.z = (A - 0.5) / std::sqrt(q1 + q2);
  b.df = WelchDf(n1, n2, q1, q2);
  b.p = FProb(b.z * b.z, 1, b.df);
  return b;
}

TwoGroupRanks CompareTwoGroupRanks(const std::vector<std::vector<double>>& values, const RankedGroups& ranked) {
  TwoGroupRanks t;
  const GroupSample& g1 = ranked.samples[0];
  const GroupSample& g2 = ranked.samples[1];
  const double n1 = g1.n, n2 = g2.n;
  t.rankSum1 = g1.mean * n1;
  t.rankSum2 = g2.mean * n2;
  // The placement of a case, the count of the other group's cases below it (ties by half),
  // is its pooled rank less its rank within its own group.
  double placementSum[2] = {0, 0}, placementSS[2] = {0, 0};
  for (int g = 0; g < 2; ++g) {
    const RankedGroups own = RankGroups({values[g]});
    std::vector<double> placement(values[g].size());
    for (std::size_t i = 0; i < placement.size(); ++i) placement[i] = ranked.ranks[g][i] - own.ranks[0][i];
    placementSum[g] = std::accumulate(placement.begin(), placement.end(), 0.0);
    const double mean = placementSum[g] / placement.size();
    for (double p : placement) placementSS[g] += Square(p - mean);
  }
  t.pGreater = (placementSum[0] - 0.5 * ranked.crossTies) / (n1 * n2);
  t.pLess = (placementSum[1] - 0.5 * ranked.crossTies) / (n1 * n2);
  t.aEstimate = (g1.mean - (n1 + 1) / 2) / n2;
  t.q1 = placementSS[0] / (n1 * n2 * n2 * (n1 - 1));
  t.q2 = placementSS[1] / (n2 * n1 * n1 * (n2 - 1));
  const bool zeroSd = g1.variance < kTiny || g2.variance < kTiny;

  const double D = placementSum[0] - placementSum[1];
  const double term = 4 * (placementSum[0] / n1 * placementSum[1] / n2 + placementSS[0] + placementSS[1]);
  double q = t.q1 + t.q2;
  if (term > kTiny) {
    t.fp = std::fabs(D) < kTiny ? 0 : D / std::sqrt(term);
    t.fpDf = WelchDf(n1, n2, placementSS[0] / (n1 - 1) / n1, placementSS[1] / (n2 - 1) / n2);
  } else {
    q = 0;
  }
  t.fpDefined = !zeroSd && t.fpDf >= 0.01;
  if (t.fpDefined) t.fpP = StudentP2(t.fp, t.fpDf);

  if (q >= kTiny) t.bm = BrunnerMunzelZ(n1, n2, t.aEstimate, t.q1, t.q2);
  t.bmDefined = !zeroSd && q >= kTiny && t.bm.df >= 0.01;
  // From the variance terms themselves, so that A = 0.5 has its interval too; without them
  // the interval shrinks to the estimate.
  const double halfWidth = q >= kTiny ? std::sqrt(CriticalF95(t.bm.df) * q) : 0;
  t.aLow = std::max(0.0, t.aEstimate - halfWidth);
  t.aHigh = std::min(1.0, t.aEstimate + halfWidth);
  t.somersD2 = Square(2 * t.aEstimate - 1);
  if (std::sqrt(g1.variance) + std::sqrt(g2.variance) > kTiny) {
    t.rankCohenD = (g1.mean - g2.mean) / std::sqrt((n1 * g1.variance + n2 * g2.variance) / (n1 + n2));
  }
  return t;
}

bool MannWhitneyExactApplies(int n1, int n2) {
  const int m = std::min(n1, n2), M = n1 + n2;
  return (m == 2 && M < 101) || (m < 5 && M <= 50) || (m < 10 && M < 35) || M <= 30;
}

bool MannWhitneyNormalApplies(int n1, int n2) {
  return (n1 > 6 && n2 > 6) || n1 > 15 || n2 > 15;
}

PValue MannWhitneyExactP(const RankedGroups& ranked) {
  const GroupSample& g1 = ranked.samples[0];
  const GroupSample& g2 = ranked.samples[1];
  if (std::fabs(g1.mean - g2.mean) < kTiny) return Marked(1);
  const int smaller = g1.n >= g2.n ? 1 : 0;
  const int m = ranked.samples[smaller].n, M = ranked.total;
  const double R = ranked.samples[smaller].mean * m;
  const double S = std::max(R, m * (M + 1.0) - R);
  std::vector<double> all;
  for (const auto& group : ranked.ranks) all.insert(all.end(), group.begin(), group.end());
  std::sort(all.begin(), all.end(), std::greater<>());
  std::vector<double> prefix(M + 1, 0);
  for (int i = 0; i < M; ++i) prefix[i + 1] = prefix[i] + all[i];
  const double slack = 1e-7;
  // Subsets of r ranks from position pos on whose sum reaches need: a branch that cannot
  // reach it is cut, one whose smallest choice reaches it counts all its subsets at once.
  std::function<double(int, int, double)> count = [&](int pos, int r, double need) -> double {
    if (r == 0) return need <= slack ? 1 : 0;
    if (prefix[pos + r] - prefix[pos] < need - slack) return 0;
    if (prefix[M] - prefix[M - r] >= need - slack) return Binomial(M - pos, r);
    double c = count(pos + 1, r - 1, need - all[pos]);
    if (M - pos - 1 >= r) c += count(pos + 1, r, need);
    return c;
  };
  const double subsets = count(0, m, S);
  if (subsets <= 0) return Marked(0);
  return Marked(std::min(1.0, 2 * subsets / Binomial(M, m)));
}

MannWhitneyNormal MannWhitneyNormalTest(const RankedGroups& ranked) {
  const KruskalWallisResult k = KruskalWallis(ranked);
  MannWhitneyNormal w;
  w.z = std::sqrt(k.H);
  if (ranked.samples[0].mean < ranked.samples[1].mean) w.z = -w.z;
  w.p = k.p;
  return w;
}

}  // namespace tarvika
