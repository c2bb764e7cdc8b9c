#include "editing/clipboard.h"

#include <filesystem>
#include <fstream>
#include <vector>

#include "editing/cell_journal.h"
#include "editing/table_shape.h"

namespace tarvika {
namespace {

// The editable cells: the data table without its header row and case-number column, the
// declarations without their title row and index column.
CellRect Clamped(const StringTable& t, CellRect r) {
  r.col1 = std::max(r.col1, 1);
  r.row1 = std::max(r.row1, 1);
  r.col2 = std::min(r.col2, t.ColCount() - 1);
  r.row2 = std::min(r.row2, t.RowCount() - 1);
  return r;
}

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    std::string_view line = text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.emplace_back(line);
    if (end == std::string_view::npos) break;
    start = end + 1;
  }
  return lines;
}

std::vector<std::string> SplitTabs(std::string_view line) {
  std::vector<std::string> cells;
  std::size_t start = 0;
  for (std::size_t tab; (tab = line.find('\t', start)) != std::string_view::npos; start = tab + 1) {
    cells.emplace_back(line.substr(start, tab - start));
  }
  cells.emplace_back(line.substr(start));
  return cells;
}

// The clipboard's rows; a last line with fewer tabs than the first is a trailing fragment.
std::vector<std::vector<std::string>> ClipboardRows(std::string_view text) {
  std::vector<std::vector<std::string>> rows;
  for (const std::string& line : SplitLines(text)) rows.push_back(SplitTabs(line));
  if (rows.size() > 1 && rows.back().size() < rows.front().size()) rows.pop_back();
  return rows;
}

// How far the clipboard's rows reach from (col, row) in the table.
PasteReach Reach(const StringTable& t, const std::vector<std::vector<std::string>>& rows, int col, int row) {
  PasteReach reach;
  reach.lines = static_cast<int>(rows.size());
  reach.width = rows.empty() ? 0 : static_cast<int>(rows.front().size());
  reach.right = col + reach.width > t.ColCount();
  reach.down = row + reach.lines > t.RowCount();
  return reach;
}

void WritePasteSnapshot(const Workspace& ws, const StringTable& t, const CellRect& r) {
  std::error_code ec;
  const std::filesystem::path folder = UndoFolder(ws);
  std::filesystem::create_directories(folder, ec);
  std::ofstream out(folder / "undo.txt", std::ios::binary | std::ios::trunc);
  for (int row = r.row1; row <= r.row2; ++row) {
    for (int c = r.col1; c <= r.col2; ++c) {
      if (c > r.col1) out << '|';
      out << t.GetCell(c, row);
    }
    out << "\r\n";
  }
}

}  // namespace

std::string CopyCells(const Workspace& ws, ActiveTable table, const CellRect& rect) {
  const StringTable& t = TableOf(ws, table);
  CellRect r = Clamped(t, rect);
  std::string text;
  for (int row = r.row1; row <= r.row2; ++row) {
    for (int c = r.col1; c <= r.col2; ++c) {
      if (c > r.col1) text += '\t';
      text += t.GetCell(c, row);
    }
    text += "\r\n";
  }
  return text;
}

std::string CutCells(Workspace& ws, ActiveTable table, const CellRect& rect) {
  std::string text = CopyCells(ws, table, rect);
  DeleteCells(ws, table, rect);
  return text;
}

void DeleteCells(Workspace& ws, ActiveTable table, const CellRect& rect) {
  StringTable& t = TableOf(ws, table);
  CellRect r = Clamped(t, rect);
  for (int c = r.col1; c <= r.col2; ++c)
    for (int row = r.row1; row <= r.row2; ++row) t.SetCell(c, row, "");
  if (table == ActiveTable::VarTabl) {
    RederiveGroupType(ws, r.row1, r.row2);
    RenumberVariables(ws);
  }
  ws.dataChanged = true;
}

PasteReach MeasurePaste(const Workspace& ws, ActiveTable table, std::string_view text, int col, int row) {
  return Reach(TableOf(ws, table), ClipboardRows(text), col, row);
}

std::string OverflowQuestion(const Workspace& ws) {
  return std::string(ws.Text("The trouble is that . . .\r\n...the table yuo want to insert out of boundary\r\n How to continue?  ",
                             "A gond az, hogy . . .\r\n...a beillesztendő tábla kilóg a táblázatból\r\n Hogyan folytassuk?  "));
}

bool PasteCells(Workspace& ws, ActiveTable table, std::string_view text, int col, int row, Overflow overflow) {
  auto rows = ClipboardRows(text);
  if (rows.empty() || col < 1 || row < 1) return false;
  PasteReach reach = Reach(TableOf(ws, table), rows, col, row);
  if ((reach.right || reach.down) && overflow == Overflow::DontInsert) return false;
  if ((reach.right || reach.down) && overflow == Overflow::Enlarge) {
    // Cases are rows of the data table; variables are its columns and the rows of the
    // declarations, whose own columns are fixed.
    const int rowsNeeded = row + reach.lines - TableOf(ws, table).RowCount();
    const int colsNeeded = col + reach.width - TableOf(ws, table).ColCount();
    if (table == ActiveTable::DataTabl) {
      if (colsNeeded > 0 && ws.data.ColCount() + colsNeeded - 1 > kMaxVariables) {
        InsertVariables(ws, colsNeeded, VariablePlace::Last);  // tells the limit, changes nothing
        return false;
      }
      if (rowsNeeded > 0 && !InsertCases(ws, rowsNeeded, CasePlace::Bottom)) return false;
      if (colsNeeded > 0 && !InsertVariables(ws, colsNeeded, VariablePlace::Last)) return false;
    } else if (rowsNeeded > 0 && !InsertVariables(ws, rowsNeeded, VariablePlace::Last)) {
      return false;
    }
  }
  StringTable& t = TableOf(ws, table);
  CellRect target{col, row, std::min(col + reach.width - 1, t.ColCount() - 1), std::min(row + reach.lines - 1, t.RowCount() - 1)};
  WritePasteSnapshot(ws, t, target);
  for (int i = 0; row + i <= target.row2; ++i) {
    const auto& cells = rows[i];
    for (int j = 0; col + j <= target.col2; ++j) t.SetCell(col + j, row + i, j < static_cast<int>(cells.size()) ? cells[j] : "");
  }
  if (table == ActiveTable::VarTabl) {
    RederiveGroupType(ws, target.row1, target.row2);
    RenumberVariables(ws);
  }
  ws.dataChanged = true;
  return true;
}

}  // namespace tarvika
