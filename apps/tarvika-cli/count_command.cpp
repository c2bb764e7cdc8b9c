// tarvika-cli count: a new variable that counts, in each case, the selected variables that
// hold one of the listed values.

#include <memory>

#include "cli_context.h"
#include "edit_project.h"
#include "transform/recode.h"

namespace tarvika::cli {
namespace {

struct CountOptions {
  EditOptions edit;
  std::vector<std::string> vars;
  std::vector<std::string> rules;
  std::string name;
};

bool Count(Workspace& ws, const CountOptions& o) {
  auto variables = VariablesNamed(ws, o.vars);
  if (!variables) return false;
  auto rules = ParseRules(ws, o.rules, false);
  return rules && CountValues(ws, *variables, *rules, {o.name, "", Placement::End});
}

}  // namespace

void RegisterCountCommand(CLI::App& app, CliContext& context) {
  auto o = std::make_shared<CountOptions>();
  auto* cmd = app.add_subcommand("count", "Count, in each case, the variables that hold one of the listed values");
  AddEditOptions(cmd, o->edit);
  cmd->add_option("--vars", o->vars, "The variables to count in, by short name")->delimiter(',');
  cmd->add_option("--rule", o->rules, "A value to count, e.g. \"(a) 1\", \"(b) Missing\", \"(c) 1 ... 3\"");
  cmd->add_option("--name", o->name, "The short name of the new variable");
  cmd->callback([&context, o] {
    context.exitCode = EditProject(context, o->edit, [o](Workspace& ws) { return Count(ws, *o); });
  });
}

}  // namespace tarvika::cli
