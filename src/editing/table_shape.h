#pragma once
// The commands that change the shape of the two tables: a new file, inserting and deleting
// cases and variables. A column of the data table and its row of declarations move
// together, and cases stay numbered 1 to n. Each refuses (told, nothing changed) past the
// workspace limits and returns false then.

#include <string>

#include "workspace/workspace.h"

namespace tarvika {

// Empties the workspace into variables "var_1".."var_n" of the default variable's
// declarations and `cases` empty cases.
bool NewFile(Workspace& ws, int variables, int cases);

// "The case numbers of your data table go from 1 to " n.
std::string CaseRangeMessage(const Workspace& ws);

// "The increased number of cases = " total ".\r\nThis version can handle at most " the
// limit " cases." (of variables with `cases` false).
std::string IncreasedCountMessage(const Workspace& ws, int total, bool cases);

enum class CasePlace { BeforeActual, AfterActual, Top, Bottom };
// `actual` is the case the cursor is on (used by the first two places).
bool InsertCases(Workspace& ws, int count, CasePlace place, int actual = 1);
// Deletes cases first..last after the person confirms; at least one case stays.
bool DeleteCases(Workspace& ws, int first, int last);

enum class VariablePlace { Before, After, First, Last };
// Where the declarations of new variables come from.
struct NewVariableProperties {
  enum class Kind { Default, Identical, Type } kind = Kind::Default;
  int model = 0;      // with Identical: the variable whose declarations are copied
  std::string type;   // with Type: "num=0_0;", "string=0;", "date=;" or "link=;"
};
bool InsertVariables(Workspace& ws, int count, VariablePlace place, int actual = 1,
                     const NewVariableProperties& properties = {});
// Deletes variables first..last after the person confirms; at least one variable stays.
bool DeleteVariables(Workspace& ws, int first, int last);

}  // namespace tarvika
