// The Transformations entries of the window: formula variables, the statistical functions
// of a case, weighted sums, random variables, recode and count, asked for in short prompts
// (function, variables, rules, new names) and run through the transformation core with undo.

#include <fmt/format.h>

#include "lang/utf8.h"
#include "numeric/stat_tables.h"
#include "transform/formula.h"
#include "transform/random_generators.h"
#include "transform/recode.h"
#include "transform/row_statistics.h"
#include "transform/weighted_sum.h"
#include "ui/main_window.h"
#include "ui/typed_lists.h"
#include "workspace/new_variable.h"
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
    if (!ys) return false;
    if (ys->size() > 1) {
      ws.user.Tell(ws.Text("Give one Y variable.", "Egy Y változót adjon meg."));
      return false;
    }
    y = ys->empty() ? 0 : ys->front();  // none: the core asks for it
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

// The prompts of a weighted sum: the variables, their weights and the new name.
bool RunWeightedSum(Workspace& ws) {
  std::optional<std::string> typed = ws.user.AskText(
      ws.Text("Variables (short names, separated by commas):", "Változók (rövid nevek vesszővel):"), "");
  if (!typed) return false;
  std::optional<std::vector<int>> sources = TypedVariables(ws, *typed);
  if (!sources) return false;
  typed = ws.user.AskText(ws.Text("Weights, one per variable (separated by semicolons):",
                                  "Súlyok, változónként egy (pontosvesszővel):"),
                          "");
  if (!typed) return false;
  std::vector<double> weights;
  for (const std::string& text : SplitTyped(*typed, ';')) {
    std::optional<double> w = ParseFourDecimals(text, ws.decimalSeparator);
    if (!w) {
      ws.user.Tell(std::string(ws.Text("Weight: not a number: ", "Súly: nem szám: ")) + text);
      return false;
    }
    weights.push_back(*w);
  }
  typed = ws.user.AskText(ws.Text("Short name of the new variable:", "Az új változó rövid neve:"),
                          NewVariableName(ws, "Wsum"));
  if (!typed) return false;
  std::vector<std::string> name = SplitTyped(*typed, ',');
  return ApplyWeightedSum(ws, *sources, weights, {name.empty() ? "" : name[0], "", Placement::End});
}

// The generator by its number in the list, its word or its entry in either language.
const GeneratorInfo* GeneratorOfTyped(std::string_view typed) {
  const std::vector<GeneratorInfo>& list = Generators();
  if (auto number = ParseWholeNumber(typed);
      number && *number >= 1 && *number <= static_cast<long long>(list.size())) {
    return &list[*number - 1];
  }
  for (const GeneratorInfo& info : list) {
    if (EqualIgnoringCase(typed, info.word) || EqualIgnoringCase(typed, info.entry) ||
        EqualIgnoringCase(typed, info.hungarianEntry)) {
      return &info;
    }
  }
  return nullptr;
}

// The prompts of a new random variable: the generator, its parameters (initial values
// offered), the short names (the generator's, made unique, offered) and the seed (empty:
// from the clock). The run tells the seed with its end message.
bool RunRandom(Workspace& ws) {
  const bool english = ws.language == Language::English;
  std::string prompt(ws.Text("Generator (number or name):", "Generátor (száma vagy neve):"));
  for (std::size_t i = 0; i < Generators().size(); ++i) {
    const GeneratorInfo& info = Generators()[i];
    prompt += fmt::format("\n{:>2}  {}", i + 1, english ? info.entry : info.hungarianEntry);
  }
  std::optional<std::string> typed = ws.user.AskText(prompt, "1");
  if (!typed) return false;
  const std::vector<std::string> words = SplitTyped(*typed, ',');  // trimmed; no entry has a comma
  const GeneratorInfo* info = words.size() == 1 ? GeneratorOfTyped(words[0]) : nullptr;
  if (info == nullptr) {
    ws.user.Tell(std::string(ws.Text("Unknown generator: ", "Ismeretlen generátor: ")) + *typed);
    return false;
  }
  std::vector<double> values;
  for (const GeneratorParameter& p : info->parameters) {
    const std::string_view label = english ? p.label : p.hungarianLabel;
    typed = ws.user.AskText(label, FormatGeneral(p.initial, ws.decimalSeparator));
    if (!typed) return false;
    std::optional<double> value = ParseFourDecimals(*typed, ws.decimalSeparator);
    if (!value) {
      ws.user.Tell(fmt::format("{} {}{}", label, ws.Text("not a number: ", "nem szám: "), *typed));
      return false;
    }
    values.push_back(*value);
  }
  std::string offered;
  for (std::string_view name : english ? info->names : info->hungarianNames) {
    offered += (offered.empty() ? "" : ", ") + UniqueRandomName(ws, name);
  }
  typed = ws.user.AskText(info->names.size() == 1
                              ? ws.Text("Short name of the new variable:", "Az új változó rövid neve:")
                              : ws.Text("Short names of the two new variables (separated by commas):",
                                        "A két új változó rövid neve (vesszővel):"),
                          offered);
  if (!typed) return false;
  const std::vector<std::string> names = SplitTyped(*typed, ',');
  typed = ws.user.AskText(ws.Text("Seed (a whole number from 0 to 4294967295; empty: from the clock):",
                                  "Kezdőérték (egész szám 0 és 4294967295 között; üres: az óráé):"),
                          "");
  if (!typed) return false;
  std::uint32_t seed = SeedFromClock();
  if (!SplitTyped(*typed, ',').empty()) {
    std::optional<long long> number = ParseWholeNumber(*typed);
    if (!number || *number < 0 || *number > 4294967295LL) {
      ws.user.Tell(std::string(ws.Text("The seed is a whole number from 0 to 4294967295: ",
                                       "A kezdőérték 0 és 4294967295 közötti egész szám: ")) +
                   *typed);
      return false;
    }
    seed = static_cast<std::uint32_t>(*number);
  }
  RandomSource source(seed);
  try {
    return GenerateColumn(ws, *info, values, names, source, seed);
  } catch (const MissingTableFile& missing) {
    ws.user.TellAs(MessageKind::Error, MissingTableMessage(missing.name(), ws.language));
    return false;
  }
}

// The prompts of a recode or a count: the variables, the rule lines and the new names.
bool RunRecodeOrCount(Workspace& ws, bool recode) {
  std::optional<std::string> names =
      ws.user.AskText(recode ? ws.Text("Variables to recode (short names, separated by commas):",
                                       "Átkódolandó változók (rövid nevek vesszővel):")
                             : ws.Text("Variables to count in (short names, separated by commas):",
                                       "Változók, amelyekben számolunk (rövid nevek vesszővel):"),
                      "");
  if (!names) return false;
  std::optional<std::vector<int>> variables = TypedVariables(ws, *names);
  if (!variables) return false;
  std::optional<std::string> lines = ws.user.AskText(
      recode ? ws.Text("Rules, separated by | (e.g. (c) 1 ... 3 -> 1 | (f) Else -> same):",
                       "Szabályok | jellel elválasztva (pl. (c) 1 ... 3 -> 1 | (f) Else -> same):")
             : ws.Text("Values to count, separated by | (e.g. (a) 1 | (c) 4 ... 5):",
                       "Számolandó értékek | jellel elválasztva (pl. (a) 1 | (c) 4 ... 5):"),
      "");
  if (!lines) return false;
  std::optional<std::vector<RecodeRule>> rules = ParseRules(ws, SplitTyped(*lines, '|'), recode);
  if (!rules) return false;
  std::optional<std::string> targets = ws.user.AskText(
      recode ? ws.Text("New variables, one per recoded variable (empty: recode in place):",
                       "Új változók, átkódolt változónként egy (üres: helyben kódolás):")
             : ws.Text("Short name of the new variable:", "Az új változó rövid neve:"),
      "");
  if (!targets) return false;
  if (!recode) return CountValues(ws, *variables, *rules, {*targets, "", Placement::End});
  std::vector<std::string> into = SplitTyped(*targets, ',');
  int done = into.empty() ? RecodeSame(ws, *variables, *rules) : RecodeDifferent(ws, *variables, into, *rules);
  return done >= 0;
}

}  // namespace

bool MainWindow::RunsTransformCommand(std::string_view command) {
  return command == "transform.univariate" || command == "transform.bivariate" ||
         command == "transform.statistical" || command == "transform.recode" ||
         command == "transform.count" || command == "transform.random" || command == "transform.weighted_sum";
}

bool MainWindow::RunTransformCommand(const std::string& name) {
  if (!RunsTransformCommand(name)) return false;
  Workspace& ws = session_.ws;
  if (journals_.Around(ws, [&] {
        return name == "transform.random"         ? RunRandom(ws)
               : name == "transform.weighted_sum" ? RunWeightedSum(ws)
               : name == "transform.recode"       ? RunRecodeOrCount(ws, true)
               : name == "transform.count"        ? RunRecodeOrCount(ws, false)
                                                  : RunFunction(ws, name);
      })) {
    ws.dataChanged = true;
    AfterGridChange(GridSelection());
  }
  return true;
}

}  // namespace tarvika
