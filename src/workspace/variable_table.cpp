#include "workspace/variable_table.h"

#include "lang/utf8.h"
#include "workspace/data_matrix.h"

#include <string>

namespace tarvika {

void DataMatrix::RenumberCases(int first) {
  for (int r = std::max(first, 1); r < RowCount(); ++r) SetCell(0, r, std::to_string(r));
}

GroupKind GroupKindOf(std::string_view word) {
  if (word == "none" || word == "nincs") return GroupKind::None;
  if (word == "codes" || word == "kódokkal") return GroupKind::Codes;
  if (word == "intervals" || word == "övezetekkel") return GroupKind::Intervals;
  return GroupKind::Unknown;
}

std::string_view GroupTypeWord(GroupKind kind, Language lang) {
  switch (kind) {
    case GroupKind::Codes:
      return Pick(lang, "codes", "kódokkal");
    case GroupKind::Intervals:
      return Pick(lang, "intervals", "övezetekkel");
    default:
      return Pick(lang, "none", "nincs");
  }
}

int VariableTable::VariableIndex(std::string_view shortName) const {
  for (int r = 1; r < RowCount(); ++r) {
    if (GetCell(kShortName, r) == shortName) return r;
  }
  return -1;
}

int VariableTable::VariableNamed(std::string_view name) const {
  for (int r = 1; r < RowCount(); ++r) {
    if (EqualIgnoringCase(GetCell(kShortName, r), name)) return r;
  }
  return 0;
}

void VariableTable::WriteTitles(Language lang) {
  SetCell(kShortName, 0, Pick(lang, "default", "alapért."));
  SetCell(kLongName, 0, Pick(lang, "Long name", "Hosszú név"));
  SetCell(kMissing, 0, Pick(lang, "Missing", "Hiányzó"));
  // A title left in this hidden column on purpose.
  SetCell(kRole, 0, Pick(lang, "Help", "Súgó"));
  // The default variable's group type word follows the language too.
  GroupKind kind = GroupKindOf(GetCell(kGroupType, 0));
  if (kind != GroupKind::Unknown) SetCell(kGroupType, 0, GroupTypeWord(kind, lang));
}

void VariableTable::SetDefaultVariable(std::string_view type, std::string_view labels, std::string_view groupType) {
  SetCell(kType, 0, type);
  SetCell(kGroupLabels, 0, labels);
  SetCell(kGroupType, 0, groupType);
}

void VariableTable::ClearScratch() {
  // Row 0 keeps its titles.
  for (int r = 1; r < RowCount(); ++r) {
    SetCell(kRole, r, "");
    SetCell(kAttribute, r, "");
    SetCell(kParameter, r, "");
  }
}

}  // namespace tarvika
