#pragma once
// The cases-by-variables table. Row 0 is the header of short names, column 0 the case
// numbers; cells (c, r) with c, r >= 1 hold the data as typed or loaded.

#include "workspace/string_table.h"

namespace tarvika {

class DataMatrix : public StringTable {
 public:
  int NumberOfVariables() const { return ColCount() - 1; }
  int NumberOfCases() const { return RowCount() - 1; }
  // Writes r into cell (0, r) for every row from first on.
  void RenumberCases(int first = 1);
};

}  // namespace tarvika
