#pragma once
// The report block of a partition: per cluster its code, size, homogeneity and the mean,
// SD, minimum and maximum of each variable; the ANOVA of each variable across clusters;
// the quality figures; at the bottom of the range the tables of unstandardized and
// standardized means and their pattern marks.

#include <string>

#include "pattern/cluster_quality.h"
#include "pattern/pattern_data.h"
#include "pattern/pattern_frame.h"

namespace tarvika {

class AnalysisRun;

struct ClusterBlock {
  bool kmeans = false;       // the relocation's end block
  bool meansTables = false;  // the tables of means and marks
  DistanceType type = DistanceType::Ased;
  double totalEss = 0, ssCluster = 0;
};

void WriteClusterStatistics(AnalysisRun& run, const PatternVariables& vars, const PatternSet& set,
                            const Partition& partition, const QualityRecord& quality, const ClusterBlock& block);

// The quality figures of a partition under their column heads: EESS%, Pointbis, XBmod,
// SilCoef, HCmean and the HC range; the relocation reports add CLdelta and GDI24.
void WriteQualityLine(AnalysisRun& run, const PatternSet& set, const QualityRecord& quality, bool relocation);

}  // namespace tarvika
