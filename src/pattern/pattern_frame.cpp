#include "pattern/pattern_frame.h"

#include <cmath>
#include <fmt/format.h>

#include "frame/analysis_run.h"
#include "pattern/pattern_text.h"
#include "workspace/new_variable.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {

PatternVariables ReadPatternVariables(const AnalysisRun& run) {
  PatternVariables vars;
  for (int i = 1; i <= run.index.analysed; ++i) {
    const int v = run.index.columns[i];
    vars.columns.push_back(v);
    vars.names.push_back(run.request.shortNames[v]);
    vars.headings.push_back(HeadingName(run.request.shortNames[v]));
    vars.longNames.push_back(run.request.longNames[v]);
    const std::string_view cell = run.ws.vars.GetCell(kParameter, v);
    const auto weight = ParseEitherSeparator(cell, '.');
    vars.weights.push_back(weight ? std::fabs(*weight) : 1.0);
  }
  return vars;
}

std::vector<CaseValues> ReadCompleteCases(const AnalysisRun& run, int V, int extra, std::vector<double>* extraValues,
                                          std::vector<char>* extraMissing) {
  std::vector<CaseValues> cases;
  const int count = run.index.Count();
  std::vector<double> value(count + 1, 0);
  std::vector<std::uint8_t> missing(count + 1, 1);
  int seen = 0;
  for (int row : run.GroupRows()) {
    if (++seen % 10000 == 0) run.ShowCaseProgress(row);
    run.Feed().ReadRow(row, count, value, missing);
    bool complete = true;
    for (int i = 1; i <= V && complete; ++i) complete = !missing[i];
    if (!complete) continue;
    cases.push_back({row, std::vector<double>(value.begin() + 1, value.begin() + 1 + V)});
    if (extra > 0) {
      extraValues->push_back(value[extra]);
      extraMissing->push_back(static_cast<char>(missing[extra]));
    }
  }
  return cases;
}

PooledScale Pooled(const PatternSet& set) {
  PooledScale s;
  double weights = 0;
  for (int v = 0; v < set.V; ++v) {
    s.mt += set.mean[v] / set.V;
    s.varT += set.rawWeight[v] * set.variance[v];
    weights += set.rawWeight[v];
  }
  s.varT = weights > 0 ? s.varT / weights : 0;
  s.sdT = s.varT > 0 ? std::sqrt(s.varT) : 0;
  return s;
}

double HcShown(const PatternSet& set, double hc) {
  const double varT = Pooled(set).varT;
  return set.standardized || varT <= kPatternZero ? hc : hc / varT;
}

int NewClusterCodeVariable(AnalysisRun& run, const std::string& name, const std::string& longName) {
  if (!RoomForVariables(run.ws, 1)) {
    run.report.Line(fmt::format("{}{}{}", run.T("The cluster code as a new variable cannot be saved",
                                               "A Klaszter kódváltozó nem menthető el, mert az összes"),
                                run.T(" since the total number of variables would be over ",
                                      " változók száma így meghaladná a megengedett felső limitet ("),
                                run.English() ? "1000" : "1000)."));
    return 0;
  }
  return NewVariable(run.ws, name, longName, {});
}

int SaveClusterCodes(AnalysisRun& run, const PatternSet& set, const std::vector<int>& codeOfPattern,
                     const std::string& name, const std::string& longName, int column) {
  if (column == 0) column = NewClusterCodeVariable(run, name, longName);
  if (column == 0) return 0;
  for (int i = 0; i < set.N; ++i) {
    const int code = codeOfPattern[set.patternOfCase[i]];
    run.ws.data.SetCell(column, set.caseRows[i], std::to_string(code));
  }
  return column;
}

}  // namespace tarvika
