#pragma once
// The analyses that are built, by command code: what the dialogs' run command dispatches to.

#include "frame/analysis_dialogs.h"

namespace tarvika {

const AnalysisRegistry& BuiltAnalyses();

}  // namespace tarvika
