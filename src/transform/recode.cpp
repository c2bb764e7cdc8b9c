#include "transform/recode.h"

#include <fmt/format.h>

#include <cmath>

#include "frame/data_feed.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

// Reads cells as the rules see them.
class RuleCellReader {
 public:
  explicit RuleCellReader(Workspace& ws) : ws_(ws), missing_(ParseMissing(ws)), feed_(ws, missing_, {0}) {}
  RuleCellReader(const RuleCellReader&) = delete;
  RuleCellReader& operator=(const RuleCellReader&) = delete;

  RuleCell Read(int variable, int row) const {
    RuleCell cell;
    cell.text = ws_.data.GetCell(variable, row);
    if (cell.text.empty()) {
      cell.missing = true;
      return cell;
    }
    auto value = ParsePlainDecimal(cell.text, ws_.decimalSeparator);
    if (!value) value = ParseEitherSeparator(cell.text, ws_.decimalSeparator);
    if (value && std::isfinite(*value) && std::fabs(*value) <= 1e14) {
      cell.isNumber = true;
      cell.fixed = FixedPoint(*value);
      cell.missing = feed_.IsMissingCode(variable, *value);
    }
    return cell;
  }

 private:
  const Workspace& ws_;
  std::vector<MissingCodes> missing_;
  DataFeed feed_;
};

const RecodeRule* FirstFitting(const std::vector<RecodeRule>& rules, const RuleCell& cell) {
  for (const RecodeRule& rule : rules) {
    if (RuleFits(rule, cell)) return &rule;
  }
  return nullptr;
}

// The new text of a cell, nullopt when no rule fits.
std::optional<std::string> Recoded(const std::vector<RecodeRule>& rules, const RuleCell& cell, char separator) {
  const RecodeRule* rule = FirstFitting(rules, cell);
  if (rule == nullptr) return std::nullopt;
  switch (rule->newValue) {
    case NewValue::Number:
      return FormatGeneral(rule->number, separator);
    case NewValue::SysMis:
      return std::string();
    default:
      return std::string(cell.text);
  }
}

bool CheckRecode(Workspace& ws, const std::vector<int>& variables, const std::vector<RecodeRule>& rules) {
  if (variables.empty()) {
    ws.user.Tell(ws.Text("Select variable(s) to recode", "Válassza ki az átkódolandó változó(ka)t!"));
    return false;
  }
  if (rules.empty()) {
    ws.user.Tell(ws.Text("The \"Old and new values\" list is empty.", "A \"Régi és új értékek\" lista üres."));
    return false;
  }
  return true;
}

void TellRecoded(Workspace& ws, int count) {
  ws.user.Tell(ws.language == Language::English
                   ? fmt::format("Recoding of {} cell(s) succesfully performed.", count)
                   : fmt::format("{} cella átkódolása sikeresen megtörtént.", count));
}

}  // namespace

std::optional<std::vector<RecodeRule>> ParseRules(Workspace& ws, const std::vector<std::string>& lines,
                                                  bool withNewValue) {
  std::vector<RecodeRule> rules;
  for (const std::string& line : lines) {
    auto rule = ParseRule(line, withNewValue, ws.decimalSeparator);
    if (!rule) {
      ws.user.Tell(std::string(ws.Text("Not a rule line: ", "Hibás szabálysor: ")) + line);
      return std::nullopt;
    }
    rules.push_back(*rule);
  }
  return rules;
}

int RecodeSame(Workspace& ws, const std::vector<int>& variables, const std::vector<RecodeRule>& rules) {
  if (!CheckRecode(ws, variables, rules)) return -1;
  const RuleCellReader reader(ws);
  const int cases = ws.NumberOfCases();
  int changed = 0;
  for (int v : variables) {
    for (int r = 1; r <= cases; ++r) {
      const RuleCell cell = reader.Read(v, r);
      auto text = Recoded(rules, cell, ws.decimalSeparator);
      if (!text || *text == cell.text) continue;
      ws.data.SetCell(v, r, *text);
      ++changed;
    }
  }
  if (changed > 0) ws.dataChanged = true;
  TellRecoded(ws, changed);
  return changed;
}

int RecodeDifferent(Workspace& ws, const std::vector<int>& variables, const std::vector<std::string>& newNames,
                    const std::vector<RecodeRule>& rules) {
  if (!CheckRecode(ws, variables, rules)) return -1;
  const int unnamed = static_cast<int>(variables.size()) - static_cast<int>(newNames.size());
  if (unnamed > 0) {
    ws.user.Tell(unnamed == 1 && variables.size() == 1
                     ? std::string(ws.Text("You must rename the variable named \"?\"!",
                                           "Át kell neveznie a \"?\" nevű változót!"))
                     : fmt::format("{}{}{}", ws.Text("Rename ", "Nevezzen át "), unnamed,
                                   ws.Text(" variable(s) named \"?\".", " \"?\" nevű változót!")));
    return -1;
  }
  if (newNames.size() != variables.size()) {
    ws.user.Tell(ws.Text("Give one new name for each variable to recode.",
                         "Minden átkódolandó változónak egy új nevet adjon!"));
    return -1;
  }
  std::vector<NewTarget> targets;
  for (const std::string& name : newNames) targets.push_back({name, "", Placement::End});
  if (!CheckTargets(ws, targets)) return -1;
  const RuleCellReader reader(ws);
  const int cases = ws.NumberOfCases();
  int changed = 0;
  std::vector<std::vector<std::string>> cells(variables.size(), std::vector<std::string>(cases));
  std::vector<std::string> longNames;
  for (std::size_t i = 0; i < variables.size(); ++i) {
    for (int r = 1; r <= cases; ++r) {
      const RuleCell cell = reader.Read(variables[i], r);
      auto text = Recoded(rules, cell, ws.decimalSeparator);
      if (!text) continue;
      if (*text != cell.text) ++changed;
      cells[i][r - 1] = std::move(*text);
    }
    std::string_view source = ws.vars.GetCell(kLongName, variables[i]);
    if (source.empty()) source = ws.vars.GetCell(kShortName, variables[i]);
    longNames.push_back(std::string(source) + " recoded");
  }
  WriteTargets(ws, variables, targets, cells, std::vector<std::string>(variables.size(), "num=0_0;"), longNames);
  TellRecoded(ws, changed);
  return changed;
}

bool CountValues(Workspace& ws, const std::vector<int>& variables, const std::vector<RecodeRule>& rules,
                 const NewTarget& target, int anchor) {
  if (variables.empty()) {
    ws.user.Tell(ws.Text("Select variables to count!", "Válassza ki a számlálandó változókat!"));
    return false;
  }
  if (rules.empty()) {
    ws.user.Tell(ws.Text("The \"values to count\" list is empty!", "A \"számlálandó értékek\" listája üres!"));
    return false;
  }
  if (target.name.empty() || target.place == Placement::Same) {
    ws.user.Tell(ws.Text("Give a name to new variable!", "Adjon nevet az új változónak!"));
    return false;
  }
  if (!CheckTargets(ws, {target})) return false;
  const RuleCellReader reader(ws);
  const int cases = ws.NumberOfCases();
  std::vector<std::string> cells(cases);
  for (int r = 1; r <= cases; ++r) {
    int count = 0;
    for (int v : variables) {
      if (FirstFitting(rules, reader.Read(v, r)) != nullptr) ++count;
    }
    cells[r - 1] = std::to_string(count);
  }
  std::string names;
  for (std::size_t i = 0; i < variables.size(); ++i) {
    names += (i == 0 ? "" : ", ") + std::string(ws.vars.GetCell(kShortName, variables[i]));
  }
  const std::string longName = std::string(ws.Text("Count of values in ", "Értékek száma: ")) + names;
  WriteTargets(ws, {anchor}, {target}, {cells}, {"num=0_0;"}, {longName});
  return true;
}

}  // namespace tarvika
