// The weighted sum of the variables of a case against R (reference/weighted_sum.R):
// rowSums(sweep(m, 2, w, "*")) with missing cells and a declared missing code.

#include "transform/weighted_sum.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/memory_workspace.h"
#include "support/reference_csv.h"

namespace tarvika {
namespace {

using testing::MemoryWorkspace;

TEST(WeightedSum, AgreesWithRAndLeavesIncompleteCasesEmpty) {
  const test::ReferenceCsv ref("weighted_sum.csv", "transform");
  std::vector<std::vector<std::string>> rows;
  for (std::size_t r = 0; r < ref.size(); ++r)
    rows.push_back({ref.Text(r, "a"), ref.Text(r, "b"), ref.Text(r, "c")});
  MemoryWorkspace m({{"a"}, {"b"}, {"c", "", "", "none", "99"}}, rows);
  ASSERT_TRUE(ApplyWeightedSum(m.ws, {1, 2, 3}, {2, -1.5, 0.25}, {"W", "", Placement::End}));
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 4), "wsum(2*a-1.5*b+0.25*c)");
  EXPECT_EQ(m.ws.vars.GetCell(kType, 4), "num=0_0;");
  int empty = 0;
  for (std::size_t r = 0; r < ref.size(); ++r) {
    const std::string cell(m.ws.data.GetCell(4, static_cast<int>(r) + 1));
    const std::string& expected = ref.Text(r, "wsum");
    if (expected.empty()) {
      EXPECT_EQ(cell, "") << "row " << r + 1;
      ++empty;
      continue;
    }
    ASSERT_FALSE(cell.empty()) << "row " << r + 1;
    const double want = std::stod(expected);
    EXPECT_NEAR(std::stod(cell), want, 1e-12 * std::max(1.0, std::fabs(want))) << "row " << r + 1;
  }
  EXPECT_GT(empty, 5);  // the data do have incomplete cases
}

TEST(WeightedSum, RefusesWithoutChangeAndPlacesLikeTheCaseStatistics) {
  MemoryWorkspace m({{"a"}, {"b"}, {"c"}}, {{"1", "2,5", "3"}}, Language::Hungarian, ',');
  EXPECT_FALSE(ApplyWeightedSum(m.ws, {1, 2}, {1}, {"w", "", Placement::End}));
  EXPECT_FALSE(ApplyWeightedSum(m.ws, {1, 2}, {1, 2}, {"", "", Placement::Same}));
  EXPECT_FALSE(ApplyWeightedSum(m.ws, {1, 2}, {1, 2}, {"B", "", Placement::End}));  // a name in use
  EXPECT_EQ(m.ws.NumberOfVariables(), 3);
  // After the rightmost selected variable; the comma separator in cells and long name.
  ASSERT_TRUE(ApplyWeightedSum(m.ws, {2, 1}, {0.5, -2}, {"w", "", Placement::After}));
  EXPECT_EQ(m.ws.data.Row(0), (std::vector<std::string>{"", "a", "b", "w", "c"}));
  EXPECT_EQ(m.ws.data.GetCell(3, 1), "-0,75");
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 3), "Súlyozott összeg(0,5*b-2*a)");
}

}  // namespace
}  // namespace tarvika
