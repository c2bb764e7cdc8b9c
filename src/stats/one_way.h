#pragma once
// The one-way comparison of independent groups on an interval scale: the tests of equal
// variances (Levene's on absolute deviations, O'Brien's on his transformed scores), the
// tests of equal means (the ANOVA F, Welch's W, Brown and Forsythe's F*, James's
// second-order test), the effect sizes, and the tests of equal trimmed means (Yuen's for two
// groups, the Welch-type Ft for more). Groups are given by their size, mean and variance (or
// by their values); a group of fewer than two cases takes no part.

#include <span>
#include <string_view>
#include <vector>

#include "numeric/probability.h"

namespace tarvika {

struct GroupSample {
  int n = 0;
  double mean = 0;
  double variance = 0;  // divisor n - 1
};

// The summaries of the values of a group, with the variance set to 0 when the sum of squares
// is not above 1e-8.
GroupSample SummarizeGroup(std::span<const double> values);

struct AnovaFamilyResult {
  int k = 0;  // groups of at least two cases
  int total = 0;
  double df1 = 0, df2 = 0;
  double ssBetween = 0, msWithin = 0;
  double F = 0;   // 999999 when there is no within variance
  double W = 0;   // Welch; -1 when a group has no variance
  double U = 0;   // James; -1 likewise
  double BF = 0;  // Brown-Forsythe F*; 999999 when its denominator vanishes
  double dfWelch = 0, dfBF = 0;
  bool zeroGroup = false;  // some group of the test has no variance
  // The James test judged by its second-order critical values (more than two groups):
  // "  (p > 0.10)" to "  (p < 0.001)" and the marker.
  std::string_view jamesText;
  std::string_view jamesMarker;
};
// For two groups W is the square of Welch's t and dfWelch its Welch-Satterthwaite df.
AnovaFamilyResult AnovaFamily(std::span<const GroupSample> groups);

// F and W alone, for the scores of the tests of variances: 0 when the means don't differ,
// 999 (and dfWelch 999) when some group has no variance.
struct WelchPairResult {
  double F = 0, W = 0, df1 = 0, df2 = 0, dfWelch = 0;
};
WelchPairResult AnovaWelchPair(std::span<const GroupSample> groups);

// The second-order critical value of James's test for groups of the given sizes and
// variances, at level 1 to 4 (alpha 0.10, 0.05, 0.01, 0.001).
double JamesCritical(std::span<const GroupSample> groups, int level);

// The upper chi-square quantile with df degrees of freedom at tail alpha, by bisection on 1
// to 10000.
double ChiSquareQuantileByBisection(double alpha, int df);

// A test of equal variances: the ANOVA on the scores, or the Welch W on them when the group
// sizes differ and no group has zero variance. For W a score group whose SD is below 1e-8
// takes 0.33 times the smallest positive score SD (a group of two cases has equal absolute
// deviations); the F needs no such help and is the textbook test.
struct VarianceTest {
  bool done = false;
  bool welchType = false;
  double statistic = 0;
  double df1 = 0, df2 = 0;
  PValue p;
};
// values[j] are the values of group j (empty for an empty group); groups[j] their summaries.
VarianceTest LeveneTest(const std::vector<std::vector<double>>& values, std::span<const GroupSample> groups);
// Only when every group has more than two cases (else not done).
VarianceTest OBrienTest(const std::vector<std::vector<double>>& values, std::span<const GroupSample> groups);

// Welch's df of two variance terms q1 = s1^2/n1 and q2 = s2^2/n2.
double WelchDf(double n1, double n2, double q1, double q2);

// The effect sizes of the ANOVA: eta and omega squared (0 without a between sum).
struct AnovaEffects {
  double eta = 0, etaSquared = 0, omegaSquared = 0;
};
AnovaEffects Effects(const AnovaFamilyResult& a);

// The critical F(1, df) at 0.05, the square of the two-sided t quantile, for a df that need
// not be whole (Welch's, Yuen's): by bisection of the t distribution's tail.
double CriticalF95(double df);

// The interval D -/+ SE sqrt(critical F(1, df)) of a difference D with its standard error.
struct DifferenceInterval {
  double low = 0, high = 0;
};
DifferenceInterval IntervalFromSE(double difference, double se, double criticalF);
// Decimals of the interval's limits by the larger of their sizes.
int IntervalDecimals(double low, double high);

// A group trimmed by the same percentage at each end.
struct TrimmedGroup {
  int n = 0;
  int kept = 0;  // n - 2h
  double mean = 0;
  double minimum = 0, maximum = 0;  // the values at positions h+1 and n-h
  double yuenScale = 0;             // winsorized SS / (kept - 1)
  double winsorizedSD = 0;          // sqrt(winsorized SS / (n - 1))
};
// sorted: the values of the group in ascending order.
TrimmedGroup TrimGroup(std::span<const double> sorted, int percent);

struct TrimmedTest {
  double statistic = 0;  // Yuen's t (two groups) or Ft
  double df1 = 0, df2 = 0;
  PValue p;
  double etaSquared = 0;
  double cohenD = 0;     // two groups
  double errorTerm = 1;  // more groups: 1 + B, the divisor of Ft
};
TrimmedTest YuenTest(const TrimmedGroup& a, const TrimmedGroup& b);
TrimmedTest TrimmedWelch(std::span<const TrimmedGroup> groups);

}  // namespace tarvika
