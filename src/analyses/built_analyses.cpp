#include "analyses/built_analyses.h"

#include "single/single_sample_run.h"

namespace tarvika {

const AnalysisRegistry& BuiltAnalyses() {
  static const AnalysisRegistry registry = {
      {11, SingleSampleRun},
  };
  return registry;
}

}  // namespace tarvika
