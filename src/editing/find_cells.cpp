#include "editing/find_cells.h"

#include <fmt/format.h>

#include "editing/table_shape.h"
#include "lang/utf8.h"
#include "workspace/numbers.h"

namespace tarvika {
namespace {

bool Matches(std::string_view cell, std::string_view text, FindOptions options) {
  if (options.caseSensitive) {
    return options.wholeContent ? cell == text : cell.find(text) != std::string_view::npos;
  }
  std::string folded = FoldCase(cell);
  std::string wanted = FoldCase(text);
  return options.wholeContent ? folded == wanted : folded.find(wanted) != std::string::npos;
}

}  // namespace

std::vector<CellHit> FindCells(const Workspace& ws, ActiveTable table, std::string_view text, FindScope scope, int col,
                               int row, FindOptions options) {
  if (text.empty()) options.wholeContent = true;
  const StringTable& t = TableOf(ws, table);
  int c1 = 1, c2 = t.ColCount() - 1, r1 = 1, r2 = t.RowCount() - 1;
  if (scope == FindScope::Column) c1 = c2 = col;
  if (scope == FindScope::Row) r1 = r2 = row;
  std::vector<CellHit> hits;
  if (c1 < 1 || r1 < 1) return hits;
  for (int r = r1; r <= r2; ++r)
    for (int c = c1; c <= c2; ++c)
      if (Matches(t.GetCell(c, r), text, options)) hits.push_back({c, r});
  return hits;
}

std::string HitLine(const Workspace& ws, const CellHit& hit) {
  return fmt::format("{}{}; {}{}", ws.Text("row: ", "sor: "), hit.row, ws.Text("column: ", "oszlop: "), hit.col);
}

std::string MatchCount(const Workspace& ws, std::size_t n) {
  return fmt::format("{}{}", n, n >= 2 ? ws.Text(" matches found", " találat") : ws.Text(" match found", " találat"));
}

int ReplaceInCells(Workspace& ws, ActiveTable table, const std::vector<CellHit>& hits, std::string_view text,
                   std::string_view replacement, FindOptions options) {
  if (text.empty()) options.wholeContent = true;
  StringTable& t = TableOf(ws, table);
  int changed = 0;
  for (const CellHit& hit : hits) {
    std::string cell(t.GetCell(hit.col, hit.row));
    if (!Matches(cell, text, options)) continue;
    std::string result;
    if (options.wholeContent) {
      result = replacement;
    } else {
      // Occurrences are found in the folded text: folding keeps every letter's byte length.
      std::string haystack = options.caseSensitive ? cell : FoldCase(cell);
      std::string needle = options.caseSensitive ? std::string(text) : FoldCase(text);
      if (haystack.size() != cell.size()) {
        haystack = cell;
        needle = text;
      }
      std::size_t from = 0;
      for (std::size_t at; (at = haystack.find(needle, from)) != std::string::npos; from = at + needle.size()) {
        result.append(cell, from, at - from);
        result += replacement;
      }
      result.append(cell, from);
    }
    if (result == cell) continue;
    t.SetCell(hit.col, hit.row, result);
    ++changed;
  }
  if (changed > 0) {
    if (table == ActiveTable::VarTabl) RenumberVariables(ws);
    ws.dataChanged = true;
  }
  return changed;
}

std::vector<VariableHit> GoToVariable(const Workspace& ws, std::string_view pattern) {
  std::string p = FoldCase(pattern);
  bool anyStart = !p.empty() && p.front() == '*';
  bool anyEnd = p.size() > (anyStart ? 1u : 0u) && p.back() == '*';
  std::string core = p.substr(anyStart ? 1 : 0);
  if (anyEnd) core.pop_back();
  std::vector<VariableHit> hits;
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    std::string_view original = ws.vars.GetCell(kShortName, v);
    std::string name = FoldCase(original);
    bool match = anyStart && anyEnd ? name.find(core) != std::string::npos
                 : anyStart         ? name.size() >= core.size() && name.compare(name.size() - core.size(), core.size(), core) == 0
                 : anyEnd           ? name.compare(0, core.size(), core) == 0
                                    : name == core;
    if (match) hits.push_back({v, fmt::format("{}={};", v, original)});
  }
  return hits;
}

std::optional<int> GoToCase(const Workspace& ws, std::string_view typed) {
  auto n = ParseWholeNumber(typed);
  if (!n || *n < 1) {
    ws.user.Tell(ws.Text("You can only enter a positive integer.", "Csak pozitív egész számot adhat meg."));
    return std::nullopt;
  }
  if (*n > ws.NumberOfCases()) {
    ws.user.Tell(CaseRangeMessage(ws));
    return std::nullopt;
  }
  return static_cast<int>(*n);
}

}  // namespace tarvika
