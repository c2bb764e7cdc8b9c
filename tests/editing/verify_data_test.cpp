#include <gtest/gtest.h>

#include "editing/verify_data.h"
#include "editing_fixture.h"

namespace tarvika {
namespace {

using Strings = std::vector<std::string>;

testing::MemoryWorkspace Checked(Language lang) {
  return testing::MemoryWorkspace(
      {testing::Declared("age", "", "", "none", "", "num=0_120;"), testing::Declared("name", "", "", "none", "", "string=5;"),
       testing::Declared("plain")},
      {{"31", "abc", "0"}, {"abc", "x", "3"}, {"200", "", ""}, {"", "", "-0"}, {"0045", "", "0"}, {"120", "", ""}}, lang, '.',
      "editing");
}

TEST(VerifyData, ListsNonNumericAndOutOfRangeCellsOfNumericVariables) {
  auto p = Checked(Language::English);
  Strings lines;
  for (const auto& f : VerifyData(p.ws)) lines.push_back(f.line);
  // Text in a string variable and empty cells are no findings; both bounds are inside; the
  // type num=0_0 declares no range, so 3 is no finding.
  EXPECT_EQ(lines, (Strings{"Row=2;  Col=1; nonnumeric value", "Row=3;  Col=1; out of specified range"}));
  EXPECT_EQ(p.ws.data.GetCell(1, 2), "abc");   // the faulty cell stays
  EXPECT_EQ(p.ws.data.GetCell(1, 5), "45");    // a clean number is stored back
  EXPECT_EQ(FindingCell(lines[1]), (std::pair{3, 1}));
  EXPECT_EQ(FindingCell("1=pop;VarFind"), std::nullopt);

  auto hu = Checked(Language::Hungarian);
  auto findings = VerifyData(hu.ws);
  ASSERT_EQ(findings.size(), 2u);
  EXPECT_EQ(findings[0].line, "Sor=2;  Oszl=1; nem numerikus adat!");
  EXPECT_EQ(findings[1].line, "Sor=3;  Oszl=1; megadott határokon kívüli érték");
  EXPECT_EQ(FindingCell(findings[1].line), (std::pair{3, 1}));
}

TEST(CellControl, TheChoicesForAValueOutsideItsLimits) {
  auto p = Checked(Language::English);
  ASSERT_TRUE(FixEnteredValue(p.ws, 1, 3, EntryFix::ToMaximum));
  EXPECT_EQ(p.ws.data.GetCell(1, 3), "120");
  ASSERT_TRUE(FixEnteredValue(p.ws, 1, 3, EntryFix::ToMinimum));
  EXPECT_EQ(p.ws.data.GetCell(1, 3), "0");
  EXPECT_FALSE(FixEnteredValue(p.ws, 2, 1, EntryFix::ToMinimum));  // a string has no range
  ASSERT_TRUE(ChangeLimits(p.ws, 1, 0, 250.5));
  EXPECT_EQ(p.ws.vars.GetCell(kType, 1), "num=0_250.5;");
  EXPECT_FALSE(ChangeLimits(p.ws, 1, 5, 5));
}

TEST(ResolveDuplicates, ListsAndRenamesVariablesOfTheSameName) {
  auto p = testing::MemoryWorkspace({testing::Declared("a"), testing::Declared("b"), testing::Declared("A")}, {{"1", "2", "3"}},
                                    Language::English, '.', "editing");
  EXPECT_EQ(DuplicatedVariables(p.ws), (Strings{"1=a;", "3=A;"}));
  EXPECT_FALSE(RenameVariable(p.ws, 3, "B"));
  EXPECT_EQ(p.user.told.back(), "The new variable name is identical to an existing variable name.\r\nChange the new name: B.");
  EXPECT_FALSE(RenameVariable(p.ws, 3, "ninechars"));
  ASSERT_TRUE(RenameVariable(p.ws, 3, "a2"));
  EXPECT_EQ(p.ws.data.GetCell(3, 0), "a2");
  EXPECT_TRUE(DuplicatedVariables(p.ws).empty());
}

}  // namespace
}  // namespace tarvika
