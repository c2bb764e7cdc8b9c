#include "transform/new_targets.h"

#include <algorithm>

#include "lang/utf8.h"
#include "workspace/new_variable.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

std::vector<int> WithLeadingZero(const std::vector<int>& variables) {
  std::vector<int> columns{0};
  columns.insert(columns.end(), variables.begin(), variables.end());
  return columns;
}

}  // namespace

std::optional<Placement> PlacementOf(std::string_view word) {
  if (word == "same") return Placement::Same;
  if (word == "before") return Placement::Before;
  if (word == "after") return Placement::After;
  if (word == "end") return Placement::End;
  return std::nullopt;
}

bool CheckTargets(Workspace& ws, const std::vector<NewTarget>& targets) {
  int created = 0;
  for (std::size_t i = 0; i < targets.size(); ++i) {
    const NewTarget& t = targets[i];
    if (t.place == Placement::Same) continue;
    ++created;
    if (t.name.empty()) {
      ws.user.Tell(ws.Text("You must give a name for each new variable", "Minden új változónak kell adnia nevet."));
      return false;
    }
    if (Utf8Length(t.name) > static_cast<std::size_t>(kShortNameLength)) {
      ws.user.Tell(std::string(ws.Text("A short name has at most 8 characters: ", "A rövid név legfeljebb 8 karakteres: ")) +
                   t.name);
      return false;
    }
    bool clash = ShortNameInUse(ws, t.name);
    for (std::size_t j = 0; j < i; ++j) {
      clash = clash || (targets[j].place != Placement::Same && EqualIgnoringCase(targets[j].name, t.name));
    }
    if (clash) {
      ws.user.Tell(ws.Text("You must give a unique name for each new variable",
                           "Minden új változónak egyedi nevet kell adnia."));
      return false;
    }
  }
  if (!RoomForVariables(ws, created)) {
    ws.user.Tell(VariableLimitMessage(ws));
    return false;
  }
  return true;
}

void WriteTargets(Workspace& ws, const std::vector<int>& sources, const std::vector<NewTarget>& targets,
                  const std::vector<std::vector<std::string>>& cells, const std::vector<std::string>& types,
                  const std::vector<std::string>& longNames) {
  std::vector<int> column = sources;  // where each source stands now
  for (std::size_t i = 0; i < targets.size(); ++i) {
    const NewTarget& t = targets[i];
    if (t.place == Placement::Same) {
      const int v = column[i];
      for (int r = 1; r <= ws.NumberOfCases() && r <= static_cast<int>(cells[i].size()); ++r) {
        if (!cells[i][r - 1].empty()) ws.data.SetCell(v, r, cells[i][r - 1]);
      }
      ws.vars.SetCell(kType, v, types[i]);
      ws.dataChanged = true;
      continue;
    }
    const int place = t.place == Placement::Before  ? column[i]
                      : t.place == Placement::After ? column[i] + 1
                                                    : 0;
    const std::string& longName = t.longName.empty() ? longNames[i] : t.longName;
    const int v = NewVariable(ws, t.name, longName, cells[i], place, types[i]);
    for (int& c : column) {
      if (c >= v) ++c;
    }
  }
}

bool CheckCaseTarget(Workspace& ws, const std::vector<int>& sources, const NewTarget& target) {
  if (sources.empty()) {
    ws.user.Tell(ws.Text("No variable has been selected. Program stops.", "Nincs kiválasztott változó. A program leáll."));
    return false;
  }
  if (target.place == Placement::Same) {
    ws.user.Tell(ws.Text("This function makes a new variable: give it a name and a place.",
                         "Ez a függvény új változót hoz létre: adjon neki nevet és helyet."));
    return false;
  }
  return CheckTargets(ws, {target});
}

void WriteCaseTarget(Workspace& ws, const std::vector<int>& sources, const NewTarget& target,
                     const std::vector<std::string>& cells, const std::string& longName) {
  const int anchor = target.place == Placement::After ? *std::max_element(sources.begin(), sources.end())
                                                      : *std::min_element(sources.begin(), sources.end());
  WriteTargets(ws, {anchor}, {target}, {cells}, {"num=0_0;"}, {longName});
}

CellReader::CellReader(Workspace& ws, const std::vector<int>& variables)
    : missing_(ParseMissing(ws)), feed_(ws, missing_, WithLeadingZero(variables)) {}

std::optional<std::pair<double, double>> TypeRange(std::string_view type, char separator) {
  if (!type.starts_with("num=")) return std::nullopt;
  const auto range = NumericTypeRange(type, separator);
  if (!range || !(range->first < range->second)) return std::nullopt;
  return range;
}

std::string RangeType(double lo, double hi, char separator) {
  return "num=" + FormatGeneral(lo, separator) + "_" + FormatGeneral(hi, separator) + ";";
}

}  // namespace tarvika
