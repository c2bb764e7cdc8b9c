#pragma once
// The lists a person types in the window's short prompts: names separated by commas, rule
// lines separated by "|".

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/workspace.h"

namespace tarvika {

// The trimmed, non-empty items of the text between the separators.
std::vector<std::string> SplitTyped(std::string_view text, char separator);

// The variable of a short name, ignoring case; 0 when there is none.
int VariableOfName(const Workspace& ws, std::string_view name);

// The variables of "a, b, c" in order; nullopt after telling the first unknown name.
std::optional<std::vector<int>> TypedVariables(Workspace& ws, std::string_view text);

}  // namespace tarvika
