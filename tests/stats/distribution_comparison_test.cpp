// The choice of cut points and the measures at a cut; the chi-square and Fisher p of the
// reports are checked against R in tests/groups/data/oneway_ranks_check.R.

#include "stats/distribution_comparison.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarvika {
namespace {

std::vector<double> Cells(std::initializer_list<std::pair<int, double>> occupied) {
  std::vector<double> counts(101, 0);
  for (const auto& [cell, count] : occupied) counts[cell] = count;
  return counts;
}

TEST(DistributionComparison, CutpointsStayInsideTheMiddleRegion) {
  // 10 cases in each of the cells 0, 10, ..., 100: the first cut needs more than 3 cases
  // below it (cell 0 already has 10), the last fewer than 3 above less the total.
  std::vector<double> even(101, 0);
  for (int c = 0; c <= 100; c += 10) even[c] = 10;
  EXPECT_EQ(SelectCutpoints(even, 0.025, 20), (std::vector<int>{0, 10, 20, 30, 40, 50, 60, 70, 80, 90}));
  // Fewer allowed: first and last, then the cells nearest the middles of the widest gaps.
  EXPECT_EQ(SelectCutpoints(even, 0.025, 3), (std::vector<int>{0, 40, 90}));
  EXPECT_EQ(SelectCutpoints(even, 0.025, 4), (std::vector<int>{0, 40, 60, 90}));
  // A wide tail: nothing before cell 20 holds 25% of the cases.
  EXPECT_EQ(SelectCutpoints(even, 0.25, 20), (std::vector<int>{20, 30, 40, 50, 60, 70}));
  // Two occupied cells: the first beyond the last gives one cut, the one nearer the median.
  EXPECT_EQ(SelectCutpoints(Cells({{5, 4}, {60, 10}}), 0.025, 10), (std::vector<int>{5}));
  EXPECT_EQ(SelectCutpoints(Cells({{5, 10}, {60, 4}}), 0.025, 10), (std::vector<int>{5}));
  EXPECT_TRUE(SelectCutpoints(std::vector<double>(101, 0), 0.025, 10).empty());
}

TEST(DistributionComparison, MarksSitAboveTheRoundLevels) {
  EXPECT_EQ(ChiSquareCaseMark(0.00144), "***");
  EXPECT_EQ(ChiSquareCaseMark(0.0015), "**");
  EXPECT_EQ(ChiSquareCaseMark(0.01044), "**");
  EXPECT_EQ(ChiSquareCaseMark(0.0505), "+");
  EXPECT_EQ(ChiSquareCaseMark(0.10044), "+");
  EXPECT_EQ(ChiSquareCaseMark(0.1005), "");
}

TEST(DistributionComparison, MeasuresOfTheTableAtACut) {
  // 30 of 40 and 10 of 40 at most the cut: counted by hand.
  const CutComparison x = CompareAtCut(30, 10, 40, 40);
  ASSERT_TRUE(x.defined);
  EXPECT_DOUBLE_EQ(x.correctPercent, 75);
  EXPECT_DOUBLE_EQ(x.phi, 0.5);
  EXPECT_DOUBLE_EQ(x.odds, 1.0 / 9);
  EXPECT_FALSE(x.fisher);  // the smallest expected count is 40 * 40/80 = 20
  EXPECT_DOUBLE_EQ(x.chiSquare, 20);
  EXPECT_NEAR(x.p.p, 7.744e-6, 1e-8);  // 2 pnorm(-sqrt(20))
  // Everything at most the cut: no table.
  EXPECT_FALSE(CompareAtCut(8, 9, 8, 9).defined);
  // Small counts go to Fisher's test: fisher.test(matrix(c(1, 7, 6, 2), 2)) p = 0.04056.
  const CutComparison f = CompareAtCut(1, 6, 8, 8);
  EXPECT_TRUE(f.fisher);
  EXPECT_NEAR(f.p.p, 0.04056, 5e-5);
}

TEST(DistributionComparison, BinningIntoHundredthsOfTheRange) {
  const CellTable t = BinIntoCells({{0, 0.004, 0.006, 1}, {0.5}});
  ASSERT_EQ(t.counts.size(), 2u);
  EXPECT_EQ(t.counts[0][0], 2);  // 0.004 rounds to cell 0, 0.006 to cell 1
  EXPECT_EQ(t.counts[0][1], 1);
  EXPECT_EQ(t.counts[0][100], 1);
  EXPECT_EQ(t.counts[1][50], 1);
  EXPECT_TRUE(BinIntoCells({{3, 3}, {3}}).counts.empty());
}

}  // namespace
}  // namespace tarvika
