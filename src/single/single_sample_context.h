#pragma once
// What the modes of the single-sample run share while it lasts: the request, the report,
// the feed, the current group and the first-pass statistics of each selected variable.
// Each mode (detailed statistics, frequencies, tests on the mean and median, normality)
// lives in a file of its own and works on this.

#include <cstdint>
#include <functional>
#include <optional>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <vector>

#include "frame/analysis_request.h"
#include "frame/analysis_run.h"
#include "frame/data_feed.h"
#include "frame/number_text.h"
#include "frame/report_writer.h"
#include "numeric/order_stats.h"
#include "numeric/stat_tables.h"
#include "numeric/tolerance.h"
#include "stats/moments.h"
#include "workspace/workspace.h"

namespace tarvika {

inline constexpr double kUnsetHypothetical = -9999999;

// The moments of one selected variable in one group (the first pass over the cases).
using VariableStats = MomentAccumulator;

struct SingleSampleContext {
  explicit SingleSampleContext(AnalysisRun& run);

  std::string_view T(std::string_view english, std::string_view hungarian) const { return run.T(english, hungarian); }
  bool English() const { return run.English(); }

  // Variable number, short and long name of the i-th selected variable.
  int Column(int i) const { return index.columns[i]; }
  const std::string& Name(int i) const { return request.shortNames[Column(i)]; }
  const std::string& LongName(int i) const { return request.longNames[Column(i)]; }

  // The first two cells of a table row: the variable number in 3 and ". ", and the short
  // name padded with 24 - 2*length blanks.
  void WriteIndexAndName(int i);

  // "Variable: " name on the status line.
  void ShowVariableProgress(int i) const { run.ShowProgress(fmt::format("{}{}", T("Variable: ", "Változó: "), Name(i))); }

  // The rows of the cases of the current group, in order.
  const std::vector<int>& GroupRows() const { return run.GroupRows(); }
  // Calls f(row, x) for every valid value of the i-th selected variable in the current
  // group, in case order; the missing rule is that of the first pass.
  template <typename F>
  void ForEachValue(int i, F f, bool tellProgress = true) const;

  // The heading of a variable's block: a blank line and "VARIABLE: " name (in Hungarian no
  // blank line but a tab before "VÁLTOZÓ: "), with the long name when it is longer.
  void WriteVariableHeading(int i);
  // The critical F for numerator df 1 and the df at the dialog's confidence (90, 95, 99).
  double CriticalF(int df) const;
  int ConfidencePercent() const;

  AnalysisRun& run;
  Workspace& ws;
  const AnalysisRequest& request;
  ReportWriter& report;
  const SelectedIndex& index;
  const DataFeed* feed;
  const int mode;
  const int conditional;  // variable number of the conditional grouping variable, 0 for none
  const FTable& ftable;
  std::vector<VariableStats> stats;  // 1..analysed, of the current group
  ValueTable values;  // the distinct values of the variable at hand
  bool writeBackRefusalTold = false;  // the conditional variable's refusal of new variables
};

template <typename F>
void SingleSampleContext::ForEachValue(int i, F f, bool tellProgress) const {
  run.ForEachValue(Column(i), f, tellProgress);
}


// The absolute deviations from a reference value above the tolerance: the first 100 of
// them and their count.
struct Deviations {
  double reference = 0;
  std::vector<double> first;
  int count = 0;
};

// The second pass of modes 12 and 14 over the i-th variable: the value table given is
// filled and the deviations are collected when asked for; a pass on a second thread tells
// no progress.
void FillValueTable(const SingleSampleContext& c, int i, ValueTable& table, Deviations* deviations, bool tellProgress);

// Calls work(i, part) for each variable i of `wanted`, in order, two variables side by side
// when two threads are allowed and the group is large enough: part 0 on the calling thread,
// which alone tells progress (and so alone can end the run), part 1 on a second thread; on
// one thread every variable comes as part 0. Each call must write only its own variable's
// results; the report is written after.
void ForVariablesInPairs(const SingleSampleContext& c, const std::vector<int>& wanted,
                         const std::function<void(int i, int part)>& work);

// The statistics of the first pass over the current group's cases, and the group's heading.
void ReadGroup(SingleSampleContext& c);
void WriteGroupHeading(SingleSampleContext& c);

// The modes.
void WriteBasicTable(SingleSampleContext& c);                   // 11
void WriteDetailedTable(SingleSampleContext& c);                // 12 without trimming
void WriteTestBlocks(SingleSampleContext& c, bool withTests);   // 14, and 12 with trimming
void WriteFrequencyTables(SingleSampleContext& c);              // 13
void WriteNormalityTests(SingleSampleContext& c);               // 15

}  // namespace tarvika
