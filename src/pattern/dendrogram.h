#pragma once
// The dendrogram of the last fusions of a clustering as an inline svg figure for the html
// report.

#include <string>
#include <vector>

namespace tarvika {

struct Fusion {
  int kept = 0, absorbed = 0;  // the clusters by their first patterns; the fused one keeps `kept`
  int keptSize = 0, absorbedSize = 0;
  double height = 0;  // the distance at which they fused
};

// The last `shown` fusions: their clusters as leaves (labelled by code and size, the code
// being the row of a cluster's first case from `codeOfPattern`), joined at their heights.
std::string SvgDendrogram(const std::vector<Fusion>& fusions, const std::vector<int>& codeOfPattern, int shown = 50);

}  // namespace tarvika
