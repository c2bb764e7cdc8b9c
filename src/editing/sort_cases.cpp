#include "editing/sort_cases.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "lang/utf8.h"
#include "workspace/numbers.h"

namespace tarvika {
namespace {

enum class KeyKind { Number = 1, Text = 2, Date = 3 };

// A date as year * 10000 + month * 100 + day: "2024.03.01", "2024-03-01" or "2024/3/1" with
// the year first, else day, month and year ("01.03.2024").
std::optional<double> DateKey(std::string_view text) {
  int parts[3];
  std::size_t lengths[3];
  std::size_t at = 0;
  for (int i = 0; i < 3; ++i) {
    while (at < text.size() && text[at] == ' ') ++at;
    const char* start = text.data() + at;
    auto [end, ec] = std::from_chars(start, text.data() + text.size(), parts[i]);
    if (ec != std::errc()) return std::nullopt;
    lengths[i] = static_cast<std::size_t>(end - start);
    at = static_cast<std::size_t>(end - text.data());
    if (i < 2) {
      if (at >= text.size() || (text[at] != '.' && text[at] != '-' && text[at] != '/')) return std::nullopt;
      ++at;
    }
  }
  while (at < text.size() && (text[at] == '.' || text[at] == ' ')) ++at;
  if (at != text.size()) return std::nullopt;
  int year = parts[0], month = parts[1], day = parts[2];
  if (lengths[0] != 4) std::swap(year, day);
  if (month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  return year * 10000.0 + month * 100.0 + day;
}

class CaseSorter {
 public:
  CaseSorter(const Workspace& ws) : ws_(ws), order_(ws.NumberOfCases()) {
    for (int i = 0; i < static_cast<int>(order_.size()); ++i) order_[i] = i + 1;
  }

  // Sorts positions first..last (0-based, inclusive) of the present order by the column.
  void SortRange(int column, KeyKind kind, bool descending, int first, int last) {
    auto begin = order_.begin() + first;
    auto end = order_.begin() + last + 1;
    if (kind == KeyKind::Text) {
      LoadTexts(column);
      if (descending) {
        std::stable_sort(begin, end, [this](int a, int b) { return texts_[b] < texts_[a]; });
      } else {
        std::stable_sort(begin, end, [this](int a, int b) { return texts_[a] < texts_[b]; });
      }
      return;
    }
    LoadValues(column, kind);
    // NaN marks an empty cell: it is after every value whichever the direction.
    auto after = [this, descending](int a, int b) {
      double x = values_[a], y = values_[b];
      if (std::isnan(y)) return !std::isnan(x);
      if (std::isnan(x)) return false;
      return descending ? x > y : x < y;
    };
    std::stable_sort(begin, end, after);
  }

  // The runs of equal texts of the column in the present order, as [first, last] positions.
  std::vector<std::pair<int, int>> FindRuns(int column) const {
    std::vector<std::pair<int, int>> runs;
    const int n = static_cast<int>(order_.size());
    int start = 0;
    for (int i = 1; i <= n; ++i) {
      if (i == n || ws_.data.GetCell(column, order_[i]) != ws_.data.GetCell(column, order_[i - 1])) {
        runs.emplace_back(start, i - 1);
        start = i;
      }
    }
    return runs;
  }

  const std::vector<int>& Order() const { return order_; }

 private:
  void LoadTexts(int column) {
    if (loaded_ == column && loadedKind_ == KeyKind::Text) return;
    texts_.assign(order_.size() + 1, std::string());
    for (int r = 1; r <= static_cast<int>(order_.size()); ++r) texts_[r] = FoldCase(ws_.data.GetCell(column, r));
    loaded_ = column;
    loadedKind_ = KeyKind::Text;
  }
  void LoadValues(int column, KeyKind kind) {
    if (loaded_ == column && loadedKind_ == kind) return;
    values_.assign(order_.size() + 1, std::numeric_limits<double>::quiet_NaN());
    for (int r = 1; r <= static_cast<int>(order_.size()); ++r) {
      std::string_view cell = ws_.data.GetCell(column, r);
      if (cell.empty()) continue;
      auto v = kind == KeyKind::Date ? DateKey(cell) : ParseFourDecimals(cell, ws_.decimalSeparator);
      if (v) values_[r] = *v;
    }
    loaded_ = column;
    loadedKind_ = kind;
  }

  const Workspace& ws_;
  std::vector<int> order_;  // position -> row
  std::vector<std::string> texts_;
  std::vector<double> values_;
  int loaded_ = -1;
  KeyKind loadedKind_ = KeyKind::Text;
};

}  // namespace

bool SortCases(Workspace& ws, const std::vector<SortKey>& keys) {
  if (keys.empty()) {
    ws.user.Tell(ws.Text("At least one variable has to be selected.", "Legalább egy változót ki kell választania!"));
    return false;
  }
  for (const SortKey& key : keys) {
    if (key.variable < 1 || key.variable > ws.NumberOfVariables()) return false;
  }
  const int n = ws.NumberOfCases();
  if (n < 1) return true;
  ws.ShowProgress(ws.Text("Sorting cases ...", "Esetek rendezése ..."));
  CaseSorter sorter(ws);
  std::string_view firstType = ws.vars.GetCell(kType, keys[0].variable);
  KeyKind firstKind = firstType.starts_with("num") ? KeyKind::Number : firstType.starts_with("date") ? KeyKind::Date : KeyKind::Text;
  sorter.SortRange(keys[0].variable, firstKind, keys[0].descending, 0, n - 1);
  std::vector<std::pair<int, int>> runs;
  if (keys.size() > 1) runs = sorter.FindRuns(keys[0].variable);
  for (std::size_t k = 1; k < keys.size(); ++k) {
    const SortKey& key = keys[k];
    KeyKind kind = ws.vars.GetCell(kType, key.variable).starts_with("string") ? KeyKind::Text : KeyKind::Number;
    for (auto [first, last] : runs) {
      if (last > first) sorter.SortRange(key.variable, kind, key.descending, first, last);
    }
    if (k + 1 < keys.size()) runs = sorter.FindRuns(key.variable);
  }
  ws.data.PermuteRows(1, sorter.Order());
  ws.data.RenumberCases();
  ws.dataChanged = true;
  ws.ShowProgress("");
  ws.user.Tell(ws.Text("The cases have been successfully sorted.", "A sorbarendezés sikeresen végbement."));
  return true;
}

}  // namespace tarvika
