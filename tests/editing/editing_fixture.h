#pragma once
// A small project in memory for the editing tests, and the whole state of a workspace as
// one text, to compare before and after.

#include <fstream>
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

namespace tarvika::testing {

// The rows of a CSV file the R script of reference/ wrote (no quoting, no commas in fields),
// header included; empty fields kept.
inline std::vector<std::vector<std::string>> ReferenceRows(const std::string& name) {
  std::ifstream in(std::string(TARVIKA_TEST_DATA) + "/editing/reference/" + name);
  std::vector<std::vector<std::string>> rows;
  for (std::string line; std::getline(in, line);) {
    std::vector<std::string> fields;
    std::size_t start = 0;
    for (std::size_t comma; (comma = line.find(',', start)) != std::string::npos; start = comma + 1) {
      fields.push_back(line.substr(start, comma - start));
    }
    fields.push_back(line.substr(start));
    rows.push_back(std::move(fields));
  }
  return rows;
}

// A project of a reference CSV: its header names the variables, the types given in order.
inline MemoryWorkspace ReferenceProject(const std::string& name, const std::vector<std::string>& types) {
  auto rows = ReferenceRows(name);
  std::vector<Declared> vars;
  for (std::size_t i = 0; i < rows[0].size(); ++i) vars.emplace_back(rows[0][i], "", "", "none", "", types.at(i));
  rows.erase(rows.begin());
  return MemoryWorkspace(vars, rows, Language::English, '.', "editing");
}

}  // namespace tarvika::testing
