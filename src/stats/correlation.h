#pragma once
// The measures of the relationship of two variables on their complete pairs: moments and
// Pearson r, the two regression lines with their error variances, Fisher-z limits, Wilcox's
// percentage bend and the winsorized correlation, and Kendall's tau-b and tau with the
// shares of concordant and discordant pairs. Pure computations on two equal-length spans.

#include <optional>
#include <span>
#include <vector>

namespace tarvika {

// Counts, running means, SDs (divisor n - 1), extremes and Pearson r of the pairs. r is 0
// when either SD is at or below the zero tolerance.
struct PairMoments {
  int n = 0;
  double meanX = 0, meanY = 0, sdX = 0, sdY = 0;
  double minX = 0, maxX = 0, minY = 0, maxY = 0;
  double r = 0;
  // True when both variables vary: an SD above the tolerance and the extremes apart.
  bool VariesX() const;
  bool VariesY() const;
};
PairMoments MomentsOf(std::span<const double> x, std::span<const double> y);

// x = intercept + slope * y or y = intercept + slope * x.
struct RegressionLine {
  double intercept = 0, slope = 0;
};
struct BivariateRegression {
  RegressionLine xOnY, yOnX;
  // Residual mean squares (n - 2 df) and their roots; 0 for n of 2 or less.
  double msErrX = 0, seX = 0, msErrY = 0, seY = 0;
  int df = 0;
};
BivariateRegression RegressionOf(const PairMoments& m);

// Fisher's z, 0.5 ln((1 + r)/(1 - r)), held at +-kFisherZLimit for |r| of 0.99999999 or more.
inline constexpr double kFisherZLimit = 99999999;
double FisherZ(double r);
double FisherZInverse(double z);

struct Limits {
  double lower = 0, upper = 0;
};
// The confidence limits of a correlation by Fisher's z with the standard error
// 1/sqrt(n - 3); z is the normal quantile of the level. With n - 3 below 1 the limits are
// -1 and 1.
Limits FisherLimits(double r, int n, double z);

// The percentage bend scale omega (the m-th smallest absolute deviation from the median,
// m = round(0.9 n)) and the location phi; omega at or below the tolerance means none.
struct PercentageBend {
  double omega = 0, phi = 0;
};
PercentageBend PercentageBendOf(std::vector<double> values);
// Wilcox's percentage bend correlation with bend 0.1; empty when either omega is at or
// below the tolerance.
std::optional<double> PercentageBendCorrelation(std::span<const double> x, std::span<const double> y);

// The correlation of the pairs with each variable winsorized g values from each end; empty
// when a winsorized variance is at or below the tolerance or fewer than 3 values stay.
std::optional<double> WinsorizedCorrelation(std::span<const double> x, std::span<const double> y, int g);

// Kendall's measures of the pairs, in O(n log n). Pairs are counted as ordered pairs, so
// each unordered pair twice; values within the tolerance are ties.
struct KendallMeasures {
  int n = 0;
  double concordant = 0, discordant = 0;  // ordered pairs
  double tau = 0;                         // (C - D)/(n(n - 1)), ties not corrected
  double tauB = 0;                        // corrected for ties in both variables
  double zTauB = 0;                       // S over its null SD with the tie corrections
  double seTauB = 0;                      // |tau-b / z|
  double seTau = 0;                       // the sample SE of tau from the per-case sums
  double pPos = 0, pNeg = 0;              // percent of concordant and discordant pairs
};
KendallMeasures KendallOf(std::span<const double> x, std::span<const double> y);

// Local linear regression along X: the cases sorted by X, a window of `window` neighbouring
// cases (by rank) around each case. `points` evenly spaced ranks report their window's
// line; every case gets the fitted value of its own window's line, whose share of the
// variance of Y is the smoothed regression's.
struct LocalLine {
  double x = 0, left = 0, right = 0;  // the X of the centre case and the window's ends
  double slope = 0, r = 0;
  int cases = 0;
};
struct LocalRegression {
  std::vector<LocalLine> lines;
  double linearShare = 0;    // r squared
  double smoothedShare = 0;  // 1 - residual / total sum of squares of the smoothed fit
};
// window is held from 3 to n; n at least 3.
LocalRegression LocalRegressionOf(std::span<const double> x, std::span<const double> y, int window, int points);

// The null SD of tau without ties, sqrt(2(2n + 5)/(9n(n - 1))).
double TauNullSd(int n);

// The exact critical values of Kendall's tau without ties for n from 2 to 30: the smallest
// tau whose two-sided p under independence is at most 0.10, 0.05, 0.01 (level index 0, 1,
// 2); above 1 when no tau reaches the level. From the distribution of the number of
// inversions of a random permutation.
inline constexpr int kTauTableFirstN = 2, kTauTableLastN = 30;
double TauCritical(int n, int level);

}  // namespace tarvika
