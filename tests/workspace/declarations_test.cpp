#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workspace/declarations.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

// A workspace of n variables with the given short names and one case.
struct Fixture {
  explicit Fixture(const std::vector<std::string>& names, Language lang = Language::English, char sep = '.')
      : ws(user, lang, sep) {
    int n = static_cast<int>(names.size());
    ws.data.Resize(n + 1, 2);
    ws.vars.SetRowCount(n + 1);
    for (int v = 1; v <= n; ++v) {
      ws.vars.SetCell(kShortName, v, names[v - 1]);
      ws.vars.SetCell(kLongName, v, "");
      ws.vars.SetCell(kType, v, "num=0_0;");
      ws.vars.SetCell(kGroupType, v, "none");
      ws.data.SetCell(v, 0, names[v - 1]);
    }
  }
  std::string Var(int column, int v) const { return std::string(ws.vars.GetCell(column, v)); }
  ScriptedChannel user;
  Workspace ws;
};

TEST(ShortNames, LongAndEqualNamesBecomeUniqueAndKeepTheirFullName) {
  Fixture f({"abcdefghij1", "abcdefghij2", "abcdefghij3", "q", "Q", "q", "hosszúváltozó"});
  f.ws.vars.SetCell(kLongName, 2, "kept long name");
  NormaliseShortNames(f.ws);
  std::vector<std::string> expected = {"abcdefgh", "abcde~00", "abcde~01", "q", "Q", "q~00", "hosszúvá"};
  for (int v = 1; v <= 7; ++v) {
    EXPECT_EQ(f.Var(kShortName, v), expected[v - 1]);
    EXPECT_EQ(f.ws.data.GetCell(v, 0), expected[v - 1]);
  }
  EXPECT_EQ(f.Var(kLongName, 1), "abcdefghij1");
  EXPECT_EQ(f.Var(kLongName, 2), "kept long name");  // an existing long name wins
  EXPECT_EQ(f.Var(kLongName, 3), "abcdefghij3");
  EXPECT_EQ(f.Var(kLongName, 7), "hosszúváltozó");  // cut by characters, not bytes
  EXPECT_EQ(f.Var(kLongName, 4), "");
}

TEST(ShortNames, ManyEqualNamesTakeTheNextFreeCounterEach) {
  // Unnamed variables all clash; a name taken by hand is skipped, and the counter goes on
  // past two digits.
  std::vector<std::string> names(150, "");
  names[2] = "~01";
  Fixture f(names);
  NormaliseShortNames(f.ws);
  EXPECT_EQ(f.Var(kShortName, 1), "");
  EXPECT_EQ(f.Var(kShortName, 2), "~00");
  EXPECT_EQ(f.Var(kShortName, 3), "~01");
  for (int v = 4; v <= 150; ++v) {
    std::string counter = std::to_string(v - 2);
    EXPECT_EQ(f.Var(kShortName, v), "~" + std::string(counter.size() < 2 ? "0" : "") + counter) << v;
  }
}

TEST(ShortNames, DuplicatesIgnoringCaseAreListedAndEmptyNamesAsked) {
  Fixture f({"age", "Score", "AGE", "", "x"});
  f.user.QueueText("newname");
  EXPECT_FALSE(CheckDuplicateNames(f.ws));
  ASSERT_EQ(f.user.told.size(), 1u);
  EXPECT_EQ(f.user.told[0],
            "Error: identical variable names! See the declaration of variables.\r\n1=age;\r\n3=AGE;");
  ASSERT_EQ(f.user.asked.size(), 1u);
  EXPECT_EQ(f.user.asked[0], "Error: missing short name.\r\nEnter a short name.");
  EXPECT_EQ(f.Var(kShortName, 4), "newname");
  EXPECT_EQ(f.ws.data.GetCell(4, 0), "newname");

  Fixture hu({"a", "b"}, Language::Hungarian);
  EXPECT_TRUE(CheckDuplicateNames(hu.ws));
  EXPECT_TRUE(hu.user.told.empty());
}

TEST(TypeDeclaration, EachFormIsRepairedToItsCanonicalForm) {
  struct Case {
    const char* in;
    char sep;
    const char* out;
  } cases[] = {
      {"num=0_0;", '.', "num=0_0;"},        {"num=5_1;", '.', "num=0_0;"},
      {"num=3_3;", '.', "num=0_0;"},        {"num=1,5_2.5;", '.', "num=1.5_2.5;"},
      {"num=1,5_2.5;", ',', "num=1,5_2,5;"}, {"num=-10_010", '.', "num=-10_10;"},
      {"num=abc_5;", '.', "num=0_0;"},      {"num=7;", '.', "num=0_0;"},
      {"num=", '.', "num=0_0;"},            {"string=12;", '.', "string=12;"},
      {"string=abc;", '.', "string=0;"},    {"string=", '.', "string=0;"},
      {"date=whatever;", '.', "date=;"},    {"link=", '.', "link=;"},
      {"sep=;", '.', "string=0;"},          {"xyz", '.', "string=0;"},
      {"", '.', "string=0;"},               {"NUM=1_2;", '.', "string=0;"},
  };
  for (const Case& c : cases) EXPECT_EQ(NormaliseType(c.in, c.sep), c.out) << c.in << " sep " << c.sep;
}

TEST(MissingDeclaration, CodesRangesAndFaultsWithTheirCanonicalText) {
  struct Case {
    const char* in;
    int count;
    double lo, hi, extra;
    bool fault;
    const char* canonical;
  } cases[] = {
      {"", 0, 0, 0, 0, false, ""},
      {"9", 1, 9, 0, 0, false, "9"},
      {"9/99/999", 3, 9, 99, 999, false, "9/99/999"},
      {"9/8/7/6", 3, 9, 8, 7, false, "9/8/7"},  // a fourth code is ignored without fault
      {"9/x/7", 2, 9, 7, 0, true, "9/7"},
      {"-1.23456", 1, -1.2346, 0, 0, false, "-1.2346"},  // held to four decimals
      {"900_999/-1", 5, 900, 999, -1, false, "900_999/-1"},
      {"1_5", 4, 1, 5, 0, true, "1_5"},  // an empty rest marks a fault: rewritten as itself
      {"5_1", 4, 1, 5, 0, true, "1_5"},
      {"5_1/0", 5, 1, 5, 0, true, "1_5/0"},
      {"a_b/7", 1, 7, 0, 0, true, "7"},
      {"1,5_2.5/x", 4, 1.5, 2.5, 0, true, "1.5_2.5"},
  };
  for (const Case& c : cases) {
    MissingParse p = ParseMissingText(c.in, '.');
    EXPECT_EQ(p.codes.count, c.count) << c.in;
    EXPECT_DOUBLE_EQ(p.codes.lo, c.lo) << c.in;
    EXPECT_DOUBLE_EQ(p.codes.hi, c.hi) << c.in;
    EXPECT_DOUBLE_EQ(p.codes.extra, c.extra) << c.in;
    EXPECT_EQ(p.fault, c.fault) << c.in;
    EXPECT_EQ(p.canonical, c.canonical) << c.in;
  }
  EXPECT_EQ(ParseMissingText("5_1/2.5", ',').canonical, "1_5/2,5");
}

TEST(MissingDeclaration, FaultyCellsAreRewrittenExceptForNominalVariables) {
  Fixture f({"a", "b", "c"});
  f.ws.vars.SetCell(kMissing, 1, "5_1");
  f.ws.vars.SetCell(kMissing, 2, "5_1");
  f.ws.vars.SetCell(kMissing, 3, "9/99");
  std::vector<std::uint8_t> scale = {0, 0, 2, 0};
  auto codes = ParseMissing(f.ws, &scale);
  EXPECT_EQ(f.Var(kMissing, 1), "1_5");
  EXPECT_EQ(f.Var(kMissing, 2), "5_1");
  EXPECT_EQ(f.Var(kMissing, 3), "9/99");
  EXPECT_EQ(codes[2].count, 4);
  EXPECT_DOUBLE_EQ(codes[2].lo, 1);
  EXPECT_EQ(codes[3].count, 2);
}

TEST(GroupLabels, CodesAndIntervalsParseOrFail) {
  auto codes = ParseLabelText("1=male;/2=female;/", false, '.');
  ASSERT_TRUE(codes);
  ASSERT_EQ(codes->size(), 2u);
  EXPECT_EQ((*codes)[1].label, "female");
  EXPECT_DOUBLE_EQ((*codes)[1].lo, 2);
  EXPECT_DOUBLE_EQ((*codes)[1].hi, 2);

  auto intervals = ParseLabelText("0_10=low;/10,5_20.25=high;/", true, '.');
  ASSERT_TRUE(intervals);
  ASSERT_EQ(intervals->size(), 2u);
  EXPECT_DOUBLE_EQ((*intervals)[1].lo, 10.5);
  EXPECT_DOUBLE_EQ((*intervals)[1].hi, 20.25);
  EXPECT_EQ((*intervals)[0].label, "low");

  auto merged = ParseLabelText("1=x;/2=x;/3=y;/", false, '.');
  ASSERT_TRUE(merged);
  EXPECT_EQ(merged->size(), 3u);
  EXPECT_TRUE(ParseLabelText("", false, '.')->empty());

  EXPECT_FALSE(ParseLabelText("0_10=low;/", false, '.'));  // an interval is no code
  EXPECT_FALSE(ParseLabelText("1=a;/2", false, '.'));      // no "="
  EXPECT_FALSE(ParseLabelText("a=b;/", false, '.'));
  EXPECT_FALSE(ParseLabelText("=b;/", false, '.'));
  EXPECT_FALSE(ParseLabelText("5=five;/", true, '.'));  // an interval needs both ends
}

TEST(Validation, RepairsEveryDeclarationAndRebuildsTheHeader) {
  Fixture f({"a", "", "c", "d", "e", "", "var_1"}, Language::Hungarian);
  f.user.QueueText("typed");  // for the first empty name
  f.user.QueueText("");       // the second gets the first free var_N
  f.ws.vars.SetCell(kType, 3, "sep=;");
  f.ws.vars.SetCell(kGroupType, 1, "codes");
  f.ws.vars.SetCell(kGroupLabels, 1, "1=igen;/2=nem;/");
  f.ws.vars.SetCell(kGroupType, 3, "övezetekkel");
  f.ws.vars.SetCell(kGroupLabels, 3, "1=x;/");  // not intervals: dropped
  f.ws.vars.SetCell(kGroupType, 4, "sometimes");
  f.ws.vars.SetCell(kGroupLabels, 4, "1=x;/");
  f.ws.vars.SetCell(kGroupType, 5, "kódokkal");  // codes without labels
  f.ws.data.SetCell(0, 0, "junk");
  ValidateDeclarations(f.ws);

  EXPECT_EQ(f.user.told, (std::vector<std::string>{"Hiba: nincs változónév!"}));
  EXPECT_EQ(f.user.asked, (std::vector<std::string>{"Írja be a változó nevét", "Írja be a változó nevét"}));
  EXPECT_EQ(f.Var(kShortName, 2), "typed");
  EXPECT_EQ(f.Var(kShortName, 6), "var_2");  // var_1 is taken
  EXPECT_EQ(f.Var(kType, 3), "string=0;");
  EXPECT_EQ(f.Var(kGroupType, 1), "codes");
  EXPECT_EQ(f.Var(kGroupLabels, 1), "1=igen;/2=nem;/");
  EXPECT_EQ(f.Var(kGroupType, 3), "nincs");
  EXPECT_EQ(f.Var(kGroupLabels, 3), "");
  EXPECT_EQ(f.Var(kGroupType, 4), "nincs");
  EXPECT_EQ(f.Var(kGroupLabels, 4), "1=x;/");  // kept: the unknown type word is the fault
  EXPECT_EQ(f.Var(kGroupType, 5), "nincs");
  for (int v = 1; v <= 7; ++v) EXPECT_EQ(f.ws.data.GetCell(v, 0), f.Var(kShortName, v));
  EXPECT_EQ(f.ws.data.GetCell(0, 0), "");
}

TEST(Workspace, PristineOnlyWhenUntouched) {
  ScriptedChannel user;
  Workspace ws(user, Language::English, '.');
  EXPECT_TRUE(ws.IsPristine());
  EXPECT_EQ(ws.data.GetCell(0, 1), "1");
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 1), "none");
  ws.SetLanguage(Language::Hungarian);
  EXPECT_EQ(ws.vars.GetCell(kGroupType, 1), "nincs");
  EXPECT_EQ(ws.vars.GetCell(kShortName, 0), "alapért.");
  EXPECT_TRUE(ws.IsPristine());  // the Hungarian word is as good

  auto touched = [&](auto change) {
    ws.Reset();
    change();
    return !ws.IsPristine();
  };
  EXPECT_TRUE(touched([&] { ws.vars.SetCell(kMissing, 1, "9"); }));
  EXPECT_TRUE(touched([&] { ws.data.SetCell(1, 1, "3"); }));
  EXPECT_TRUE(touched([&] { ws.data.SetCell(1, 0, "x"); }));
  EXPECT_TRUE(touched([&] { ws.vars.SetCell(kLongName, 1, ""); }));
  EXPECT_TRUE(touched([&] { ws.vars.SetCell(kType, 1, "string=0;"); }));
  EXPECT_TRUE(touched([&] { ws.vars.SetCell(kGroupType, 1, "codes"); }));
  EXPECT_TRUE(touched([&] { ws.data.SetRowCount(3); }));
  EXPECT_TRUE(touched([&] { ws.data.SetColCount(3); }));
  // Neither the help text nor the labels alone decide it.
  EXPECT_FALSE(touched([&] { ws.vars.SetCell(kHelp, 1, "note"); }));
}

TEST(Workspace, TitleIsTheAuthorityForTheFileName) {
  ScriptedChannel user;
  Workspace ws(user, Language::English, '.');
  ws.SetCurrentFile("/home/a b/data file.msw");
  EXPECT_EQ(ws.title, "Tarvika: /home/a b/data file.msw");
  EXPECT_EQ(ws.CurrentFileName(), "/home/a b/data file.msw");
}

TEST(CellCheck, NumericCellsAreCleanedAndCheckedAgainstTheRange) {
  Fixture f({"n", "s"}, Language::English, ',');
  f.ws.vars.SetCell(kType, 1, "num=0_10;");
  f.ws.vars.SetCell(kType, 2, "string=0;");
  auto check = [&](int c, const char* text) {
    f.ws.data.SetCell(c, 1, text);
    return CheckCell(f.ws, c, 1);
  };
  EXPECT_TRUE(check(1, "abc"));  // the type control is off
  f.ws.typeControl = true;
  EXPECT_TRUE(check(1, " 007,50"));
  EXPECT_EQ(f.ws.data.GetCell(1, 1), "7,5");
  EXPECT_TRUE(check(1, "3.25"));  // the other separator is accepted and stored locally
  EXPECT_EQ(f.ws.data.GetCell(1, 1), "3,25");
  EXPECT_FALSE(check(1, "abc"));
  EXPECT_EQ(f.user.told.back(), "Error: nonnumeric value.");
  EXPECT_FALSE(check(1, "11"));
  EXPECT_EQ(f.user.told.size(), 2u);
  EXPECT_TRUE(check(1, ""));
  EXPECT_TRUE(check(2, "abc"));
}

}  // namespace
}  // namespace tarvika
