#pragma once
// What the editing commands share: which of the two tables a command acts on, and the small
// steps that keep the tables in step after a change of shape.

#include <optional>
#include <string>
#include <string_view>

#include "workspace/string_table.h"
#include "workspace/workspace.h"

namespace tarvika {

// The table the clipboard, find and journal commands act on: the page the person is on.
enum class ActiveTable { DataTabl, VarTabl };

StringTable& TableOf(Workspace& ws, ActiveTable table);
const StringTable& TableOf(const Workspace& ws, ActiveTable table);

// The same size and the same text in every cell.
bool SameCells(const StringTable& a, const StringTable& b);

// The group type a row of group labels implies: "_" in the labels means intervals, other
// labels codes, none at all none; in the session's language.
void RederiveGroupType(Workspace& ws, int firstRow, int lastRow);

// Writes the Index column 1..n and the short names into the header row of the data table.
void RenumberVariables(Workspace& ws);

// The whole text as an int, strictly: digits with an optional "-", nothing else around them.
std::optional<int> ParseStrictInt(std::string_view text);

// A one-based case or variable range "a-b" or "a"; nullopt when it is no such text.
struct IndexRange {
  int first = 0;
  int last = 0;
};
std::optional<IndexRange> ParseIndexRange(std::string_view text);

}  // namespace tarvika
