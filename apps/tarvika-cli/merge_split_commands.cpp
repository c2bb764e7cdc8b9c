// tarvika-cli merge and split: a second project's cases or variables added to a project,
// and parts of a project written as new projects.

#include <fmt/format.h>

#include "editing/editing_tables.h"
#include "editing/merge_files.h"
#include "editing/split_file.h"
#include "editing/table_shape.h"
#include "editing_cli.h"

namespace tarvika::cli {
namespace {

struct MergeOptions {
  std::string project;
  std::string source;
  bool cases = false;
  bool variables = false;
  std::vector<std::string> key;
  std::string indicator;
  std::string out;
};

int MergeCommand(CliContext& context, const MergeOptions& o) {
  auto session = OpenForEditing(context, o.project);
  if (!session) return context.exitCode;
  Workspace& ws = session->ws;
  if (o.cases == o.variables) {
    ws.user.Tell(ws.Text("Give one of --cases and --variables.", "A --cases és a --variables közül az egyiket adja meg."));
    return kInputError;
  }
  const MergeMode mode = o.cases ? MergeMode::AddCases : MergeMode::AddVariables;
  const auto keys = SplitNames(o.key);
  if (mode == MergeMode::AddCases && !keys.empty()) {
    ws.user.Tell(ws.Text("A key joins cases only when adding variables.", "Kulcs csak változók hozzáadásakor köti össze az eseteket."));
    return kInputError;
  }
  MergeSource source = ReadMergeSource(ws, o.source, mode);
  if (source.result != LoadResult::Loaded) return kInputError;
  auto plan = StartMergePlan(ws, source, mode, keys);
  if (!plan) return kInputError;
  plan->indicator = o.indicator;
  auto merged = MergeTables(ws, source, *plan, o.source);
  if (!merged) return kInputError;
  UseMergedTables(ws, std::move(*merged));
  SaveResult(context, ws, o.out);
  return context.exitCode;
}

struct SplitOptions {
  std::string project;
  std::vector<std::string> vars;
  std::string cases;
  std::string out;
  std::string rest;
};

int SplitCommand(CliContext& context, const SplitOptions& o) {
  auto session = OpenForEditing(context, o.project);
  if (!session) return context.exitCode;
  Workspace& ws = session->ws;
  auto variables = VariablesNamed(ws, SplitNames(o.vars));
  if (!variables) return kInputError;
  SplitPart first{o.out, std::move(*variables), 0, 0};
  if (!o.cases.empty()) {
    auto range = ParseIndexRange(o.cases);
    if (!range) {
      ws.user.Tell(CaseBoundRangeMessage(ws));
      return kInputError;
    }
    first.firstCase = range->first;
    first.lastCase = range->last;
  }
  std::optional<SplitPart> second;
  if (!o.rest.empty()) {
    // The rest: the cases outside the range (with the same variables) when cases were
    // chosen, else the variables not chosen (with every case).
    SplitPart rest{o.rest, {}, 0, 0};
    bool empty = false;
    if (first.firstCase > 0) {
      rest.variables = first.variables;
      if (first.firstCase > 1 && first.lastCase < ws.NumberOfCases()) {
        ws.user.Tell(ws.Text("The rest of a range in the middle is not one range of cases: split it in two steps.",
                             "Egy középső tartomány maradéka nem egyetlen tartomány: két lépésben ossza fel."));
        return kInputError;
      }
      if (first.firstCase > 1) {
        rest.firstCase = 1;
        rest.lastCase = first.firstCase - 1;
      } else if (first.lastCase < ws.NumberOfCases()) {
        rest.firstCase = first.lastCase + 1;
        rest.lastCase = ws.NumberOfCases();
      } else {
        empty = true;
      }
    } else {
      for (int v = 1; v <= ws.NumberOfVariables(); ++v)
        if (std::find(first.variables.begin(), first.variables.end(), v) == first.variables.end()) rest.variables.push_back(v);
      empty = rest.variables.empty();
    }
    if (empty) {
      ws.user.Tell(ws.Text("Nothing is left for the second file.", "A második állományba nem marad semmi."));
      return kInputError;
    }
    second = rest;
  }
  if (!SplitFile(ws, first, second)) return kInputError;
  return context.exitCode;
}

}  // namespace

void RegisterMergeSplitCommands(CLI::App& app, CliContext& context) {
  auto m = std::make_shared<MergeOptions>();
  auto* merge = app.add_subcommand("merge", "Add the cases or the variables of a second project");
  merge->add_option("project", m->project, "The working project file")->required();
  merge->add_option("source", m->source, "The project file whose cases or variables are added")->required();
  merge->add_flag("--cases", m->cases, "Add its cases below (variables of the same name share a column)");
  merge->add_flag("--variables", m->variables, "Add its variables beside (cases joined by --key or by position)");
  merge->add_option("--key", m->key, "The one key variable, of the same short name in both files");
  merge->add_option("--indicator", m->indicator, "Name of a variable that tells the source of each case (0/1)");
  AddOutOption(merge, m->out);
  merge->callback([&context, m] { context.exitCode = MergeCommand(context, *m); });

  auto s = std::make_shared<SplitOptions>();
  auto* split = app.add_subcommand("split", "Write chosen variables and cases as a new project (and the rest as another)");
  split->add_option("project", s->project, "The project file")->required();
  split->add_option("--vars", s->vars, "The variables, in the order of the new file (default: all)");
  split->add_option("--cases", s->cases, "The cases FROM-TO (default: all)");
  split->add_option("--out", s->out, "The first new project file")->required();
  split->add_option("--rest", s->rest, "A second file: the other cases, or without --cases the other variables");
  split->callback([&context, s] { context.exitCode = SplitCommand(context, *s); });
}

}  // namespace tarvika::cli
