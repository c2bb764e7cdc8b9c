#pragma once
// A small project in memory for the editing tests, and the whole state of a workspace as
// one text, to compare before and after.

#include <string>
#include <vector>

#include "support/memory_workspace.h"

namespace tarvika::testing {

// Three variables (a number with a range, a text, a grouping variable) and four cases.
inline MemoryWorkspace SmallProject() {
  return MemoryWorkspace({Declared("age", "Age in years", "", "none", "99", "num=0_120;"),
                          Declared("name", "", "", "none", "", "string=10;"),
                          Declared("grp", "", "1=low;/2=high;/", "codes", "", "num=0_0;")},
                         {{"31", "Anna", "1"}, {"45", "Béla", "2"}, {"", "Cili", "1"}, {"27", "Dani", ""}}, Language::English,
                         '.', "editing");
}

// Every cell of both tables, row by row, with the sizes: equal texts mean equal workspaces.
inline std::string Dump(const Workspace& ws) {
  std::string out;
  for (const StringTable* t : {static_cast<const StringTable*>(&ws.data), static_cast<const StringTable*>(&ws.vars)}) {
    out += std::to_string(t->ColCount()) + "x" + std::to_string(t->RowCount()) + "\n";
    for (int r = 0; r < t->RowCount(); ++r) {
      for (int c = 0; c < t->ColCount(); ++c) out += std::string(t->GetCell(c, r)) + "\t";
      out += "\n";
    }
  }
  return out;
}

// The cells of one data column from case 1 on.
inline std::vector<std::string> DataColumn(const Workspace& ws, int c) {
  std::vector<std::string> cells;
  for (int r = 1; r <= ws.NumberOfCases(); ++r) cells.emplace_back(ws.data.GetCell(c, r));
  return cells;
}

}  // namespace tarvika::testing
