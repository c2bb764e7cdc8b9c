// The Transformations entries of the window: formula variables, the statistical functions
// of a case, recode and count, asked for in short prompts (function, variables, rules, new
// names) and run through the transformation core with undo.

#include "transform/formula.h"
#include "transform/recode.h"
#include "transform/row_statistics.h"
#include "ui/main_window.h"
#include "ui/typed_lists.h"
#include "workspace/numbers.h"
#include "workspace/session.h"

namespace tarvika {

namespace {

// The prompts of a formula or statistical function, and its run; false when the person
// cancelled or a check refused (told).
bool RunFunction(Workspace& ws, const std::string& name) {
  const bool univariate = name == "transform.univariate", bivariate = name == "transform.bivariate";
  std::optional<std::string> word = ws.user.AskText(
      univariate  ? ws.Text("Function (sign, abs, square, sqrt, ln, add, mul, div, round):",
                            "Függvény (sign, abs, square, sqrt, ln, add, mul, div, round):")
      : bivariate ? ws.Text("Function (x+y, x-y, x*y, x/y):", "Függvény (x+y, x-y, x*y, x/y):")
                  : ws.Text("Function (mean, sd, variance, min, max, median, usable, missing):",
                            "Függvény (mean, sd, variance, min, max, median, usable, missing):"),
      "");
  if (!word) return false;
  std::optional<Univariate> u = univariate ? UnivariateOf(*word) : std::nullopt;
  std::optional<Bivariate> b = bivariate ? BivariateOf(*word) : std::nullopt;
  std::optional<RowStatistic> stat = !univariate && !bivariate ? RowStatisticOf(*word) : std::nullopt;
  if (!u && !b && !stat) {
    ws.user.Tell(std::string(ws.Text("Unknown function: ", "Ismeretlen függvény: ")) + *word);
    return false;
  }
  std::optional<std::string> names =
      ws.user.AskText(bivariate ? ws.Text("X variables (short names, separated by commas):", "X változók (rövid nevek vesszővel):")
                                : ws.Text("Variables (short names, separated by commas):", "Változók (rövid nevek vesszővel):"),
                      "");
  if (!names) return false;
  std::optional<std::vector<int>> sources = TypedVariables(ws, *names);
  if (!sources) return false;
  int y = 0;
  double c = 1;
  if (b) {
    std::optional<std::string> typed = ws.user.AskText(ws.Text("Y variable:", "Y változó:"), "");
    if (!typed) return false;
    std::optional<std::vector<int>> ys = TypedVariables(ws, *typed);
    if (!ys || ys->size() != 1) return false;
    y = ys->front();
  }
  if (u) {
    std::optional<std::string> typed = ws.user.AskText(ws.Text("The constant c:", "A c konstans:"), "1");
    if (!typed) return false;
    std::optional<double> value = ParseFourDecimals(*typed, ws.decimalSeparator);
    if (!value) {
      ws.user.Tell(std::string(ws.Text("c: not a number: ", "c: nem szám: ")) + *typed);
      return false;
    }
    c = *value;
  }
  std::optional<std::string> typedNames = ws.user.AskText(
      stat ? ws.Text("Short name of the new variable:", "Az új változó rövid neve:")
           : ws.Text("New short names, one per variable (separated by commas):", "Új rövid nevek, változónként egy (vesszővel):"),
      "");
  if (!typedNames) return false;
  std::vector<std::string> newNames = SplitTyped(*typedNames, ',');
  if (stat) return ApplyStatFunction(ws, *stat, *sources, {newNames.empty() ? "" : newNames[0], "", Placement::End});
  std::vector<NewTarget> targets;
  for (std::size_t i = 0; i < sources->size(); ++i) targets.push_back({i < newNames.size() ? newNames[i] : "", "", Placement::End});
  return u ? ApplyUnivariate(ws, *u, c, *sources, targets) : ApplyBivariate(ws, *b, *sources, y, targets);
}

}  // namespace

bool MainWindow::RunsTransformCommand(std::string_view command) {
  return command == "transform.univariate" || command == "transform.bivariate" || command == "transform.statistical" ||
         command == "transform.recode" || command == "transform.count";
}

bool MainWindow::RunTransformCommand(const std::string& name) {
  if (!RunsTransformCommand(name)) return false;
  Workspace& ws = session_.ws;
  if (name != "transform.recode" && name != "transform.count") {
    if (journals_.Around(ws, [&] { return RunFunction(ws, name); })) {
      ws.dataChanged = true;
      AfterGridChange(GridSelection());
    }
    return true;
  }
  const bool recode = name == "transform.recode";
  std::optional<std::string> names = ws.user.AskText(
      recode ? ws.Text("Variables to recode (short names, separated by commas):", "Átkódolandó változók (rövid nevek vesszővel):")
             : ws.Text("Variables to count in (short names, separated by commas):", "Változók, amelyekben számolunk (rövid nevek vesszővel):"),
      "");
  if (!names) return true;
  std::optional<std::vector<int>> variables = TypedVariables(ws, *names);
  if (!variables) return true;
  std::optional<std::string> lines = ws.user.AskText(
      recode ? ws.Text("Rules, separated by | (e.g. (c) 1 ... 3 -> 1 | (f) Else -> same):",
                       "Szabályok | jellel elválasztva (pl. (c) 1 ... 3 -> 1 | (f) Else -> same):")
             : ws.Text("Values to count, separated by | (e.g. (a) 1 | (c) 4 ... 5):",
                       "Számolandó értékek | jellel elválasztva (pl. (a) 1 | (c) 4 ... 5):"),
      "");
  if (!lines) return true;
  std::optional<std::vector<RecodeRule>> rules = ParseRules(ws, SplitTyped(*lines, '|'), recode);
  if (!rules) return true;
  std::optional<std::string> targets = ws.user.AskText(
      recode ? ws.Text("New variables, one per recoded variable (empty: recode in place):",
                       "Új változók, átkódolt változónként egy (üres: helyben kódolás):")
             : ws.Text("Short name of the new variable:", "Az új változó rövid neve:"),
      "");
  if (!targets) return true;
  bool changed = journals_.Around(ws, [&] {
    if (!recode) return CountValues(ws, *variables, *rules, {*targets, "", Placement::End});
    std::vector<std::string> into = SplitTyped(*targets, ',');
    int done = into.empty() ? RecodeSame(ws, *variables, *rules) : RecodeDifferent(ws, *variables, into, *rules);
    return done >= 0;
  });
  if (changed) {
    ws.dataChanged = true;
    AfterGridChange(GridSelection());
  }
  return true;
}

}  // namespace tarvika
