// tarvika-cli recode: recodes the selected variables by rule lines, in place or into new
// variables (--into).

#include <memory>

#include "cli_context.h"
#include "edit_project.h"
#include "transform/recode.h"

namespace tarvika::cli {
namespace {

struct RecodeOptions {
  EditOptions edit;
  std::vector<std::string> vars;
  std::vector<std::string> rules;
  std::vector<std::string> into;
};

bool Recode(Workspace& ws, const RecodeOptions& o) {
  auto variables = VariablesNamed(ws, o.vars);
  if (!variables) return false;
  auto rules = ParseRules(ws, o.rules, true);
  if (!rules) return false;
  const int recoded = o.into.empty() ? RecodeSame(ws, *variables, *rules)
                                     : RecodeDifferent(ws, *variables, o.into, *rules);
  return recoded >= 0;
}

}  // namespace

void RegisterRecodeCommand(CLI::App& app, CliContext& context) {
  auto o = std::make_shared<RecodeOptions>();
  auto* cmd = app.add_subcommand("recode", "Recode values of variables by rules, in place or into new variables");
  AddEditOptions(cmd, o->edit);
  cmd->add_option("--vars", o->vars, "The variables to recode, by short name")->delimiter(',');
  cmd->add_option("--rule", o->rules, "A rule line, e.g. \"(c) 1 ... 3 -> 1\" or \"(f) Else -> same\"; tried in order");
  cmd->add_option("--into", o->into, "New variables, one per recoded variable (default: recode in place)")
      ->delimiter(',');
  cmd->callback([&context, o] {
    context.exitCode = EditProject(context, o->edit, [o](Workspace& ws) { return Recode(ws, *o); });
  });
}

}  // namespace tarvika::cli
