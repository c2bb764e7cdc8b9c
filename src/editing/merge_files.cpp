#include "editing/merge_files.h"

#include <fmt/format.h>

#include <filesystem>
#include <unordered_map>
#include <unordered_set>

#include "editing/editing_tables.h"
#include "editing/table_shape.h"
#include "lang/utf8.h"
#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/new_variable.h"

namespace tarvika {
namespace {

void TellDuplicate(const Workspace& ws, std::string_view name) {
  ws.user.Tell(fmt::format("{}{}.", ws.Text("The new variable name duplicates an existing variable name.\r\nChange the new name: ",
                                            "Az új változónév megegyezik egy létező változónévvel.\r\nMódosítsa az új nevet: "),
                           name));
}

// The first name, ignoring case, that appears twice among the entries and the indicator.
std::optional<std::string> DuplicateName(const MergePlan& plan) {
  std::unordered_set<std::string> seen;
  for (const UnitedVariable& u : plan.united)
    if (!seen.insert(FoldCase(u.name)).second) return u.name;
  if (!plan.indicator.empty() && !seen.insert(FoldCase(plan.indicator)).second) return plan.indicator;
  return std::nullopt;
}

// A name not yet among `taken` (folded): the name itself, else its first 7 characters and a
// digit, else "var_" N.
std::string FreeName(std::string_view name, std::unordered_set<std::string>& taken) {
  std::vector<std::string> candidates{std::string(name)};
  std::string stem(Utf8Prefix(name, kShortNameLength - 1));
  for (char d = '0'; d <= '9'; ++d) candidates.push_back(stem + d);
  for (int n = 1; n <= 10000; ++n) candidates.push_back(fmt::format("var_{}", n));
  for (const std::string& c : candidates)
    if (taken.insert(FoldCase(c)).second) return c;
  return std::string(name);
}

// A group label from a file name: its stem, without the characters that delimit labels.
std::string FileLabel(std::string_view path) {
  std::string stem = std::filesystem::path(std::string(path)).stem().string();
  for (char& c : stem) {
    if (c == ';' || c == '/' || c == '=' || c == '_') c = ' ';
  }
  return std::string(Utf8Prefix(stem, 10));
}

}  // namespace

std::string UnitedVariable::Entry(const Workspace& ws, const MergeSource& source) const {
  if (working > 0 && added > 0) {
    return fmt::format("{}&{}", ws.vars.GetCell(kShortName, working), source.vars.GetCell(kShortName, added));
  }
  return fmt::format("{}={};", name, working > 0 ? working : added);
}

std::string MergeVariableInfo(const Workspace& ws, const VariableTable& vars, int variable) {
  std::string_view name = vars.GetCell(kShortName, variable);
  std::string_view type = vars.GetCell(kType, variable);
  if (type.substr(0, 3) == "num") {
    std::string info = fmt::format("{}: {}", name, ws.Text("numeric", "numerikus"));
    if (auto range = NumericTypeRange(type, ws.decimalSeparator)) {
      info += fmt::format("{}{}{}{}", ws.Text(", from ", ", "), FormatGeneral(range->first, ws.decimalSeparator),
                          ws.Text(" to ", " és "), FormatGeneral(range->second, ws.decimalSeparator));
      if (ws.language == Language::Hungarian) info += " között";
    }
    return info;
  }
  std::string_view length = type.substr(std::min(type.find('=') + 1, type.size()));
  if (!length.empty() && length.back() == ';') length.remove_suffix(1);
  return fmt::format("{}: {}{}{}", name, ws.Text("text", "szöveg"), ws.Text(", maximal length=", ", maximális hossz="), length);
}

std::optional<MergePlan> StartMergePlan(const Workspace& ws, const MergeSource& source, MergeMode mode,
                                        const std::vector<std::string>& keyNames) {
  MergePlan plan;
  plan.mode = mode;
  if (keyNames.size() > 1) {
    ws.user.Tell(ws.Text("You can select one variable as key variable.", "Csak egy változót jelölhet ki kulcsváltozónak."));
    return std::nullopt;
  }
  if (keyNames.size() == 1 && !keyNames[0].empty()) {
    plan.key = ws.vars.VariableNamed(keyNames[0]);
    plan.addedKey = source.vars.VariableNamed(keyNames[0]);
    if (plan.key == 0 || plan.addedKey == 0) {
      ws.user.Tell(ws.Text("Key variables must be with same short name\r\nin working data file and added data file.",
                           "A kulcs változóknak azonos nevet kell viselni\r\naz aktuális és a hozzáadásra kijelölt állományban."));
      return std::nullopt;
    }
  }
  const int nWorking = ws.NumberOfVariables();
  const int nAdded = source.vars.RowCount() - 1;
  std::unordered_set<std::string> taken;
  std::vector<bool> addedUsed(nAdded + 1, false);
  for (int v = 1; v <= nWorking; ++v) {
    UnitedVariable u{v, 0, std::string(ws.vars.GetCell(kShortName, v))};
    if (mode == MergeMode::AddCases) {
      int partner = source.vars.VariableNamed(u.name);
      if (partner > 0) {
        u.added = partner;
        addedUsed[partner] = true;
      }
    }
    taken.insert(FoldCase(u.name));
    plan.united.push_back(std::move(u));
  }
  for (int v = 1; v <= nAdded; ++v) {
    if (addedUsed[v] || (mode == MergeMode::AddVariables && v == plan.addedKey)) continue;
    plan.united.push_back({0, v, FreeName(source.vars.GetCell(kShortName, v), taken)});
  }
  return plan;
}

bool PairVariables(const Workspace& ws, MergePlan& plan, int a, int b) {
  const int n = static_cast<int>(plan.united.size());
  if (a < 0 || b < 0 || a >= n || b >= n || a == b) return false;
  UnitedVariable& first = plan.united[a];
  const UnitedVariable& second = plan.united[b];
  if (first.added != 0 || second.working != 0 || first.working == 0 || second.added == 0) {
    ws.user.Tell(ws.Text("Pair a variable of the working file with one of the added file.",
                         "Az aktuális állomány egy változóját a hozzáadott állomány egy változójával párosítsa."));
    return false;
  }
  first.added = second.added;
  plan.united.erase(plan.united.begin() + b);
  return true;
}

bool RenameUnited(const Workspace& ws, MergePlan& plan, int entry, std::string_view name) {
  if (entry < 0 || entry >= static_cast<int>(plan.united.size()) || name.empty()) return false;
  for (int i = 0; i < static_cast<int>(plan.united.size()); ++i) {
    if (i != entry && EqualIgnoringCase(plan.united[i].name, name)) {
      TellDuplicate(ws, name);
      return false;
    }
  }
  if (EqualIgnoringCase(plan.indicator, name)) {
    TellDuplicate(ws, name);
    return false;
  }
  plan.united[entry].name = std::string(name);
  return true;
}

std::optional<TableSnapshot> MergeTables(const Workspace& ws, const MergeSource& source, const MergePlan& plan,
                                         std::string_view addedFileName) {
  if (auto dup = DuplicateName(plan)) {
    TellDuplicate(ws, *dup);
    return std::nullopt;
  }
  const int columns = static_cast<int>(plan.united.size()) + (plan.indicator.empty() ? 0 : 1);
  const int nWorking = ws.NumberOfCases();
  const int nAdded = source.data.RowCount() - 1;
  const bool addCases = plan.mode == MergeMode::AddCases;
  const int rows = addCases ? nWorking + nAdded : nWorking;
  if (columns > kMaxVariables) {
    ws.user.Tell(VariableLimitMessage(ws));
    return std::nullopt;
  }
  if (rows > kMaxCases) {
    ws.user.Tell(IncreasedCountMessage(ws, rows, true));
    return std::nullopt;
  }
  ws.ShowProgress(ws.Text("Merging files ...", "Állományok egyesítése ..."));

  // Add variables: the added case of each working case, by the key's text (the first case
  // that has it; an empty key has no partner) or by position; 0 for none.
  std::vector<int> partner(nWorking + 1, 0);
  if (!addCases) {
    if (plan.key > 0) {
      std::unordered_map<std::string_view, int> firstRow;
      firstRow.reserve(nAdded * 2);
      for (int r = 1; r <= nAdded; ++r) {
        std::string_view k = source.data.GetCell(plan.addedKey, r);
        if (!k.empty()) firstRow.emplace(k, r);
      }
      for (int r = 1; r <= nWorking; ++r) {
        std::string_view k = ws.data.GetCell(plan.key, r);
        if (k.empty()) continue;
        if (auto it = firstRow.find(k); it != firstRow.end()) partner[r] = it->second;
      }
    } else {
      for (int r = 1; r <= std::min(nWorking, nAdded); ++r) partner[r] = r;
    }
  }

  TableSnapshot out;
  out.data.Resize(columns + 1, rows + 1);
  out.vars.Resize(kVariableTableColumns, columns + 1);
  out.vars.SetRow(0, ws.vars.Row(0));
  for (int j = 0; j < static_cast<int>(plan.united.size()); ++j) {
    const UnitedVariable& u = plan.united[j];
    const int c = j + 1;
    // The declarations of the first source that holds the column.
    std::vector<std::string> decl = u.working > 0 ? ws.vars.Row(u.working) : source.vars.Row(u.added);
    decl[kShortName] = u.name;
    out.vars.SetRow(c, decl);
    if (u.working > 0) {
      for (int r = 1; r <= nWorking; ++r) out.data.SetCell(c, r, ws.data.GetCell(u.working, r));
    }
    if (u.added > 0) {
      if (addCases) {
        for (int r = 1; r <= nAdded; ++r) out.data.SetCell(c, nWorking + r, source.data.GetCell(u.added, r));
      } else {
        for (int r = 1; r <= nWorking; ++r)
          if (partner[r] > 0) out.data.SetCell(c, r, source.data.GetCell(u.added, partner[r]));
      }
    }
  }
  if (!plan.indicator.empty()) {
    // 0 for the working file's cases and 1 for the added ones; adding variables, 1 marks a
    // working case that found its added case.
    const int c = columns;
    out.vars.SetCell(kShortName, c, plan.indicator);
    out.vars.SetCell(kLongName, c, ws.Text("Indicates the case source", "Az eset forrását jelzi"));
    out.vars.SetCell(kType, c, "num=0_0;");
    out.vars.SetCell(kGroupLabels, c,
                     fmt::format("0={};/1={};/", FileLabel(ws.CurrentFileName().empty() ? "working" : ws.CurrentFileName()),
                                 FileLabel(addedFileName)));
    out.vars.SetCell(kGroupType, c, GroupTypeWord(GroupKind::Codes, ws.language));
    for (int r = 1; r <= rows; ++r) {
      bool fromAdded = addCases ? r > nWorking : partner[r] > 0;
      out.data.SetCell(c, r, fromAdded ? "1" : "0");
    }
  }
  for (int v = 1; v <= columns; ++v) {
    out.vars.SetCell(kIndex, v, std::to_string(v));
    out.data.SetCell(v, 0, out.vars.GetCell(kShortName, v));
  }
  out.data.RenumberCases();
  ws.ShowProgress("");
  return out;
}

void UseMergedTables(Workspace& ws, TableSnapshot merged) {
  ws.data = std::move(merged.data);
  ws.vars = std::move(merged.vars);
  ws.dataChanged = true;
}

}  // namespace tarvika
