#pragma once
// The matrix of Jaccard coefficients of the binary variables among the selected ones.

#include <vector>

namespace tarvika {

class AnalysisRun;

// In the current group of the run: the variables of `selected` (in order) that take exactly
// two values are binary, the larger value counting as presence; each pair gets a/(a+b+c)
// over the cases where both are valid. The others are listed as left out.
void WriteJaccardMatrix(AnalysisRun& run, const std::vector<int>& selected);

}  // namespace tarvika
