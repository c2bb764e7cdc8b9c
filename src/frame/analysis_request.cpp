#include "frame/analysis_request.h"

#include <stdexcept>

#include "frame/dialog_parameters.h"
#include "lang/utf8.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {

std::uint8_t ScaleKindOf(std::string_view word) {
  if (word == "discrete" || word == "diszkrét" || word == "ordinal" || word == "ordinális") return kScaleDiscrete;
  if (word == "group.def." || word == "csop.def." || word == "nominal" || word == "nominális") return kScaleGroupDefined;
  return kScaleContinuous;
}

std::string_view AnalysisRequest::Text(std::string_view name, ParameterKind kind) const {
  const ParameterDefinition* param = FindParameter(dialog, name);
  if (param == nullptr || param->kind != kind) {
    throw std::logic_error("the request's dialog has no parameter " + std::string(name) + " of that kind");
  }
  auto it = parameters.find(param->name);
  return it == parameters.end() ? param->defaultValue : std::string_view(it->second);
}

int AnalysisRequest::Get(IntegerParameter p) const {
  auto n = ParseWholeNumber(Text(p.name, p.kind));
  return n ? static_cast<int>(*n) : 0;
}

double AnalysisRequest::Get(NumberParameter p) const {
  return ParseEitherSeparator(Text(p.name, p.kind), '.').value_or(0);
}

bool AnalysisRequest::Get(ToggleParameter p) const { return ToggleValue(Text(p.name, p.kind)) == 2; }
int AnalysisRequest::Get(ThreeStateParameter p) const { return ToggleValue(Text(p.name, p.kind)); }
bool AnalysisRequest::Get(FlagParameter p) const { return Text(p.name, p.kind) == "on"; }
std::string_view AnalysisRequest::Get(ChoiceParameter p) const { return Text(p.name, p.kind); }
std::string_view AnalysisRequest::Get(TextParameter p) const { return Text(p.name, p.kind); }

AnalysisRequest BuildRequest(const Workspace& ws, int commandCode, int numberOfSelected, DialogKind dialog) {
  AnalysisRequest r;
  r.commandCode = commandCode;
  r.dialog = dialog;
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

}  // namespace tarvika
