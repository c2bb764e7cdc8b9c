#include "transform/row_statistics.h"

#include <algorithm>
#include <cmath>

#include "stats/moments.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

constexpr std::string_view kWords[] = {"mean", "sd", "variance", "min", "max", "median", "usable", "missing"};
constexpr std::string_view kEnglish[] = {"MEAN of variables: ",
                                         "SD of variables: ",
                                         "VARIANCE of variables: ",
                                         "MINIMUM of variables: ",
                                         "MAXIMUM of variables: ",
                                         "MEDIAN of variables: ",
                                         "NUMBER of usable values of variables: ",
                                         "NUMBER of missing values of variables: "};
constexpr std::string_view kHungarian[] = {"Átlag(", "Szórás(", "Variancia(", "Min(", "Max(", "Medián("};

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) text += (i == 0 ? "" : ", ") + names[i];
  return text;
}

}  // namespace

std::optional<RowStatistic> RowStatisticOf(std::string_view word) {
  for (std::size_t i = 0; i < std::size(kWords); ++i) {
    if (kWords[i] == word) return static_cast<RowStatistic>(i + 1);
  }
  return std::nullopt;
}

std::optional<double> RowStatisticValue(RowStatistic f, std::span<double> valid, int missing) {
  const int n = static_cast<int>(valid.size());
  if (f == RowStatistic::Usable) return n;
  if (f == RowStatistic::Missing) return missing;
  if (n == 0) return std::nullopt;
  switch (f) {
    case RowStatistic::Mean:
    case RowStatistic::SD:
    case RowStatistic::Variance: {
      // Deviations from the running mean rather than sum of squares - sum^2/n, which loses
      // the digits of values far from zero.
      MomentAccumulator m(false);
      for (double x : valid) m.Add(x);
      if (f == RowStatistic::Mean) return m.mean;
      return f == RowStatistic::Variance ? Variance(m) : std::sqrt(Variance(m));
    }
    case RowStatistic::Minimum:
      return *std::min_element(valid.begin(), valid.end());
    case RowStatistic::Maximum:
      return *std::max_element(valid.begin(), valid.end());
    case RowStatistic::Median: {
      std::sort(valid.begin(), valid.end());
      return n % 2 == 1 ? valid[n / 2] : (valid[n / 2 - 1] + valid[n / 2]) / 2;
    }
    default:
      return std::nullopt;
  }
}

std::string RowStatisticLongName(RowStatistic f, const std::vector<std::string>& names, Language lang) {
  const int i = static_cast<int>(f) - 1;
  if (lang == Language::English) return std::string(kEnglish[i]) + Joined(names);
  if (f == RowStatistic::Usable) return Joined(names) + " érvényes értékeinek a száma";
  if (f == RowStatistic::Missing) return Joined(names) + " hiányzó értékeinek a száma";
  return std::string(kHungarian[i]) + Joined(names) + ")";
}

bool ApplyStatFunction(Workspace& ws, RowStatistic f, const std::vector<int>& sources, const NewTarget& target) {
  if (!CheckCaseTarget(ws, sources, target)) return false;
  const int cases = ws.NumberOfCases();
  const CellReader reader(ws, sources);
  const int k = static_cast<int>(sources.size());
  std::vector<std::string> cells(cases);
  std::vector<double> valid(k);
  for (int r = 1; r <= cases; ++r) {
    int n = 0;
    for (int i = 0; i < k; ++i) {
      if (reader.Read(r, i, valid[n])) ++n;
    }
    if (auto value = RowStatisticValue(f, std::span(valid.data(), n), k - n)) {
      cells[r - 1] = FormatGeneral(*value, ws.decimalSeparator);
    }
  }
  std::vector<std::string> names;
  for (int v : sources) names.emplace_back(ws.vars.GetCell(kShortName, v));
  WriteCaseTarget(ws, sources, target, cells, RowStatisticLongName(f, names, ws.language));
  return true;
}

}  // namespace tarvika
