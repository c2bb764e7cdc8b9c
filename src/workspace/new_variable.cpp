#include "workspace/new_variable.h"

#include <fmt/format.h>

#include "lang/utf8.h"
#include "workspace/declarations.h"
#include "workspace/workspace.h"

namespace tarvika {

bool RoomForVariables(const Workspace& ws, int count) { return ws.NumberOfVariables() + count <= kMaxVariables; }

std::string VariableLimitMessage(const Workspace& ws) {
  return fmt::format("{}{}{}{}", ws.Text("No more new variable can be created ", "Új változó már nem hozható létre, mert a változók száma"),
                     ws.Text("since the total number of variables would be over ", " meghaladná a megengedett felső limitet ("),
                     kMaxVariables, ws.Text(".", ")."));
}

std::string NewVariableName(const Workspace& ws, std::string_view base) {
  if (!ShortNameInUse(ws, base)) return std::string(base);
  std::string stem(Utf8Prefix(base, kShortNameLength - 1));
  for (char digit = '0'; digit <= '8'; ++digit) {
    std::string candidate = stem + digit;
    if (!ShortNameInUse(ws, candidate)) return candidate;
  }
  std::string free = FreeVarName(ws);
  return free.empty() ? std::string(base) : free;
}

int NewVariable(Workspace& ws, std::string_view name, std::string_view longName, const std::vector<std::string>& cells,
                int place, std::string_view type) {
  if (!RoomForVariables(ws, 1)) return 0;
  const int last = ws.NumberOfVariables() + 1;
  const int v = place >= 1 && place < last ? place : last;
  ws.data.InsertColumns(v, 1);
  ws.vars.InsertRows(v, 1);
  ws.data.SetCell(v, 0, name);
  ws.vars.SetCell(kShortName, v, name);
  ws.vars.SetCell(kLongName, v, longName);
  ws.vars.SetCell(kType, v, type);
  ws.vars.SetCell(kGroupType, v, GroupTypeWord(GroupKind::None, ws.language));
  for (int r = v; r <= ws.NumberOfVariables(); ++r) ws.vars.SetCell(kIndex, r, std::to_string(r));
  const int cases = ws.NumberOfCases();
  for (int r = 1; r <= cases && r <= static_cast<int>(cells.size()); ++r) ws.data.SetCell(v, r, cells[r - 1]);
  ws.dataChanged = true;
  return v;
}

}  // namespace tarvika
