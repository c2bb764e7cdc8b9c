#pragma once
// Goodness-of-fit tests on a frequency table: the normal distribution with the sample's
// mean and SD by Kolmogorov's test or by the chi-square test on classes, and equal group
// frequencies by the chi-square test with adjusted residuals.

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "numeric/probability.h"
#include "stats/moments.h"

namespace tarvika {

// values: distinct values or class midpoints in ascending order; frequencies beside them.
// The moments are those of the same values.

// Dmax, the largest distance between the normal and the empirical distribution function,
// D* = sqrt(n) Dmax, and the p of Dmax by Lilliefors' distribution: the normal's mean and SD
// are the sample's, which makes Dmax much smaller than Kolmogorov's distribution (known mean
// and SD) expects.
struct KolmogorovTest {
  double d = 0;
  double dStar = 0;
  PValue p;
};
// The upper tail of Lilliefors' Dmax for n from 5 to 100 values: Dallal and Wilkinson's
// (1986) formula where it gives at most 0.1, the range it was fitted for; above, the
// polynomial of Molin and Abdi (1998, as given by Abdi and Molin 2007), at least 0.1 and at
// most 1 so that p falls as Dmax grows.
double LillieforsP(double d, int n);
KolmogorovTest KolmogorovNormality(std::span<const double> values, std::span<const std::int32_t> frequencies,
                                   const MomentAccumulator& m);

// The normal expectations of the cells: each cell reaches up to the midpoint between its
// value and the next, the last one to infinity.
std::vector<double> ExpectedNormalCounts(std::span<const double> values, const MomentAccumulator& m);

// The cells that remain after merging small expectations (below 5), each with its
// expectation, its observed count and the first of the original cells it holds.
struct MergedCells {
  std::vector<double> expected;
  std::vector<double> observed;
  std::vector<int> firstCell;
  int Count() const { return static_cast<int>(expected.size()); }
};
// While more than a fifth of the cells expect fewer than 5 and more than four remain, cells
// are merged: the tails of the normal from both sides inward (an end cell into its
// neighbour while one of the two is small, the end of the smaller pair first), else the
// smallest inner cell into the smaller of its neighbours. Four cells (one degree of
// freedom) remain at least.
MergedCells MergeSmallExpectedCells(std::span<const double> expected, std::span<const double> observed);

// Pearson's chi-square of the merged cells on cells - 3 df, as the normal's mean and SD
// are estimated from the sample. Fewer than four cells leave no degree of freedom: df 0,
// no test.
struct ChiSquareNormalityTest {
  double chi = 0;
  int df = 0;
  PValue p;
  int cells = 0;          // before merging
  int smallExpected = 0;  // cells expecting fewer than 5, before merging
  bool Tested() const { return df > 0; }
  bool ManySmallExpected() const { return smallExpected > 0.2 * cells; }
};
ChiSquareNormalityTest ChiSquareNormality(std::span<const double> values,
                                          std::span<const std::int32_t> frequencies,
                                          const MomentAccumulator& m);

// Equal frequencies in k groups: the standardized residuals (f - e)/sqrt(e) with the marker
// of their normal p, the p of each residual's square adjusted for the k groups (times k, at
// most 1), and chi-square = the sum of squared residuals on k - 1 df.
struct EqualFrequencyTest {
  double expected = 0;
  std::vector<double> residuals;
  std::vector<std::string_view> residualMarkers;
  std::vector<double> adjustedP;
  double chi = 0;
  int df = 0;
  PValue p;
};
EqualFrequencyTest EqualFrequencies(std::span<const int> frequencies);

}  // namespace tarvika
