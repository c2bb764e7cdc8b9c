#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "workspace/declaration_editors.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

TEST(MissingEditor, BuildsTheCellOrTellsTheFault) {
  ScriptedChannel user;
  MissingEditor e;
  e.values[0] = "9";
  e.values[2] = "99,5";
  EXPECT_EQ(e.Build(user, Language::English, '.'), "9/99.5");
  e.mode = MissingMode::Range;
  e.low = "10";
  EXPECT_EQ(e.Build(user, Language::Hungarian, '.'), std::nullopt);
  EXPECT_EQ(user.told.back(), "Az alsó vagy a felső érték hiányzik.\r\nEgészítse ki vagy törölje!");
  e.high = "10";
  EXPECT_EQ(e.Build(user, Language::English, '.'), std::nullopt);
  EXPECT_EQ(user.told.back(), "High value must be greater then low value.");
  e.high = "20";
  EXPECT_EQ(e.Build(user, Language::English, ','), "10_20");
  e.mode = MissingMode::RangeAndValue;
  e.values[2] = "15";
  EXPECT_EQ(e.Build(user, Language::English, '.'), std::nullopt);
  EXPECT_EQ(user.told.back(), "Error: the entered discrete value is within the specified range.");
  e.values[2] = "-1";
  EXPECT_EQ(e.Build(user, Language::English, '.'), "10_20/-1");
}

TEST(LabelEditor, CodeChecks) {
  ScriptedChannel user;
  LabelEditor codes(false, "1=male;/2=female;/", '.');
  EXPECT_FALSE(codes.Add(user, Language::English, {"", "", "x"}));
  EXPECT_EQ(user.told.back(), "Value missing.");
  EXPECT_FALSE(codes.Add(user, Language::English, {"3", "", ""}));
  EXPECT_EQ(user.told.back(), "Label missing.");
  EXPECT_FALSE(codes.Add(user, Language::Hungarian, {"2.0", "", "x"}));
  EXPECT_EQ(user.told.back(), "Ez a kód már szerepel a listán: 2.0");
  EXPECT_FALSE(codes.Change(user, Language::English, 0, {"2", "", "x"}));
  EXPECT_EQ(user.told.back(), "Code values must be different.");
  EXPECT_TRUE(codes.Add(user, Language::English, {"9", "", "no answer"}));
  EXPECT_TRUE(codes.Change(user, Language::English, 0, {"1", "", "man"}));
  EXPECT_EQ(codes.Text(), "1=man;/2=female;/9=no answer;/");
  user.QueueAnswer(Answer::No);
  EXPECT_FALSE(codes.ConfirmExit(user, Language::English, true));
  EXPECT_EQ(user.asked.back(), "Any pending Add or Change operations will be lost.\r\nDo you want to exit however?");
}

TEST(LabelEditor, SeparatorsOfTheProjectFileAreRefusedWhereTheyAreTyped) {
  // A ";" would end the value in the project file and cut the text on the next load.
  ScriptedChannel user;
  LabelEditor codes(false, "", '.');
  EXPECT_FALSE(codes.Add(user, Language::English, {"1", "", "yes; sure"}));
  EXPECT_EQ(user.told.back(), "A group label cannot contain \";\".");
  LabelEditor bands(true, "", ',');
  EXPECT_FALSE(bands.Add(user, Language::Hungarian, {"0", "10", "low;"}));
  EXPECT_EQ(user.told.back(), "A csoportnév nem tartalmazhat \";\" karaktert.");
  EXPECT_TRUE(codes.Add(user, Language::English, {"1", "", "yes/no"}));  // a "/" reads back whole
  EXPECT_EQ(codes.Text(), "1=yes/no;/");

  Workspace ws(user, Language::English, '.');
  EXPECT_FALSE(CheckDeclarationText(ws, kLongName, "Income; monthly"));
  EXPECT_EQ(user.told.back(), "A long name cannot contain \";\".");
  EXPECT_FALSE(CheckDeclarationText(ws, kShortName, "a;b"));
  EXPECT_EQ(user.told.back(), "A short name cannot contain \";\".");
  ws.language = Language::Hungarian;
  EXPECT_FALSE(CheckDeclarationText(ws, kHelp, "x;"));
  EXPECT_EQ(user.told.back(), "A súgószöveg nem tartalmazhat \";\" karaktert.");
  std::size_t told = user.told.size();
  EXPECT_TRUE(CheckDeclarationText(ws, kLongName, "Income, monthly / net"));
  EXPECT_TRUE(CheckDeclarationText(ws, kMissing, "9;"));  // repaired by the validation instead
  EXPECT_EQ(user.told.size(), told);
}

TEST(LabelEditor, IntervalChecksAndOrder) {
  ScriptedChannel user;
  LabelEditor iv(true, "10_20=mid;/", '.');
  auto add = [&](const char* lo, const char* hi, const char* name) {
    return iv.Add(user, Language::English, {lo, hi, name});
  };
  EXPECT_FALSE(add("", "5", "a"));
  EXPECT_EQ(user.told.back(), "Error: Lower limit is missing!");
  EXPECT_FALSE(add("1", "", "a"));
  EXPECT_EQ(user.told.back(), "Error: Upper limit is missing!");
  EXPECT_FALSE(add("1", "5", ""));
  EXPECT_EQ(user.told.back(), "Error: Group name is missing!");
  EXPECT_FALSE(add("5", "1", "a"));
  EXPECT_EQ(user.told.back(), "Right side of ntervall must be greater then the left side.");
  EXPECT_FALSE(add("x", "1", "a"));
  EXPECT_EQ(user.told.back(), "Wrong value.");
  EXPECT_FALSE(add("10", "20", "a"));
  EXPECT_EQ(user.told.back(), "Duplicated intervall on the list (item 1)");
  EXPECT_FALSE(add("10", "15", "a"));
  EXPECT_EQ(user.told.back(), "Intervalls with same beginning value.");
  EXPECT_FALSE(add("5", "12", "a"));
  EXPECT_EQ(user.told.back(), "Overlapped with next interval: 10_20");
  EXPECT_FALSE(add("15", "25", "a"));
  EXPECT_EQ(user.told.back(), "Intervalls overlapped.");
  EXPECT_TRUE(add("20", "30", "high"));  // touching is fine
  EXPECT_TRUE(add("0", "10", "low"));
  EXPECT_EQ(iv.Text(), "0_10=low;/10_20=mid;/20_30=high;/");
}

TEST(TypeEditor, BuildsEachKind) {
  ScriptedChannel user;
  TypeEditor t;
  EXPECT_EQ(t.Build(user, Language::English, '.'), "num=0_0;");
  t.minimum = "1,5";
  t.maximum = "7";
  EXPECT_EQ(t.Build(user, Language::English, '.'), "num=1.5_7;");
  t.maximum = "1";
  EXPECT_EQ(t.Build(user, Language::English, '.'), std::nullopt);
  EXPECT_EQ(user.told.back(), "Maximal value must be greater then minimal value.");
  t.kind = "string";
  t.length = 20;
  EXPECT_EQ(t.Build(user, Language::English, '.'), "string=20;");
  t.kind = "date";
  EXPECT_EQ(t.Build(user, Language::English, '.'), "date=;");
  // Started from a present type, an unchanged editor builds that type again.
  for (const char* type : {"num=0_0;", "num=-1.5_7;", "string=12;", "string=0;", "date=;", "link=;"})
    EXPECT_EQ(TypeEditor::FromType(type).Build(user, Language::English, '.'), type) << type;
}

TEST(GroupTypeChange, IntervalLabelsAreOfferedForDeletionWhenCodesAreChosen) {
  ScriptedChannel user;
  Workspace ws(user, Language::English, '.');
  ws.vars.SetCell(kGroupType, 1, "intervals");
  ws.vars.SetCell(kGroupLabels, 1, "0_10=low;/10_20=high;/");
  user.QueueAnswer(Answer::No);
  EXPECT_FALSE(ChangeGroupType(ws, 1, "codes"));
  EXPECT_EQ(user.asked.back(),
            "Value labels below are not OK for a coded variable:\r\n0_10=low;\r\n10_20=high;\r\n"
            "Do you want to delete this list?");
  EXPECT_EQ(user.told.back(), "The changes are cancelled.");
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 1), "intervals");
  user.QueueAnswer(Answer::Yes);
  EXPECT_TRUE(ChangeGroupType(ws, 1, "kódokkal"));
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 1), "codes");  // stored in the session's language
  EXPECT_EQ(ws.vars.GetCell(kGroupLabels, 1), "");
  EXPECT_FALSE(ChangeGroupType(ws, 1, "sometimes"));
}

}  // namespace
}  // namespace tarvika

namespace tarvika {
namespace {

TEST(DefaultVariable, AChangeGoesToRowZeroAndTheFileAtOnce) {
  auto folder = std::filesystem::temp_directory_path() / ("tarvika-default-" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  ScriptedChannel user;
  Workspace ws(user, Language::English, '.');
  ws.programFolder = folder.string();
  TypeEditor type;
  type.minimum = "1";
  type.maximum = "5";
  ASSERT_TRUE(ChangeDefaultVariable(ws, type, "codes", "1=no;/5=yes;/"));
  EXPECT_EQ(ws.vars.GetCell(kType, 0), "num=1_5;");
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 0), "codes");
  std::ifstream in(folder / "default.var", std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  EXPECT_EQ(bytes, "num=1_5;\r\n1=no;/5=yes;/\r\ncodes\r\n");

  // Refusals change nothing: interval labels kept for codes, labels that don't parse, a
  // word not from the list.
  user.QueueAnswer(Answer::No);
  EXPECT_FALSE(ChangeDefaultVariable(ws, type, "codes", "1_2=x;/"));
  EXPECT_EQ(user.asked.back(),
            "Value labels below are not OK for a coded variable:\r\n1_2=x;\r\nDo you want to delete this list?");
  EXPECT_EQ(user.told.back(), "The changes are cancelled.");
  EXPECT_FALSE(ChangeDefaultVariable(ws, type, "codes", "x=a;/"));
  EXPECT_EQ(user.told.back(), "Wrong value.");
  EXPECT_FALSE(ChangeDefaultVariable(ws, type, "sometimes", ""));
  EXPECT_EQ(ws.vars.GetCell(kGroupLabels, 0), "1=no;/5=yes;/");
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 0), "codes");
  // Interval labels of the default variable offered for deletion when codes are chosen.
  ASSERT_TRUE(ChangeDefaultVariable(ws, type, "intervals", "0_10=low;/"));
  user.QueueAnswer(Answer::Yes);
  ASSERT_TRUE(ChangeDefaultVariable(ws, type, "codes", "0_10=low;/"));
  EXPECT_EQ(ws.vars.GetCell(kGroupLabels, 0), "");
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 0), "codes");
  // To "none" with labels left: the question; a yes deletes them.
  user.QueueAnswer(Answer::Yes);
  ASSERT_TRUE(ChangeDefaultVariable(ws, TypeEditor{}, "none", "1=no;/5=yes;/"));
  EXPECT_EQ(user.asked.back(), "Default variable has redundant value labels.\r\nDo you want to delete it?");
  EXPECT_EQ(ws.vars.GetCell(kGroupLabels, 0), "");
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace tarvika
