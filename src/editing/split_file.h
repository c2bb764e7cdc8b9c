#pragma once
// Splitting the workspace: chosen variables (in the order chosen) and a range of cases
// written to one or two new project files. The workspace is not changed. A written file
// keeps every declaration of its variables, the missing codes included.

#include <optional>
#include <string>
#include <vector>

#include "workspace/workspace.h"

namespace tarvika {

struct SplitPart {
  std::string path;
  std::vector<int> variables;  // in the order of the new file; empty: all
  int firstCase = 0;           // 0: from the first case
  int lastCase = 0;            // 0: to the last case
};

// Checks both parts first (a file name, case bounds inside the table) and writes nothing
// on a fault; then writes each file through the project save.
bool SplitFile(Workspace& ws, const SplitPart& first, const std::optional<SplitPart>& second = std::nullopt);

// "You can write integer (whole number) from 1 to " n "!": a case bound outside the table.
std::string CaseBoundRangeMessage(const Workspace& ws);

}  // namespace tarvika
