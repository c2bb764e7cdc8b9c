#include "analyses/built_analyses.h"

#include "single/single_sample_run.h"

namespace tarvika {

const AnalysisRegistry& BuiltAnalyses() {
  static const AnalysisRegistry registry = {
      {11, SingleSampleRun}, {12, SingleSampleRun}, {13, SingleSampleRun},
      {14, SingleSampleRun}, {15, SingleSampleRun},
  };
  return registry;
}

}  // namespace tarvika
