#include "editing/editing_tables.h"

#include <charconv>

namespace tarvika {

StringTable& TableOf(Workspace& ws, ActiveTable table) {
  if (table == ActiveTable::VarTabl) return ws.vars;
  return ws.data;
}

const StringTable& TableOf(const Workspace& ws, ActiveTable table) {
  if (table == ActiveTable::VarTabl) return ws.vars;
  return ws.data;
}

bool SameCells(const StringTable& a, const StringTable& b) {
  if (a.ColCount() != b.ColCount() || a.RowCount() != b.RowCount()) return false;
  for (int c = 0; c < a.ColCount(); ++c)
    for (int r = 0; r < a.RowCount(); ++r)
      if (a.GetCell(c, r) != b.GetCell(c, r)) return false;
  return true;
}

void RederiveGroupType(Workspace& ws, int firstRow, int lastRow) {
  for (int r = std::max(firstRow, 1); r <= lastRow && r < ws.vars.RowCount(); ++r) {
    std::string_view labels = ws.vars.GetCell(kGroupLabels, r);
    GroupKind kind = labels.empty()                               ? GroupKind::None
                     : labels.find('_') != std::string_view::npos ? GroupKind::Intervals
                                                                  : GroupKind::Codes;
    ws.vars.SetCell(kGroupType, r, GroupTypeWord(kind, ws.language));
  }
}

void RenumberVariables(Workspace& ws) {
  for (int r = 1; r < ws.vars.RowCount(); ++r) {
    ws.vars.SetCell(kIndex, r, std::to_string(r));
    ws.data.SetCell(r, 0, ws.vars.GetCell(kShortName, r));
  }
}

std::optional<int> ParseStrictInt(std::string_view text) {
  int v = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
  if (ec != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
  return v;
}

std::optional<IndexRange> ParseIndexRange(std::string_view text) {
  std::size_t dash = text.find('-');
  auto first = ParseStrictInt(text.substr(0, dash));
  auto last = dash == std::string_view::npos ? first : ParseStrictInt(text.substr(dash + 1));
  if (!first || !last || *first < 1 || *last < *first) return std::nullopt;
  return IndexRange{*first, *last};
}

}  // namespace tarvika
