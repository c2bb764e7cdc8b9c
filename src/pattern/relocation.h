#pragma once
// Relocation (k-means): cases move one pattern at a time to the cluster where the within
// sum of squares falls most, until a pass gains less than the tolerance. Command 55 runs
// it from a starting clustering variable or a Ward solution; command 54 after clustering.

#include <functional>
#include <vector>

#include "pattern/cluster_quality.h"
#include "pattern/pattern_data.h"
#include "pattern/pattern_frame.h"

namespace tarvika {

class AnalysisRun;

// One pass after another over the patterns in case order; labels (0..K-1 per pattern) are
// moved in place. Returns the final within sum of squares.
struct RelocationPass {
  int moved = 0;  // the weight counted at each better candidate, as the report counts it
  double ssCluster = 0;
};
std::vector<RelocationPass> RelocatePatterns(const PatternSet& set, std::vector<int>& labels, int K, double ssStart,
                                             int maxIterations, double tolerance,
                                             const std::function<void(int iteration)>& progress = {});

struct RelocationStart {
  std::vector<int> labels;
  int K = 0;
  double ssCluster = 0;
  bool hierarchical = false;  // the start is a solution of command 54
  bool fromVariable = false;  // the start is a clustering variable
};

// The relocation's report: the head and the iteration table, then the end statistics.
// Returns the final labels (empty clusters dropped, codes in order).
std::vector<int> RelocateAndReport(AnalysisRun& run, const PatternVariables& vars, const PatternSet& set,
                                   const DistanceSummary& distances, RelocationStart start, int maxIterations,
                                   double tolerance);

void Relocation(AnalysisRun& run);

}  // namespace tarvika
