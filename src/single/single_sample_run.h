#pragma once
// The single-sample analyses (commands 11 to 15): per conditional group the first pass
// over the cases, the group's heading and, per selected variable, the command's tables.

namespace tarvika {

class AnalysisRun;

void BasicStatistics(AnalysisRun& run);     // 11
void DetailedStatistics(AnalysisRun& run);  // 12 (with trimming, the trimmed blocks of 14)
void Frequencies(AnalysisRun& run);         // 13
void MeanMedianTests(AnalysisRun& run);     // 14
void NormalityTests(AnalysisRun& run);      // 15

}  // namespace tarvika
