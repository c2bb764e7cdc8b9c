#include "transform/weighted_sum.h"

#include <fmt/format.h>

#include <cmath>

#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {

double WeightedSumValue(std::span<const double> x, std::span<const double> weights) {
  double sum = 0;
  for (std::size_t i = 0; i < x.size(); ++i) sum += weights[i] * x[i];
  return sum;
}

std::vector<std::string> WeightedSumCells(Workspace& ws, const std::vector<int>& sources,
                                          const std::vector<double>& weights) {
  const int cases = ws.NumberOfCases();
  const CellReader reader(ws, sources);
  const int k = static_cast<int>(sources.size());
  std::vector<std::string> cells(cases);
  std::vector<double> x(k);
  for (int r = 1; r <= cases; ++r) {
    int i = 0;
    while (i < k && reader.Read(r, i, x[i])) ++i;
    if (i < k) continue;
    const double sum = WeightedSumValue(x, weights);
    if (std::isfinite(sum)) cells[r - 1] = FormatGeneral(sum, ws.decimalSeparator);
  }
  return cells;
}

std::string WeightedSumLongName(const std::vector<std::string>& names, const std::vector<double>& weights,
                                char separator, Language lang) {
  std::string terms;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string w = FormatGeneral(weights[i], separator);
    terms += fmt::format("{}{}*{}", i == 0 || w.starts_with('-') ? "" : "+", w, names[i]);
  }
  return fmt::format("{}({})", Pick(lang, "wsum", "Súlyozott összeg"), terms);
}

bool ApplyWeightedSum(Workspace& ws, const std::vector<int>& sources, const std::vector<double>& weights,
                      const NewTarget& target) {
  if (!CheckCaseTarget(ws, sources, target)) return false;
  if (weights.size() != sources.size()) {
    ws.user.Tell(fmt::format(
        "{}{}{}{}", ws.Text("Give one weight for each variable: ", "Minden változónak adjon egy súlyt: "),
        sources.size(), ws.Text(" variables, weights: ", " változó, súlyok: "), weights.size()));
    return false;
  }
  std::vector<std::string> names;
  for (int v : sources) names.emplace_back(ws.vars.GetCell(kShortName, v));
  WriteCaseTarget(ws, sources, target, WeightedSumCells(ws, sources, weights),
                  WeightedSumLongName(names, weights, ws.decimalSeparator, ws.language));
  return true;
}

}  // namespace tarvika
