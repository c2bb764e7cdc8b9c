#include "editing/table_shape.h"

#include <fmt/format.h>

#include <unordered_set>

#include "editing/editing_tables.h"
#include "lang/utf8.h"
#include "workspace/declarations.h"

namespace tarvika {
namespace {

// Fills variable row v with the declarations of the default variable (row 0).
void DefaultDeclarations(Workspace& ws, int v) {
  ws.vars.SetCell(kType, v, ws.vars.GetCell(kType, 0));
  ws.vars.SetCell(kGroupLabels, v, ws.vars.GetCell(kGroupLabels, 0));
  std::string groupType(ws.vars.GetCell(kGroupType, 0));
  GroupKind kind = GroupKindOf(groupType);
  ws.vars.SetCell(kGroupType, v, kind == GroupKind::Unknown ? groupType : std::string(GroupTypeWord(kind, ws.language)));
}

// The short names in use, folded to lower case, to find free names among many quickly.
std::unordered_set<std::string> NamesInUse(const Workspace& ws) {
  std::unordered_set<std::string> names;
  for (int r = 1; r < ws.vars.RowCount(); ++r) names.insert(FoldCase(ws.vars.GetCell(kShortName, r)));
  return names;
}

// "Var_1", and while that is taken the first free "Var_" N; taken names are added to used.
std::string NewVarName(std::unordered_set<std::string>& used, int& next) {
  for (; next <= 10000; ++next) {
    std::string name = fmt::format("Var_{}", next);
    if (used.insert(FoldCase(name)).second) return name;
  }
  return "Var_";
}

// "This version can handle at most " the limit " cases." (or " variables.").
std::string AtMostMessage(const Workspace& ws, bool cases) {
  return fmt::format("{}{}{}", ws.Text("This version can handle at most ", "Ez a verzió legfeljebb "),
                     cases ? kMaxCases : kMaxVariables,
                     cases ? ws.Text(" cases.", " esetet képes kezelni.") : ws.Text(" variables.", " változót képes kezelni."));
}

}  // namespace

std::string IncreasedCountMessage(const Workspace& ws, int total, bool cases) {
  return fmt::format("{}{}.\r\n{}",
                     cases ? ws.Text("The increased number of cases = ", "Az esetek megnövelt száma = ")
                           : ws.Text("The increased number of variables = ", "A változók megnövelt száma = "),
                     total, AtMostMessage(ws, cases));
}

std::string CaseRangeMessage(const Workspace& ws) {
  return fmt::format("{}{}{}", ws.Text("The case numbers of your data table go from 1 to ", "Az esetek sorszámai az adattáblában 1-től "),
                     ws.NumberOfCases(), ws.Text("", "-ig mennek."));
}

bool NewFile(Workspace& ws, int variables, int cases) {
  if (variables < 1 || cases < 1) {
    ws.user.Tell(ws.Text("You can write in number characters: ", "Csak számjegyeket írhat be: "));
    return false;
  }
  if (variables > kMaxVariables || cases > kMaxCases) {
    ws.user.Tell(AtMostMessage(ws, variables <= kMaxVariables));
    return false;
  }
  ws.data.Resize(0, 0);
  ws.data.Resize(variables + 1, cases + 1);
  ws.vars.SetRowCount(1);
  ws.vars.SetRowCount(variables + 1);
  for (int v = 1; v <= variables; ++v) {
    ws.vars.SetCell(kShortName, v, fmt::format("var_{}", v));
    DefaultDeclarations(ws, v);
  }
  RenumberVariables(ws);
  ws.data.RenumberCases();
  ws.dataChanged = true;
  return true;
}

bool InsertCases(Workspace& ws, int count, CasePlace place, int actual) {
  if (count < 1) return false;
  const int n = ws.NumberOfCases();
  if (n + count > kMaxCases) {
    ws.user.Tell(IncreasedCountMessage(ws, n + count, true));
    return false;
  }
  actual = std::clamp(actual, 1, std::max(n, 1));
  int row = place == CasePlace::BeforeActual ? actual
            : place == CasePlace::AfterActual ? actual + 1
            : place == CasePlace::Top         ? 1
                                              : n + 1;
  ws.data.InsertRows(row, count);
  ws.data.RenumberCases(row);
  ws.dataChanged = true;
  return true;
}

bool DeleteCases(Workspace& ws, int first, int last) {
  const int n = ws.NumberOfCases();
  if (first < 1 || last < first || last > n) {
    ws.user.Tell(CaseRangeMessage(ws));
    return false;
  }
  if (last - first + 1 == n) {
    ws.user.Tell(ws.Text("You cannot delete all cases.", "Az összes esetet nem lehet kitörölni."));
    return false;
  }
  std::string which;
  if (ws.language == Language::Hungarian) {
    which = first == last ? fmt::format("Törlendő: {}. sorszámú eset.", first)
                          : fmt::format("Törlendők: {} - {}. sorszámú esetek.", first, last);
  } else {
    which = first == last ? fmt::format("Delete case #{}.", first) : fmt::format("Delete cases {} - {}.", first, last);
  }
  Answer a = ws.user.AskYesNoCancel(fmt::format("{}\r\n{}", ws.Text("Do you really want to delete the following case(s)?",
                                                                    "Valóban törölni akarja a következő eset(ek)et?"),
                                                which));
  if (a != Answer::Yes) return false;
  ws.data.DeleteRows(first, last - first + 1);
  ws.data.RenumberCases(first);
  ws.dataChanged = true;
  return true;
}

bool InsertVariables(Workspace& ws, int count, VariablePlace place, int actual, const NewVariableProperties& properties) {
  if (count < 1) return false;
  const int n = ws.NumberOfVariables();
  if (ws.data.ColCount() + count - 1 > kMaxVariables) {
    ws.user.Tell(IncreasedCountMessage(ws, n + count, false));
    return false;
  }
  using Kind = NewVariableProperties::Kind;
  if (properties.kind == Kind::Identical && (properties.model < 1 || properties.model > n)) {
    ws.user.Tell(ws.Text("Select a variable or choose the default option.",
                         "Válasszon ki egy változót, vagy fogadja el az alapértelmezést."));
    return false;
  }
  // The model's row is read before the insertion moves it.
  std::vector<std::string> model;
  if (properties.kind == Kind::Identical) model = ws.vars.Row(properties.model);
  actual = std::clamp(actual, 1, std::max(n, 1));
  int at = place == VariablePlace::Before ? actual
           : place == VariablePlace::After ? actual + 1
           : place == VariablePlace::First ? 1
                                           : n + 1;
  auto used = NamesInUse(ws);
  int next = 1;
  ws.data.InsertColumns(at, count);
  ws.vars.InsertRows(at, count);
  for (int v = at; v < at + count; ++v) {
    switch (properties.kind) {
      case Kind::Identical:
        for (int col : {kType, kGroupLabels, kGroupType, kMissing, kHelp}) ws.vars.SetCell(col, v, model[col]);
        ws.vars.SetCell(kLongName, v, "Var as " + model[kShortName]);
        break;
      case Kind::Type:
        ws.vars.SetCell(kType, v, NormaliseType(properties.type, ws.decimalSeparator));
        ws.vars.SetCell(kGroupType, v, GroupTypeWord(GroupKind::None, ws.language));
        break;
      case Kind::Default:
        DefaultDeclarations(ws, v);
        break;
    }
    ws.vars.SetCell(kShortName, v, NewVarName(used, next));
  }
  RenumberVariables(ws);
  ws.dataChanged = true;
  return true;
}

bool DeleteVariables(Workspace& ws, int first, int last) {
  const int n = ws.NumberOfVariables();
  if (first < 1 || last < first || last > n) return false;
  if (last - first + 1 >= n) {
    ws.user.Tell(ws.Text("You cannot delete all variables.", "Az összes változót nem lehet kitörölni."));
    return false;
  }
  const int count = last - first + 1;
  Answer a = ws.user.AskYesNoCancel(ws.language == Language::Hungarian
                                        ? fmt::format("Valóban törölni akar {} változót az adattábláról?", count)
                                        : fmt::format("Do you want to delete {} variable(s) from the data table?", count));
  if (a != Answer::Yes) return false;
  ws.data.DeleteColumns(first, count);
  ws.vars.DeleteRows(first, count);
  RederiveGroupType(ws, first, ws.NumberOfVariables());
  RenumberVariables(ws);
  ws.dataChanged = true;
  return true;
}

}  // namespace tarvika
