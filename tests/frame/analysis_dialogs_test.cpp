#include <gtest/gtest.h>

#include <fmt/format.h>

#include <fstream>
#include <stdexcept>

#include "analyses/command_table.h"
#include "frame/analysis_dialogs.h"
#include "support/memory_workspace.h"

namespace tarvika {
namespace {

using testing::MemoryWorkspace;

MemoryWorkspace Project(Language lang = Language::English) {
  return MemoryWorkspace({{"a"}, {"b"}, {"c"}, {"d"}, {"text", "", "", "none", "", "string=20;"}, {"g", "", "1=x;/2=y;/", "codes"}},
                         {{"1", "2", "3", "4", "t", "1"}}, lang);
}

std::string Roles(const AnalysisRequest& r) { return std::string(r.role.begin() + 1, r.role.end()); }

std::vector<int> ListOrder(DialogKind kind) {
  std::vector<int> codes;
  for (const CommandInfo* c : AllCommands().ListOf(kind)) codes.push_back(c->code);
  return codes;
}

TEST(AnalysisDialogs, CommandsAndTheirListOrder) {
  EXPECT_EQ(ListOrder(DialogKind::Relations), (std::vector<int>{31, 32, 34, 35, 33}));
  EXPECT_EQ(ListOrder(DialogKind::SingleSample), (std::vector<int>{11, 12, 13, 14, 15}));  // 16 isn't offered
  EXPECT_EQ(AllCommands().Find(34)->english, "Relationship of discrete variables - Crosstab");
  EXPECT_EQ(AllCommands().Find(12)->hungarian, "Részletesebb mintastatisztikák");
  EXPECT_TRUE(MenuEntryIsBuilt("analysis.single"));
  EXPECT_TRUE(MenuEntryIsBuilt("analysis.relations"));  // the crosstab
  EXPECT_TRUE(MenuEntryIsBuilt("analysis.pattern"));  // the clustering
  EXPECT_FALSE(MenuEntryIsBuilt("analysis.r_multivariate"));
  EXPECT_TRUE(MenuEntryIsBuilt("file.save"));
  EXPECT_EQ(AnalysisDialog(AllCommands(), DialogKind::Relations).commandCode, 31);
  EXPECT_EQ(AllCommands().Find(17), nullptr);
}

TEST(AnalysisDialogs, EachDialogRefusesAnIncompleteSelectionInTheSessionLanguage) {
  struct Case {
    DialogKind kind;
    int code;
    std::vector<std::string> selected, grouping;
    Language lang;
    std::string message;
  } cases[] = {
      {DialogKind::SingleSample, 11, {}, {}, Language::English, "At least one variable has to be selected."},
      {DialogKind::SingleSample, 11, {}, {}, Language::Hungarian, "Legalább egy változót ki kell választania!"},
      {DialogKind::Groups, 21, {"a"}, {}, Language::English, "You must select one grouping variable."},
      {DialogKind::Groups, 22, {"a"}, {}, Language::English, "At least two dependent variables have to be selected."},
      {DialogKind::Groups, 23, {"a"}, {"g"}, Language::English, "You must select two grouping variables."},
      {DialogKind::Groups, 23, {"a"}, {"g"}, Language::Hungarian, "Két csoportosító változót kell kiválasztania!"},
      {DialogKind::Groups, 26, {"a"}, {}, Language::English, "You must select a case code variable."},
      {DialogKind::Relations, 31, {"a", "nope"}, {}, Language::English, "Unknown variable: nope"},
      {DialogKind::SingleSample, 11, {"text"}, {}, Language::English, "Not a numeric variable: text"},
  };
  for (const Case& c : cases) {
    MemoryWorkspace m = Project(c.lang);
    m.ws.vars.SetCell(kRole, 2, "Z");
    AnalysisDialog d(AllCommands(), c.kind);
    d.commandCode = c.code;
    d.selected = c.selected;
    d.grouping = c.grouping;
    EXPECT_EQ(PrepareRun(m.ws, d).error, c.message) << c.code;
    EXPECT_EQ(m.ws.vars.GetCell(kRole, 2), "Z");  // a refused run changes nothing
  }
}

TEST(AnalysisDialogs, RolesAndTheOrderOfTheSelectedIndex) {
  MemoryWorkspace m = Project();
  // Groups: dependents X with their scale, grouping G, the first covariate C, the conditional N.
  AnalysisDialog groups(AllCommands(), DialogKind::Groups);
  groups.commandCode = 21;
  groups.selected = {"d", "b"};
  groups.grouping = {"g"};
  groups.covariates = {"a", "c"};
  groups.conditional = "c";
  std::string error;
  ASSERT_TRUE(groups.SetFor("scaleType", "b", "ordinális", Language::English, &error)) << error;
  PreparedRun run = PrepareRun(m.ws, groups);
  ASSERT_TRUE(run.ok()) << run.error;
  EXPECT_EQ(Roles(run.request), "CXNX G");
  EXPECT_EQ(m.ws.vars.GetCell(kAttribute, 2), "ordinal");
  EXPECT_EQ(run.request.scaleKind[2], kScaleDiscrete);
  SelectedIndex index = BuildSelectedIndex(run.request);
  EXPECT_EQ(index.columns, (std::vector<int>{0, 2, 4, 1, 6, 3}));  // X in table order, C, G, N
  EXPECT_EQ(index.analysed, 2);
  EXPECT_EQ(index.grouping, 4);
  EXPECT_EQ(index.conditional, 5);

  // Relations: the excluded pass first, then X, Y, N, C; the last letter wins.
  AnalysisDialog rel(AllCommands(), DialogKind::Relations);
  rel.selected = {"a", "b"};
  rel.yList = {"b", "c"};
  rel.conditional = "c";
  rel.covariates = {"d"};
  rel.excluded = {"a"};
  run = PrepareRun(m.ws, rel);
  ASSERT_TRUE(run.ok()) << run.error;
  EXPECT_EQ(Roles(run.request), "XYNC  ");
  EXPECT_EQ(run.request.Get(param::kPairing), "Cross");

  // Single sample: a conditional variable that is also selected is the conditional one.
  AnalysisDialog single(AllCommands(), DialogKind::SingleSample);
  single.selected = {"a"};
  single.conditional = "a";
  run = PrepareRun(m.ws, single);
  EXPECT_EQ(Roles(run.request), "N     ");
  EXPECT_EQ(m.ws.vars.GetCell(kRole, 4), "");  // the scratch columns were cleared first
}

TEST(AnalysisDialogs, ParametersTheirBoundsAndTheTrimmingRule) {
  AnalysisDialog d(AllCommands(), DialogKind::SingleSample);
  std::string error;
  EXPECT_FALSE(d.Set("trimmingPercent", "26", Language::English, &error));
  EXPECT_EQ(error, "trimmingPercent must be a whole number from 0 to 25.");
  EXPECT_FALSE(d.Set("classMultiplier", "0", Language::Hungarian, &error));
  EXPECT_EQ(error, "classMultiplier értéke egész szám legyen, 1 és 6 között.");
  EXPECT_FALSE(d.Set("binarise", "on", Language::English, &error));
  EXPECT_EQ(error, "Unknown parameter of this dialog: binarise");
  EXPECT_TRUE(d.Set("saveStandardized", "yes", Language::English, &error));
  EXPECT_EQ(d.Value("saveStandardized"), " Yes ");
  EXPECT_EQ(ToggleValue(d.Value("saveStandardized")), 2);
  EXPECT_EQ(ToggleValue(" If signif. "), 1);
  EXPECT_EQ(ToggleValue(" No "), 0);
  EXPECT_EQ(d.Value("confidenceIndex"), "1");

  for (auto [percent, fraction, on] : {std::tuple{0, 0.025, false}, std::tuple{1, 0.01, true},
                                       std::tuple{25, 0.25, true}, std::tuple{30, 0.25, true}}) {
    Trimming t = TrimmingFromPercent(percent);
    EXPECT_DOUBLE_EQ(t.fraction, fraction) << percent;
    EXPECT_EQ(t.on, on) << percent;
  }
  EXPECT_EQ(SanitiseVariableName("Reg Var-2", "RegVar"), "Reg_Var_");
  EXPECT_EQ(SanitiseVariableName("9lives", "RegVar"), "v9lives");
  EXPECT_EQ(SanitiseVariableName("  ", "Scale"), "Scale");
  EXPECT_EQ(SanitiseVariableName("Életkorú", "x"), "Életkorú");
}

TEST(AnalysisDialogs, HypotheticalValuesAreRememberedUntilReset) {
  MemoryWorkspace m = Project();
  AnalysisDialog d(AllCommands(), DialogKind::SingleSample);
  d.commandCode = 14;
  d.selected = {"a", "b"};
  std::string error;
  ASSERT_TRUE(d.SetFor("hypotheticalValue", "a", "50,5", Language::English, &error));
  ASSERT_TRUE(PrepareRun(m.ws, d).ok());
  EXPECT_EQ(m.ws.vars.GetCell(kParameter, 1), "50.5");
  EXPECT_EQ(m.ws.vars.GetCell(kParameter, 2), "1");  // a new entry
  d.perVariable.clear();  // the list was emptied and filled again: the session remembers
  EXPECT_EQ(d.ValueFor("hypotheticalValue", "a"), "50.5");
  ResetDialog(d);
  EXPECT_TRUE(d.selected.empty());
  EXPECT_EQ(d.ValueFor("hypotheticalValue", "a"), "1");
}

TEST(AnalysisDialogs, SourceListLeavesOutStringsAndChosenNames) {
  MemoryWorkspace m = Project();
  AnalysisDialog d(AllCommands(), DialogKind::Groups);
  d.selected = {"b"};
  d.conditional = "g";
  EXPECT_EQ(SourceList(m.ws, d), (std::vector<std::string>{"a", "c", "d"}));
}

// A stub command: one descriptor row and one function are all a new analysis needs.
int stubRuns = 0;
void StubAnalysis(AnalysisRun& run) {
  ++stubRuns;
  run.ForEachGroup([&] {
    run.report.Line(fmt::format("group {}: {} cases, trimming {}", run.Group(), run.GroupRows().size(),
                                run.request.Get(param::kTrimmingPercent)));
  });
}

const CommandTable& StubTable() {
  static const CommandTable table({
      {.code = kBasicStatistics, .dialog = DialogKind::SingleSample, .english = "Stub", .hungarian = "Csonk",
       .titleEnglish = "Stub report", .titleHungarian = "Csonk jelentés", .parameters = {"trimmingPercent"},
       .analyse = StubAnalysis},
      {.code = kDetailedStatistics, .dialog = DialogKind::SingleSample, .english = "Not built", .hungarian = "Nincs kész"},
  });
  return table;
}

std::string ReadReport(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return FromReportEncoding(std::string(std::istreambuf_iterator<char>(in), {}));
}

TEST(AnalysisDialogs, RunDispatchesOrAnswersUnderConstruction) {
  MemoryWorkspace m = Project(Language::Hungarian);
  AnalysisDialog d(StubTable(), DialogKind::SingleSample);
  d.selected = {"a"};
  d.conditional = "g";
  d.Set("saveStandardized", "Yes", Language::English, nullptr);
  d.Set("trimmingPercent", "5", Language::English, nullptr);
  stubRuns = 0;
  EXPECT_EQ(RunAnalysis(m.ws, d, ReportFormat::Text), RunResult::Ran);
  EXPECT_EQ(stubRuns, 1);
  const std::string text = ReadReport(m.programFolder / "output" / "zuli_akt.txt");
  EXPECT_NE(text.find("Csonk jelentés\r\n"), std::string::npos);
  EXPECT_NE(text.find("group 1: 1 cases, trimming 5\r\n"), std::string::npos) << text;
  EXPECT_EQ(d.Value("saveStandardized"), " No ");  // switched off so it won't run twice
  // The typed names refuse a parameter the dialog doesn't have, or has with another kind.
  EXPECT_THROW(PrepareRun(m.ws, d).request.Get(param::kPairing), std::logic_error);
  EXPECT_THROW(PrepareRun(m.ws, d).request.Get(FlagParameter{"trimmingPercent"}), std::logic_error);

  d.commandCode = kDetailedStatistics;
  std::string message;
  std::filesystem::remove(m.programFolder / "output" / "zuli_akt.txt");
  EXPECT_EQ(RunAnalysis(m.ws, d, ReportFormat::Text, &message), RunResult::NotBuilt);
  EXPECT_EQ(message, "Elnézést, ez a rész még készül.");
  EXPECT_FALSE(std::filesystem::exists(m.programFolder / "output" / "zuli_akt.txt"));
  EXPECT_EQ(stubRuns, 1);
  d.commandCode = kBasicStatistics;
  d.selected.clear();
  EXPECT_EQ(RunAnalysis(m.ws, d, ReportFormat::Text), RunResult::Refused);
  EXPECT_EQ(m.user.told.back(), "Legalább egy változót ki kell választania!");

  // The conditional variable that is also the only selected one leaves nothing to analyse:
  // the report says so instead of staying empty.
  d.selected = {"g"};
  EXPECT_EQ(RunAnalysis(m.ws, d, ReportFormat::Text), RunResult::Ran);
  EXPECT_EQ(stubRuns, 1);
  EXPECT_NE(ReadReport(m.programFolder / "output" / "zuli_akt.txt").find("Nem maradt elemezhető változó"),
            std::string::npos);

  // A report file that can't be written stops the run before anything changes. (Tests run
  // as root, who may write anything: the file is made a folder instead.)
  d.selected = {"a"};
  std::filesystem::remove(m.programFolder / "output" / "zuli_akt.txt");
  std::filesystem::path report = m.programFolder / "output" / "zuli_akt.txt";
  std::filesystem::create_directories(report);
  EXPECT_EQ(RunAnalysis(m.ws, d, ReportFormat::Text), RunResult::Refused);
  EXPECT_EQ(m.user.told.back(),
            "A " + report.string() + " nevű fájl nyitva van. Zárja be, mielőtt Tarvika elemzéseket végez!");
  EXPECT_EQ(stubRuns, 1);
}

}  // namespace
}  // namespace tarvika
