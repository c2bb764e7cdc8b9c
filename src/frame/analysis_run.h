#pragma once
// The run of one analysis, the same for every command: the statistical tables are loaded
// (before the old report is touched), the report is opened with the command's title, the
// conditional groups are found and counted, and the command's analysis is called; it
// writes one group at a time through ForEachGroup. Then the report is closed and handed
// to the viewer. An analysis supplies only what it computes and writes for one group.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/analysis_request.h"
#include "frame/command_info.h"
#include "frame/data_feed.h"
#include "frame/report_writer.h"
#include "numeric/stat_tables.h"

namespace tarvika {

class Workspace;

enum class RunResult { Ran, Refused, NotBuilt, ReportFailed, TablesMissing };

struct RunOutcome {
  RunResult result = RunResult::Ran;
  std::string message;  // what the person is told when the run didn't go through
};

// The tables a command asked for (CommandInfo::tables); the others stay empty.
struct LoadedTables {
  FTable f;
  CriticalCountTable wilcoxon, sign;
  StudentizedRangeTable studentizedRange;
};

class AnalysisRun {
 public:
  AnalysisRun(Workspace& ws, const AnalysisRequest& request, const CommandInfo& command, ReportFormat format);
  AnalysisRun(const AnalysisRun&) = delete;
  AnalysisRun& operator=(const AnalysisRun&) = delete;

  Workspace& ws;
  const AnalysisRequest& request;
  const CommandInfo& command;
  ReportWriter report;
  const SelectedIndex index;  // the variables of the feed: "X", "C", the first "G", the "N"
  LoadedTables tables;

  std::string_view T(std::string_view english, std::string_view hungarian) const;
  bool English() const;
  // A message on the status line of the command's dialog.
  void ShowProgress(std::string_view text) const;
  // "Case: " row on the status line.
  void ShowCaseProgress(int row) const;
  // The threads an analysis may share its independent parts among (RunParts in
  // numeric/parallel_parts.h): the workspace's setting. Only the calling thread shows
  // progress; the report is written after the parts have joined, in the serial order.
  int Threads() const;

  // Reads the variables of the index; made once the report has parsed the missing codes.
  const DataFeed& Feed() const { return *feed_; }

  // The conditional grouping variable: its variable number (0 for none), its groups and
  // the number of cases of each (entries 1..GroupCount(); without a conditional variable
  // one group of all cases).
  int Conditional() const { return conditional_; }
  const GroupDefinition& Groups() const { return groups_; }
  int GroupCount() const { return static_cast<int>(sizes_.size()) - 1; }
  const std::vector<int>& GroupSizes() const { return sizes_; }
  // The group being written, and the rows of its cases in order.
  int Group() const { return group_; }
  const std::vector<int>& GroupRows() const { return rows_; }

  // Calls f(row, x) for every valid value of the variable in the current group, in case
  // order, read as ReadRow reads it (empty, foreign text and missing codes are left out).
  // A pass on a second thread (RunParts) tells no progress: tellProgress false.
  template <typename F>
  void ForEachValue(int variable, F f, bool tellProgress = true) const;
  // Calls f(row, x, y) for every case of the current group in which both variables are
  // valid, in case order.
  template <typename F>
  void ForEachPair(int x, int y, F f) const;
  // Calls f(row, values) for every case of the current group in which all the variables
  // are valid; values[1..] in the order given.
  template <typename F>
  void ForEachComplete(std::vector<int> variables, F f, bool tellProgress = true) const;

  // Calls writeGroup once for each group that has cases, in order, with Group() and
  // GroupRows() set.
  void ForEachGroup(const std::function<void()>& writeGroup);

 private:
  friend RunOutcome RunCommand(Workspace&, const AnalysisRequest&, const CommandInfo&, ReportFormat);
  void FindGroupRows();

  std::optional<DataFeed> feed_;
  int conditional_ = 0;
  GroupDefinition groups_;
  std::vector<int> sizes_;
  int group_ = 0;
  std::vector<int> rows_;
};

template <typename F>
void AnalysisRun::ForEachComplete(std::vector<int> variables, F f, bool tellProgress) const {
  const int count = static_cast<int>(variables.size());
  variables.insert(variables.begin(), 0);
  DataFeed feed(ws, report.Missing(), std::move(variables));
  std::vector<double> value(count + 1, 0);
  std::vector<std::uint8_t> missing(count + 1, 1);
  int seen = 0;
  for (int row : rows_) {
    if (++seen % 10000 == 0 && tellProgress) ShowCaseProgress(row);
    feed.ReadRow(row, count, value, missing);
    bool complete = true;
    for (int i = 1; i <= count && complete; ++i) complete = !missing[i];
    if (complete) f(row, value);
  }
}

template <typename F>
void AnalysisRun::ForEachValue(int variable, F f, bool tellProgress) const {
  ForEachComplete({variable}, [&](int row, const std::vector<double>& v) { f(row, v[1]); }, tellProgress);
}

template <typename F>
void AnalysisRun::ForEachPair(int x, int y, F f) const {
  ForEachComplete({x, y}, [&](int row, const std::vector<double>& v) { f(row, v[1], v[2]); });
}

// One run of a built command on a prepared request.
RunOutcome RunCommand(Workspace& ws, const AnalysisRequest& request, const CommandInfo& command, ReportFormat format);

}  // namespace tarvika
