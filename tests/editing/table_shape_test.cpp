#include <gtest/gtest.h>

#include "editing/table_shape.h"
#include "editing_fixture.h"

namespace tarvika {
namespace {

using testing::DataColumn;
using testing::Dump;
using testing::SmallProject;
using Strings = std::vector<std::string>;

TEST(InsertCases, EachPlaceOpensEmptyRowsAndRenumbers) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  ASSERT_TRUE(InsertCases(ws, 2, CasePlace::BeforeActual, 2));
  EXPECT_EQ(DataColumn(ws, 2), (Strings{"Anna", "", "", "Béla", "Cili", "Dani"}));
  ASSERT_TRUE(InsertCases(ws, 1, CasePlace::AfterActual, 6));
  ASSERT_TRUE(InsertCases(ws, 1, CasePlace::Top));
  ASSERT_TRUE(InsertCases(ws, 1, CasePlace::Bottom));
  EXPECT_EQ(DataColumn(ws, 2), (Strings{"", "Anna", "", "", "Béla", "Cili", "Dani", "", ""}));
  EXPECT_EQ(DataColumn(ws, 0), (Strings{"1", "2", "3", "4", "5", "6", "7", "8", "9"}));
  EXPECT_TRUE(ws.dataChanged);
}

TEST(InsertCases, BeyondTheLimitIsRefusedWithNoChange) {
  auto p = SmallProject();
  const std::string before = Dump(p.ws);
  EXPECT_FALSE(InsertCases(p.ws, kMaxCases - 3, CasePlace::Bottom));
  EXPECT_EQ(Dump(p.ws), before);
  ASSERT_EQ(p.user.told.size(), 1u);
  EXPECT_EQ(p.user.told[0], "The increased number of cases = 1000001.\r\nThis version can handle at most 1000000 cases.");
}

TEST(InsertVariables, PlacesNamesAndPropertiesMoveWithTheirColumns) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  ws.vars.SetDefaultVariable("num=1_5;", "1=a;/", "codes");
  // A name "Var_1" is taken already (ignoring case): the new ones are the next free.
  ws.vars.SetCell(kShortName, 3, "var_1");
  ws.data.SetCell(3, 0, "var_1");
  ASSERT_TRUE(InsertVariables(ws, 2, VariablePlace::After, 1));
  EXPECT_EQ(ws.data.Row(0), (Strings{"", "age", "Var_2", "Var_3", "name", "var_1"}));
  EXPECT_EQ(ws.vars.Column(kIndex), (Strings{ws.vars.GetCell(kIndex, 0).data(), "1", "2", "3", "4", "5"}));
  EXPECT_EQ(ws.vars.GetCell(kType, 2), "num=1_5;");
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 2), "codes");
  EXPECT_EQ(DataColumn(ws, 4), (Strings{"Anna", "Béla", "Cili", "Dani"}));
  EXPECT_EQ(DataColumn(ws, 2), (Strings{"", "", "", ""}));
  EXPECT_EQ(ws.vars.GetCell(kType, 4), "string=10;");

  NewVariableProperties like{NewVariableProperties::Kind::Identical, 1, ""};
  ASSERT_TRUE(InsertVariables(ws, 1, VariablePlace::First, 1, like));
  EXPECT_EQ(ws.vars.GetCell(kShortName, 1), "Var_4");
  EXPECT_EQ(ws.vars.GetCell(kLongName, 1), "Var as age");
  EXPECT_EQ(ws.vars.GetCell(kType, 1), "num=0_120;");
  EXPECT_EQ(ws.vars.GetCell(kMissing, 1), "99");

  NewVariableProperties typed{NewVariableProperties::Kind::Type, 0, "string=4;"};
  ASSERT_TRUE(InsertVariables(ws, 1, VariablePlace::Last, 1, typed));
  EXPECT_EQ(ws.vars.GetCell(kType, 7), "string=4;");
  EXPECT_EQ(ws.data.GetCell(7, 0), "Var_5");
}

TEST(InsertVariables, RefusalsChangeNothing) {
  auto p = SmallProject();
  const std::string before = Dump(p.ws);
  EXPECT_FALSE(InsertVariables(p.ws, 998, VariablePlace::Last));
  EXPECT_FALSE(InsertVariables(p.ws, 1, VariablePlace::Last, 1, {NewVariableProperties::Kind::Identical, 0, ""}));
  EXPECT_EQ(Dump(p.ws), before);
  EXPECT_EQ(p.user.told, (Strings{"The increased number of variables = 1001.\r\nThis version can handle at most 1000 variables.",
                                  "Select a variable or choose the default option."}));
  EXPECT_TRUE(InsertVariables(p.ws, 997, VariablePlace::Last));
  EXPECT_EQ(p.ws.NumberOfVariables(), 1000);
}

TEST(DeleteCases, AsksThenRemovesAndRenumbers) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  p.user.QueueAnswer(Answer::No);
  EXPECT_FALSE(DeleteCases(ws, 2, 3));
  EXPECT_EQ(p.user.asked.back(), "Do you really want to delete the following case(s)?\r\nDelete cases 2 - 3.");
  EXPECT_EQ(ws.NumberOfCases(), 4);
  p.user.QueueAnswer(Answer::Yes);
  ASSERT_TRUE(DeleteCases(ws, 2, 3));
  EXPECT_EQ(DataColumn(ws, 2), (Strings{"Anna", "Dani"}));
  EXPECT_EQ(DataColumn(ws, 0), (Strings{"1", "2"}));
  p.user.QueueAnswer(Answer::Yes);
  ASSERT_TRUE(DeleteCases(ws, 1, 1));
  EXPECT_EQ(p.user.asked.back(), "Do you really want to delete the following case(s)?\r\nDelete case #1.");
  EXPECT_FALSE(DeleteCases(ws, 1, 1));
  EXPECT_EQ(p.user.told.back(), "You cannot delete all cases.");
  EXPECT_FALSE(DeleteCases(ws, 1, 5));
  EXPECT_EQ(p.user.told.back(), "The case numbers of your data table go from 1 to 1");
}

TEST(DeleteVariables, MovesDeclarationsWithColumnsAndKeepsOne) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  // A stale group type is derived anew from the labels of the rows that moved.
  ws.vars.SetCell(kGroupLabels, 3, "1_2=low;/");
  p.user.QueueAnswer(Answer::Yes);
  ASSERT_TRUE(DeleteVariables(ws, 2, 2));
  EXPECT_EQ(p.user.asked.back(), "Do you want to delete 1 variable(s) from the data table?");
  EXPECT_EQ(ws.data.Row(0), (Strings{"", "age", "grp"}));
  EXPECT_EQ(DataColumn(ws, 2), (Strings{"1", "2", "1", ""}));
  EXPECT_EQ(ws.vars.GetCell(kShortName, 2), "grp");
  EXPECT_EQ(ws.vars.GetCell(kIndex, 2), "2");
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 2), "intervals");
  EXPECT_EQ(ws.vars.RowCount(), 3);
  EXPECT_FALSE(DeleteVariables(ws, 1, 2));
  EXPECT_EQ(p.user.told.back(), "You cannot delete all variables.");
  EXPECT_EQ(ws.NumberOfVariables(), 2);
}

TEST(NewFile, NamesVariablesAfterTheDefault) {
  auto p = SmallProject();
  ASSERT_TRUE(NewFile(p.ws, 3, 10));
  EXPECT_EQ(p.ws.data.Row(0), (Strings{"", "var_1", "var_2", "var_3"}));
  EXPECT_EQ(p.ws.NumberOfCases(), 10);
  EXPECT_EQ(p.ws.data.GetCell(0, 10), "10");
  EXPECT_EQ(p.ws.data.GetCell(1, 1), "");
  EXPECT_EQ(p.ws.vars.GetCell(kType, 3), "num=0_0;");
  EXPECT_EQ(p.ws.vars.GetCell(kMissing, 1), "");
}

}  // namespace
}  // namespace tarvika
