#pragma once
// The one way in which a derived variable enters the workspace: a column of the data table
// and a row of declarations, numeric with no groups. Analyses and transformations that
// write variables back all go through here.

#include <string>
#include <string_view>
#include <vector>

namespace tarvika {

class Workspace;

// False when adding `count` more variables would pass the variable limit.
bool RoomForVariables(const Workspace& ws, int count);

// "No more new variable can be created since the total number of variables would be over
// 1000." in the session's language.
std::string VariableLimitMessage(const Workspace& ws);

// base itself when no variable has that short name (compared ignoring case); otherwise its
// first 7 characters followed by the first free digit 0 to 8; when all are taken, the first
// free "var_" N.
std::string NewVariableName(const Workspace& ws, std::string_view base);

// Inserts a variable before column `place` (0 or beyond the last: appended) with the type
// "num=0_0;" (or the one given) and the group type none, and fills its cells: cells[r - 1]
// for case r, empty where cells is short. Returns the new column, or 0 when the variable
// limit is reached (nothing changes then).
int NewVariable(Workspace& ws, std::string_view name, std::string_view longName, const std::vector<std::string>& cells,
                int place = 0, std::string_view type = "num=0_0;");

}  // namespace tarvika
