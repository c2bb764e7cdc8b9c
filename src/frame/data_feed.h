#pragma once
// The data feed: turns selected cells into numbers with a missing flag, evaluates the
// declared missing codes, and sorts cases into the groups of a grouping variable. A column
// is converted whole on its first read (within a memory budget; beyond it, cell by cell).

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/analysis_request.h"
#include "workspace/declarations.h"

namespace tarvika {

class Workspace;
class ReportWriter;

// Whether x is one of the declared missing codes (or in their range).
bool IsMissingByCodes(const MissingCodes& m, double x);

class DataFeed {
 public:
  // columns[1..K]: the variables that ReadRow reads (a SelectedIndex); missing[v] the codes
  // of variable v as OpenReport parsed them.
  DataFeed(const Workspace& ws, const std::vector<MissingCodes>& missing, std::vector<int> columns);

  int Count() const { return static_cast<int>(columns_.size()) - 1; }
  int Column(int i) const { return columns_[i]; }

  // The cells of the first `count` columns of the feed in one case into values[1..count]
  // and missings[1..count] (the caller sizes both to at least count + 1). An
  // empty cell, a text that reads as a number with neither separator, and a declared
  // missing code are missing (value 0 for the first two).
  void ReadRow(int row, int count, std::vector<double>& values, std::vector<std::uint8_t>& missings) const;
  // Position i of the feed in one case, read as ReadRow reads it; true when it is missing.
  bool ReadPosition(int row, int i, double& value) const;
  // Position i of one case read from its cell, as ReadPosition reads it, but never through
  // the column's converted copy: for a pass that reads each cell once, where the copy costs
  // more than it saves. It changes nothing in the feed, so threads may call it at once.
  bool ReadCell(int row, int i, double& value) const;

  // One cell. Unlike ReadRow, a text that isn't a number reads as the valid value 0, so
  // that foreign text in a grouping variable falls into the group of code 0. An empty cell
  // and a missing code are missing.
  void ReadValue(int row, int variable, double& value, bool& missing) const;

  // The comparison with the declared codes, within the zero tolerance.
  bool IsMissingCode(int variable, double x) const;

 private:
  // The value and missing flag of each row of one column, left uninitialised when made:
  // each part of the conversion touches its own rows first, so the pages are mapped by the
  // threads that fill them.
  struct DenseColumn {
    std::unique_ptr<double[]> values;
    std::unique_ptr<std::uint8_t[]> missing;
  };
  const DenseColumn* Dense(int i) const;

  const Workspace& ws_;
  const std::vector<MissingCodes>& missing_;
  std::vector<int> columns_;
  std::vector<MissingCodes> codesAt_;  // the codes of each position of the feed
  char separator_;
  mutable std::vector<std::unique_ptr<DenseColumn>> dense_;  // by position, once read
  mutable std::vector<std::uint8_t> denseTried_;
  mutable std::size_t denseBytes_ = 0;
};

// The groups of variable v; kind 0 when its group type is none, unknown or its labels
// don't parse.
GroupDefinition GetGroupDefinition(const Workspace& ws, int v);

// The entry that holds x (codes: |x - code| below the zero tolerance; intervals:
// lo < x <= hi), 0 for none.
int FindGroup(const GroupDefinition& definition, double x);

// The merged group of x, 0 for none.
inline int FindMergedGroup(const GroupDefinition& definition, double x) {
  int i = FindGroup(definition, x);
  return i == 0 ? 0 : definition.map[i];
}

// From the second character on, capitals become small letters (Hungarian ones too).
std::string LowerTail(std::string_view name);

// Counts the cases of each merged group of the conditional variable v (entries
// 1..distinct; missing cells and values outside all groups count nowhere) and writes the
// report block: the variable's name, "Frequencies of conditional groups" and the table of
// index, name and frequency. bothLanguages writes the first line in English and in
// Hungarian in an English session, as the group-comparison modules do.
std::vector<int> CountConditionalGroups(ReportWriter& report, const DataFeed& feed, const GroupDefinition& definition,
                                        int v, bool bothLanguages = false);

}  // namespace tarvika
