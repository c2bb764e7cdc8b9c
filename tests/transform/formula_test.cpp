// Formula variables: the functions at their edges (exact halves, ln with c = 0, division by
// zero, inputs without a value), long names and type texts, same-variable targets, placement
// of several new variables, and the name checks that refuse before anything changes.

#include <gtest/gtest.h>

#include <cmath>

#include "support/memory_workspace.h"
#include "transform/formula.h"

namespace tarvika {
namespace {

using testing::Declared;
using testing::MemoryWorkspace;

std::optional<double> U(Univariate f, double x, double c = 1) { return UnivariateValue(f, x, c); }

TEST(Formula, FunctionValuesAtTheirEdges) {
  // The 1e-9 lifts exact halves (and binary near-halves like 1.005) before rounding.
  EXPECT_EQ(U(Univariate::Round, 2.5, 0), 3);
  EXPECT_EQ(U(Univariate::Round, 3.5, 0), 4);
  EXPECT_EQ(U(Univariate::Round, -2.5, 0), -2);
  EXPECT_DOUBLE_EQ(*U(Univariate::Round, 1.005, 2), 1.01);
  EXPECT_DOUBLE_EQ(*U(Univariate::Round, 1.2345, 3), 1.235);
  EXPECT_EQ(U(Univariate::Round, 1234, -2), 1200);
  // ln(x + c) with c = 0 is ln(x + 1); a non-positive argument has no value.
  EXPECT_DOUBLE_EQ(*U(Univariate::Ln, std::exp(2.0) - 1, 0), 2);
  EXPECT_DOUBLE_EQ(*U(Univariate::Ln, 1, 2), std::log(3.0));
  EXPECT_FALSE(U(Univariate::Ln, -3, 2));
  EXPECT_FALSE(U(Univariate::Ln, -1, 0));
  EXPECT_FALSE(U(Univariate::DivC, 5, 0));
  EXPECT_FALSE(U(Univariate::DivC, 5, 1e-9));
  EXPECT_EQ(U(Univariate::DivC, 5, 2), 2.5);
  EXPECT_FALSE(U(Univariate::SquareRoot, -0.01));
  EXPECT_EQ(U(Univariate::SquareRoot, 0), 0);
  EXPECT_FALSE(U(Univariate::Square, 1e200));  // not finite
  EXPECT_EQ(U(Univariate::Sign, 1e-9), 0);     // within the zero tolerance
  EXPECT_EQ(U(Univariate::Sign, -0.5), -1);
  EXPECT_FALSE(BivariateValue(Bivariate::Divide, 1, 0));
  EXPECT_EQ(BivariateValue(Bivariate::Subtract, 1, 3), -2);
}

TEST(Formula, LongNamesEntriesAndTypes) {
  EXPECT_EQ(UnivariateLongName(Univariate::SquareRoot, "x", 1, '.'), "sqare_root(x)");
  EXPECT_EQ(UnivariateLongName(Univariate::Ln, "x", 0, '.'), "ln(x+1)");
  EXPECT_EQ(UnivariateLongName(Univariate::MulC, "x", 2.5, ','), "(x)*2,5");
  EXPECT_EQ(UnivariateLongName(Univariate::Round, "x", 2, '.'), "Round(x):2");
  EXPECT_EQ(BivariateLongName(Bivariate::Divide, "x", "y"), "(x)/(y)");
  EXPECT_EQ(UnivariateEntry(Univariate::SquareRoot, Language::English), "Sqare_root(X)");
  EXPECT_EQ(UnivariateEntry(Univariate::Round, Language::Hungarian), "Kerekít (c tizedesre)");
  EXPECT_EQ(UnivariateType(Univariate::Sign, 1, "num=0_0;", '.'), "num=-1_1;");
  EXPECT_EQ(UnivariateType(Univariate::AddC, 10, "num=1_5;", '.'), "num=11_15;");
  EXPECT_EQ(UnivariateType(Univariate::MulC, -2, "num=1_5;", '.'), "num=-10_-2;");
  EXPECT_EQ(UnivariateType(Univariate::DivC, 4, "num=1,5_2;", ','), "num=0,375_0,5;");
  EXPECT_EQ(UnivariateType(Univariate::DivC, 0, "num=1_5;", '.'), "num=0_0;");
  EXPECT_EQ(UnivariateType(Univariate::Square, 1, "num=1_5;", '.'), "num=0_0;");
}

TEST(Formula, CellsNewVariablesAndSameTargets) {
  // x declares 9 as missing; "abc" is no number.
  MemoryWorkspace m({{"x", "", "", "none", "9"}, {"y"}, {"z"}},
                    {{"4", "2", "1"}, {"", "2", "1"}, {"9", "0", "1"}, {"abc", "1", "1"}, {"-4", "0,5", "1"}}, Language::English,
                    ',');
  ASSERT_TRUE(ApplyUnivariate(m.ws, Univariate::SquareRoot, 1, {1, 2},
                              {{"rx", "", Placement::After}, {"", "", Placement::Same}}));
  // rx after x; y overwritten where it has a root, its name kept.
  EXPECT_EQ(m.ws.data.Row(0), (std::vector<std::string>{"", "x", "rx", "y", "z"}));
  EXPECT_EQ(m.ws.data.Column(2), (std::vector<std::string>{"rx", "2", "", "", "", ""}));
  EXPECT_EQ(m.ws.data.Column(3),
            (std::vector<std::string>{"y", "1,4142135623731", "1,4142135623731", "0", "1", "0,707106781186548"}));
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 2), "sqare_root(x)");
  EXPECT_EQ(m.ws.vars.GetCell(kType, 2), "num=0_0;");
  // X/Y: division by y = 0 and a missing x leave the cell empty; overwrite keeps old cells.
  ASSERT_TRUE(ApplyBivariate(m.ws, Bivariate::Divide, {1}, 4, {{"", "", Placement::Same}}));
  EXPECT_EQ(m.ws.data.Column(1), (std::vector<std::string>{"x", "4", "", "9", "abc", "-4"}));
  ASSERT_TRUE(ApplyBivariate(m.ws, Bivariate::Multiply, {3}, 4, {{"q", "product", Placement::Before}}));
  EXPECT_EQ(m.ws.data.Row(0), (std::vector<std::string>{"", "x", "rx", "q", "y", "z"}));
  EXPECT_EQ(m.ws.data.Column(3),
            (std::vector<std::string>{"q", "1,4142135623731", "1,4142135623731", "0", "1", "0,707106781186548"}));
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 3), "product");
  EXPECT_TRUE(m.ws.dataChanged);
}

TEST(Formula, SeveralTargetsFollowTheirMovingSources) {
  MemoryWorkspace m({{"a"}, {"b"}, {"c"}}, {{"1", "2", "3"}});
  ASSERT_TRUE(ApplyUnivariate(m.ws, Univariate::AddC, 10, {3, 1, 2},
                              {{"c1", "", Placement::Before}, {"a1", "", Placement::After}, {"b1", "", Placement::End}}));
  EXPECT_EQ(m.ws.data.Row(0), (std::vector<std::string>{"", "a", "a1", "b", "c1", "c", "b1"}));
  EXPECT_EQ(m.ws.data.Row(1), (std::vector<std::string>{"1", "1", "11", "2", "13", "3", "12"}));
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 2), "(a)+10");
  for (int v = 1; v <= 6; ++v) EXPECT_EQ(m.ws.vars.GetCell(kIndex, v), std::to_string(v));
}

TEST(Formula, NameChecksRefuseBeforeAnyChange) {
  MemoryWorkspace m({{"a"}, {"b"}}, {{"1", "2"}}, Language::Hungarian);
  auto refused = [&](std::vector<NewTarget> targets, const std::string& message) {
    m.user.told.clear();
    EXPECT_FALSE(ApplyUnivariate(m.ws, Univariate::Abs, 1, {1, 2}, targets));
    EXPECT_EQ(m.ws.NumberOfVariables(), 2);
    EXPECT_EQ(m.ws.data.GetCell(2, 1), "2");
    ASSERT_EQ(m.user.told.size(), 1u);
    EXPECT_EQ(m.user.told[0], message);
  };
  refused({{"n1", "", Placement::End}, {"", "", Placement::End}}, "Minden új változónak kell adnia nevet.");
  refused({{"n1", "", Placement::End}, {"N1", "", Placement::End}}, "Minden új változónak egyedi nevet kell adnia.");
  refused({{"", "", Placement::Same}, {"A", "", Placement::End}}, "Minden új változónak egyedi nevet kell adnia.");
  refused({{"n1", "", Placement::End}}, "Minden új változónak adjon nevet!");
  refused({{"longer_than8", "", Placement::End}, {"", "", Placement::Same}},
          "A rövid név legfeljebb 8 karakteres: longer_than8");
  m.user.told.clear();
  EXPECT_FALSE(ApplyBivariate(m.ws, Bivariate::Add, {1}, 0, {{"s", "", Placement::End}}));
  EXPECT_EQ(m.user.told.at(0), "Válasszon Y változót!");
}

}  // namespace
}  // namespace tarvika
