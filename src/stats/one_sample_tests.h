#pragma once
// The tests of a hypothetical value h on one sample: the t test on the mean with its
// skewness corrections (Johnson's modified t, Gayen's probability), the t test on the
// trimmed mean, the Wilcoxon signed-rank test and the sign test on the median.

#include <span>

#include "numeric/order_stats.h"
#include "numeric/probability.h"
#include "stats/moments.h"

namespace tarvika {

// A statistic with a t distribution under the null hypothesis.
struct TTest {
  double t = 0;
  int df = 0;
  PValue p;
};

// t = sqrt(n)(mean - h)/SD on n - 1 df: 0 when the mean is within the zero tolerance of h,
// 99 when ZeroVariance.
TTest OneSampleT(const MomentAccumulator& m, double h);

// Johnson's and Gayen's corrections are computed only for |t| up to 10 and n below 500,
// where their expansions in 1/sqrt(n) hold.
bool SkewnessCorrectionsApply(double t, int n);
// Johnson's t corrected for skewness: t + a/(2 sqrt(n)) + a t^2/sqrt(n), a = skewness/3.
TTest JohnsonT(const MomentAccumulator& m, double t);
// Gayen's two-sided probability of |t| on n - 1 df for a parent population of the given
// skewness and excess kurtosis, to the terms in g2 and g1^2; with both 0 it is the t test's
// p. As an expansion it can leave [0, 1] by a little for a large kurtosis far in the tail.
double GayenExpansionP(int n, double t, double skewness, double kurtosis);
// GayenExpansionP under the sample's skewness and kurtosis, held to [0, 1].
PValue GayenP(const MomentAccumulator& m, double t);

// The standard error of the trimmed mean: winsorized SD/((1 - 2 percent/100) sqrt(n)).
double TrimmedMeanSE(const TrimmedStatistics& trim, int percent, int n);
// The trimmed t test of trimmed mean = h on h - 1 df (h the kept count): 0 when the trimmed
// mean is within the zero tolerance of h, 99 when there is no winsorized SD, else
// (trimmed mean - h)/SE. The SE holds the factor 1 - 2 percent/100 once, as the published
// statistic has it (Tukey and McLaughlin; Yuen): applying it again would shrink t by as
// much (0.6 at 20 %). With one kept value (df 0) the test is not defined: the caller
// leaves it out.
TTest TrimmedT(const TrimmedStatistics& trim, int percent, int n, double h);

// The Wilcoxon signed-rank test from the rank sums of the value table. Up to 20 cases
// other than h the p is exact, by enumeration over the mid-ranks of the absolute deviations
// (the first of them, at least 20, and their count); beyond, the normal approximation with
// the tie correction.
struct SignedRankTest {
  double rMinus = 0;
  double rPlus = 0;
  bool byNormal = false;
  double z = 0;  // with byNormal
  PValue p;
};
SignedRankTest WilcoxonSignedRank(const SignedRanks& ranks, std::span<const double> deviations,
                                  int deviationCount);

// The sign test: the cases below and above h (those equal to it left out), exact binomial
// up to 50 of them, the normal approximation beyond.
struct SignTest {
  int below = 0;
  int above = 0;
  bool byNormal = false;
  double z = 0;  // with byNormal
  PValue p;
};
SignTest SignTestAround(const SignedRanks& ranks);

}  // namespace tarvika
