#pragma once
// The tables an import builds before they replace the workspace: the cells as read, the
// declarations the reader knows (names, labels, missing codes), and per column what the
// cells tell of its type. Every reader (text, spreadsheet, SPSS) fills one of these, so a
// failed read leaves the workspace as it was.

#include <string>
#include <string_view>
#include <vector>

#include "workspace/data_matrix.h"

namespace tarvika {

class Workspace;

// A read that can't go on: the message tells why ("a quoted field never ends on line 7").
struct ImportError {
  std::string message;
};

// What a reader knows of one variable besides its cells.
struct ImportedVariable {
  std::string name;       // empty: the import names it
  std::string longName;
  std::string groupLabels;  // "value=label;/..." for codes
  std::string missing;      // the missing-code declaration
};

class ImportTable {
 public:
  explicit ImportTable(char decimalSeparator) : sep_(decimalSeparator) {}

  // Cell of variable c and case r, both from 0. A field of a text file or a sheet: blanks
  // around it are cut, line ends and tabs become blanks, a field of "*" only is empty, and
  // the column stays numeric while every non-empty field is a number.
  // mayHoldBreaks false: the caller knows the field holds no tab or line end.
  void SetText(int c, int r, std::string_view field, bool mayHoldBreaks = true);
  // A cell whose kind the file declares.
  void SetNumber(int c, int r, double value);
  void SetString(int c, int r, std::string_view text);
  // A column that the file declares as text, whatever its cells look like.
  void DeclareString(int c);
  // A column of dates ("date=;"); its cells are set with SetString.
  void DeclareDate(int c);

  // Variables known so far (the widest row or the declared ones).
  int Columns() const { return static_cast<int>(columns_.size()); }
  void EnsureColumns(int n);
  // Room for this many cases, when the reader knows or can bound their number.
  void ReserveRows(int rows);
  ImportedVariable& Variable(int c) {
    EnsureColumns(c + 1);
    return columns_[c].decl;
  }

  // Replaces the workspace by the table of the given number of cases: the header row, the
  // case numbers, "N." in the index column (the mark of an imported table), a type per
  // column ("num=lo_hi;" from the values, "string=" the longest text, or "date=;"), group
  // type "codes" where labels were read, names made unique. Throws ImportError when there is no case or variable, or more
  // than a workspace holds.
  void Install(Workspace& ws, int cases);

 private:
  struct Column {
    ImportedVariable decl;
    bool isString = false;
    bool isDate = false;
    bool anyValue = false;
    bool needsCleaning = false;  // a numeric field not yet in the form the tables hold
    double lo = 0, hi = 0;
    std::size_t longest = 0;  // characters
  };
  void EnsureRows(int r);
  void Note(Column& col, double value);
  void CleanNumericColumn(int c, int cases);

  DataMatrix data_;
  std::vector<Column> columns_;
  std::string scratch_;
  int rowCapacity_ = 0;
  char sep_;
};

// FormatGeneral's text of the value, made faster for the numbers of a data file: whole
// numbers and numbers from 0.0001 to 10^15 take no detour through the C library's printf.
std::string FormatImportedNumber(double value, char separator);

// The workspace's name rule for variable names from a file: blanks around cut, an empty
// name "Var00" and a running number, and after the cut to 8 characters names that clash
// ignoring case made unique as "abcde~00", "abcde~01", ...
void MakeNamesUnique(Workspace& ws);

}  // namespace tarvika
