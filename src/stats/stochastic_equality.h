#pragma once
// Rank tests of stochastic equality of independent groups: the pooled mid-ranks with their
// tie correction, Kruskal and Wallis's H with the rank eta squared, and for two groups the
// Mann-Whitney test (exact by enumeration of the rank subsets, or by its normal
// approximation), Fligner and Policello's test with a Welch-like df, Brunner and Munzel's
// test with the estimate A of P(X1 > X2) + P(X1 = X2)/2 and its interval, and the relative
// effects of each group against the whole sample. The groups given are those taking part
// (two cases or more).

#include <span>
#include <vector>

#include "numeric/probability.h"
#include "stats/one_way.h"

namespace tarvika {

struct RankedGroups {
  std::vector<std::vector<double>> ranks;  // per group, the pooled mid-ranks in the given order
  std::vector<GroupSample> samples;        // per group: n, rank mean, rank variance
  int total = 0;
  // Sum over runs of ties of (t^3 - t)/(N^3 - N); a run holds the values within 1e-8 above
  // its first member.
  double tieCorrection = 0;
  double crossTies = 0;  // pairs of cases of the first two groups tied together
};
RankedGroups RankGroups(const std::vector<std::vector<double>>& values);

struct KruskalWallisResult {
  double H = 0;  // tie corrected; 0 when every value is tied
  int df = 0;
  PValue p;
  double rankEtaSquared = 0;  // SSb/(SSb + SSw) of the ranks
};
KruskalWallisResult KruskalWallis(const RankedGroups& r);

// The relative effect of each group against the whole sample, P(Xj > X) + P(Xj = X)/2, with
// the sample pooled (weighted) or with the groups given equal weight (unweighted).
struct Dominance {
  std::vector<double> weighted, unweighted;
};
Dominance StochasticDominance(const std::vector<std::vector<double>>& values, const RankedGroups& r);

// Kulle's asymptotic test of stochastic homogeneity, p_1 = ... = p_k, of the relative effects
// weighted by the group sizes (proportional) or by the groups alike (equal): F = Q/tr(MV)
// with the centring matrix M and the estimated covariance V of the effects, referred to F
// with f = tr(MV)^2/tr(MVMV) and f0 df.
struct KulleResult {
  std::vector<double> effects;  // p_i
  double F = 0;                 // 0 without differences; 999 (equal weights 99) without variance
  double f = 0, f0 = 0;
  // Per group: the variance of the summed placements of its cases (V1) and of its own
  // placements of the other groups' cases (V2), for the comparisons of a group with the rest.
  std::vector<double> v1, v2;
};
KulleResult KulleProportional(const RankedGroups& ranked);
KulleResult KulleEqual(const RankedGroups& ranked);

// z = (A - 0.5)/sqrt(q1 + q2) with Welch's df of q1, q2 and p from F(1, df) at z^2; z = 99,
// p = 0 when q1 + q2 is below 1e-8.
struct BrunnerMunzelResult {
  double z = 0, df = 0;
  PValue p;
};
BrunnerMunzelResult BrunnerMunzelZ(double n1, double n2, double A, double q1, double q2);

struct TwoGroupRanks {
  double rankSum1 = 0, rankSum2 = 0;
  double pGreater = 0, pLess = 0;  // P(X1 > X2), P(X1 < X2)
  double aEstimate = 0;            // (mean rank 1 - (n1 + 1)/2)/n2
  double q1 = 0, q2 = 0;           // the variance terms of A
  bool fpDefined = false;
  double fp = 0, fpDf = 0;  // Fligner-Policello (group 1 above group 2: positive)
  PValue fpP;
  bool bmDefined = false;
  BrunnerMunzelResult bm;
  double aLow = 0, aHigh = 1;  // the 95% interval of A, within [0, 1]
  double somersD2 = 0;         // (2A - 1)^2
  double rankCohenD = 0;       // rank mean difference over the n-weighted pooled rank SD
};
// ranked holds exactly two groups; values the same groups' raw values.
TwoGroupRanks CompareTwoGroupRanks(const std::vector<std::vector<double>>& values, const RankedGroups& ranked);

// Whether the exact Mann-Whitney test is made for sizes n1, n2 (the smaller m, the sum M).
bool MannWhitneyExactApplies(int n1, int n2);
// Whether the normal approximation is made: both sizes above 6 or one above 15.
bool MannWhitneyNormalApplies(int n1, int n2);

// The two-sided exact p of the rank sum of the smaller group (the second on equal sizes):
// the share of the subsets of its size among the pooled ranks whose sum is at least as far
// from its mean. Ties are taken into the null as they are (the mid-ranks are permuted).
PValue MannWhitneyExactP(const RankedGroups& ranked);

// Z = sign sqrt(H) with p from chi-square at 1 df, negative when group 1 ranks lower.
struct MannWhitneyNormal {
  double z = 0;
  PValue p;
};
MannWhitneyNormal MannWhitneyNormalTest(const RankedGroups& ranked);

}  // namespace tarvika
