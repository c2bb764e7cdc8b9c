#pragma once
// Text search over the cells of a table, replacing, and jumping to a variable or a case.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editing/editing_tables.h"
#include "workspace/workspace.h"

namespace tarvika {

enum class FindScope { Column, Row, Table };

struct FindOptions {
  bool caseSensitive = false;
  bool wholeContent = false;  // equality instead of containment; forced on for an empty text
};

struct CellHit {
  int col = 0;
  int row = 0;
};

// The cells of the scope (the column col, the row row, or the whole table; never the
// header row or the first column) that hold the text, row by row.
std::vector<CellHit> FindCells(const Workspace& ws, ActiveTable table, std::string_view text, FindScope scope, int col,
                               int row, FindOptions options);

// "row: " r "; column: " c
std::string HitLine(const Workspace& ws, const CellHit& hit);
// n " match found" or n " matches found".
std::string MatchCount(const Workspace& ws, std::size_t n);

// Replaces the text in the cells of the hits: every occurrence of it, or the whole cell
// with the whole-content option (or an empty text). The number of cells changed.
int ReplaceInCells(Workspace& ws, ActiveTable table, const std::vector<CellHit>& hits, std::string_view text,
                   std::string_view replacement, FindOptions options);

// The variables whose short name matches the pattern, ignoring case: "*abc*" contains,
// "*abc" ends with, "abc*" begins with, otherwise the whole name. Lines number "=" name ";".
struct VariableHit {
  int variable = 0;
  std::string line;
};
std::vector<VariableHit> GoToVariable(const Workspace& ws, std::string_view pattern);

// The case of a typed number; nullopt (told) for a text that is no positive whole number
// or no case of the table.
std::optional<int> GoToCase(const Workspace& ws, std::string_view typed);

}  // namespace tarvika
