#pragma once
// The comparison of the groups of one grouping variable on an ordinal dependent: the values
// are replaced by their pooled mid-ranks, the group table shows the rank means and SDs, the
// tests of variances run on the ranks, and the groups are compared by rank tests of
// stochastic equality (two groups) or homogeneity (more groups).

#include "groups/one_way_means.h"

namespace tarvika {

class AnalysisRun;

// Computes the comparison of one ordinal dependent; its writer adds its row for the tables
// across the dependents to the state's rankSummary.
DependentWriter ComputeOrdinalDependent(AnalysisRun& run, int dependent);

}  // namespace tarvika
