// The rank tests of stochastic equality against R (reference/stochastic_equality.R):
// kruskal.test, wilcox.test's normal approximation, the exact null by enumeration, and
// Brunner-Munzel and Fligner-Policello by their published formulas.

#include "stats/stochastic_equality.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/reference_csv.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

std::vector<std::vector<double>> Split(const std::vector<double>& y, const std::vector<double>& g) {
  std::vector<std::vector<double>> groups(static_cast<int>(*std::max_element(g.begin(), g.end())));
  for (std::size_t i = 0; i < y.size(); ++i) groups[static_cast<int>(g[i]) - 1].push_back(y[i]);
  return groups;
}

TEST(StochasticEquality, RankTestsAgreeWithR) {
  const ReferenceCsv reference("stochastic_equality.csv", "stats");
  ASSERT_EQ(reference.size(), 4u);
  for (std::size_t i = 0; i < reference.size(); ++i) {
    SCOPED_TRACE(reference.Text(i, "set"));
    auto want = [&](const char* column) { return reference.Number(i, column); };
    const auto values = Split(Numbers(reference.Text(i, "values")), Numbers(reference.Text(i, "groups")));
    const RankedGroups ranked = RankGroups(values);
    const KruskalWallisResult kw = KruskalWallis(ranked);
    EXPECT_NEAR(kw.H, want("kw_H"), 1e-9);
    EXPECT_NEAR(kw.p.p, want("kw_p"), 5e-5);
    const KulleResult proportional = KulleProportional(ranked);
    const KulleResult equal = KulleEqual(ranked);
    const Dominance dominance = StochasticDominance(values, ranked);
    for (std::size_t j = 0; j < values.size(); ++j) {
      EXPECT_NEAR(proportional.effects[j], dominance.weighted[j], 1e-12);
      EXPECT_NEAR(equal.effects[j], dominance.unweighted[j], 1e-12);
    }
    if (want("k") != 2) continue;

    // With two groups both of Kulle's statistics reduce to the square of Brunner-Munzel's,
    // and f to 1.
    EXPECT_NEAR(proportional.F, want("bm") * want("bm"), 1e-9);
    EXPECT_NEAR(equal.F, want("bm") * want("bm"), 1e-9);
    EXPECT_NEAR(equal.f, 1, 1e-12);

    const TwoGroupRanks t = CompareTwoGroupRanks(values, ranked);
    EXPECT_NEAR(t.rankSum1, want("rank_sum1"), 1e-9);
    EXPECT_NEAR(t.aEstimate, want("A"), 1e-12);
    EXPECT_NEAR(t.pGreater, want("greater"), 1e-12);
    EXPECT_NEAR(t.pLess, want("less"), 1e-12);
    ASSERT_TRUE(t.bmDefined);
    EXPECT_NEAR(t.bm.z, want("bm"), 1e-9);
    EXPECT_NEAR(t.bm.df, want("bm_df"), 1e-9);
    EXPECT_NEAR(t.bm.p.p, want("bm_p"), 5e-5);
    ASSERT_TRUE(t.fpDefined);
    EXPECT_NEAR(t.fp, want("fp"), 1e-9);
    const MannWhitneyNormal normal = MannWhitneyNormalTest(ranked);
    EXPECT_NEAR(normal.p.p, want("mw_p"), 5e-5);
    EXPECT_LT(normal.z, 0);
    if (reference.Text(i, "exact_p") != "NA") {
      EXPECT_NEAR(MannWhitneyExactP(ranked).p, want("exact_p"), 1e-12);
    }
  }
}

TEST(StochasticEquality, CornersStayDefinedOrSayUndefined) {
  {
    SCOPED_TRACE("every value tied");
    const std::vector<std::vector<double>> values = {{4, 4, 4}, {4, 4, 4, 4}};
    const RankedGroups ranked = RankGroups(values);
    EXPECT_DOUBLE_EQ(ranked.tieCorrection, 1);
    EXPECT_EQ(KruskalWallis(ranked).H, 0);
    EXPECT_EQ(MannWhitneyExactP(ranked).p, 1);
    const TwoGroupRanks t = CompareTwoGroupRanks(values, ranked);
    EXPECT_FALSE(t.fpDefined);
    EXPECT_FALSE(t.bmDefined);
    EXPECT_DOUBLE_EQ(t.aEstimate, 0.5);
    EXPECT_EQ(ranked.crossTies, 12);
  }
  {
    SCOPED_TRACE("the second group entirely above the first");
    const std::vector<std::vector<double>> values = {{1, 2, 3, 4}, {5, 6, 7, 8, 9}};
    const RankedGroups ranked = RankGroups(values);
    // Only the most extreme subset of 4 among 9 ranks, on either side: 2/126.
    EXPECT_NEAR(MannWhitneyExactP(ranked).p, 2.0 / 126, 1e-15);
    const TwoGroupRanks t = CompareTwoGroupRanks(values, ranked);
    EXPECT_EQ(t.aEstimate, 0);
    EXPECT_EQ(t.pLess, 1);
    EXPECT_FALSE(t.fpDefined);
    EXPECT_FALSE(t.bmDefined);
    EXPECT_EQ(t.aLow, 0);
    EXPECT_EQ(t.aHigh, 0);
    EXPECT_EQ(t.somersD2, 1);
  }
  {
    SCOPED_TRACE("groups of two");
    const std::vector<std::vector<double>> values = {{1, 3}, {2, 4}};
    const RankedGroups ranked = RankGroups(values);
    // Of the six pairs of ranks only {3, 4} and {2, 4} reach the sum 6 of the second group:
    // p = 2 * 2/6.
    EXPECT_NEAR(MannWhitneyExactP(ranked).p, 2.0 / 3, 1e-15);
    EXPECT_NEAR(CompareTwoGroupRanks(values, ranked).aEstimate, 0.25, 1e-15);
  }
}

TEST(StochasticEquality, ExactTestSizeRules) {
  EXPECT_TRUE(MannWhitneyExactApplies(2, 98));
  EXPECT_FALSE(MannWhitneyExactApplies(2, 99));
  EXPECT_TRUE(MannWhitneyExactApplies(4, 46));
  EXPECT_FALSE(MannWhitneyExactApplies(4, 47));
  EXPECT_TRUE(MannWhitneyExactApplies(9, 25));
  EXPECT_FALSE(MannWhitneyExactApplies(9, 26));
  EXPECT_TRUE(MannWhitneyExactApplies(15, 15));
  EXPECT_FALSE(MannWhitneyExactApplies(10, 25));
  EXPECT_FALSE(MannWhitneyNormalApplies(4, 4));
  EXPECT_TRUE(MannWhitneyNormalApplies(2, 16));
  EXPECT_TRUE(MannWhitneyNormalApplies(7, 7));
  EXPECT_FALSE(MannWhitneyNormalApplies(6, 15));
}

TEST(StochasticEquality, DominanceIsTheShareOfPairsWon) {
  // Group 1 {1, 2}, group 2 {2, 3}, group 3 {5, 6}, counted by hand: against group 2,
  // group 1 wins no pair and ties one of four (0.125); against group 3 it wins none; against
  // itself 0.5.
  const std::vector<std::vector<double>> values = {{1, 2}, {2, 3}, {5, 6}};
  const RankedGroups ranked = RankGroups(values);
  const Dominance d = StochasticDominance(values, ranked);
  EXPECT_NEAR(d.unweighted[0], (0.5 + 0.125 + 0) / 3, 1e-15);
  EXPECT_NEAR(d.unweighted[2], (1 + 1 + 0.5) / 3, 1e-15);
  // Against the pooled six: (0 + 0.5 + 0 + 0 + 0 + 0 + 2 * 0.5 own half + 0.5 tie)/12 counted
  // over its 2 x 6 pairs, 1.25/6.
  EXPECT_NEAR(d.weighted[0], 1.25 / 6, 1e-15);
}

}  // namespace
}  // namespace tarvika
