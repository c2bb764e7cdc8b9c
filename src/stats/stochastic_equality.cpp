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
  for (const auto& ranks : r.ranks) r.samples.push_back(SummarizeGroup(ranks));
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

namespace tarvika {

namespace {

// s(x, j) of every case x against every group j: the cases of j below x plus half those tied
// with it, found on the pooled ranks (equal ranks are ties).
struct Placements {
  int k = 0;
  // at[i][j] lists s(x, j) for the cases x of group i, in the order of ranked.ranks[i].
  std::vector<std::vector<std::vector<double>>> at;
};

Placements PlaceAll(const RankedGroups& ranked) {
  Placements p;
  p.k = static_cast<int>(ranked.ranks.size());
  std::vector<std::vector<double>> sorted = ranked.ranks;
  for (auto& s : sorted) std::sort(s.begin(), s.end());
  p.at.assign(p.k, std::vector<std::vector<double>>(p.k));
  for (int i = 0; i < p.k; ++i) {
    for (int j = 0; j < p.k; ++j) {
      const std::vector<double>& s = sorted[j];
      for (double r : ranked.ranks[i]) {
        const auto low = std::lower_bound(s.begin(), s.end(), r - 0.25);
        const auto high = std::upper_bound(low, s.end(), r + 0.25);
        p.at[i][j].push_back(static_cast<double>(low - s.begin()) + 0.5 * static_cast<double>(high - low));
      }
    }
  }
  return p;
}

// Sum of the cross products about their means of two series of equal length.
double CrossSS(const std::vector<double>& a, const std::vector<double>& b) {
  const double n = static_cast<double>(a.size());
  const double ma = std::accumulate(a.begin(), a.end(), 0.0) / n;
  const double mb = std::accumulate(b.begin(), b.end(), 0.0) / n;
  double s = 0;
  for (std::size_t x = 0; x < a.size(); ++x) s += (a[x] - ma) * (b[x] - mb);
  return s;
}

// The two forms differ in the scale of the placements (equal weights: per case of the
// other group), the divisor of the variances (N^2 or k^2) and the weights in V.
KulleResult Kulle(const RankedGroups& ranked, bool equal) {
  const Placements placements = PlaceAll(ranked);
  const int k = placements.k;
  const double N = ranked.total;
  std::vector<double> n(k);
  for (int i = 0; i < k; ++i) n[i] = ranked.samples[i].n;
  // The scaled placements sc[i][j] and their sums over the other groups.
  auto sc = placements.at;
  if (equal) {
    for (int i = 0; i < k; ++i) {
      for (int j = 0; j < k; ++j) {
        for (double& v : sc[i][j]) v /= n[j];
      }
    }
  }
  const double scale = equal ? static_cast<double>(k) * k : N * N;
  KulleResult r;
  std::vector<double> s2(k);
  for (int i = 0; i < k; ++i) {
    std::vector<double> T(sc[i][i].size(), 0);
    for (int j = 0; j < k; ++j) {
      if (j == i) continue;
      for (std::size_t x = 0; x < T.size(); ++x) T[x] += sc[i][j][x];
    }
    const double meanT = std::accumulate(T.begin(), T.end(), 0.0) / n[i];
    r.effects.push_back(equal ? (0.5 + meanT) / k : (n[i] / 2 + meanT) / N);
    s2[i] = CrossSS(T, T) / (scale * (n[i] - 1));
    r.v1.push_back(N * N * s2[i]);
    // The spread of this group's placement of the other groups' cases.
    std::vector<double> own;
    for (int j = 0; j < k; ++j) {
      if (j == i) continue;
      own.insert(own.end(), placements.at[j][i].begin(), placements.at[j][i].end());
    }
    const double ss = own.size() > 1 ? CrossSS(own, own) : 0;
    r.v2.push_back(ss > kTiny ? ss / (N - n[i] - 1) : ss);
  }
  // c(i, j, l): covariance of the placements against j and l over the cases of i.
  auto c = [&](int i, int j, int l) { return CrossSS(sc[i][j], sc[i][l]) / (scale * (n[i] - 1)); };
  std::vector<double> V(static_cast<std::size_t>(k) * k, 0);
  for (int i = 0; i < k; ++i) {
    double sum = 0;
    for (int j = 0; j < k; ++j) {
      if (j != i) sum += equal ? c(j, i, i) / n[j] : n[j] * c(j, i, i) / n[i];
    }
    V[i * k + i] = equal ? N * (s2[i] / n[i] + sum) : N / n[i] * (s2[i] + sum);
    for (int j = i + 1; j < k; ++j) {
      double L = 0;
      for (int l = 0; l < k; ++l) {
        if (l == i || l == j) continue;
        L += equal ? c(i, j, l) / n[i] + c(j, i, l) / n[j] - c(l, i, j) / n[l]
                   : n[i] * c(i, j, l) + n[j] * c(j, i, l) - n[l] * c(l, i, j);
      }
      L += equal ? c(i, j, j) / n[i] + c(j, i, i) / n[j] : n[i] * c(i, j, j) + n[j] * c(j, i, i);
      V[i * k + j] = V[j * k + i] = equal ? -N * L : -(N * L / n[i]) / n[j];
    }
  }
  // MV with M the centring matrix: each column of V less its mean.
  std::vector<double> MV(V.size());
  for (int col = 0; col < k; ++col) {
    double mean = 0;
    for (int row = 0; row < k; ++row) mean += V[row * k + col] / k;
    for (int row = 0; row < k; ++row) MV[row * k + col] = V[row * k + col] - mean;
  }
  double tr = 0, tr2 = 0;
  for (int i = 0; i < k; ++i) {
    tr += MV[i * k + i];
    for (int j = 0; j < k; ++j) tr2 += MV[i * k + j] * MV[j * k + i];
  }
  const double meanEffect = std::accumulate(r.effects.begin(), r.effects.end(), 0.0) / k;
  double Q = 0;
  for (double p : r.effects) Q += Square(p - meanEffect);
  Q *= N;
  r.F = Q < 1e-6 ? 0 : tr < 1e-6 ? (equal ? 99 : 999) : Q / tr;
  r.f = tr2 > 0 ? tr * tr / tr2 : 0;
  // f0 from the weights n_i/s2_i; a group without spread takes a third of the smallest
  // positive s2.
  double smallest = 0;
  for (double s : s2) {
    if (s > 1e-7 && (smallest == 0 || s < smallest)) smallest = s;
  }
  std::vector<double> w(k);
  double wsum = 0;
  for (int i = 0; i < k; ++i) {
    const double s = s2[i] > 1e-7 ? s2[i] : smallest / 3;
    w[i] = s > 0 ? n[i] / s : 0;
    wsum += w[i];
  }
  double denominator = 0;
  for (int i = 0; i < k; ++i) denominator += Square(1 - (wsum > 0 ? w[i] / wsum : 0)) / (n[i] - 1);
  r.f0 = (k * k - 1) * 0.33333333 / denominator;
  return r;
}

}  // namespace

KulleResult KulleProportional(const RankedGroups& ranked) {
  return Kulle(ranked, false);
}

KulleResult KulleEqual(const RankedGroups& ranked) {
  return Kulle(ranked, true);
}

}  // namespace tarvika
