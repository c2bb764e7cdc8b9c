#include "frame/analysis_dialogs.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include <fmt/format.h>

#include "lang/utf8.h"
#include "frame/analysis_run.h"
#include "workspace/declarations.h"
#include "workspace/session.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

// The row of a name from a dialog list: the exact short name, else the only one that is
// equal ignoring case; -1 when there is none.
int FindVariable(const Workspace& ws, std::string_view name) {
  int exact = ws.vars.VariableIndex(name);
  if (exact > 0) return exact;
  int found = -1;
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    if (!EqualIgnoringCase(ws.vars.GetCell(kShortName, v), name)) continue;
    if (found > 0) return -1;
    found = v;
  }
  return found;
}

bool IsStringVariable(const Workspace& ws, int v) { return ws.vars.GetCell(kType, v).starts_with("string"); }

}  // namespace

AnalysisDialog::AnalysisDialog(const CommandTable& table, DialogKind k)
    : commands(&table), kind(k), commandCode(table.ListOf(k).empty() ? 0 : table.ListOf(k).front()->code) {}

std::string AnalysisDialog::Value(std::string_view name) const {
  auto it = values.find(name);
  if (it != values.end()) return it->second;
  const ParameterDefinition* param = FindParameter(kind, name);
  return param ? std::string(param->defaultValue) : std::string();
}

std::string AnalysisDialog::ValueFor(std::string_view name, std::string_view variable) const {
  if (name == "hypotheticalValue") {
    // A new entry takes the remembered value of the session, else "1".
    auto it = perVariable.find(name);
    if (it != perVariable.end()) {
      auto v = it->second.find(std::string(variable));
      if (v != it->second.end()) return v->second;
    }
    auto r = rememberedHypothetical.find(std::string(variable));
    return r != rememberedHypothetical.end() ? r->second : "1";
  }
  auto it = perVariable.find(name);
  if (it != perVariable.end()) {
    auto v = it->second.find(std::string(variable));
    if (v != it->second.end()) return v->second;
  }
  const ParameterDefinition* param = FindParameter(kind, name);
  return param ? std::string(param->defaultValue) : std::string();
}

bool AnalysisDialog::Set(std::string_view name, std::string_view value, Language lang, std::string* error) {
  const ParameterDefinition* param = FindParameter(kind, name);
  if (param == nullptr || param->perVariable) {
    if (error) *error = std::string(Pick(lang, "Unknown parameter of this dialog: ", "A párbeszédablaknak nincs ilyen paramétere: ")) + std::string(name);
    return false;
  }
  auto normal = NormaliseParameterValue(*param, value, lang, error);
  if (!normal) return false;
  values[std::string(name)] = *normal;
  return true;
}

bool AnalysisDialog::SetFor(std::string_view name, std::string_view variable, std::string_view value, Language lang,
                            std::string* error) {
  const ParameterDefinition* param = FindParameter(kind, name);
  if (param == nullptr || !param->perVariable) {
    if (error) *error = std::string(Pick(lang, "Unknown per-variable parameter of this dialog: ", "A párbeszédablaknak nincs ilyen változónkénti paramétere: ")) + std::string(name);
    return false;
  }
  // A variable weight left blank counts as 1 when the run reads it.
  if (name == "weight" && value.find_first_not_of(' ') == std::string_view::npos) {
    perVariable[std::string(name)][std::string(variable)] = "";
    return true;
  }
  auto normal = NormaliseParameterValue(*param, value, lang, error);
  if (!normal) return false;
  perVariable[std::string(name)][std::string(variable)] = *normal;
  if (name == "hypotheticalValue") rememberedHypothetical[std::string(variable)] = *normal;
  return true;
}

bool OpenDialog(Workspace& ws, AnalysisDialog& dialog) {
  if (!CheckDuplicateNames(ws)) return false;
  for (auto& [name, byVariable] : dialog.perVariable) {
    if (name != "scaleType") continue;
    for (auto& [variable, word] : byVariable) word = TranslateScaleWord(word, ws.language);
  }
  return true;
}

void ResetDialog(AnalysisDialog& dialog) {
  dialog.selected.clear();
  dialog.yList.clear();
  dialog.grouping.clear();
  dialog.covariates.clear();
  dialog.excluded.clear();
  dialog.conditional.clear();
  dialog.perVariable.clear();
  dialog.rememberedHypothetical.clear();
}

std::vector<std::string> SourceList(const Workspace& ws, const AnalysisDialog& dialog) {
  std::vector<std::string> source;
  auto inTarget = [&](std::string_view name) {
    for (const auto* list : {&dialog.selected, &dialog.yList, &dialog.grouping, &dialog.covariates}) {
      if (std::find(list->begin(), list->end(), name) != list->end()) return true;
    }
    return name == dialog.conditional;
  };
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    std::string name(ws.vars.GetCell(kShortName, v));
    if (!IsStringVariable(ws, v) && !inTarget(name)) source.push_back(name);
  }
  return source;
}

std::string SanitiseVariableName(std::string_view name, std::string_view fallback) {
  std::string out;
  std::string_view text = name;
  for (std::size_t i = 0; i < text.size();) {
    std::size_t start = i;
    unsigned char c = static_cast<unsigned char>(text[i]);
    i += c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : c >= 0xC0 ? 2 : 1;
    std::string_view ch = text.substr(start, i - start);
    bool letter = c >= 0x80 || std::isalnum(c) || c == '_' || c == '.';
    out += letter ? std::string(ch) : std::string("_");
  }
  while (!out.empty() && out.front() == '_') out.erase(0, 1);
  if (out.empty()) out = std::string(fallback);
  if (std::isdigit(static_cast<unsigned char>(out.front()))) out.insert(0, "v");
  return std::string(Utf8Prefix(out, kShortNameLength));
}

bool VariableNameTaken(const Workspace& ws, std::string_view name) { return ws.vars.VariableNamed(name) != 0; }

std::string UniqueSaveName(const Workspace& ws, std::string_view base) {
  std::string name(base);
  if (!VariableNameTaken(ws, name)) return name;
  // Trailing digits go (the stem keeps at least 4 characters); a running number follows.
  std::string stem(base);
  while (Utf8Length(stem) > 4 && std::isdigit(static_cast<unsigned char>(stem.back()))) stem.pop_back();
  for (int n = 1; n <= 100; ++n) {
    const std::string number = std::to_string(n);
    const std::size_t room = kShortNameLength > number.size() ? kShortNameLength - number.size() : 0;
    name = std::string(Utf8Prefix(stem, room)) + number;
    if (!VariableNameTaken(ws, name)) return name;
  }
  return name;
}

namespace {

// The save switches of the pattern dialog with their name fields and the names they start from.
struct PatternSave {
  std::string_view toggle, name, fallback;
};
constexpr PatternSave kPatternSaves[] = {
    {"saveWeightedSum", "weightedSumName", "Wsum"},
    {"saveCluster", "clusterName", "Clus"},
    {"saveKMeans", "kmeansName", "KClus"},
};

// The checks of the pattern dialog's pages that come before the selection is looked at, with
// the save names made legal and free first; empty when the run may go on.
std::string PatternPageError(const Workspace& ws, AnalysisDialog& dialog) {
  for (const PatternSave& save : kPatternSaves) {
    if (dialog.Value(save.toggle) != "on") continue;
    dialog.values[std::string(save.name)] = UniqueSaveName(ws, SanitiseVariableName(dialog.Value(save.name), save.fallback));
  }
  if (dialog.commandCode == kHierarchicalCluster) {
    const int from = std::stoi(dialog.Value("reportFrom")), to = std::stoi(dialog.Value("reportTo"));
    if (from > to) {
      return std::string(ws.Text("Error: the starting index is larger then the ending one.",
                                 "Hiba: A kezdő index nem lehet nagyobb, mind a záró!"));
    }
  }
  return {};
}

// The refusal of a selection that the command's rule doesn't accept, or empty.
std::string_view SelectionError(const Workspace& ws, const AnalysisDialog& dialog, const SelectionRule& rule) {
  const int first = static_cast<int>(dialog.selected.size()) +
                    (dialog.kind == DialogKind::Relations ? static_cast<int>(dialog.yList.size()) : 0);
  if (first < 1) return ws.Text("At least one variable has to be selected.", "Legalább egy változót ki kell választania!");
  if (rule.minimumGrouping == 1 && dialog.grouping.empty())
    return ws.Text("You must select one grouping variable.", "Ki kell választania egy csoportosító változót!");
  if (rule.minimumSelected > 1 && static_cast<int>(dialog.selected.size()) < rule.minimumSelected)
    return ws.Text("At least two dependent variables have to be selected.", "Legalább két függő változót ki kell választania!");
  if (rule.minimumGrouping == 2 && dialog.grouping.size() < 2)
    return ws.Text("You must select two grouping variables.", "Két csoportosító változót kell kiválasztania!");
  if (rule.caseCode && dialog.covariates.empty() && dialog.grouping.empty())
    return ws.Text("You must select a case code variable.", "Ki kell választania egy esetkód változót!");
  return {};
}

}  // namespace

std::string SelectionRefusal(const Workspace& ws, const AnalysisDialog& dialog) {
  const CommandInfo* command = dialog.commands->Find(dialog.commandCode);
  if (command == nullptr || command->dialog != dialog.kind || !command->offered) return {};
  return std::string(SelectionError(ws, dialog, command->selection));
}

PreparedRun PrepareRun(Workspace& ws, AnalysisDialog& dialog) {
  PreparedRun run;
  const int code = dialog.commandCode;
  const CommandInfo* command = dialog.commands->Find(code);
  if (command == nullptr || command->dialog != dialog.kind || !command->offered) {
    run.error = std::string(ws.Text("Unknown command: ", "Ismeretlen parancs: ")) + std::to_string(code);
    return run;
  }
  // Output names are made legal before anything else.
  for (const OutputName& output : command->outputNames) {
    if (output.switchParameter.empty() || ToggleValue(dialog.Value(output.switchParameter)) == 2) {
      dialog.values[std::string(output.nameParameter)] =
          SanitiseVariableName(dialog.Value(output.nameParameter), output.fallback);
    }
  }
  if (dialog.kind == DialogKind::Pattern) {
    if (std::string refusal = PatternPageError(ws, dialog); !refusal.empty()) {
      run.error = std::move(refusal);
      return run;
    }
  }
  if (std::string_view refusal = SelectionError(ws, dialog, command->selection); !refusal.empty()) {
    run.error = std::string(refusal);
    return run;
  }

  // Resolve every name before the tables are touched.
  std::map<std::string, int> rows;
  auto resolve = [&](const std::string& name) {
    if (rows.count(name)) return true;
    int v = FindVariable(ws, name);
    if (v < 1) {
      run.error = std::string(ws.Text("Unknown variable: ", "Ismeretlen változó: ")) + name;
      return false;
    }
    if (IsStringVariable(ws, v)) {
      run.error = std::string(ws.Text("Not a numeric variable: ", "Nem numerikus változó: ")) + name;
      return false;
    }
    rows[name] = v;
    return true;
  };
  for (const auto* list : {&dialog.selected, &dialog.yList, &dialog.grouping, &dialog.covariates, &dialog.excluded}) {
    for (const std::string& name : *list) {
      if (!resolve(name)) return run;
    }
  }
  if (!dialog.conditional.empty() && !resolve(dialog.conditional)) return run;

  ws.vars.ClearScratch();
  auto mark = [&](const std::string& name, std::string_view role) { ws.vars.SetCell(kRole, rows[name], role); };
  auto scratch = [&](const std::string& name) {
    if (!command->scratch.attribute.empty())
      ws.vars.SetCell(kAttribute, rows[name], dialog.ValueFor(command->scratch.attribute, name));
    if (!command->scratch.parameter.empty())
      ws.vars.SetCell(kParameter, rows[name], dialog.ValueFor(command->scratch.parameter, name));
  };
  switch (dialog.kind) {
    case DialogKind::SingleSample:
      for (const std::string& name : dialog.selected) {
        mark(name, "X");
        scratch(name);
      }
      if (!dialog.conditional.empty()) mark(dialog.conditional, "N");
      break;
    case DialogKind::Groups: {
      for (const std::string& name : dialog.selected) {
        mark(name, "X");
        scratch(name);
      }
      // A case code is taken from either list and marked as a grouping variable.
      std::vector<std::string> grouping = dialog.grouping;
      if (command->selection.caseCode && grouping.empty()) grouping.push_back(dialog.covariates.front());
      for (const std::string& name : grouping) mark(name, "G");
      if (!command->selection.caseCode && !dialog.covariates.empty()) mark(dialog.covariates.front(), "C");
      if (!dialog.conditional.empty()) mark(dialog.conditional, "N");
      break;
    }
    case DialogKind::Relations:
      // Four passes after the excluded names; a variable in two lists keeps the last letter.
      for (const std::string& name : dialog.excluded) mark(name, "");
      for (const std::string& name : dialog.selected) mark(name, "X");
      for (const std::string& name : dialog.yList) mark(name, "Y");
      if (!dialog.conditional.empty()) mark(dialog.conditional, "N");
      for (const std::string& name : dialog.covariates) mark(name, "C");
      break;
    case DialogKind::Pattern:
      // The weight of an X variable goes beside its role; the starting, grouping and
      // control lists count with their first entry only.
      for (const std::string& name : dialog.selected) {
        mark(name, "X");
        scratch(name);
      }
      for (const std::string& name : dialog.yList) mark(name, "Y");
      if (!dialog.grouping.empty()) mark(dialog.grouping.front(), "G");
      if (!dialog.covariates.empty()) mark(dialog.covariates.front(), "C");
      if (!dialog.conditional.empty()) mark(dialog.conditional, "N");
      break;
  }

  int selectedCount = 0;
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    std::string_view role = ws.vars.GetCell(kRole, v);
    if (role == "X" || role == "Y") ++selectedCount;
  }
  if (dialog.kind == DialogKind::SingleSample) selectedCount = static_cast<int>(dialog.selected.size());
  run.request = BuildRequest(ws, code, selectedCount, dialog.kind);
  for (const ParameterDefinition& param : DialogParameters(dialog.kind)) {
    if (!param.perVariable) run.request.parameters[std::string(param.name)] = dialog.Value(param.name);
  }
  return run;
}

RunResult RunAnalysis(Workspace& ws, AnalysisDialog& dialog, ReportFormat format, std::string* message) {
  auto tell = [&](std::string text) {
    ws.user.Tell(text);
    if (message) *message = std::move(text);
  };
  const CommandInfo* command = dialog.commands->Find(dialog.commandCode);
  // The dialog's checks of the selection come first, for a command still to be built too.
  if (command != nullptr && command->dialog == dialog.kind && command->offered) {
    if (dialog.kind == DialogKind::Pattern) {
      if (std::string refusal = PatternPageError(ws, dialog); !refusal.empty()) {
        tell(std::move(refusal));
        return RunResult::Refused;
      }
    }
    if (std::string_view refusal = SelectionError(ws, dialog, command->selection); !refusal.empty()) {
      tell(std::string(refusal));
      return RunResult::Refused;
    }
  }
  if (command == nullptr || !command->Built()) {
    tell(std::string(UnderConstruction(ws.language)));
    return RunResult::NotBuilt;
  }
  // The report file must be writable before anything is touched.
  const std::string report = LastReportPath(ws.programFolder, format);
  if (std::filesystem::exists(report) &&
      (std::filesystem::is_directory(report) || ::access(report.c_str(), W_OK) != 0)) {
    tell(fmt::format("{}{}{}", ws.Text("File ", "A "), report,
                     ws.Text(" is open. Close it before performing an analysis in Tarvika",
                             " nevű fájl nyitva van. Zárja be, mielőtt Tarvika elemzéseket végez!")));
    return RunResult::Refused;
  }
  PreparedRun run = PrepareRun(ws, dialog);
  if (!run.ok()) {
    tell(run.error);
    return RunResult::Refused;
  }
  RunOutcome outcome = RunCommand(ws, run.request, *command, format);
  if (!outcome.message.empty()) tell(outcome.message);
  // The save switches of the single-sample dialog are turned off so they won't run twice.
  if (dialog.kind == DialogKind::SingleSample) dialog.values[std::string(param::kSaveStandardized.name)] = std::string(kNo);
  return outcome.result;
}

}  // namespace tarvika
