#pragma once
// The one-way comparison of independent samples: each dependent across the groups of the
// grouping variable, by its scale type.

namespace tarvika {

class AnalysisRun;

void OneWayIndependent(AnalysisRun& run);

}  // namespace tarvika
