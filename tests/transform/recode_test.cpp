// Rule lines in both written forms, the ones that are no rule, the four-decimal boundary,
// and recoding and counting where rules overlap, cells are empty or hold missing codes.

#include <gtest/gtest.h>

#include "support/memory_workspace.h"
#include "transform/recode.h"

namespace tarvika {
namespace {

using testing::Declared;
using testing::MemoryWorkspace;

RecodeRule Rule(std::string_view line, bool withNewValue = true) {
  auto rule = ParseRule(line, withNewValue, '.');
  EXPECT_TRUE(rule) << line;
  return rule.value_or(RecodeRule{});
}

RuleCell Number(double x) { return {"", true, FixedPoint(x), false}; }

TEST(RecodeRules, BothWrittenFormsAndMalformedLines) {
  const RecodeRule range = Rule("(c) 1 ... 3,5 -> 7");
  EXPECT_EQ(range.kind, RuleKind::Range);
  EXPECT_EQ(range.low, 10000);
  EXPECT_EQ(range.high, 35000);
  EXPECT_EQ(range.newValue, NewValue::Number);
  EXPECT_EQ(range.number, 7);
  const RecodeRule through = Rule("(c) -2 through 3", false);
  EXPECT_EQ(through.low, -20000);
  EXPECT_EQ(through.high, 30000);
  EXPECT_EQ(Rule("(d) minimum ... 2 -> SYSMIS").newValue, NewValue::SysMis);
  EXPECT_EQ(Rule("(d) Lowest through 2", false).high, 20000);
  EXPECT_EQ(Rule("(e) 5 ... maximum -> same").newValue, NewValue::Same);
  EXPECT_EQ(Rule("(e) 5 through highest", false).low, 50000);
  EXPECT_EQ(Rule("(b) Missing -> Ugyanaz").newValue, NewValue::Same);
  EXPECT_EQ(Rule("(f) Else -> 0").kind, RuleKind::Else);
  EXPECT_EQ(Rule("(a) abc", false).text, "abc");
  for (std::string_view bad : {"(g) 1 -> 2", "c) 1 ... 3 -> 1", "(c) 1 ... x -> 1", "(c) 1 .. 3 -> 1", "(a)  -> 1",
                               "(b) Empty -> 1", "(f) Else -> new", "(d) lowest ... 2", "(e) 1 ... top -> 2", ""}) {
    EXPECT_FALSE(ParseRule(bad, true, '.')) << bad;
  }
  EXPECT_FALSE(ParseRule("(a) 1", true, '.'));        // recoding needs the new value
  EXPECT_FALSE(ParseRule("(a) 1 -> 2", false, '.'));  // counting has none
}

TEST(RecodeRules, FourDecimalFixedPoint) {
  const RecodeRule r = Rule("(c) 1 ... 3 -> 1");
  EXPECT_TRUE(RuleFits(r, Number(3)));
  EXPECT_TRUE(RuleFits(r, Number(3.00004)));  // 30000.4 -> 30000
  EXPECT_FALSE(RuleFits(r, Number(3.0001)));
  EXPECT_TRUE(RuleFits(r, Number(0.99996)));  // 9999.6 -> 10000
  EXPECT_FALSE(RuleFits(r, Number(0.9999)));
  // The bounds are held to four decimals too: 2.00004 is 2.
  EXPECT_TRUE(RuleFits(Rule("(d) minimum ... 2.00004 -> 1"), Number(2)));
  EXPECT_FALSE(RuleFits(Rule("(d) minimum ... 2.00004 -> 1"), Number(2.0001)));
  // Low above high never fits; (a) matches the text or the same number.
  EXPECT_FALSE(RuleFits(Rule("(c) 3 ... 1 -> 1"), Number(2)));
  EXPECT_TRUE(RuleFits(Rule("(a) 2 -> 1"), {"2.00001", true, FixedPoint(2.00001), false}));
  EXPECT_TRUE(RuleFits(Rule("(a) yes -> 1"), {"yes", false, 0, false}));
  EXPECT_FALSE(RuleFits(Rule("(e) 0 ... maximum -> 1"), {"yes", false, 0, false}));
}

TEST(Recode, SameVariableFirstRuleWinsAndMissingCells) {
  // y declares 9 missing.
  MemoryWorkspace m({{"x"}, {"y", "Y long", "", "none", "9"}},
                    {{"1", "1"}, {"2", ""}, {"3", "9"}, {"4,5", "4"}, {"", "x"}}, Language::English, ',');
  auto rules = ParseRules(m.ws, {"(b) Missing -> 0", "(c) 1 ... 2 -> 10", "(c) 2 ... 3 -> 20", "(a) x -> SYSMIS"}, true);
  ASSERT_TRUE(rules);
  EXPECT_EQ(RecodeSame(m.ws, {1, 2}, *rules), 8);
  EXPECT_EQ(m.ws.data.Column(1), (std::vector<std::string>{"x", "10", "10", "20", "4,5", "0"}));
  EXPECT_EQ(m.ws.data.Column(2), (std::vector<std::string>{"y", "10", "0", "0", "4", ""}));
  EXPECT_EQ(m.user.told.back(), "Recoding of 8 cell(s) succesfully performed.");
  // (f) first makes the later rules dead; "same" changes nothing.
  auto dead = ParseRules(m.ws, {"(f) Else -> same", "(a) 10 -> 1"}, true);
  EXPECT_EQ(RecodeSame(m.ws, {1}, *dead), 0);
}

TEST(Recode, DifferentVariablesAndRefusals) {
  MemoryWorkspace m({{"x", "X long"}, {"y"}}, {{"1", "5"}, {"", "6"}, {"7", "8"}});
  auto rules = ParseRules(m.ws, {"(e) 6 ... maximum -> 1", "(b) Missing -> 9"}, true);
  ASSERT_TRUE(rules);
  EXPECT_EQ(RecodeDifferent(m.ws, {1, 2}, {"xr", "yr"}, *rules), 4);
  EXPECT_EQ(m.ws.data.Column(3), (std::vector<std::string>{"xr", "", "9", "1"}));  // no rule fits 1: empty
  EXPECT_EQ(m.ws.data.Column(4), (std::vector<std::string>{"yr", "", "1", "1"}));
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 3), "X long recoded");
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 4), "y recoded");
  EXPECT_EQ(m.ws.data.Column(1), (std::vector<std::string>{"x", "1", "", "7"}));  // the sources stay

  m.user.told.clear();
  EXPECT_EQ(RecodeDifferent(m.ws, {1, 2}, {"z"}, *rules), -1);
  EXPECT_EQ(RecodeDifferent(m.ws, {1}, {}, *rules), -1);
  EXPECT_EQ(RecodeDifferent(m.ws, {1}, {"XR"}, *rules), -1);
  EXPECT_EQ(RecodeSame(m.ws, {}, *rules), -1);
  EXPECT_EQ(RecodeSame(m.ws, {1}, {}), -1);
  EXPECT_EQ(m.user.told, (std::vector<std::string>{"Rename 1 variable(s) named \"?\".",
                                                   "You must rename the variable named \"?\"!",
                                                   "You must give a unique name for each new variable",
                                                   "Select variable(s) to recode",
                                                   "The \"Old and new values\" list is empty."}));
  EXPECT_EQ(m.ws.NumberOfVariables(), 4);
  EXPECT_FALSE(ParseRules(m.ws, {"(a) 1 -> 2", "(c) 1 .. 2 -> 3"}, true));
  EXPECT_EQ(m.user.told.back(), "Not a rule line: (c) 1 .. 2 -> 3");
}

TEST(Count, EachVariableCountsOnce) {
  MemoryWorkspace m({{"a"}, {"b", "", "", "none", "99"}, {"c"}},
                    {{"1", "2", "3"}, {"", "99", "2"}, {"2,00001", "7", "x"}}, Language::English, ',');
  auto rules = ParseRules(m.ws, {"(a) 2", "(c) 1 through 2", "(b) Missing"}, false);
  ASSERT_TRUE(rules);
  ASSERT_TRUE(CountValues(m.ws, {1, 2, 3}, *rules, {"n", "", Placement::After}, 1));
  EXPECT_EQ(m.ws.data.Row(0), (std::vector<std::string>{"", "a", "n", "b", "c"}));
  EXPECT_EQ(m.ws.data.Column(2), (std::vector<std::string>{"n", "2", "3", "1"}));
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 2), "Count of values in a, b, c");
  m.user.told.clear();
  EXPECT_FALSE(CountValues(m.ws, {1}, *rules, {"", "", Placement::End}));
  EXPECT_FALSE(CountValues(m.ws, {1}, {}, {"k", "", Placement::End}));
  EXPECT_FALSE(CountValues(m.ws, {}, *rules, {"k", "", Placement::End}));
  EXPECT_EQ(m.user.told, (std::vector<std::string>{"Give a name to new variable!",
                                                   "The \"values to count\" list is empty!",
                                                   "Select variables to count!"}));
  EXPECT_EQ(m.ws.NumberOfVariables(), 4);
}

}  // namespace
}  // namespace tarvika
