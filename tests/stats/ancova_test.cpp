// The analysis of covariance against R (reference/one_way.R: the regressions without and
// with the groups, lm's adjusted means, cor.test, residual correlations).

#include "stats/ancova.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/reference_csv.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

TEST(Ancova, AgreesWithRegressionsInR) {
  const ReferenceCsv reference("ancova.csv", "stats");
  ASSERT_EQ(reference.size(), 2u);
  for (size_t i = 0; i < reference.size(); ++i) {
    SCOPED_TRACE(reference.Text(i, "set"));
    auto want = [&](const char* column) { return reference.Number(i, column); };
    const std::vector<double> y = Numbers(reference.Text(i, "values"));
    const std::vector<double> c = Numbers(reference.Text(i, "covariate"));
    const std::vector<double> g = Numbers(reference.Text(i, "groups"));
    const int k = static_cast<int>(*std::max_element(g.begin(), g.end()));
    std::vector<AncovaGroupData> data(k);
    for (size_t j = 0; j < y.size(); ++j) {
      data[static_cast<int>(g[j]) - 1].x.push_back(y[j]);
      data[static_cast<int>(g[j]) - 1].c.push_back(c[j]);
    }
    const AncovaResult a = Ancova(data);
    ASSERT_TRUE(a.done);
    EXPECT_NEAR(a.F, want("F"), 1e-8);
    EXPECT_EQ(a.df1, want("df1"));
    EXPECT_EQ(a.df2, want("df2"));
    EXPECT_NEAR(a.p.p, want("p"), 5e-5);
    EXPECT_NEAR(a.partialEtaSquared, want("partial_eta2"), 1e-9);
    EXPECT_NEAR(a.r, want("r"), 1e-9);
    EXPECT_NEAR(a.rP.p, want("r_p"), 5e-5);
    EXPECT_NEAR(a.chiSquare, want("chi"), 1e-8);
    EXPECT_NEAR(a.chiSquareP.p, want("chi_p"), 5e-5);
    const std::vector<double> adjusted = Numbers(reference.Text(i, "adjusted"));
    const std::vector<double> r = Numbers(reference.Text(i, "within_r"));
    const std::vector<double> p = Numbers(reference.Text(i, "within_p"));
    for (int j = 0; j < k; ++j) {
      EXPECT_NEAR(a.groups[j].adjustedMean, adjusted[j], 1e-9);
      EXPECT_NEAR(a.groups[j].r, r[j], 1e-9);
      EXPECT_NEAR(a.groups[j].rP.p, p[j], 5e-5);
    }
    if (k == 2) {
      EXPECT_NEAR(a.cohenD, want("d"), 1e-9);
    }
    std::vector<double> codes(g.begin(), g.end());
    const double partial = PartialCorrelation(PearsonR(y, c), PearsonR(y, codes), PearsonR(c, codes));
    EXPECT_NEAR(partial, want("partial_r"), 1e-9);
  }
}

TEST(Ancova, GroupsOfFewerThanThreeCasesAreLeftOut) {
  std::vector<AncovaGroupData> data = {
      {{1, 2, 4}, {1, 3, 4}}, {{5, 6}, {2, 2}}, {{2, 3, 5, 8}, {1, 2, 2, 5}}};
  const AncovaResult a = Ancova(data);
  ASSERT_TRUE(a.done);
  EXPECT_EQ(a.used, (std::vector<int>{0, 2}));
  EXPECT_EQ(a.total, 7);
  EXPECT_EQ(a.df2, 4);
  data.pop_back();
  EXPECT_FALSE(Ancova(data).done);
}

}  // namespace
}  // namespace tarvika
