#pragma once
// Spreadsheets into an ImportTable: ".xlsx" read directly (the zip archive and its XML
// parts: shared strings, inline strings, numbers, booleans, empty cells) and legacy ".xls"
// through FreeXL. The first sheet or a named one; the used area begins at its first filled
// row and column; the same type inference as text.

#include <string>

#include "exchange/import_table.h"

namespace tarvika {

class Workspace;

// One filled cell of a sheet: row and column from 0, and its text.
struct SheetCell {
  int row = 0;
  int column = 0;
  std::string text;
  bool isDate = false;  // text is "YYYY-MM-DD" (with " HH:MM:SS" for a time of day)
};

// Fills the table from the cells: with headerRow the first used row gives the names.
// Without it the caller names the variables. A column whose cells are all dates is a date
// column. Returns the number of cases.
// Throws ImportError for a sheet without cells.
int FillFromSheet(const Workspace& ws, std::vector<SheetCell>& cells, bool headerRow, ImportTable& table);

// The cells of the sheet (the first when sheet is empty). Throw ImportError for a damaged
// file or a sheet name that isn't there.
std::vector<SheetCell> ReadXlsxSheet(const Workspace& ws, const std::string& path, const std::string& sheet);
std::vector<SheetCell> ReadXlsSheet(const Workspace& ws, const std::string& path, const std::string& sheet);

}  // namespace tarvika
