#pragma once
// Merging the workspace with a second project: its cases added below (add cases) or its
// variables added beside, the cases joined by one key variable or by position (add
// variables). The list of the new table's variables is built first, then the table.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editing/cell_journal.h"
#include "workspace/project_file.h"
#include "workspace/workspace.h"

namespace tarvika {

// One variable of the new table: from the working file, from the added file, or a pair of
// one of each whose cases share a column (add cases).
struct UnitedVariable {
  int working = 0;   // variable of the working file; 0 none
  int added = 0;     // variable of the added file; 0 none
  std::string name;  // short name in the new table

  // short name "=" number ";" for one source, name "&" name for a pair (" & " shown).
  std::string Entry(const Workspace& ws, const MergeSource& source) const;
};

struct MergePlan {
  MergeMode mode = MergeMode::AddCases;
  std::vector<UnitedVariable> united;
  int key = 0;       // add variables: the key in the working file; 0 joins by position
  int addedKey = 0;  // and in the added file
  std::string indicator;  // the short name of the source indicator; empty for none
};

// The list to start from. Add cases: every working variable, paired with the added variable
// of the same short name (ignoring case), then the other added variables. Add variables:
// every working variable, then the added ones but the key, renamed where a name is taken.
// keyNames: the key given ("" for none); more than one, or a name the two files don't
// share, is told and refused.
std::optional<MergePlan> StartMergePlan(const Workspace& ws, const MergeSource& source, MergeMode mode,
                                        const std::vector<std::string>& keyNames);

// The line shown below the lists for a variable of either file: name ": numeric, from " lo
// " to " hi (its declared range) or name ": text, maximal length=" n.
std::string MergeVariableInfo(const Workspace& ws, const VariableTable& vars, int variable);

// "Pair": puts entries a (working) and b (added) on one line named after the first.
bool PairVariables(const Workspace& ws, MergePlan& plan, int a, int b);
// "Rename": refused (told) when another entry or the indicator has the name.
bool RenameUnited(const Workspace& ws, MergePlan& plan, int entry, std::string_view name);

// Builds "The united table" from the plan. nullopt (told) when the plan's names clash or the
// table would pass the workspace limits.
std::optional<TableSnapshot> MergeTables(const Workspace& ws, const MergeSource& source, const MergePlan& plan,
                                         std::string_view addedFileName);

// "Set the merged file as new working file": the target tables become the workspace.
void UseMergedTables(Workspace& ws, TableSnapshot merged);

}  // namespace tarvika
