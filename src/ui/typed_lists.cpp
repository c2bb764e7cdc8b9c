#include "ui/typed_lists.h"


namespace tarvika {

std::vector<std::string> SplitTyped(std::string_view text, char separator) {
  std::vector<std::string> items;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find(separator, start);
    if (end == std::string_view::npos) end = text.size();
    std::string item(text.substr(start, end - start));
    item.erase(0, item.find_first_not_of(" \t"));
    item.erase(item.find_last_not_of(" \t") + 1);
    if (!item.empty()) items.push_back(item);
    start = end + 1;
  }
  return items;
}

int VariableOfName(const Workspace& ws, std::string_view name) { return ws.vars.VariableNamed(name); }

std::optional<std::vector<int>> TypedVariables(Workspace& ws, std::string_view text) {
  std::vector<int> variables;
  for (const std::string& name : SplitTyped(text, ',')) {
    int v = VariableOfName(ws, name);
    if (v == 0) {
      ws.user.Tell(std::string(ws.Text("Unknown variable: ", "Ismeretlen változó: ")) + name);
      return std::nullopt;
    }
    variables.push_back(v);
  }
  return variables;
}

}  // namespace tarvika
