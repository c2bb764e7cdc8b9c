#include <gtest/gtest.h>

#include "editing/find_cells.h"
#include "editing/sort_cases.h"
#include "editing_fixture.h"

namespace tarvika {
namespace {

using testing::DataColumn;
using testing::ReferenceProject;
using testing::ReferenceRows;
using testing::SmallProject;
using Strings = std::vector<std::string>;

// Columns: id, g (number with ties and empties), s (text of mixed case), x (one decimal).
TEST(SortCases, OneAndTwoKeysAgreeWithTheOrdersOfR) {
  const auto orders = ReferenceRows("sort_orders.csv");
  struct Case {
    const char* column;
    std::vector<SortKey> keys;
  };
  const std::vector<Case> cases{{"by_g", {{2, false}}},
                                {"by_s", {{3, false}}},
                                {"by_g_desc_then_x", {{2, true}, {4, false}}},
                                {"by_s_desc_then_g", {{3, true}, {2, false}}}};
  for (const Case& c : cases) {
    auto p = ReferenceProject("sort_cases.csv", {"num=0_0;", "num=0_0;", "string=10;", "num=0_0;"});
    ASSERT_TRUE(SortCases(p.ws, c.keys)) << c.column;
    std::size_t col = std::find(orders[0].begin(), orders[0].end(), c.column) - orders[0].begin();
    Strings expected;
    for (std::size_t r = 1; r < orders.size(); ++r) expected.push_back(orders[r][col]);
    EXPECT_EQ(DataColumn(p.ws, 1), expected) << c.column;
    EXPECT_EQ(p.ws.data.GetCell(0, 40), "40");
    EXPECT_EQ(p.user.told.back(), "The cases have been successfully sorted.");
  }
}

TEST(SortCases, EmptyCellsLastAndTextIgnoringCase) {
  auto p = testing::MemoryWorkspace({testing::Declared("v"), testing::Declared("t", "", "", "none", "", "string=5;"),
                                     testing::Declared("d", "", "", "none", "", "date=;")},
                                    {{"", "c", "01.02.2020"}, {"2", "B", "2019.12.31"}, {"", "a", ""}, {"1.5", "b", "2020-01-15"}},
                                    Language::English, '.', "editing");
  ASSERT_TRUE(SortCases(p.ws, {{1, false}}));
  EXPECT_EQ(DataColumn(p.ws, 1), (Strings{"1.5", "2", "", ""}));
  EXPECT_EQ(DataColumn(p.ws, 2), (Strings{"b", "B", "c", "a"}));  // the empty ones keep their order
  ASSERT_TRUE(SortCases(p.ws, {{1, true}}));
  EXPECT_EQ(DataColumn(p.ws, 1), (Strings{"2", "1.5", "", ""}));
  ASSERT_TRUE(SortCases(p.ws, {{2, false}}));
  EXPECT_EQ(DataColumn(p.ws, 2), (Strings{"a", "B", "b", "c"}));
  ASSERT_TRUE(SortCases(p.ws, {{3, false}}));
  EXPECT_EQ(DataColumn(p.ws, 3), (Strings{"2019.12.31", "2020-01-15", "01.02.2020", ""}));
  EXPECT_FALSE(SortCases(p.ws, {}));
  EXPECT_EQ(p.user.told.back(), "At least one variable has to be selected.");
}

// The runs of a later key are found over its whole column: two rows of different groups of
// the first key that meet with the same second-key text form one run, which the third key
// then sorts across the boundary of the first key.
TEST(SortCases, ThirdKeySortsRunsOfTheSecondAcrossGroupsOfTheFirst) {
  auto p = testing::MemoryWorkspace({testing::Declared("a"), testing::Declared("b"), testing::Declared("c")},
                                    {{"1", "5", "9"}, {"2", "5", "1"}, {"1", "3", "0"}}, Language::English, '.', "editing");
  ASSERT_TRUE(SortCases(p.ws, {{1, false}, {2, false}, {3, false}}));
  // By a then b: (1,3,0) (1,5,9) (2,5,1); the rows (1,5,9) and (2,5,1) form one run of b.
  EXPECT_EQ(DataColumn(p.ws, 1), (Strings{"1", "2", "1"}));
  EXPECT_EQ(DataColumn(p.ws, 3), (Strings{"0", "1", "9"}));
}

TEST(FindCells, ScopesOptionsAndReplacing) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  auto hits = FindCells(ws, ActiveTable::DataTabl, "a", FindScope::Table, 0, 0, {});
  ASSERT_EQ(hits.size(), 3u);  // Anna, Béla, Dani ("name" of the header is no cell)
  EXPECT_EQ(HitLine(ws, hits[0]), "row: 1; column: 2");
  EXPECT_EQ(MatchCount(ws, hits.size()), "3 matches found");
  EXPECT_EQ(FindCells(ws, ActiveTable::DataTabl, "A", FindScope::Table, 0, 0, {true, false}).size(), 1u);
  EXPECT_EQ(FindCells(ws, ActiveTable::DataTabl, "anna", FindScope::Row, 0, 1, {false, true}).size(), 1u);
  EXPECT_EQ(FindCells(ws, ActiveTable::DataTabl, "ann", FindScope::Row, 0, 1, {false, true}).size(), 0u);
  EXPECT_EQ(MatchCount(ws, 1), "1 match found");
  // The empty text finds the empty cells of the column.
  auto empty = FindCells(ws, ActiveTable::DataTabl, "", FindScope::Column, 1, 0, {});
  ASSERT_EQ(empty.size(), 1u);
  EXPECT_EQ(empty[0].row, 3);
  // The declarations are searched on their own page.
  EXPECT_EQ(FindCells(ws, ActiveTable::VarTabl, "string", FindScope::Column, kType, 0, {}).size(), 1u);

  EXPECT_EQ(ReplaceInCells(ws, ActiveTable::DataTabl, hits, "A", "4", {}), 3);
  EXPECT_EQ(DataColumn(ws, 2), (Strings{"4nn4", "Bél4", "Cili", "D4ni"}));
  EXPECT_EQ(ReplaceInCells(ws, ActiveTable::DataTabl, empty, "", "0", {}), 1);
  EXPECT_EQ(DataColumn(ws, 1), (Strings{"31", "45", "0", "27"}));
  // A replaced short name renames the header.
  auto names = FindCells(ws, ActiveTable::VarTabl, "grp", FindScope::Column, kShortName, 0, {false, true});
  ReplaceInCells(ws, ActiveTable::VarTabl, names, "grp", "group", {false, true});
  EXPECT_EQ(ws.data.GetCell(3, 0), "group");
}

TEST(GoTo, VariablePatternsAndCaseNumbers) {
  auto p = testing::MemoryWorkspace({testing::Declared("pop1"), testing::Declared("xpop"), testing::Declared("Popular"),
                                     testing::Declared("age")},
                                    {{"1", "2", "3", "4"}}, Language::English, '.', "editing");
  auto lines = [&](std::string_view pattern) {
    Strings out;
    for (const auto& hit : GoToVariable(p.ws, pattern)) out.push_back(hit.line);
    return out;
  };
  EXPECT_EQ(lines("*pop*"), (Strings{"1=pop1;", "2=xpop;", "3=Popular;"}));
  EXPECT_EQ(lines("pop*"), (Strings{"1=pop1;", "3=Popular;"}));
  EXPECT_EQ(lines("*pop"), (Strings{"2=xpop;"}));
  EXPECT_EQ(lines("AGE"), (Strings{"4=age;"}));
  EXPECT_EQ(lines("ag"), Strings{});
  EXPECT_EQ(GoToCase(p.ws, "1"), 1);
  EXPECT_EQ(GoToCase(p.ws, "2"), std::nullopt);
  EXPECT_EQ(p.user.told.back(), "The case numbers of your data table go from 1 to 1");
  EXPECT_EQ(GoToCase(p.ws, "-1"), std::nullopt);
  EXPECT_EQ(GoToCase(p.ws, "x"), std::nullopt);
  EXPECT_EQ(p.user.told.back(), "You can only enter a positive integer.");
}

}  // namespace
}  // namespace tarvika
