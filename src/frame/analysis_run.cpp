#include "frame/analysis_run.h"

#include <fmt/format.h>

#include "workspace/workspace.h"

namespace tarvika {
namespace {

constexpr int kProgressStep = 10000;

void LoadTables(const std::vector<StatTable>& wanted, const std::string& programFolder, LoadedTables& tables) {
  const std::filesystem::path folder = TableFolder(programFolder);
  for (StatTable table : wanted) {
    switch (table) {
      case StatTable::F: tables.f = LoadFTable(folder); break;
      case StatTable::Wilcoxon: tables.wilcoxon = LoadWilcoxonTable(folder); break;
      case StatTable::Sign: tables.sign = LoadSignTable(folder); break;
      case StatTable::StudentizedRange: tables.studentizedRange = LoadStudentizedRangeTable(folder); break;
    }
  }
}

bool AnyVariableToAnalyse(const AnalysisRequest& request) {
  for (int v = 1; v <= request.numberOfVariables; ++v) {
    if (request.role[v] == 'X' || request.role[v] == 'Y') return true;
  }
  return false;
}

}  // namespace

AnalysisRun::AnalysisRun(Workspace& w, const AnalysisRequest& r, const CommandInfo& c, ReportFormat format)
    : ws(w), request(r), command(c), report(w, format), index(BuildSelectedIndex(r)) {}

std::string_view AnalysisRun::T(std::string_view english, std::string_view hungarian) const {
  return ws.Text(english, hungarian);
}

bool AnalysisRun::English() const { return ws.language == Language::English; }

namespace {
// Thrown at a progress message after the person asked to cancel; the run ends its report.
struct RunCancelled {};
}  // namespace

void AnalysisRun::ShowProgress(std::string_view text) const {
  ws.ShowProgress(text, Dialog(command.dialog).windowName);
  if (!text.empty() && ws.hooks.cancelAsked && ws.hooks.cancelAsked()) throw RunCancelled{};
}

int AnalysisRun::Threads() const { return ws.workThreads; }

void AnalysisRun::ShowCaseProgress(int row) const { ShowProgress(fmt::format("{}{}", T("Case: ", "Eset: "), row)); }

void AnalysisRun::FindGroupRows() {
  rows_.clear();
  const int cases = ws.NumberOfCases();
  if (conditional_ == 0) {
    rows_.reserve(cases);
    for (int row = 1; row <= cases; ++row) rows_.push_back(row);
    return;
  }
  for (int row = 1; row <= cases; ++row) {
    if (row % kProgressStep == 0) ShowCaseProgress(row);
    // The conditional cell is read as the rows are (the last position of the feed): foreign
    // text there is missing here, though the group sizes (read cell by cell) count it as
    // the code 0.
    double code;
    if (!feed_->ReadPosition(row, index.conditional, code) && FindMergedGroup(groups_, code) == group_) {
      rows_.push_back(row);
    }
  }
}

void AnalysisRun::ForEachGroup(const std::function<void()>& writeGroup) {
  for (int g = 1; g <= GroupCount(); ++g) {
    if (sizes_[g] == 0) continue;
    group_ = g;
    FindGroupRows();
    writeGroup();
  }
  group_ = 0;
}

RunOutcome RunCommand(Workspace& ws, const AnalysisRequest& request, const CommandInfo& command, ReportFormat format) {
  AnalysisRun run(ws, request, command, format);
  try {
    LoadTables(command.tables, ws.programFolder, run.tables);
  } catch (const MissingTableFile& missing) {
    return {RunResult::TablesMissing, MissingTableMessage(missing.name(), ws.language)};
  }
  auto reportFailed = [&] {
    return RunOutcome{RunResult::ReportFailed,
                      std::string(ws.Text("The report can't be written: ", "A jelentés nem írható: ")) + run.report.Path()};
  };
  if (!run.report.OpenReport(command.Title(ws.language))) return reportFailed();

  run.feed_.emplace(ws, run.report.Missing(), run.index.columns);
  if (run.index.conditional > 0) {
    run.conditional_ = run.index.columns[run.index.conditional];
    run.groups_ = GetGroupDefinition(ws, run.conditional_);
    run.sizes_ = CountConditionalGroups(run.report, *run.feed_, run.groups_, run.conditional_);
    if (run.groups_.distinct == 0) {
      run.report.Line(run.T("The conditional grouping variable defines no group: its group type is none, or its labels "
                            "give no group.",
                            "A feltételes csoportosító változó nem ad meg csoportot: csoporttípusa nincs, vagy címkéi "
                            "nem adnak meg csoportot."));
    }
  } else {
    run.sizes_ = {0, ws.NumberOfCases()};
  }
  if (!AnyVariableToAnalyse(request)) {
    run.report.Line(run.T("No variable is left to analyse: the conditional grouping variable is not analysed itself.",
                          "Nem maradt elemezhető változó: a feltételes csoportosító változót magát nem elemzi a program."));
  } else {
    try {
      command.analyse(run);
    } catch (const MissingTableFile& missing) {
      run.report.CloseReport();
      return {RunResult::TablesMissing, MissingTableMessage(missing.name(), ws.language)};
    } catch (const RunCancelled&) {
      // What was written stays, with a line that says the rest is missing.
      const std::string_view cancelled = run.T("The analysis was cancelled.", "Az elemzés megszakadt.");
      run.report.Line("");
      run.report.Line(cancelled);
      ws.ShowProgress("");
      if (!run.report.CloseReport()) return reportFailed();
      run.report.ShowReport();
      return {RunResult::Ran, std::string(cancelled)};
    }
  }
  run.ShowProgress("");
  if (!run.report.CloseReport()) return reportFailed();
  run.report.ShowReport();
  return {};
}

}  // namespace tarvika
