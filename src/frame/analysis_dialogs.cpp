#include "frame/analysis_dialogs.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include <fmt/format.h>

#include "lang/utf8.h"
#include "numeric/stat_tables.h"
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

const std::vector<CommandInfo>& Commands() {
  using D = DialogKind;
  static const std::vector<CommandInfo> commands = {
      {11, D::SingleSample, "Basic descriptive statistics", "Alapstatisztikák"},
      {12, D::SingleSample, "Detailed statistics", "Részletesebb mintastatisztikák"},
      {13, D::SingleSample, "Frequency, histogram", "Gyakoriság, hisztogram"},
      {14, D::SingleSample, "Tests on the mean and median", "Középértékekre vonatkozó hipotézisvizsgálatok"},
      {15, D::SingleSample, "Test of normality", "Normalitásvizsgálat"},
      {16, D::SingleSample, "Distribution fitting", "Eloszlásvizsgálat"},
      {21, D::Groups, "One-way comparison of independent samples", "Független minták egyszempontos összehasonlítása"},
      {22, D::Groups, "One-way comparison of repeated measures", "Összetartozó minták (változók) egyszempontos összehasonlítása"},
      {23, D::Groups, "Two-way independent samples ANOVA", "Kétszempontos független mintás varianciaanalízis"},
      {24, D::Groups, "Two-way mixed ANOVA", "Kétszempontos kevert varianciaanalízis"},
      {25, D::Groups, "Two-way independent samples rank ANOVA", "Kétszempontos független mintás rangvarianciaanalízis"},
      {26, D::Groups, "Inter-rater reliability with quantitative scales", "Értékelők közötti megbízhatóság kvantitatív skálákkal"},
      {31, D::Relations, "Correlation, regression", "Korreláció, regresszió"},
      {32, D::Relations, "Correlation, partial correlation matrix", "Korrelációs, parciális korrelációs mátrix"},
      {33, D::Relations, "Multiple linear regression", "Többszörös lineáris regresszió"},
      {34, D::Relations, "Relationship of discrete variables - Crosstab", "Diszkrét változók kapcsolata - kereszttábla"},
      {35, D::Relations, "Item analysis", "Itemanalízis"},
  };
  return commands;
}

const CommandInfo* FindCommand(int code) {
  for (const CommandInfo& c : Commands()) {
    if (c.code == code) return &c;
  }
  return nullptr;
}

std::vector<int> CommandListOrder(DialogKind dialog) {
  switch (dialog) {
    case DialogKind::SingleSample:
      return {11, 12, 13, 14, 15};
    case DialogKind::Groups:
      return {21, 22, 23, 24, 25, 26};
    default:
      return {31, 32, 34, 35, 33};
  }
}

std::string_view DialogName(DialogKind dialog) {
  switch (dialog) {
    case DialogKind::SingleSample:
      return "TKijelolForm";
    case DialogKind::Groups:
      return "TK20Form";
    default:
      return "TK31Form";
  }
}

AnalysisDialog::AnalysisDialog(DialogKind k) : kind(k), commandCode(CommandListOrder(k).front()) {}

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

PreparedRun PrepareRun(Workspace& ws, AnalysisDialog& dialog) {
  PreparedRun run;
  const int code = dialog.commandCode;
  const CommandInfo* command = FindCommand(code);
  if (command == nullptr || command->dialog != dialog.kind) {
    run.error = std::string(ws.Text("Unknown command: ", "Ismeretlen parancs: ")) + std::to_string(code);
    return run;
  }
  // The relations dialog makes its output names legal before anything else.
  if (dialog.kind == DialogKind::Relations) {
    if (ToggleValue(dialog.Value("saveRegression")) == 2)
      dialog.values["regressionName"] = SanitiseVariableName(dialog.Value("regressionName"), "RegVar");
    if (code == 35) dialog.values["ScaleName"] = SanitiseVariableName(dialog.Value("ScaleName"), "Scale");
  }

  auto refuse = [&](std::string_view english, std::string_view hungarian) {
    run.error = std::string(ws.Text(english, hungarian));
    return run;
  };
  if (dialog.selected.empty() && !(dialog.kind == DialogKind::Relations && !dialog.yList.empty())) {
    return refuse("At least one variable has to be selected.", "Legalább egy változót ki kell választania!");
  }
  if (dialog.kind == DialogKind::Groups) {
    if (code == 21 && dialog.grouping.empty())
      return refuse("You must select one grouping variable.", "Ki kell választania egy csoportosító változót!");
    if (code == 22 && dialog.selected.size() < 2)
      return refuse("At least two dependent variables have to be selected.", "Legalább két függő változót ki kell választania!");
    if (code == 23 && dialog.grouping.size() < 2)
      return refuse("You must select two grouping variables.", "Két csoportosító változót kell kiválasztania!");
    if (code == 26 && dialog.covariates.empty() && dialog.grouping.empty())
      return refuse("You must select a case code variable.", "Ki kell választania egy esetkód változót!");
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
  switch (dialog.kind) {
    case DialogKind::SingleSample:
      for (const std::string& name : dialog.selected) {
        mark(name, "X");
        if (code == 13) ws.vars.SetCell(kAttribute, rows[name], dialog.ValueFor("scaleType", name));
        if (code == 14) ws.vars.SetCell(kParameter, rows[name], dialog.ValueFor("hypotheticalValue", name));
      }
      if (!dialog.conditional.empty()) mark(dialog.conditional, "N");
      break;
    case DialogKind::Groups: {
      for (const std::string& name : dialog.selected) {
        mark(name, "X");
        ws.vars.SetCell(kAttribute, rows[name], dialog.ValueFor("scaleType", name));
      }
      // The case code of command 26 is taken from either list and marked as a grouping variable.
      std::vector<std::string> grouping = dialog.grouping;
      if (code == 26 && grouping.empty()) grouping.push_back(dialog.covariates.front());
      for (const std::string& name : grouping) mark(name, "G");
      if (code != 26 && !dialog.covariates.empty()) mark(dialog.covariates.front(), "C");
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
  }

  int selectedCount = 0;
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    std::string_view role = ws.vars.GetCell(kRole, v);
    if (role == "X" || role == "Y") ++selectedCount;
  }
  if (dialog.kind == DialogKind::SingleSample) selectedCount = static_cast<int>(dialog.selected.size());
  run.request = BuildRequest(ws, code, selectedCount);
  for (const ParameterDefinition& param : DialogParameters(dialog.kind)) {
    if (!param.perVariable) run.request.parameters[std::string(param.name)] = dialog.Value(param.name);
  }
  return run;
}

RunResult RunAnalysis(Workspace& ws, AnalysisDialog& dialog, const AnalysisRegistry& analyses, ReportFormat format,
                      std::string* message) {
  auto tell = [&](std::string text) {
    ws.user.Tell(text);
    if (message) *message = std::move(text);
  };
  auto analysis = analyses.find(dialog.commandCode);
  if (analysis == analyses.end()) {
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
  bool written = false;
  try {
    written = analysis->second(ws, run.request, format);
  } catch (const MissingTableFile& missing) {
    tell(MissingTableMessage(missing.name(), ws.language));
    return RunResult::TablesMissing;
  }
  // The save switches of the single-sample dialog are turned off so they won't run twice.
  if (dialog.kind == DialogKind::SingleSample) dialog.values["saveStandardized"] = std::string(kNo);
  return written ? RunResult::Ran : RunResult::ReportFailed;
}

}  // namespace tarvika
