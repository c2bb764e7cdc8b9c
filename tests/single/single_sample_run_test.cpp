#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "support/memory_workspace.h"
#include "frame/analysis_request.h"
#include "frame/analysis_dialogs.h"
#include "analyses/command_table.h"

namespace tarvika {
namespace {

using testing::CrLfLines;
using testing::Declared;
using testing::MemoryWorkspace;

// Ten cases built for the corners of the table: a declared missing code, foreign text, a
// variable without valid values, a constant, negatives, huge values, two valid values; a
// grouping variable whose codes 3 and 4 share a label and whose group "empty" has no case,
// and one of intervals.
MemoryWorkspace SmallProject(Language lang, const std::string& folder) {
  std::vector<Declared> vars = {
      {"g", "Group code", "1=one;/2=empty;/3=three;/4=three;/", "codes"},
      {"age", "Age in years", "0_10=young;/10_20=middle;/20_99=old;/", "intervals"},
      {"x", "Score with missing code 99", "", "none", "99"},
      {"neg", "", "", "none"},
      {"const", "c", "", "none"},
      {"empty", "Nothing valid", "", "none"},
      {"big", "Huge values", "", "none"},
      {"two", "Two valid values", "", "none"},
  };
  std::vector<std::vector<std::string>> rows = {
      {"1", "5", "10.5", "-1", "5", "", "0", "1"},
      {"1", "10", "12", "1", "5", "", "200000000", ""},
      {"3", "10.5", "99", "2", "5", "a", "400000000", "3"},
      {"3", "15", "11.25", "", "5", "", "", ""},
      {"4", "20", "9", "-1", "5", "", "0", ""},
      {"4", "25", "13", "1", "5", "", "", ""},
      {"", "30", "14.5", "0", "5", "", "", ""},
      {"abc", "99", "8", "1", "5", "", "", ""},
      {"5", "100", "7.75", "0", "5", "", "", ""},
      {"1", "0", "x", "2", "5", "", "", ""},
  };
  return MemoryWorkspace(vars, rows, lang, '.', folder);
}

std::vector<std::string> ExpectedLines(const std::string& name) {
  std::ifstream in(std::string(TARVIKA_TEST_DATA) + "/single/expected/" + name, std::ios::binary);
  EXPECT_TRUE(in) << name;
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

void ExpectSameLines(const std::vector<std::string>& actual, const std::vector<std::string>& expected) {
  for (std::size_t i = 0; i < std::max(actual.size(), expected.size()); ++i) {
    std::string a = i < actual.size() ? actual[i] : "<none>";
    std::string e = i < expected.size() ? expected[i] : "<none>";
    EXPECT_EQ(a, e) << "line " << i + 1;
  }
}

// The run command of the single-sample dialog with the given selection.
PreparedRun Prepare(Workspace& ws, int code, std::vector<std::string> selected, std::string conditional) {
  AnalysisDialog dialog(AllCommands(), DialogKind::SingleSample);
  dialog.commandCode = code;
  dialog.selected = std::move(selected);
  dialog.conditional = std::move(conditional);
  return PrepareRun(ws, dialog);
}

struct Case {
  const char* expected;
  Language lang;
  ReportFormat format;
  std::vector<std::string> selected;
  std::string conditional;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.expected; }

class BasicReport : public ::testing::TestWithParam<Case> {};

TEST_P(BasicReport, MatchesTheReportVerifiedByHand) {
  const Case& c = GetParam();
  MemoryWorkspace m = SmallProject(c.lang, c.expected);
  std::string shown;
  m.ws.hooks.showReport = [&](const std::string& path) { shown = path; };
  PreparedRun run = Prepare(m.ws, 11, c.selected, c.conditional);
  ASSERT_TRUE(run.ok()) << run.error;
  ASSERT_TRUE(RunRequest(m.ws, run.request, c.format));
  std::string file = c.format == ReportFormat::Html ? "zuli_akt.html" : "zuli_akt.txt";
  EXPECT_EQ(shown, (m.programFolder / "output" / file).string());
  std::string text = m.Output(file);
  if (std::getenv("TARVIKA_SHOW_REPORT")) std::cout << text;
  ExpectSameLines(CrLfLines(text), ExpectedLines(c.expected));
}

const std::vector<std::string> kAll = {"x", "neg", "const", "empty", "big", "two"};

INSTANTIATE_TEST_SUITE_P(
    Mode11, BasicReport,
    ::testing::Values(Case{"small_en.txt", Language::English, ReportFormat::Text, kAll, ""},
                      Case{"small_hu_codes.txt", Language::Hungarian, ReportFormat::Text,
                           {"two", "age", "x", "neg"}, "g"},
                      Case{"small_en_intervals.html", Language::English, ReportFormat::Html, {"x", "two"}, "age"},
                      Case{"small_hu.html", Language::Hungarian, ReportFormat::Html, {"x", "const"}, ""}),
    [](const ::testing::TestParamInfo<Case>& info) {
      std::string name = info.param.expected;
      for (char& ch : name) {
        if (ch == '.') ch = '_';
      }
      return name;
    });

// The group sizes come from the single-cell reader, where foreign text is the valid code 0;
// the data pass reads the conditional cell with the row, where the same text is missing.
// So the size of group "zero" counts the foreign text, its table doesn't.
TEST(SingleSampleRun, TheDataPassReadsTheConditionalCellWithTheRow) {
  MemoryWorkspace m({{"c", "", "0=zero;/1=one;/", "codes"}, {"x"}},
                    {{"0", "10"}, {"abc", "20"}, {"1", "30"}, {"1", "50"}}, Language::English, '.', "passes");
  PreparedRun run = Prepare(m.ws, 11, {"x"}, "c");
  ASSERT_TRUE(run.ok()) << run.error;
  ASSERT_TRUE(RunRequest(m.ws, run.request, ReportFormat::Text));
  std::vector<std::string> lines = CrLfLines(m.Output("zuli_akt.txt"));
  auto at = std::find(lines.begin(), lines.end(), "GROUP INDEX: 1.  Group name: zero");
  ASSERT_GE(std::distance(at, lines.end()), 7);
  EXPECT_EQ(at[3], "Cases in current group:     2");
  EXPECT_TRUE(at[6].starts_with("  2. \tx                      \t1\t10.00\t")) << at[6];
}

TEST(SingleSampleRun, RefusesAnEmptyOrUnknownSelectionAndTouchesNothing) {
  MemoryWorkspace m = SmallProject(Language::English, "refuse");
  m.ws.vars.SetCell(kRole, 3, "C");
  EXPECT_EQ(Prepare(m.ws, 11, {}, "").error, "At least one variable has to be selected.");
  EXPECT_EQ(Prepare(m.ws, 11, {"x", "nope"}, "").error, "Unknown variable: nope");
  EXPECT_EQ(Prepare(m.ws, 11, {"x"}, "nope").error, "Unknown variable: nope");
  EXPECT_EQ(m.ws.vars.GetCell(kRole, 3), "C");
}

TEST(SingleSampleRun, TheConditionalVariableWinsOverTheSelectionAndNamesIgnoreCase) {
  MemoryWorkspace m = SmallProject(Language::English, "roles");
  PreparedRun run = Prepare(m.ws, 11, {"X", "g"}, "g");
  ASSERT_TRUE(run.ok());
  EXPECT_EQ(run.request.role[1], 'N');
  EXPECT_EQ(run.request.role[3], 'X');
  EXPECT_EQ(run.request.numberOfSelected, 2);
  SelectedIndex index = BuildSelectedIndex(run.request);
  EXPECT_EQ(index.columns, (std::vector<int>{0, 3, 1}));
  EXPECT_EQ(index.analysed, 1);
  EXPECT_EQ(index.conditional, 2);
}

}  // namespace
}  // namespace tarvika
