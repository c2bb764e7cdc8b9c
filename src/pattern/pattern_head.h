#pragma once
// The head that the clustering reports share, and the preparation of a group's patterns
// (limits, weights, standardization) that comes after it.

#include <optional>
#include <string>

#include "pattern/pattern_data.h"
#include "pattern/pattern_frame.h"

namespace tarvika {

class AnalysisRun;

// The largest number of distinct patterns a run takes: the matrix of distances between
// them must fit into the memory of a desktop machine.
inline constexpr int kMaxPatterns = 60000;

// "Distance measure used: ", the counts of complete and distinct cases, the limits, the
// weights and the standardization; the basic statistics and, unstandardized, Mt, VarT and
// SDt. Nullopt when the group can't be analysed (the report says why).
std::optional<PatternSet> PreparePatterns(AnalysisRun& run, const PatternVariables& vars,
                                          const std::vector<CaseValues>& cases, DistanceType type, bool standardize);

}  // namespace tarvika
