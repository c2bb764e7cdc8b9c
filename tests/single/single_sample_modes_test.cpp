// The corners of modes 12 to 15 that could break: class counts, the bar scale,
// binarization at 20 and 21 values, the stops of the test block and of the normality test,
// and the names and limit of new variables.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "support/dialog_settings.h"
#include "support/memory_workspace.h"
#include "frame/analysis_dialogs.h"
#include "single/class_table.h"
#include "analyses/command_table.h"
#include "workspace/new_variable.h"
#include "support/printed_p_values.h"

namespace tarvika {
namespace {

using testing::CrLfLines;
using testing::Declared;
using testing::MemoryWorkspace;

// A workspace of one variable "x" (and "y" when given) with the values as cells; the
// program folder gets the table files.
struct Project {
  explicit Project(const std::vector<std::string>& x, const std::vector<std::string>& y = {})
      : m(Vars(y), Rows(x, y)) {
    std::filesystem::copy(std::filesystem::path(TARVIKA_PROGRAM_DIR) / "stattab", m.programFolder / "stattab");
  }
  static std::vector<Declared> Vars(const std::vector<std::string>& y) {
    std::vector<Declared> vars = {{"x"}};
    if (!y.empty()) vars.push_back({"y"});
    return vars;
  }
  static std::vector<std::vector<std::string>> Rows(const std::vector<std::string>& x, const std::vector<std::string>& y) {
    std::vector<std::vector<std::string>> rows;
    for (std::size_t r = 0; r < std::max(x.size(), y.size()); ++r) {
      rows.push_back({r < x.size() ? x[r] : "", r < y.size() ? y[r] : ""});
    }
    return rows;
  }
  // Runs the command on the variables with the settings ("name=value" or
  // "name:variable=value") and gives the lines of the report.
  std::vector<std::string> Run(int code, std::vector<std::string> vars, std::vector<std::string> settings = {}) {
    AnalysisDialog dialog(AllCommands(), DialogKind::SingleSample);
    dialog.commandCode = code;
    dialog.selected = std::move(vars);
    testing::ApplySettings(dialog, settings);
    PreparedRun run = PrepareRun(m.ws, dialog);
    EXPECT_TRUE(run.ok()) << run.error;
    EXPECT_TRUE(RunRequest(m.ws, run.request));
    return CrLfLines(m.Output("zuli_akt.txt"));
  }
  MemoryWorkspace m;
};

std::vector<std::string> Repeat(std::vector<std::pair<std::string, int>> counts) {
  std::vector<std::string> cells;
  for (auto& [value, times] : counts) cells.insert(cells.end(), times, value);
  return cells;
}

std::vector<std::string> Sequence(int n, double start = 1) {
  std::vector<std::string> cells;
  for (int i = 0; i < n; ++i) cells.push_back(std::to_string(start + i));
  return cells;
}

std::vector<int> Frequencies(const ClassTable& t) {
  std::vector<int> freq;
  for (int e = 0; e < t.Count(); ++e) freq.push_back(t.Frequency(e));
  return freq;
}

bool Has(const std::vector<std::string>& lines, const std::string& text) {
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& l) { return l.find(text) != std::string::npos; });
}

TEST(SingleSampleModes, ClassCounts) {
  EXPECT_EQ(ClassCountFor(100, 1, false, false), 10);  // trunc(2.1715 * 4.605)
  EXPECT_EQ(ClassCountFor(100, 6, false, false), 60);
  EXPECT_EQ(ClassCountFor(3, 1, false, false), 6);     // 2, raised to 6
  EXPECT_EQ(ClassCountFor(1000000, 1, false, false), 15);
  EXPECT_EQ(ClassCountFor(50, 1, true, false), 50);
  EXPECT_EQ(ClassCountFor(100, 1, false, true), 100);
  EXPECT_EQ(ClassCountFor(101, 1, false, true), 7);
  EXPECT_EQ(ClassCountFor(1000000, 1, false, true), 2000);
  // The k-th distinct value turns a continuous table into k classes [min + c*w, min + (c+1)*w),
  // the maximum in the last; a value seen before and after the turn stays in one class.
  ClassTable t;
  t.Reset(6, 0, 6, true);
  for (double x : {0.0, 0.6, 6.0, 2.0, 3.0, 4.0}) t.Add(x);
  ASSERT_TRUE(t.Classes());
  t.Add(0.6);
  EXPECT_EQ(Frequencies(t), (std::vector<int>{3, 0, 1, 1, 1, 1}));
  EXPECT_DOUBLE_EQ(t.Value(0), 0.5);
  // 16.9 starts the fifth class of 0.975 from 13, though (16.9 - 13)/0.975 falls a hair
  // short of 4 in floating point.
  ClassTable edge;
  edge.Reset(8, 13, 20.8, true);
  for (double x : {13.0, 14.0, 15.0, 16.0, 16.9, 18.0, 19.0, 20.8, 16.9}) edge.Add(x);
  EXPECT_EQ(Frequencies(edge), (std::vector<int>{1, 1, 1, 1, 2, 1, 1, 1}));
}

// A 1-6 item of 25 answers has 6 classes, one per answer: the counts are those of R's
// table(x), 7 2 4 2 4 6, whichever answers come before the sixth distinct one.
TEST(SingleSampleModes, AnItemWithAsManyAnswersAsClassesCountsEachAnswerOnce) {
  const std::vector<int> tableOfR = {7, 2, 4, 2, 4, 6};
  const std::vector<std::vector<double>> orders = {
      {1, 2, 3, 4, 5, 6, 1, 1, 1, 1, 1, 1, 2, 3, 3, 3, 4, 5, 5, 5, 6, 6, 6, 6, 6},
      {6, 6, 5, 5, 4, 4, 3, 3, 3, 2, 1, 1, 5, 5, 3, 6, 6, 6, 1, 1, 1, 1, 1, 2, 6}};
  for (const std::vector<double>& x : orders) {
    ASSERT_EQ(ClassCountFor(static_cast<int>(x.size()), 1, false, false), 6);
    ClassTable t;
    t.Reset(6, 1, 6, true);
    for (double v : x) t.Add(v);
    ASSERT_TRUE(t.Classes());
    EXPECT_EQ(Frequencies(t), tableOfR);
  }
  std::vector<std::string> cells;
  for (double v : orders[0]) cells.push_back(std::to_string(static_cast<int>(v)));
  Project item(cells);
  auto lines = item.Run(13, {"x"});
  const std::vector<std::string> rows(std::find(lines.begin(), lines.end(), "Midpoint\tFreq.\t%\tCum%") + 1,
                                      std::find(lines.begin(), lines.end(), "TOTAL:\t25"));
  EXPECT_EQ(rows, (std::vector<std::string>{"1.42\t7\t28.0\t28.0\t|=======", "2.25\t2\t8.0\t36.0\t|==",
                                            "3.08\t4\t16.0\t52.0\t|====", "3.92\t2\t8.0\t60.0\t|==",
                                            "4.75\t4\t16.0\t76.0\t|====", "5.58\t6\t24.0\t100.0\t|======"}));
}

TEST(SingleSampleModes, TheBarIsTheFrequencyUpTo45ThenScaled) {
  Project up({Repeat({{"1", 45}, {"2", 3}})});
  auto lines = up.Run(13, {"x"}, {"scaleType:x=discrete"});
  EXPECT_TRUE(Has(lines, "1\t45\t93.8\t93.8\t|" + std::string(45, '=')));
  EXPECT_TRUE(Has(lines, "2\t3\t6.3\t100.0\t|===")) << lines.back();
  Project over({Repeat({{"1", 46}, {"2", 23}})});
  lines = over.Run(13, {"x"}, {"scaleType:x=discrete"});
  EXPECT_TRUE(Has(lines, "1\t46\t66.7\t66.7\t|" + std::string(45, '=')));
  EXPECT_FALSE(Has(lines, std::string(46, '=')));
  EXPECT_TRUE(Has(lines, "2\t23\t33.3\t100.0\t|" + std::string(22, '=')));  // trunc(45/46*23)
  // 45/78*78 falls just short of 45 in floating point; the largest row still gets the full bar.
  Project rounding({Repeat({{"1", 78}, {"2", 3}})});
  lines = rounding.Run(13, {"x"}, {"scaleType:x=discrete"});
  EXPECT_TRUE(Has(lines, "1\t78\t96.3\t96.3\t|" + std::string(45, '=')));
  EXPECT_TRUE(Has(lines, "2\t3\t3.7\t100.0\t|=")) << lines.back();
}

TEST(SingleSampleModes, BinarizationAtTwentyAndTwentyOneValues) {
  std::vector<std::string> twenty = Sequence(20);
  twenty.push_back("");  // a missing case gets empty cells
  Project p(twenty, Sequence(21));
  auto lines = p.Run(13, {"x", "y"}, {"scaleType:x=discrete", "scaleType:y=discrete", "binarize=on"});
  EXPECT_TRUE(Has(lines, "Since this variable has more than 20 different values, it was not binarized."));
  Workspace& ws = p.m.ws;
  ASSERT_EQ(ws.NumberOfVariables(), 22);
  EXPECT_EQ(ws.vars.GetCell(kShortName, 3), "x_1");
  EXPECT_EQ(ws.vars.GetCell(kShortName, 22), "x_20");
  EXPECT_EQ(ws.vars.GetCell(kType, 22), "num=0_0;");
  EXPECT_EQ(ws.data.GetCell(22, 0), "x_20");
  EXPECT_EQ(ws.data.GetCell(3, 1), "1");
  EXPECT_EQ(ws.data.GetCell(3, 2), "0");
  EXPECT_EQ(ws.data.GetCell(3, 21), "");
  EXPECT_TRUE(ws.dataChanged);
}

TEST(SingleSampleModes, TestBlockStops) {
  Project p({"5", "5", "5", "5"}, {"1", "2"});
  auto lines = p.Run(14, {"x", "y"}, {"hypotheticalValue:x=5", "hypotheticalValue:y=0"});
  EXPECT_TRUE(Has(lines, "There are few cases to perform valid statistical calculations."));
  EXPECT_TRUE(Has(lines, "Variance is low (< 0.000001) to perform any statistical test."));
  EXPECT_FALSE(Has(lines, "One-sample t test"));
  // A huge t has no Johnson or Gayen line; 21 deviations from h take the normal
  // approximation, 20 the exact p.
  Project far(Sequence(21, 100), Sequence(20));
  lines = far.Run(14, {"x", "y"}, {"hypotheticalValue:x=0", "hypotheticalValue:y=0.5"});
  EXPECT_TRUE(Has(lines, "   - One-sample t test: t(20) = 81.240**  (p = 0.0000)"));
  EXPECT_FALSE(Has(lines, "J(20)"));
  EXPECT_TRUE(Has(lines, "   - Wilcoxon signed rank test: R- = 0.0, R+ = 231.0, z = 4.015  (p = 0.0001)***"));
  EXPECT_TRUE(Has(lines, "   - Wilcoxon signed rank test: R- = 0.0, R+ = 210.0  (p = 0.0000)***"));
  EXPECT_TRUE(Has(lines, "   - Johnson's modified t test: J(19) = "));
}

TEST(SingleSampleModes, NormalityNeedsEightCasesAndSwitchesTestsAbove100) {
  Project small(Sequence(7));
  EXPECT_TRUE(Has(small.Run(15, {"x"}), "There are few cases to perform a test of normality."));
  Project two(Repeat({{"1", 5}, {"2", 5}}));
  EXPECT_TRUE(Has(two.Run(15, {"x"}), "Number of different values: 2. No use to perform a test of normality."));
  // Above 100 cases three values leave the chi-square no degree of freedom.
  Project three(Repeat({{"1", 40}, {"2", 50}, {"3", 40}}));
  EXPECT_TRUE(Has(three.Run(15, {"x"}), "Number of different values: 3. No use to perform a test of normality."));
  std::vector<std::string> hundredCases = Sequence(99);
  hundredCases.push_back("50");
  Project hundred(hundredCases, Sequence(101));
  auto lines = hundred.Run(15, {"x", "y"}, {"saveStandardized=yes"});
  // 1 to 99 and 50 against the normal of their mean and SD: R's lillie.test gives D 0.0595
  // and p 0.517 (0.87 by Kolmogorov's distribution, which assumes a known mean and SD).
  EXPECT_TRUE(Has(lines, "Kolmogorov's test of normality (Lilliefors): Dmax = 0.060, D* = 0.595  (p = 0.5"));
  EXPECT_TRUE(Has(lines, "Normality test, chi-square method (df = "));
  Workspace& ws = hundred.m.ws;
  ASSERT_EQ(ws.NumberOfVariables(), 4);
  EXPECT_EQ(ws.vars.GetCell(kShortName, 3), "xz");
  EXPECT_EQ(ws.data.GetCell(3, 1), "-1.7146");  // (1 - 50)/28.577, as R gives it
  EXPECT_EQ(ws.data.GetCell(3, 101), "");
}

// The critical t of the intervals and markers at 2 and at 299 df, against R's t.test:
// (1, 2, 6) has the 95% interval (-3.572, 9.572) and t = 4.583 (p = 0.0445) against -4;
// 1 to 300 has (140.644, 160.356) and t = 1.969 (p = 0.0499) against 140.639.
TEST(SingleSampleModes, IntervalsAndTMarkersAtFewAndManyDf) {
  Project p({"1", "2", "6"}, Sequence(300));
  auto lines = p.Run(12, {"x", "y"});
  EXPECT_TRUE(Has(lines, "\t    3\t2\t3.000\t1.528\t-3.572\t9.572\t"));
  EXPECT_TRUE(Has(lines, "\t  300\t150.50\t150.50\t5.008\t140.64\t160.36\t"));
  lines = p.Run(14, {"x", "y"}, {"hypotheticalValue:x=-4", "hypotheticalValue:y=140.639"});
  EXPECT_TRUE(Has(lines, "   - One-sample t test: t(2) = 4.583*   (p = 0.0445)"));
  EXPECT_TRUE(Has(lines, "   - One-sample t test: t(299) = 1.969*   (p = 0.0499)"));
}

// Values beyond a billion are the extremes; two values have an SD and an interval, one has
// neither (the median of two is the smaller, by the median convention); data in small
// units are tested; a trimmed t of one kept value is not printed.
// References from R: z of the extremes of (2, 3, 2.5, 2.6) * 1e9 are -1.276 and 1.155;
// t.test(c(1, 3)) has the 95% interval (-10.706, 14.706); the small-unit sample of
// tests/stats/reference/one_sample.csv has t(11) = 0.455 (p = 0.6581).
TEST(SingleSampleModes, ExtremesFewValuesSmallUnitsAndOneKeptValue) {
  Project huge({"2000000000", "3000000000", "2500000000", "2600000000"},
               {"-2000000000", "-3000000000", "-2500000000", "-2600000000"});
  auto lines = huge.Run(11, {"x", "y"});
  EXPECT_TRUE(Has(lines, "\t4\tTooBig\tTooBig\t0.163\tTooBig\tTooBig\t-1.28\t1.15"));
  EXPECT_TRUE(Has(lines, "\t4\tTooBig\tTooBig\t......\tTooBig\tTooBig\t-1.15\t1.28"));

  Project few({"1", "3"}, {"5"});
  lines = few.Run(12, {"x", "y"});
  EXPECT_TRUE(Has(lines, "\t    2\t1\t2.000\t1.000\t-10.71\t14.71\t"));
  EXPECT_TRUE(Has(lines, "\t    1\t5\t5.000\t......\t......\t......\t"));

  Project small({"0.00121", "0.00118", "0.00125", "0.00113", "0.00128", "0.00123", "0.00116", "0.00132", "0.00109",
                 "0.00126", "0.00130", "0.00111"},
                {"1", "2", "6"});
  lines = small.Run(14, {"x", "y"}, {"hypotheticalValue:x=0.0012", "hypotheticalValue:y=0", "trimmingPercent=25"});
  EXPECT_FALSE(Has(lines, "Variance is low"));
  EXPECT_TRUE(Has(lines, "   - One-sample t test: t(11) = 0.455   (p = 0.6581)"));
  EXPECT_FALSE(Has(lines, "Tt(0)"));
  EXPECT_TRUE(Has(lines, "Trimmed t test was not performed due to small sample size and trimming %."));
}

TEST(SingleSampleModes, NewVariableNamesAndTheLimit) {
  Project p({"1"});
  Workspace& ws = p.m.ws;
  EXPECT_EQ(NewVariableName(ws, "abc"), "abc");
  EXPECT_EQ(NewVariableName(ws, "X"), "X0");
  NewVariable(ws, "longname", "", {});
  for (char d = '0'; d <= '7'; ++d) NewVariable(ws, std::string("longnam") + d, "", {});
  EXPECT_EQ(NewVariableName(ws, "LONGNAME"), "LONGNAM8");
  NewVariable(ws, "longnam8", "", {});
  EXPECT_EQ(NewVariableName(ws, "longname"), "var_1");
  EXPECT_EQ(NewVariable(ws, "first", "", {"a"}, 1), 1);  // inserted in front, the rest renumbered
  EXPECT_EQ(ws.vars.GetCell(kIndex, 2), "2");
  EXPECT_EQ(ws.vars.GetCell(kShortName, 2), "x");
  while (ws.NumberOfVariables() < kMaxVariables) NewVariable(ws, "v", "", {});
  EXPECT_FALSE(RoomForVariables(ws, 1));
  EXPECT_EQ(NewVariable(ws, "over", "", {}), 0);
  EXPECT_EQ(ws.NumberOfVariables(), kMaxVariables);
  EXPECT_EQ(VariableLimitMessage(ws),
            "No more new variable can be created since the total number of variables would be over 1000.");
}

// Every p that commands 11 to 15 print is a probability, on data that push the formulas:
// strong skew, few cases, constant values, two values, huge and tiny t, ties everywhere.
TEST(SingleSampleModes, EveryPrintedPIsAProbability) {
  std::vector<std::string> skewed, steps, wide;
  for (int i = 0; i < 40; ++i) skewed.push_back(std::to_string(std::pow(1.3, i)));
  for (int i = 0; i < 150; ++i) steps.push_back(std::to_string(i % 7 == 0 ? 40 + i : i % 3));
  for (int i = 0; i < 130; ++i) wide.push_back(std::to_string(i * i * 0.001));
  struct Data {
    std::vector<std::string> x, y;
    std::string hx, hy;
  };
  const std::vector<Data> sets = {
      {skewed, {"1", "1", "1", "2", "2", "3", "4", "6", "9", "15", "30", "80"}, "20", "5"},
      {{"1", "2", "9"}, {"3", "3", "3", "3", "3", "3", "3", "3", "3", "3"}, "4", "3"},
      {Repeat({{"0", 60}, {"1", 61}}), {"2", "2", "2", "2", "2", "2", "2", "2", "7"}, "0.5", "2"},
      {steps, wide, "1", "5.5"},
      {Sequence(30, 1000), Repeat({{"1", 3}, {"2", 20}, {"3", 2}, {"4", 1}}), "1015.5", "1.999"},
  };
  int checked = 0;
  for (const Data& d : sets) {
    Project p(d.x, d.y);
    const std::vector<std::string> h = {"hypotheticalValue:x=" + d.hx, "hypotheticalValue:y=" + d.hy};
    std::vector<std::vector<std::string>> reports = {
        p.Run(11, {"x", "y"}), p.Run(12, {"x", "y"}), p.Run(12, {"x", "y"}, {"trimmingPercent=25"}),
        p.Run(13, {"x", "y"}), p.Run(13, {"x", "y"}, {"scaleType:x=discrete", "scaleType:y=discrete"}),
        p.Run(14, {"x", "y"}, h), p.Run(14, {"x", "y"}, {h[0], h[1], "trimmingPercent=20"}), p.Run(15, {"x", "y"})};
    for (const auto& lines : reports) {
      std::string report;
      for (const std::string& l : lines) report += l + "\n";
      for (const testing::PrintedP& printed : testing::PrintedPValues(report)) {
        EXPECT_TRUE(printed.value >= 0 && printed.value <= 1) << printed.line;
        ++checked;
      }
    }
  }
  EXPECT_GT(checked, 100);
}

}  // namespace
}  // namespace tarvika
