#pragma once
// The comparison of the groups of one grouping variable on an ordinal dependent: the values
// are replaced by their pooled mid-ranks, the group table shows the rank means and SDs, the
// tests of variances run on the ranks, and the groups are compared by rank tests of
// stochastic equality (two groups) or homogeneity (more groups).

namespace tarvika {

class AnalysisRun;
struct OneWayGroupState;

void CompareOrdinalDependent(AnalysisRun& run, int dependent, OneWayGroupState& state);

}  // namespace tarvika
