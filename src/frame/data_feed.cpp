#include "frame/data_feed.h"

#include <cmath>
#include <fmt/format.h>

#include "frame/report_writer.h"
#include "lang/two_threads.h"
#include "lang/utf8.h"
#include "numeric/tolerance.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {

bool IsMissingByCodes(const MissingCodes& m, double x) {
  switch (m.count) {
    case 1:
    case 2:
    case 3: {
      const double codes[3] = {m.lo, m.hi, m.extra};
      for (int k = 0; k < m.count; ++k) {
        if (std::fabs(x - codes[k]) < kZeroTolerance) return true;
      }
      return false;
    }
    case 4:
      return m.lo - kZeroTolerance < x && x < m.hi + kZeroTolerance;
    case 5:
      return (m.lo - kZeroTolerance < x && x < m.hi + kZeroTolerance) ||
             std::fabs(x - m.extra) < kZeroTolerance;
    default:
      return false;
  }
}

DataFeed::DataFeed(const Workspace& ws, const std::vector<MissingCodes>& missing, std::vector<int> columns)
    : ws_(ws), missing_(missing), columns_(std::move(columns)), separator_(ws.decimalSeparator) {
  if (columns_.empty()) columns_.push_back(0);
  codesAt_.resize(columns_.size());
  dense_.resize(columns_.size());
  denseTried_.assign(columns_.size(), 0);
  for (std::size_t i = 1; i < columns_.size(); ++i) {
    int v = columns_[i];
    if (v >= 1 && v < static_cast<int>(missing_.size())) codesAt_[i] = missing_[v];
  }
}

bool DataFeed::IsMissingCode(int variable, double x) const {
  if (variable < 1 || variable >= static_cast<int>(missing_.size())) return false;
  return IsMissingByCodes(missing_[variable], x);
}

bool DataFeed::ReadCell(int row, int i, double& value) const {
  std::string_view text = ws_.data.GetCell(columns_[i], row);
  value = 0;
  if (text.empty()) return true;
  auto x = ParsePlainDecimal(text, separator_);
  if (!x) x = ParseEitherSeparator(text, separator_);
  if (!x) return true;
  value = *x;
  return codesAt_[i].count != 0 && IsMissingByCodes(codesAt_[i], *x);
}

const DataFeed::DenseColumn* DataFeed::Dense(int i) const {
  // Columns converted whole take at most this much; a run over more of a large table
  // reads the rest cell by cell, as fast as before and with no more memory.
  constexpr std::size_t kBudget = std::size_t{512} << 20;
  constexpr int kSplitRows = 65536;  // fewer rows are not worth a thread
  if (dense_[i]) return dense_[i].get();
  if (denseTried_[i]) return nullptr;
  denseTried_[i] = 1;
  const int m = ws_.data.NumberOfCases();
  const std::size_t bytes = (static_cast<std::size_t>(m) + 1) * (sizeof(double) + 1);
  if (m < 1 || denseBytes_ + bytes > kBudget) return nullptr;
  auto column = std::make_unique<DenseColumn>();
  column->values.reset(new double[m + 1]);
  column->missing.reset(new std::uint8_t[m + 1]);
  auto convert = [this, i, &column](int from, int to) {
    for (int row = from; row <= to; ++row) column->missing[row] = ReadCell(row, i, column->values[row]);
  };
  const int half = m / 2;
  RunOnTwoThreads(m >= kSplitRows, [&] { convert(half + 1, m); }, [&] { convert(1, half); });
  denseBytes_ += bytes;
  dense_[i] = std::move(column);
  return dense_[i].get();
}

bool DataFeed::ReadPosition(int row, int i, double& value) const {
  const DenseColumn* column = row >= 1 && row <= ws_.data.NumberOfCases() ? Dense(i) : nullptr;
  if (column == nullptr) return ReadCell(row, i, value);
  value = column->values[row];
  return column->missing[row] != 0;
}

void DataFeed::ReadRow(int row, int count, std::vector<double>& values, std::vector<std::uint8_t>& missings) const {
  for (int i = 1; i <= count; ++i) missings[i] = ReadPosition(row, i, values[i]);
}

void DataFeed::ReadValue(int row, int variable, double& value, bool& missing) const {
  std::string_view text = ws_.data.GetCell(variable, row);
  value = 0;
  missing = true;
  if (text.empty()) return;
  if (auto x = ParseLocalNumber(text, separator_)) value = *x;
  // A text that fails is swapped twice over, which gives it back, and stays the value 0.
  missing = IsMissingCode(variable, value);
}

GroupDefinition GetGroupDefinition(const Workspace& ws, int v) {
  GroupDefinition d;
  GroupKind kind = GroupKindOf(ws.vars.GetCell(kGroupType, v));
  auto entries = ParseLabels(ws, v);
  if (!entries || (kind != GroupKind::Codes && kind != GroupKind::Intervals)) return d;
  d.kind = kind == GroupKind::Codes ? 1 : 2;
  d.count = std::min(static_cast<int>(entries->size()), kMaxGroups);
  if (d.count == 0) {
    d.kind = 0;
    return d;
  }
  d.lo.assign(d.count + 1, 0);
  d.hi.assign(d.count + 1, 0);
  d.names.assign(d.count + 1, "");
  d.map.assign(d.count + 1, 0);
  d.distinctNames.assign(1, "");
  for (int i = 1; i <= d.count; ++i) {
    const LabelEntry& e = (*entries)[i - 1];
    d.lo[i] = e.lo;
    d.hi[i] = e.hi;
    d.names[i] = std::string(Utf8Prefix(e.label, kGroupNameLength));
  }
  if (d.kind == 2) {
    d.lo[1] -= kZeroTolerance;
    d.hi[d.count] += kZeroTolerance;
    for (int i = 1; i < d.count; ++i) {
      if (std::fabs(d.hi[i] - d.lo[i + 1]) >= 2 * kZeroTolerance) {
        d.hi[i] += kZeroTolerance;
        d.lo[i + 1] -= kZeroTolerance;
      }
    }
  }
  for (int i = 1; i <= d.count; ++i) {
    int found = 0;
    for (int j = 1; j <= d.distinct; ++j) {
      if (d.distinctNames[j] == d.names[i]) {
        found = j;
        break;
      }
    }
    if (found == 0) {
      d.distinctNames.push_back(d.names[i]);
      found = ++d.distinct;
    }
    d.map[i] = found;
  }
  return d;
}

int FindGroup(const GroupDefinition& d, double x) {
  if (d.kind == 1 || d.kind == 3) {
    for (int i = 1; i <= d.count; ++i) {
      if (std::fabs(x - d.lo[i]) < kZeroTolerance) return i;
    }
  } else if (d.kind == 2) {
    for (int i = 1; i <= d.count; ++i) {
      if (d.lo[i] < x && x <= d.hi[i]) return i;
    }
  }
  return 0;
}

std::string LowerTail(std::string_view name) {
  if (name.empty()) return {};
  std::string_view first = Utf8Prefix(name, 1);
  return std::string(first) + FoldCase(name.substr(first.size()));
}

std::vector<int> CountConditionalGroups(ReportWriter& report, const DataFeed& feed, const GroupDefinition& d, int v,
                                        bool bothLanguages) {
  const Workspace& ws = report.Ws();
  std::vector<int> sizes(d.distinct + 1, 0);
  for (int row = 1; row <= ws.NumberOfCases(); ++row) {
    double x;
    bool missing;
    feed.ReadValue(row, v, x, missing);
    if (missing) continue;
    if (int g = FindMergedGroup(d, x); g > 0) ++sizes[g];
  }

  std::string name(ws.vars.GetCell(kShortName, v));
  const std::string english = "Conditional grouping variable: " + name;
  const std::string hungarian = "Feltételes csoportosító változó: " + name;
  report.Line(ws.language == Language::English ? english : hungarian);
  if (bothLanguages && ws.language == Language::English) report.Line(hungarian);
  report.BlankLine();
  std::string_view heading = ws.Text("Frequencies of conditional groups", "Feltételes csoportok gyakoriságai");
  std::string_view groupName = ws.Text("Group name   ", "Csoportnév   ");
  std::string_view frequency = ws.Text("Frequency", "Gyakoriság");
  report.BeginTitledTable(heading, {"Index", groupName, frequency});
  for (int g = 1; g <= d.distinct; ++g) {
    std::string shown = d.distinctNames[g];
    int length = static_cast<int>(Utf8Length(shown));
    if (length > 5) shown = LowerTail(shown);
    // The index is right-aligned so that name and frequency line up in a plain view.
    int width = length < 5 ? 22 - length : length <= 6 ? 16 - length : 14 - length;
    report.FirstCellRightAligned(std::to_string(g), std::max(width, 1));
    report.Cell(shown);
    report.Cell(std::to_string(sizes[g]));
    report.EndRow();
  }
  report.EndTable();
  return sizes;
}

}  // namespace tarvika
