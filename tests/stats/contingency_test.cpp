// The two-way table statistics against R (reference/contingency.R): chisq.test, Kendall's
// tau-b of the expanded cases, and the measures' definitions written out there.

#include "stats/contingency.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "support/reference_csv.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

Contingency TableOf(const ReferenceCsv& reference, size_t row) {
  const std::vector<double> cells = Numbers(reference.Text(row, "cells"));
  const int rows = static_cast<int>(reference.Number(row, "rows"));
  const int columns = static_cast<int>(reference.Number(row, "columns"));
  std::vector<std::vector<double>> f(rows, std::vector<double>(columns));
  for (int i = 0; i < rows; ++i) {
    for (int j = 0; j < columns; ++j) f[i][j] = cells[i * columns + j];
  }
  return MakeContingency(f);
}

void ExpectOptional(const ReferenceCsv& reference, size_t row, const char* column, double value) {
  if (reference.Text(row, column) == "NA") return;
  EXPECT_NEAR(value, reference.Number(row, column), 1e-9) << reference.Text(row, "table") << " " << column;
}

TEST(Contingency, EveryMeasureAgreesWithR) {
  const ReferenceCsv reference("contingency.csv", "stats");
  ASSERT_EQ(reference.size(), 4u);
  for (size_t row = 0; row < reference.size(); ++row) {
    SCOPED_TRACE(reference.Text(row, "table"));
    const Contingency t = TableOf(reference, row);
    ASSERT_TRUE(IsComplete(t));
    auto near = [&](double value, const char* column) {
      EXPECT_NEAR(value, reference.Number(row, column), 1e-9) << column;
    };
    const IndependenceTest test = PearsonIndependence(t);
    near(test.chiSquare, "chi");
    EXPECT_EQ(test.df, reference.Number(row, "df"));
    near(test.minimumExpected, "e_min");
    // The program's chi-square tail is good to the four decimals the report prints.
    EXPECT_NEAR(test.p.p, reference.Number(row, "p"), 5e-5);
    const NominalAssociation nominal = NominalMeasures(t, test.chiSquare);
    near(nominal.cramerV, "cramer_v");
    near(nominal.contingencyCoefficient, "contingency");

    const Monotonicity m = MonotonicityMeasures(t);
    near(m.gamma, "gamma");
    near(m.tauB, "tau_b");
    near(m.somersCR, "somers_cr");
    near(m.somersRC, "somers_rc");
    near(m.z, "z");
    EXPECT_NEAR(m.p.p, reference.Number(row, "z_p"), 5e-5);

    const PredictiveAssociation g = PredictiveMeasures(t);
    near(g.lambdaCR, "lambda_cr");
    near(g.tauCR, "tau_cr");
    near(g.lambdaRC, "lambda_rc");
    near(g.tauRC, "tau_rc");
    near(g.lambdaStarCR, "lambda_star_cr");
    near(g.tauStarCR, "tau_star_cr");
    near(g.lambdaStarRC, "lambda_star_rc");
    near(g.tauStarRC, "tau_star_rc");
    const Uncertainty uc = UncertaintyCoefficients(t);
    near(uc.columnFromRow, "uc_cr");
    near(uc.rowFromColumn, "uc_rc");

    if (t.R() == 2 && t.C() == 2) {
      const TwoByTwoMeasures two = TwoByTwo(t);
      ExpectOptional(reference, row, "yule_q", two.yuleQ);
      ExpectOptional(reference, row, "yule_y", two.yuleY);
      ExpectOptional(reference, row, "odds", two.oddsRatio);
      ExpectOptional(reference, row, "jaccard", two.jaccard);
      EXPECT_TRUE(two.oddsCorrected);  // the 2 by 2 reference has a zero cell
    }
    if (t.R() == t.C()) {
      const Kappa k = CohenKappa(t);
      ExpectOptional(reference, row, "kappa", k.kappa);
      ExpectOptional(reference, row, "kappa_se0", k.se0);
      EXPECT_NEAR(k.p.p, reference.Number(row, "kappa_p"), 5e-5);
    }
  }
}

TEST(Contingency, KappaOfTwoRatersByHand) {
  // 70 cases rated twice: 51 agree; the margins 28, 25, 17 on both sides give
  // p_e = (28² + 25² + 17²)/70² = 1698/4900, so kappa = (51/70 - 1698/4900)/(1 - 1698/4900)
  // = 1872/3202.
  const Contingency t = MakeContingency({{22, 4, 2}, {5, 17, 3}, {1, 4, 12}});
  const Kappa k = CohenKappa(t);
  EXPECT_NEAR(k.observed, 51.0 / 70, 1e-12);
  EXPECT_NEAR(k.chance, 1698.0 / 4900, 1e-12);
  EXPECT_NEAR(k.kappa, 1872.0 / 3202, 1e-12);
  // Perfect agreement is 1 whatever the margins.
  EXPECT_DOUBLE_EQ(CohenKappa(MakeContingency({{5, 0}, {0, 9}})).kappa, 1);
}

TEST(Contingency, PairsOfRowsAndEdgeCases) {
  // The 2 by C comparison of two rows is the test of independence of that subtable; a
  // column empty in both rows adds nothing.
  const Contingency t = MakeContingency({{10, 4, 0, 6}, {3, 9, 0, 8}, {5, 5, 7, 5}});
  const Contingency sub = MakeContingency({{10, 4, 6}, {3, 9, 8}});
  EXPECT_NEAR(RowPairChiSquare(t, 0, 1), PearsonIndependence(sub).chiSquare, 1e-12);
  EXPECT_NEAR(RowPairChiSquare(Transposed(t), 0, 1),
              PearsonIndependence(MakeContingency({{10, 3, 5}, {4, 9, 5}})).chiSquare, 1e-12);
  EXPECT_FALSE(IsComplete(MakeContingency({{1, 0}, {2, 0}})));
  // Every pair tied on one side: no z, and the measures' zero denominators are NaN.
  const Monotonicity flat = MonotonicityMeasures(MakeContingency({{3, 4}}));
  EXPECT_TRUE(std::isnan(flat.z));
  EXPECT_TRUE(std::isnan(flat.gamma));
  EXPECT_EQ(flat.p.p, 1);
  EXPECT_NEAR(JaccardCoefficient(3, 1, 2), 0.5, 1e-15);
  EXPECT_TRUE(std::isnan(JaccardCoefficient(0, 0, 0)));
}

}  // namespace
}  // namespace tarvika
