// The measures of two variables against R (reference/correlation.R): cor.test for r, its
// limits and Kendall's tau-b with z, lm for both lines, the sign matrix for tau and the
// shares of concordant pairs, Wilcox's definitions for the percentage bend and winsorized r,
// and the exact test of cor.test for the critical values of tau.

#include "stats/correlation.h"
#include "stats/correlation_matrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "support/reference_csv.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

TEST(Correlation, EveryMeasureAgreesWithR) {
  const ReferenceCsv reference("correlation.csv", "stats");
  ASSERT_EQ(reference.size(), 5u);
  for (size_t row = 0; row < reference.size(); ++row) {
    SCOPED_TRACE(reference.Text(row, "name"));
    auto expect = [&](double value, const char* column, double tolerance = 1e-9) {
      EXPECT_NEAR(value, reference.Number(row, column), tolerance) << column;
    };
    const std::vector<double> x = Numbers(reference.Text(row, "x")), y = Numbers(reference.Text(row, "y"));
    const int n = static_cast<int>(x.size());
    const PairMoments m = MomentsOf(x, y);
    expect(m.meanX, "mean_x");
    expect(m.meanY, "mean_y");
    expect(m.sdX, "sd_x");
    expect(m.sdY, "sd_y");
    expect(m.r, "r");
    const Limits limits = FisherLimits(m.r, n, 1.959963984540054);
    expect(limits.lower, "r_lower95");
    expect(limits.upper, "r_upper95");

    const BivariateRegression line = RegressionOf(m);
    expect(line.yOnX.intercept, "a_yx");
    expect(line.yOnX.slope, "b_yx");
    expect(line.xOnY.intercept, "a_xy");
    expect(line.xOnY.slope, "b_xy");
    expect(line.msErrY, "mserr_y");
    expect(line.msErrX, "mserr_x");

    const KendallMeasures k = KendallOf(x, y);
    expect(k.tauB, "tau_b");
    expect(k.zTauB, "z_tau_b");
    expect(k.tau, "tau");
    expect(k.pPos, "p_pos");
    expect(k.pNeg, "p_neg");

    const std::optional<double> rpb = PercentageBendCorrelation(x, y);
    ASSERT_TRUE(rpb.has_value());
    expect(*rpb, "rpb");
    const std::optional<double> rw = WinsorizedCorrelation(x, y, static_cast<int>(reference.Number(row, "g")));
    ASSERT_TRUE(rw.has_value());
    expect(*rw, "rw");
  }
}

// The counts of the O(n log n) walk against every pair counted, on data with runs of ties
// in x, in y and in both at once, and in both orders of the variables.
TEST(Correlation, KendallCountsEqualThoseOfAllPairs) {
  std::vector<double> x, y;
  unsigned state = 7;
  auto next = [&state](int range) {
    state = state * 1103515245u + 12345u;
    return static_cast<double>((state >> 16) % range);
  };
  for (int i = 0; i < 300; ++i) {
    x.push_back(next(12));
    y.push_back(i % 50 == 0 ? 3 : next(9) + 0.5 * x.back());
  }
  double c = 0, d = 0;
  for (size_t i = 0; i < x.size(); ++i) {
    for (size_t j = 0; j < x.size(); ++j) {
      const double s = (x[i] - x[j]) * (y[i] - y[j]);
      c += s > 0;
      d += s < 0;
    }
  }
  for (const auto& [a, b] : {std::pair{x, y}, std::pair{y, x}}) {
    const KendallMeasures k = KendallOf(a, b);
    EXPECT_EQ(k.concordant, c);
    EXPECT_EQ(k.discordant, d);
    EXPECT_GT(k.seTau, 0);
  }
}

TEST(Correlation, TauCriticalValuesAreThoseOfTheExactTest) {
  const ReferenceCsv reference("tau_critical.csv", "stats");
  ASSERT_EQ(reference.size(), static_cast<size_t>(kTauTableLastN - kTauTableFirstN + 1));
  for (size_t row = 0; row < reference.size(); ++row) {
    const int n = static_cast<int>(reference.Number(row, "n"));
    EXPECT_NEAR(TauCritical(n, 0), reference.Number(row, "tau10"), 1e-12) << n;
    EXPECT_NEAR(TauCritical(n, 1), reference.Number(row, "tau05"), 1e-12) << n;
    EXPECT_NEAR(TauCritical(n, 2), reference.Number(row, "tau01"), 1e-12) << n;
  }
}

// Corners: a constant variable, two and three cases, all ties, a perfect line.
TEST(Correlation, CornersGiveNoMeasureOrAnExactOne) {
  const std::vector<double> constant = {4, 4, 4, 4, 4}, rising = {1, 2, 3, 4, 5};
  const PairMoments flat = MomentsOf(constant, rising);
  EXPECT_FALSE(flat.VariesX());
  EXPECT_TRUE(flat.VariesY());
  EXPECT_EQ(flat.r, 0);
  EXPECT_FALSE(PercentageBendCorrelation(constant, rising).has_value());
  const KendallMeasures tied = KendallOf(constant, rising);
  EXPECT_EQ(tied.tau, 0);
  EXPECT_EQ(tied.tauB, 0);
  EXPECT_EQ(tied.pPos + tied.pNeg, 0);

  const std::vector<double> two = {1, 2}, twoBack = {5, 3};
  const KendallMeasures k2 = KendallOf(two, twoBack);
  EXPECT_EQ(k2.tau, -1);
  EXPECT_DOUBLE_EQ(k2.tauB, -1);
  EXPECT_EQ(RegressionOf(MomentsOf(two, twoBack)).msErrX, 0);

  const std::vector<double> line = {2, 4, 6, 8, 10};
  const PairMoments perfect = MomentsOf(rising, line);
  EXPECT_DOUBLE_EQ(perfect.r, 1);
  const Limits limits = FisherLimits(perfect.r, 5, 1.96);
  EXPECT_DOUBLE_EQ(limits.lower, 1);
  EXPECT_DOUBLE_EQ(limits.upper, 1);
  EXPECT_DOUBLE_EQ(RegressionOf(perfect).yOnX.slope, 2);
  EXPECT_EQ(KendallOf(rising, line).tau, 1);
  EXPECT_EQ(FisherLimits(0.5, 3, 1.96).lower, -1);

  // Winsorizing 2 of 5 leaves one value: no correlation.
  EXPECT_FALSE(WinsorizedCorrelation(rising, line, 2).has_value());
  EXPECT_DOUBLE_EQ(*WinsorizedCorrelation(rising, line, 1), 1);
}

}  // namespace
}  // namespace tarvika

namespace tarvika {
namespace {

// The matrix functions against R (reference/correlation_matrix.R): Spearman of data with
// ties, partial correlations with one and two controlled variables, the determinant.
TEST(CorrelationMatrix, SpearmanPartialAndDeterminantAgreeWithR) {
  const test::ReferenceCsv reference("correlation_matrix.csv", "stats");
  ASSERT_EQ(reference.size(), 1u);
  std::vector<std::vector<double>> columns;
  for (const char* name : {"a", "b", "c", "d"}) columns.push_back(test::Numbers(reference.Text(0, name)));
  const Matrix spearman = CoefficientMatrix(CorrelationKind::Spearman, columns);
  EXPECT_NEAR(spearman[0][3], reference.Number(0, "spearman_ad"), 1e-9);
  EXPECT_NEAR(spearman[2][1], reference.Number(0, "spearman_bc"), 1e-9);
  const Matrix pearson = CoefficientMatrix(CorrelationKind::Pearson, columns);
  const std::vector<int> cd = {2, 3}, b = {1};
  EXPECT_NEAR(PartialCoefficient(pearson, 0, 1, cd), reference.Number(0, "partial_ab_cd"), 1e-9);
  EXPECT_NEAR(PartialCoefficient(pearson, 0, 2, b), reference.Number(0, "partial_ac_b"), 1e-9);
  EXPECT_NEAR(Determinant(pearson), reference.Number(0, "det"), 1e-9);
  // A column that is a line of another makes the matrix singular: no partial coefficient.
  columns.push_back(columns[0]);
  for (double& v : columns.back()) v = 2 * v + 1;
  const Matrix singular = CoefficientMatrix(CorrelationKind::Pearson, columns);
  EXPECT_NEAR(Determinant(singular), 0, 1e-12);
  const std::vector<int> line = {4};
  EXPECT_TRUE(std::isnan(PartialCoefficient(singular, 0, 1, line)));
}

}  // namespace
}  // namespace tarvika

namespace tarvika {
namespace {

// Each reported local line is the line of its window's cases computed directly; a straight
// line is fitted exactly by both regressions, a parabola far better by the smoothed one.
TEST(LocalRegression, WindowsAreThoseOfTheSortedCases) {
  std::vector<double> x, y;
  for (int i = 0; i < 60; ++i) {
    x.push_back((i * 37) % 60 * 0.5);  // unsorted, no ties
    y.push_back(x.back() * x.back() + (i % 7));
  }
  const LocalRegression local = LocalRegressionOf(x, y, 12, 5);
  ASSERT_EQ(local.lines.size(), 5u);
  for (const LocalLine& l : local.lines) {
    std::vector<double> wx, wy;
    for (size_t i = 0; i < x.size(); ++i) {
      if (x[i] >= l.left && x[i] <= l.right) {
        wx.push_back(x[i]);
        wy.push_back(y[i]);
      }
    }
    ASSERT_EQ(static_cast<int>(wx.size()), l.cases);
    const PairMoments m = MomentsOf(wx, wy);
    EXPECT_NEAR(l.r, m.r, 1e-9);
    EXPECT_NEAR(l.slope, RegressionOf(m).yOnX.slope, 1e-9);
    EXPECT_GE(l.x, l.left);
    EXPECT_LE(l.x, l.right);
  }
  EXPECT_GT(local.smoothedShare, local.linearShare + 0.01);

  std::vector<double> line;
  for (double v : x) line.push_back(3 - 2 * v);
  const LocalRegression straight = LocalRegressionOf(x, line, 12, 5);
  EXPECT_NEAR(straight.linearShare, 1, 1e-12);
  EXPECT_NEAR(straight.smoothedShare, 1, 1e-9);
}

}  // namespace
}  // namespace tarvika
