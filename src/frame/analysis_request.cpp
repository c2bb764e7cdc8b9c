#include "frame/analysis_request.h"

#include "lang/utf8.h"
#include "workspace/workspace.h"

namespace tarvika {

std::uint8_t ScaleKindOf(std::string_view word) {
  if (word == "discrete" || word == "diszkrét") return kScaleDiscrete;
  if (word == "group.def." || word == "csop.def.") return kScaleGroupDefined;
  return kScaleContinuous;
}

AnalysisRequest BuildRequest(const Workspace& ws, int commandCode, int numberOfSelected) {
  AnalysisRequest r;
  r.commandCode = commandCode;
  r.numberOfCases = ws.NumberOfCases();
  r.numberOfVariables = ws.NumberOfVariables();
  r.numberOfSelected = numberOfSelected;
  int n = r.numberOfVariables;
  r.role.assign(n + 1, ' ');
  r.scaleKind.assign(n + 1, kScaleContinuous);
  r.shortNames.resize(n + 1);
  r.longNames.resize(n + 1);
  for (int v = 1; v <= n; ++v) {
    std::string_view role = ws.vars.GetCell(kRole, v);
    r.role[v] = role.empty() ? ' ' : role.front();
    r.scaleKind[v] = ScaleKindOf(ws.vars.GetCell(kAttribute, v));
    r.shortNames[v] = std::string(Utf8Prefix(ws.vars.GetCell(kShortName, v), kShortNameLength));
    r.longNames[v] = std::string(ws.vars.GetCell(kLongName, v));
  }
  return r;
}

SelectedIndex BuildSelectedIndex(const AnalysisRequest& request) {
  SelectedIndex s;
  s.columns.push_back(0);
  int n = request.numberOfVariables;
  auto addAll = [&](char letter) {
    int added = 0;
    for (int v = 1; v <= n; ++v) {
      if (request.role[v] == letter) {
        s.columns.push_back(v);
        ++added;
      }
    }
    return added;
  };
  auto addFirst = [&](char letter) {
    for (int v = 1; v <= n; ++v) {
      if (request.role[v] == letter) {
        s.columns.push_back(v);
        return s.Count();
      }
    }
    return 0;
  };
  s.analysed = addAll('X');
  s.covariates = addAll('C');
  s.grouping = addFirst('G');
  s.conditional = addFirst('N');
  return s;
}

namespace {

// The row of a name from a dialog list: the exact short name, else the only one that is
// equal ignoring case; -1 when there is none.
int FindVariable(const Workspace& ws, std::string_view name) {
  int exact = ws.vars.VariableIndex(name);
  if (exact > 0) return exact;
  int found = -1;
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    if (!EqualIgnoringCase(ws.vars.GetCell(kShortName, v), name)) continue;
    if (found > 0) return -1;
    found = v;
  }
  return found;
}

}  // namespace

PreparedRun PrepareSingleSampleRun(Workspace& ws, const SingleSampleSelection& selection) {
  PreparedRun run;
  if (selection.selected.empty()) {
    run.error = ws.Text("At least one variable has to be selected.", "Legalább egy változót ki kell választania!");
    return run;
  }
  // Resolve every name before the tables are touched.
  std::vector<int> rows;
  std::vector<std::string_view> names(selection.selected.begin(), selection.selected.end());
  if (!selection.conditional.empty()) names.push_back(selection.conditional);
  for (std::string_view name : names) {
    int v = FindVariable(ws, name);
    if (v < 1) {
      run.error = std::string(ws.Text("Unknown variable: ", "Ismeretlen változó: ")) + std::string(name);
      return run;
    }
    if (ws.vars.GetCell(kType, v).starts_with("string")) {
      run.error = std::string(ws.Text("Not a numeric variable: ", "Nem numerikus változó: ")) + std::string(name);
      return run;
    }
    rows.push_back(v);
  }

  ws.vars.ClearScratch();
  for (std::size_t i = 0; i < selection.selected.size(); ++i) {
    int v = rows[i];
    ws.vars.SetCell(kRole, v, "X");
    if (selection.commandCode == 13 && i < selection.scaleTypes.size()) {
      ws.vars.SetCell(kAttribute, v, selection.scaleTypes[i]);
    }
    if (selection.commandCode == 14 && i < selection.hypotheticalValues.size()) {
      ws.vars.SetCell(kParameter, v, selection.hypotheticalValues[i]);
    }
  }
  if (!selection.conditional.empty()) ws.vars.SetCell(kRole, rows.back(), "N");
  run.request = BuildRequest(ws, selection.commandCode, static_cast<int>(selection.selected.size()));
  return run;
}

}  // namespace tarvika
