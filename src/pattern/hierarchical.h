#pragma once
// Command 54: agglomerative hierarchical clustering of the distinct complete patterns,
// with the quality figures at every step, the cluster statistics of the report range, the
// saving of the cluster code and an optional relocation.

namespace tarvika {

class AnalysisRun;
void HierarchicalCluster(AnalysisRun& run);

}  // namespace tarvika
