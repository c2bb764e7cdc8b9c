#include "workspace/workspace.h"

namespace tarvika {

Workspace::Workspace(UserChannel& userChannel, Language lang, char separator)
    : user(userChannel), language(lang), decimalSeparator(separator) {
  vars.Resize(kVariableTableColumns, 1);
  vars.SetDefaultVariable("num=0_0;", "", GroupTypeWord(GroupKind::None, language));
  Reset();
}

std::string Workspace::CurrentFileName() const {
  std::size_t blank = title.find(' ');
  return blank == std::string::npos ? std::string() : title.substr(blank + 1);
}

void Workspace::SetCurrentFile(const std::string& path) { title = "Tarvika: " + path; }

void Workspace::Reset() {
  data.Resize(0, 0);
  data.Resize(2, 2);
  data.SetCell(1, 0, "var_1");
  data.SetCell(0, 1, "1");

  // Row 0 (titles and the default variable) survives; the variable rows are made anew.
  vars.SetRowCount(1);
  vars.SetRowCount(2);
  vars.SetCell(kIndex, 1, "1");
  vars.SetCell(kShortName, 1, "var_1");
  vars.SetCell(kLongName, 1, "var_1_long");
  vars.SetCell(kType, 1, "num=0_0;");
  vars.SetCell(kGroupType, 1, GroupTypeWord(GroupKind::None, language));
  vars.WriteTitles(language);
  dataChanged = false;
  knownFile.clear();
  knownFileIdentity.reset();
}

bool Workspace::IsPristine() const {
  return data.NumberOfVariables() == 1 && data.NumberOfCases() == 1 && data.GetCell(1, 1).empty() &&
         data.GetCell(1, 0) == "var_1" && vars.GetCell(kLongName, 1) == "var_1_long" &&
         vars.GetCell(kType, 1) == "num=0_0;" && (vars.GetCell(kGroupType, 1) == "none" || vars.GetCell(kGroupType, 1) == "nincs") &&
         vars.GetCell(kMissing, 1).empty();
}

void Workspace::SetLanguage(Language lang) {
  language = lang;
  vars.WriteTitles(lang);
  for (int r = 1; r < vars.RowCount(); ++r) {
    GroupKind kind = GroupKindOf(vars.GetCell(kGroupType, r));
    if (kind != GroupKind::Unknown) vars.SetCell(kGroupType, r, GroupTypeWord(kind, lang));
  }
}

}  // namespace tarvika
