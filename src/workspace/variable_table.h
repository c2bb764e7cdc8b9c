#pragma once
// The declarations: one row per variable (row r declares column r of the data table), row 0
// the column titles and the default variable.

#include <string>
#include <string_view>

#include "lang/language.h"
#include "workspace/string_table.h"

namespace tarvika {

enum VariableColumn : int {
  kIndex = 0,
  kShortName = 1,
  kLongName = 2,
  kType = 3,
  kGroupLabels = 4,
  kGroupType = 5,
  kMissing = 6,
  kRole = 7,       // scratch of the analysis dialogs
  kAttribute = 8,  // scratch
  kParameter = 9,  // scratch
  kHelp = 10,
  kUnusedColumn = 11,
  kVariableTableColumns = 12,
};

enum class GroupKind { None, Codes, Intervals, Unknown };

// "none"/"codes"/"intervals" and "nincs"/"kódokkal"/"övezetekkel" are all legal.
GroupKind GroupKindOf(std::string_view word);
std::string_view GroupTypeWord(GroupKind kind, Language lang);

class VariableTable : public StringTable {
 public:
  // Finds the row whose short name equals name exactly (case-sensitive); -1 when none.
  int VariableIndex(std::string_view shortName) const;
  // The first variable whose short name equals name ignoring case, as a person types it;
  // 0 when none.
  int VariableNamed(std::string_view name) const;

  // Writes the titles of row 0 in the language, keeping the default variable's cells.
  void WriteTitles(Language lang);

  // Puts the default variable (type, labels, group type) into row 0.
  void SetDefaultVariable(std::string_view type, std::string_view labels, std::string_view groupType);

  // Empties the scratch columns Role, Attribute and Parameter of every row.
  void ClearScratch();
};

}  // namespace tarvika
