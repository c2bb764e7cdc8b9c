#pragma once
// Sorting the cases of the data table by one or more variables.

#include <vector>

#include "workspace/workspace.h"

namespace tarvika {

struct SortKey {
  int variable = 0;
  bool descending = false;
};

// Sorts all cases by the keys in their order of priority and renumbers them. The first key
// sorts the whole table: a "num" variable by value, a "date" variable by date, any other as
// text. Each further key (a "string" variable as text, any other type by value) then sorts
// each run of equal cell texts of the key before it; such runs are found over the whole
// column, so rows of different groups of an earlier key that meet with the same text of
// the later key form one run.
//
// Every step is stable. Text orders ignoring case. Empty cells and cells that are no
// number (or no date) of a key read by value come last in either direction.
// False (told) without keys or with a key that is no variable.
bool SortCases(Workspace& ws, const std::vector<SortKey>& keys);

}  // namespace tarvika
