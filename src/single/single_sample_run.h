#pragma once
// The single-sample analyses (commands 11 to 16): one driver that writes a titled report,
// loops over the conditional groups and, within a group, over the selected variables.

#include <string_view>

#include "frame/analysis_request.h"
#include "frame/report_writer.h"

namespace tarvika {

class Workspace;

// The report title of a mode in the language; empty for a code outside 11..16.
std::string_view SingleSampleTitle(int mode, Language lang);

// Runs the request (its roles: "X" selected variables, "N" the conditional grouping
// variable) and writes the report, then closes it and hands it to the viewer. False when
// the report file could not be opened.
bool SingleSampleRun(Workspace& ws, const AnalysisRequest& request, ReportFormat format = ReportFormat::Text);

}  // namespace tarvika
