#pragma once
// The point-wise comparison of the groups' distribution functions that follows the rank
// tests of an ordinal dependent on request: two groups cut by cut with the 2 x 2 measures and
// the Kolmogorov-Smirnov test, more groups by their cumulative shares, the sign of each
// pair's difference and the chi-square of the 2 x k table at each cut.

#include <string>
#include <vector>

namespace tarvika {

class ReportWriter;

struct DistributionRequest {
  std::vector<std::vector<double>> values;  // per active group
  std::vector<int> indices;                 // the groups' indices, from 1
  double epsmin = 0.025;                    // the share left out at each end
  int maxCutpoints = 10;
  bool hungarian = false;
};

void WriteTwoDistributions(ReportWriter& r, const DistributionRequest& d);
void WriteSeveralDistributions(ReportWriter& r, const DistributionRequest& d);

}  // namespace tarvika
