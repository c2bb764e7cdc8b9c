#pragma once
// The comparison of the groups of one grouping variable on an interval dependent: the group
// table, the tests of equal variances, the tests of equal means with their effect sizes and
// the tests of equal trimmed means, computed first and then written (or left out under
// "significant only").

#include <functional>
#include <string>
#include <vector>

#include "groups/one_way_rank_summary.h"
#include "groups/one_way_summary.h"

namespace tarvika {

class AnalysisRun;

// What one conditional group's passes share: whether its heading is written yet.
struct OneWayGroupState {
  bool headingWritten = false;
  bool tooFewCases = false;               // the group has fewer than 5 cases: no dependent is analysed
  std::vector<OneWaySummaryRow> summary;  // one row per interval dependent compared
  std::vector<RankSummaryRow> rankSummary;  // one row per ordinal dependent compared
};

// The comparison of one dependent, computed (its cases read, its tests done) and waiting to
// be written: it writes the group's heading if not yet written, then its blocks, and adds its
// summary row. The computing touches neither the report nor the state, so two dependents can
// be computed side by side and written in their order.
using DependentWriter = std::function<void(OneWayGroupState&)>;

// Whether the conditional group has too few cases for any comparison (the heading says so).
bool OneWayGroupTooSmall(const AnalysisRun& run);

// Writes the group's heading when it is not written yet; false when the group is too small.
bool WriteOneWayHeading(AnalysisRun& run, OneWayGroupState& state);

DependentWriter ComputeIntervalDependent(AnalysisRun& run, int dependent);

}  // namespace tarvika
