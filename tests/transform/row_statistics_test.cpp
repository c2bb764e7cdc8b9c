// The statistical functions over the variables of a case against R (reference/
// row_statistics.R): rowMeans and apply(sd, var, min, max, median) with missing cells, a
// declared missing code, a case with one valid value and a case with none.

#include <gtest/gtest.h>

#include <cmath>

#include "support/memory_workspace.h"
#include "support/reference_csv.h"
#include "transform/row_statistics.h"

namespace tarvika {
namespace {

using testing::Declared;
using testing::MemoryWorkspace;

TEST(RowStatistics, AgreeWithRWithMissingCellsAndCodes) {
  const test::ReferenceCsv ref("row_statistics.csv", "transform");
  const std::vector<std::string> names = {"v1", "v2", "v3", "v4", "v5"};
  std::vector<std::vector<std::string>> rows;
  for (std::size_t r = 0; r < ref.size(); ++r) {
    rows.emplace_back();
    for (const std::string& v : names) rows.back().push_back(ref.Text(r, v));
  }
  MemoryWorkspace m({{"v1"}, {"v2"}, {"v3", "", "", "none", "99"}, {"v4"}, {"v5"}}, rows);
  const std::vector<std::string> functions = {"mean", "sd", "variance", "min", "max", "median", "usable", "missing"};
  for (const std::string& f : functions) {
    ASSERT_TRUE(ApplyStatFunction(m.ws, *RowStatisticOf(f), {1, 2, 3, 4, 5}, {f, "", Placement::End})) << f;
    const int column = m.ws.NumberOfVariables();
    for (std::size_t r = 0; r < ref.size(); ++r) {
      const std::string cell(m.ws.data.GetCell(column, static_cast<int>(r) + 1));
      const std::string& expected = ref.Text(r, f);
      if (expected.empty()) {
        EXPECT_EQ(cell, "") << f << " row " << r + 1;
        continue;
      }
      ASSERT_FALSE(cell.empty()) << f << " row " << r + 1;
      const double want = std::stod(expected);
      EXPECT_NEAR(std::stod(cell), want, 1e-12 * std::max(1.0, std::fabs(want))) << f << " row " << r + 1;
    }
  }
}

// Sums of squares minus the squared sum lose every digit of this variance.
TEST(RowStatistics, VarianceOfValuesFarFromZero) {
  std::vector<double> values = {1000000.1, 1000000.2, 1000000.3, 1000000.4, 1000000.5};
  EXPECT_NEAR(*RowStatisticValue(RowStatistic::Variance, values, 0), 0.025, 1e-9);
  std::vector<double> one = {7};
  EXPECT_EQ(RowStatisticValue(RowStatistic::SD, one, 2), 0);
  EXPECT_EQ(RowStatisticValue(RowStatistic::Missing, one, 2), 2);
  EXPECT_FALSE(RowStatisticValue(RowStatistic::Median, {}, 3));
  EXPECT_EQ(RowStatisticValue(RowStatistic::Usable, {}, 3), 0);
}

TEST(RowStatistics, LongNamesInBothLanguagesAndPlacement) {
  MemoryWorkspace m({{"a"}, {"b"}, {"c"}}, {{"1", "2", "3"}});
  EXPECT_EQ(RowStatisticLongName(RowStatistic::Mean, {"a", "b"}, Language::English), "MEAN of variables: a, b");
  EXPECT_EQ(RowStatisticLongName(RowStatistic::Median, {"a", "b"}, Language::Hungarian), "Medián(a, b)");
  EXPECT_EQ(RowStatisticLongName(RowStatistic::Usable, {"a", "b"}, Language::English),
            "NUMBER of usable values of variables: a, b");
  EXPECT_EQ(RowStatisticLongName(RowStatistic::Missing, {"a", "b"}, Language::Hungarian),
            "a, b hiányzó értékeinek a száma");
  // Before the leftmost selected variable, after the rightmost one, whatever their order.
  ASSERT_TRUE(ApplyStatFunction(m.ws, RowStatistic::Maximum, {3, 2}, {"mx", "", Placement::Before}));
  ASSERT_TRUE(ApplyStatFunction(m.ws, RowStatistic::Minimum, {4, 1}, {"mn", "own text", Placement::After}));
  EXPECT_EQ(m.ws.data.Row(0), (std::vector<std::string>{"", "a", "mx", "b", "c", "mn"}));
  EXPECT_EQ(m.ws.data.Row(1), (std::vector<std::string>{"1", "1", "3", "2", "3", "1"}));
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 2), "MAXIMUM of variables: c, b");
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 5), "own text");
  EXPECT_EQ(m.ws.vars.GetCell(kIndex, 5), "5");
  // No variable, and a target that is a source, change nothing.
  EXPECT_FALSE(ApplyStatFunction(m.ws, RowStatistic::Mean, {}, {"x", "", Placement::End}));
  EXPECT_FALSE(ApplyStatFunction(m.ws, RowStatistic::Mean, {1}, {"", "", Placement::Same}));
  EXPECT_EQ(m.ws.NumberOfVariables(), 5);
  EXPECT_EQ(m.user.told.front(), "No variable has been selected. Program stops.");
}

}  // namespace
}  // namespace tarvika
