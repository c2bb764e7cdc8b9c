#pragma once
// Recoding into the same or into new variables, and counting values in cases, by the rule
// lines of recode_rules.h. The rules are tried in list order and the first that fits decides.

#include <optional>
#include <string>
#include <vector>

#include "transform/new_targets.h"
#include "transform/recode_rules.h"

namespace tarvika {

class Workspace;

// Parses the lines; on the first that is no rule tells the person which and returns nullopt.
std::optional<std::vector<RecodeRule>> ParseRules(Workspace& ws, const std::vector<std::string>& lines,
                                                  bool withNewValue);

// Changes the cells in place: a number writes the number, "SYSMIS" empties the cell, "same"
// keeps it; a cell no rule fits stays as it is. Tells "Recoding of N cell(s) succesfully
// performed." and returns N (cells whose text changed), or -1 after telling a refusal.
int RecodeSame(Workspace& ws, const std::vector<int>& variables, const std::vector<RecodeRule>& rules);

// The same into a new variable per source (at the end of the list, long name ending in
// " recoded"); a cell no rule fits is left empty. newNames[i] belongs to variables[i].
int RecodeDifferent(Workspace& ws, const std::vector<int>& variables, const std::vector<std::string>& newNames,
                    const std::vector<RecodeRule>& rules);

// The new variable that counts, in each case, the selected variables that meet a rule
// (each variable at most once). A Before or After target stands by the variable `anchor`.
// False after telling a refusal.
bool CountValues(Workspace& ws, const std::vector<int>& variables, const std::vector<RecodeRule>& rules,
                 const NewTarget& target, int anchor = 0);

}  // namespace tarvika
