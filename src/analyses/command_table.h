#pragma once
// The program's command table: every command of the analysis dialogs with its analysis
// when it is built. The dialogs, the menu, the command line and the desktop program all
// read it.

#include <string_view>

#include "frame/analysis_run.h"
#include "frame/command_info.h"

namespace tarvika {

const CommandTable& AllCommands();

// Runs a prepared request with the command of its code (RunCommand); false when the run
// didn't go through. For tests and benchmarks, which start from a request.
bool RunRequest(Workspace& ws, const AnalysisRequest& request, ReportFormat format = ReportFormat::Text);

// A main-menu entry is built when the workspace has it, or when it opens a dialog with a
// built command.
bool MenuEntryIsBuilt(std::string_view menuCommand);

}  // namespace tarvika
