// The goodness-of-fit tests against R (reference/one_sample.R). The normal distribution
// function is a polynomial good to about 1e-5, which bounds the agreement.

#include "stats/goodness_of_fit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "support/reference_csv.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

// Samples from reference/normality.R, from 8 to 100 values, with ties and without, p from
// 1e-7 to 0.9. Up to 0.1 the p is Dallal and Wilkinson's formula, as nortest's lillie.test
// has it; above, it is checked against lillie.test and against a Monte-Carlo estimate,
// which it is closer to.
TEST(GoodnessOfFit, KolmogorovDistanceFromTheNormalWithLillieforsP) {
  const ReferenceCsv reference("kolmogorov_normality.csv", "stats");
  ASSERT_EQ(reference.size(), 9u);
  for (size_t row = 0; row < reference.size(); ++row) {
    SCOPED_TRACE(reference.Text(row, "set"));
    std::vector<double> x = Numbers(reference.Text(row, "values"));
    MomentAccumulator m;
    for (double v : x) m.Add(v);
    std::sort(x.begin(), x.end());
    std::vector<double> values;
    std::vector<std::int32_t> frequencies;
    for (double v : x) {
      if (values.empty() || v != values.back()) {
        values.push_back(v);
        frequencies.push_back(0);
      }
      ++frequencies.back();
    }
    const KolmogorovTest test = KolmogorovNormality(values, frequencies, m);
    EXPECT_NEAR(test.d, reference.Number(row, "d"), 2e-5);
    EXPECT_NEAR(test.dStar, std::sqrt(x.size()) * reference.Number(row, "d"), 2e-4);
    const double p = reference.Number(row, "p");
    if (p <= 0.1) {
      EXPECT_NEAR(test.p.p, p, 0.01 * p);
    } else {
      EXPECT_NEAR(test.p.p, p, 0.015);
      EXPECT_NEAR(test.p.p, reference.Number(row, "monte_carlo_p"), 0.01);
    }
    EXPECT_EQ(test.p.marker, SignificanceMarker(p));
  }
}

// p falls from 1 as Dmax grows, also where the two approximations meet, and stays in [0, 1].
TEST(GoodnessOfFit, LillieforsPFallsFromOneToZero) {
  for (int n : {5, 8, 13, 20, 50, 100}) {
    SCOPED_TRACE(n);
    EXPECT_EQ(LillieforsP(0, n), 1);
    double before = 1;
    for (double d = 0.0001; d < 0.7; d += 0.0001) {
      const double p = LillieforsP(d, n);
      ASSERT_LE(p, before) << d;
      ASSERT_GE(p, 0) << d;
      before = p;
    }
    EXPECT_LT(before, 1e-6);
  }
}

// Tables from reference/normality.R: five cells that need no merging, the classes of normal
// samples of 5000 and 30001 (where merging from one end only used to end in a single cell,
// df 0) and of a skewed sample. The merged cells are the ones the script checks; chi-square
// is Pearson's on them, on cells - 3 df.
TEST(GoodnessOfFit, ChiSquareAgainstTheNormalMergesBothTails) {
  const ReferenceCsv reference("chi_square_normality.csv", "stats");
  ASSERT_EQ(reference.size(), 4u);
  for (size_t row = 0; row < reference.size(); ++row) {
    SCOPED_TRACE(reference.Text(row, "set"));
    const std::vector<double> values = Numbers(reference.Text(row, "values"));
    const std::vector<double> counts = Numbers(reference.Text(row, "frequencies"));
    const std::vector<std::int32_t> frequencies(counts.begin(), counts.end());
    // The moments are those of the sample, not of the class midpoints.
    MomentAccumulator m;
    m.count = static_cast<std::int32_t>(reference.Number(row, "n"));
    m.mean = reference.Number(row, "mean");
    m.m2 = reference.Number(row, "sd") * reference.Number(row, "sd") * (m.count - 1);

    const std::vector<double> expected = ExpectedNormalCounts(values, m);
    const MergedCells merged = MergeSmallExpectedCells(expected, counts);
    ASSERT_EQ(merged.Count(), reference.Number(row, "cells"));
    const int lowerEnd = static_cast<int>(reference.Number(row, "lower_end"));
    const int upperStart = static_cast<int>(reference.Number(row, "upper_start"));
    EXPECT_EQ(merged.firstCell[1], lowerEnd);  // the first cell holds classes 1..lowerEnd
    EXPECT_EQ(merged.firstCell.back() + 1, upperStart);
    EXPECT_EQ(std::count_if(merged.expected.begin(), merged.expected.end(), [](double e) { return e < 5; }),
              reference.Number(row, "small_cells"));
    double total = 0;
    for (double f : merged.observed) total += f;
    EXPECT_EQ(total, m.count);

    const ChiSquareNormalityTest test = ChiSquareNormality(values, frequencies, m);
    EXPECT_TRUE(test.Tested());
    EXPECT_EQ(test.cells, static_cast<int>(values.size()));
    EXPECT_EQ(test.df, reference.Number(row, "df"));
    const double chi = reference.Number(row, "chi"), p = reference.Number(row, "p");
    EXPECT_NEAR(test.chi, chi, 2e-4 * chi);
    EXPECT_NEAR(test.p.p, p, p < 0.01 ? 0.01 * p : 1e-3);
  }
}

// Three values leave no degree of freedom; four are tested on one however small their
// expectations; a small cell inside joins its smaller neighbour.
TEST(GoodnessOfFit, ChiSquareNormalityNeedsFourCells) {
  MomentAccumulator m;
  for (double x : {1.0, 2.0, 2.0, 3.0}) m.Add(x);
  const std::vector<std::int32_t> three = {1, 2, 1};
  EXPECT_FALSE(ChiSquareNormality(std::vector<double>{1, 2, 3}, three, m).Tested());
  const std::vector<double> expected = {1, 2, 3, 4, 5};
  const std::vector<double> observed = {1, 1, 1, 1, 1};
  const MergedCells four = MergeSmallExpectedCells(expected, observed);
  EXPECT_EQ(four.expected, (std::vector<double>{3, 3, 4, 5}));
  const std::vector<double> inner = {50, 40, 4, 30, 3, 60, 70};
  const MergedCells merged = MergeSmallExpectedCells(inner, std::vector<double>(7, 1));
  EXPECT_EQ(merged.expected, (std::vector<double>{50, 40, 4, 33, 60, 70}));
  EXPECT_EQ(merged.firstCell, (std::vector<int>{0, 1, 2, 3, 5, 6}));
}

TEST(GoodnessOfFit, EqualFrequenciesWithAdjustedResiduals) {
  const ReferenceCsv reference("equal_frequencies.csv", "stats");
  const std::vector<double> counts = Numbers(reference.Text(0, "frequencies"));
  const std::vector<int> frequencies(counts.begin(), counts.end());
  const std::vector<double> residuals = Numbers(reference.Text(0, "residuals"));
  const std::vector<double> residualP = Numbers(reference.Text(0, "residual_p"));
  const std::vector<double> adjusted = Numbers(reference.Text(0, "adjusted"));
  const EqualFrequencyTest test = EqualFrequencies(frequencies);
  EXPECT_DOUBLE_EQ(test.expected, reference.Number(0, "expected"));
  ASSERT_EQ(test.residuals.size(), residuals.size());
  for (size_t g = 0; g < residuals.size(); ++g) {
    EXPECT_NEAR(test.residuals[g], residuals[g], 1e-12) << g;
    EXPECT_EQ(test.residualMarkers[g], SignificanceMarker(residualP[g])) << g;
    EXPECT_NEAR(test.adjustedP[g], adjusted[g], 1e-4) << g;
  }
  EXPECT_NEAR(test.chi, reference.Number(0, "chi"), 1e-12);
  EXPECT_EQ(test.df, reference.Number(0, "df"));
  EXPECT_NEAR(test.p.p, reference.Number(0, "p"), 2.2e-5);
  EXPECT_EQ(test.p.marker, "*");
}

}  // namespace
}  // namespace tarvika
