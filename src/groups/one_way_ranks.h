#pragma once
// The comparison of the groups of one grouping variable on an ordinal dependent: the values
// are replaced by their pooled mid-ranks, the group table shows the rank means and SDs, the
// tests of variances run on the ranks, and the groups are compared by rank tests of
// stochastic equality (two groups) or homogeneity (more groups).

#include <vector>

#include "groups/one_way_rank_summary.h"

namespace tarvika {

class AnalysisRun;
struct OneWayGroupState;

// Compares one dependent and adds its row for the tables across the dependents to summary.
void CompareOrdinalDependent(AnalysisRun& run, int dependent, OneWayGroupState& state,
                             std::vector<RankSummaryRow>& summary);

}  // namespace tarvika
