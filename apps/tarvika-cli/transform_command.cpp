// tarvika-cli transform: a formula variable, a statistical function or the weighted sum of
// the selected variables of each case.

#include <memory>

#include "cli_context.h"
#include "edit_project.h"
#include "transform/formula.h"
#include "transform/row_statistics.h"
#include "transform/weighted_sum.h"

namespace tarvika::cli {
namespace {

struct TransformOptions {
  EditOptions edit;
  std::string function;
  std::vector<std::string> vars;
  std::string y;
  std::string c = "1";
  std::vector<std::string> names;
  std::vector<std::string> weights;
  std::string longName;
  std::string place = "end";
};

bool Transform(Workspace& ws, const TransformOptions& o) {
  auto sources = VariablesNamed(ws, o.vars);
  if (!sources) return false;
  const Placement place = *PlacementOf(o.place);
  if (place == Placement::Same && !o.names.empty()) {
    ws.user.Tell(ws.Text("--name does not go with --place same.", "A --name nem adható meg a --place same mellett."));
    return false;
  }
  std::vector<NewTarget> targets;
  for (std::size_t i = 0; i < sources->size(); ++i) {
    targets.push_back({i < o.names.size() ? o.names[i] : "", o.longName, place});
  }
  const bool weighted = o.function == "weighted-sum";
  if (!weighted && !o.weights.empty()) {
    ws.user.Tell(ws.Text("--weights goes with --function weighted-sum only.",
                         "A --weights csak a --function weighted-sum mellett adható meg."));
    return false;
  }
  auto stat = RowStatisticOf(o.function);
  if (stat || weighted) {
    if (o.names.size() > 1) {
      ws.user.Tell(
          ws.Text("A statistical function or a weighted sum makes one new variable: give one name.",
                  "A statisztikai függvény és a súlyozott összeg egy új változót hoz létre: egy nevet adjon meg."));
      return false;
    }
    const NewTarget target{o.names.empty() ? "" : o.names[0], o.longName, place};
    if (stat) return ApplyStatFunction(ws, *stat, *sources, target);
    std::vector<double> weights;
    for (const std::string& text : o.weights) {
      auto w = ParameterNumber(ws, "weights", text);
      if (!w) return false;
      weights.push_back(*w);
    }
    return ApplyWeightedSum(ws, *sources, weights, target);
  }
  if (o.names.size() > sources->size()) {
    ws.user.Tell(ws.Text("More names than variables.", "Több név van, mint változó."));
    return false;
  }
  if (auto f = BivariateOf(o.function)) {
    if (o.y.empty()) return ApplyBivariate(ws, *f, *sources, 0, targets);
    auto y = VariablesNamed(ws, {o.y});
    return y && ApplyBivariate(ws, *f, *sources, y->front(), targets);
  }
  auto c = ParameterNumber(ws, "c", o.c);
  return c && ApplyUnivariate(ws, *UnivariateOf(o.function), *c, *sources, targets);
}

}  // namespace

void RegisterTransformCommand(CLI::App& app, CliContext& context) {
  auto o = std::make_shared<TransformOptions>();
  auto* cmd = app.add_subcommand("transform", "Compute new variables from the selected ones, cell by cell or case by case");
  AddEditOptions(cmd, o->edit);
  cmd->add_option("--function", o->function, "The function")
      ->required()
      ->check(CLI::IsMember({"sign",  "abs", "square", "sqrt",   "ln",      "add",         "mul", "div",
                             "round", "x+y", "x-y",    "x*y",    "x/y",     "mean",        "sd",  "variance",
                             "min",   "max", "median", "usable", "missing", "weighted-sum"}));
  cmd->add_option("--vars", o->vars, "The selected (X) variables, by short name")->delimiter(',');
  cmd->add_option("--y", o->y, "The Y variable of x+y, x-y, x*y, x/y");
  cmd->add_option("--c", o->c, "The constant c of ln, add, mul, div, round (default 1)");
  cmd->add_option("--weights", o->weights, "The weights of weighted-sum, one per variable in the order of --vars")
      ->delimiter(',');
  cmd->add_option("--name", o->names,
                  "The new short names, one per selected variable (one for a statistical function or a weighted sum)")
      ->delimiter(',');
  cmd->add_option("--long-name", o->longName, "The long name of the new variables (default: how they were made)");
  cmd->add_option("--place", o->place, "Where the new variables go (default end)")
      ->check(CLI::IsMember({"same", "before", "after", "end"}));
  cmd->callback([&context, o] {
    context.exitCode = EditProject(context, o->edit, [o](Workspace& ws) { return Transform(ws, *o); });
  });
}

}  // namespace tarvika::cli
