#pragma once
// The comparison of the groups of one grouping variable on an interval dependent: the group
// table, the tests of equal variances, the tests of equal means with their effect sizes and
// the tests of equal trimmed means, computed first and then written (or left out under
// "significant only").

#include <string>
#include <vector>

#include "groups/one_way_summary.h"

namespace tarvika {

class AnalysisRun;

// What one conditional group's passes share: whether its heading is written yet.
struct OneWayGroupState {
  bool headingWritten = false;
  bool tooFewCases = false;               // the group has fewer than 5 cases: no dependent is analysed
  std::vector<OneWaySummaryRow> summary;  // one row per interval dependent compared
};

// Writes the group's heading when it is not written yet; false when the group is too small.
bool WriteOneWayHeading(AnalysisRun& run, OneWayGroupState& state);

void CompareIntervalDependent(AnalysisRun& run, int dependent, OneWayGroupState& state);

}  // namespace tarvika
