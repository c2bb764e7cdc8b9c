#include <gtest/gtest.h>

#include "editing/clipboard.h"
#include "editing_fixture.h"
#include "support/cli_runner.h"

namespace tarvika {
namespace {

using testing::DataColumn;
using testing::Dump;
using testing::SmallProject;
using Strings = std::vector<std::string>;

TEST(Clipboard, CopyCutAndPasteMoveARectangle) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  EXPECT_EQ(CopyCells(ws, ActiveTable::DataTabl, {1, 1, 2, 2}), "31\tAnna\r\n45\tBéla\r\n");
  const std::string cut = CutCells(ws, ActiveTable::DataTabl, {2, 3, 3, 4});
  EXPECT_EQ(cut, "Cili\t1\r\nDani\t\r\n");
  EXPECT_EQ(DataColumn(ws, 2), (Strings{"Anna", "Béla", "", ""}));
  ASSERT_TRUE(PasteCells(ws, ActiveTable::DataTabl, cut, 1, 1, Overflow::DontInsert));
  EXPECT_EQ(DataColumn(ws, 1), (Strings{"Cili", "Dani", "", "27"}));
  EXPECT_EQ(DataColumn(ws, 2), (Strings{"1", "", "", ""}));
  // The replaced cells are kept beside the program, one row a line.
  EXPECT_EQ(test::ReadFile(p.programFolder / "undo" / "undo.txt"), "31|Anna\r\n45|Béla\r\n");
  // The header row and the case numbers are not cells of the selection.
  DeleteCells(ws, ActiveTable::DataTabl, {0, 0, 3, 1});
  EXPECT_EQ(ws.data.Row(0), (Strings{"", "age", "name", "grp"}));
  EXPECT_EQ(ws.data.Row(1), (Strings{"1", "", "", ""}));
}

TEST(Clipboard, ATrailingLineWithFewerTabsIsDropped) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  PasteReach reach = MeasurePaste(ws, ActiveTable::DataTabl, "7\tx\n8\ty\nstray", 1, 1);
  EXPECT_EQ(reach.lines, 2);
  EXPECT_EQ(reach.width, 2);
  ASSERT_TRUE(PasteCells(ws, ActiveTable::DataTabl, "7\tx\n8\ty\nstray", 1, 1, Overflow::DontInsert));
  EXPECT_EQ(DataColumn(ws, 1), (Strings{"7", "8", "", "27"}));
  // One column: every line has no tab, so none is a fragment.
  ASSERT_TRUE(PasteCells(ws, ActiveTable::DataTabl, "a\r\nb\r\nc", 2, 2, Overflow::DontInsert));
  EXPECT_EQ(DataColumn(ws, 2), (Strings{"x", "a", "b", "c"}));
}

// A 3 x 2 block pasted at case 3 of the last two variables reaches one column to the right
// and one case below.
TEST(Clipboard, APasteBeyondTheTableFollowsTheChoice) {
  const std::string block = "p\tq\tr\r\ns\tt\tu\r\n";
  {
    auto p = SmallProject();
    PasteReach reach = MeasurePaste(p.ws, ActiveTable::DataTabl, block, 2, 4);
    EXPECT_TRUE(reach.right);
    EXPECT_TRUE(reach.down);
    const std::string before = Dump(p.ws);
    EXPECT_FALSE(PasteCells(p.ws, ActiveTable::DataTabl, block, 2, 4, Overflow::DontInsert));
    EXPECT_EQ(Dump(p.ws), before);
  }
  {
    auto p = SmallProject();
    ASSERT_TRUE(PasteCells(p.ws, ActiveTable::DataTabl, block, 2, 4, Overflow::Cut));
    EXPECT_EQ(p.ws.NumberOfVariables(), 3);
    EXPECT_EQ(p.ws.NumberOfCases(), 4);
    EXPECT_EQ(p.ws.data.Row(4), (Strings{"4", "27", "p", "q"}));
  }
  {
    auto p = SmallProject();
    ASSERT_TRUE(PasteCells(p.ws, ActiveTable::DataTabl, block, 2, 4, Overflow::Enlarge));
    EXPECT_EQ(p.ws.data.Row(0), (Strings{"", "age", "name", "grp", "Var_1"}));
    EXPECT_EQ(p.ws.data.Row(4), (Strings{"4", "27", "p", "q", "r"}));
    EXPECT_EQ(p.ws.data.Row(5), (Strings{"5", "", "s", "t", "u"}));
    EXPECT_EQ(p.ws.vars.GetCell(kIndex, 4), "4");
  }
  {
    // Enlarging past the variable limit is refused before anything changes.
    auto p = SmallProject();
    std::string wide(999, '\t');
    const std::string before = Dump(p.ws);
    EXPECT_FALSE(PasteCells(p.ws, ActiveTable::DataTabl, wide + "\r\n", 3, 4, Overflow::Enlarge));
    EXPECT_EQ(Dump(p.ws), before);
    EXPECT_EQ(p.user.told.back(), "The increased number of variables = 1002.\r\nThis version can handle at most 1000 variables.");
  }
}

TEST(Clipboard, PastedDeclarationsRenameTheHeaderAndDeriveTheGroupType) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  ASSERT_TRUE(PasteCells(ws, ActiveTable::VarTabl, "height\tHeight in cm\r\nsex\t\r\n", kShortName, 1, Overflow::Cut));
  EXPECT_EQ(ws.data.Row(0), (Strings{"", "height", "sex", "grp"}));
  ASSERT_TRUE(PasteCells(ws, ActiveTable::VarTabl, "1_10=a;/\r\n\r\n", kGroupLabels, 2, Overflow::Cut));
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 2), "intervals");
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 3), "none");
  // Rows below the last variable become new variables on Enlarge.
  ASSERT_TRUE(PasteCells(ws, ActiveTable::VarTabl, "w1\r\nw2\r\n", kShortName, 3, Overflow::Enlarge));
  EXPECT_EQ(ws.data.Row(0), (Strings{"", "height", "sex", "w1", "w2"}));
  EXPECT_EQ(ws.data.ColCount(), 5);
}

}  // namespace
}  // namespace tarvika
