#pragma once
// Checks of the data against their declarations: the verification of every cell, the
// choices offered when a typed value falls outside its limits, and the renaming of
// variables whose short names are the same.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/workspace.h"

namespace tarvika {

// One line of the error list, with the cell it leads to.
struct VerifyFinding {
  int row = 0;
  int col = 0;
  std::string line;  // "Row=" r ";  Col=" c "; nonnumeric value" or "...; out of specified range"
};

// Every cell of every "num" variable that isn't empty: cleaned and stored back in the
// machine's form, then parsed and compared with the variable's range (both bounds inside).
// The range "0_0" is a range like any other: every non-zero value is outside it.
std::vector<VerifyFinding> VerifyData(Workspace& ws);

// The cell a line of the error list leads to (row, column); nullopt for a line that names
// no cell (a variable hit, "VarFind").
std::optional<std::pair<int, int>> FindingCell(std::string_view line);

// The declared range "num=" lo "_" hi ";" of a variable; nullopt when it has none.
struct DeclaredRange {
  double lo = 0;
  double hi = 0;
};
std::optional<DeclaredRange> RangeOf(const Workspace& ws, int variable);

// The choices of the check of a typed value outside its limits: the cell set to the
// allowed minimum or maximum, or the variable's limits widened to lo..hi.
enum class EntryFix { ToMinimum, ToMaximum };
bool FixEnteredValue(Workspace& ws, int col, int row, EntryFix fix);
bool ChangeLimits(Workspace& ws, int variable, double lo, double hi);

// The variables whose short names are the same (ignoring case), as number "=" name ";".
std::vector<std::string> DuplicatedVariables(const Workspace& ws);
// Gives variable v a new short name; refused (told) when another variable has it.
bool RenameVariable(Workspace& ws, int v, std::string_view name);

}  // namespace tarvika
