// The goodness-of-fit tests against R (reference/one_sample.R). The normal distribution
// function is a polynomial good to about 1e-5, which bounds the agreement.

#include "stats/goodness_of_fit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "support/reference_csv.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

TEST(GoodnessOfFit, KolmogorovDistanceFromTheNormal) {
  const ReferenceCsv reference("kolmogorov_normality.csv", "stats");
  std::vector<double> x = Numbers(reference.Text(0, "values"));
  MomentAccumulator m;
  for (double v : x) m.Add(v);
  std::sort(x.begin(), x.end());
  const std::vector<std::int32_t> once(x.size(), 1);
  const KolmogorovTest test = KolmogorovNormality(x, once, m);
  EXPECT_NEAR(test.d, reference.Number(0, "d"), 2e-5);
  EXPECT_NEAR(test.p.p, reference.Number(0, "p"), 1e-4);
  EXPECT_EQ(test.p.marker, "");
}

TEST(GoodnessOfFit, ChiSquareAgainstTheNormal) {
  const ReferenceCsv reference("chi_square_normality.csv", "stats");
  const std::vector<double> values = Numbers(reference.Text(0, "values"));
  const std::vector<double> counts = Numbers(reference.Text(0, "frequencies"));
  const std::vector<std::int32_t> frequencies(counts.begin(), counts.end());
  MomentAccumulator m;
  for (size_t e = 0; e < values.size(); ++e) {
    for (int k = 0; k < frequencies[e]; ++k) m.Add(values[e]);
  }
  const std::vector<double> expected = ExpectedNormalCounts(values, m);
  EXPECT_NEAR(*std::min_element(expected.begin(), expected.end()), reference.Number(0, "smallest_expected"),
              1e-2);
  const ChiSquareNormalityTest test = ChiSquareNormality(values, frequencies, m);
  EXPECT_EQ(test.cells, 5);
  EXPECT_EQ(test.smallExpected, 0);
  EXPECT_FALSE(test.ManySmallExpected());
  EXPECT_EQ(test.df, reference.Number(0, "df"));
  EXPECT_NEAR(test.chi, reference.Number(0, "chi"), 1e-3);
  EXPECT_NEAR(test.p.p, reference.Number(0, "p"), 1e-4);
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
