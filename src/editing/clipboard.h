#pragma once
// Cut, copy, paste and delete over the tab-separated clipboard text: one line per row of
// the selection, its cells separated by tabs, each line ended by CR LF.

#include <string>
#include <string_view>

#include "editing/editing_tables.h"
#include "workspace/workspace.h"

namespace tarvika {

// A rectangle of cells, corners included: columns col1..col2, rows row1..row2.
struct CellRect {
  int col1 = 1;
  int row1 = 1;
  int col2 = 1;
  int row2 = 1;
};

std::string CopyCells(const Workspace& ws, ActiveTable table, const CellRect& rect);
// Copies, then empties the cells.
std::string CutCells(Workspace& ws, ActiveTable table, const CellRect& rect);
// Empties the cells; in the declarations the group type of the rows is derived anew.
void DeleteCells(Workspace& ws, ActiveTable table, const CellRect& rect);

// What the clipboard text needs at a target cell.
struct PasteReach {
  int lines = 0;   // rows of the text (a trailing fragment dropped)
  int width = 0;   // cells of its first line
  bool right = false;  // it reaches beyond the last column
  bool down = false;   // it reaches beyond the last row
};
PasteReach MeasurePaste(const Workspace& ws, ActiveTable table, std::string_view text, int col, int row);

// The person's answer to a paste that reaches beyond the table.
enum class Overflow { Enlarge, Cut, DontInsert };

// The question the window asks before the choice (with its pictures).
std::string OverflowQuestion(const Workspace& ws);

// Pastes the text with its first cell at (col, row). Beyond the table: Enlarge inserts the
// missing cases and variables (refused past the limits, nothing written), Cut drops the
// cells outside, DontInsert stops. The replaced cells go to "undo/undo.txt" of the program
// folder, one line per row, cells joined by "|". False when nothing was written.
bool PasteCells(Workspace& ws, ActiveTable table, std::string_view text, int col, int row, Overflow overflow);

}  // namespace tarvika
