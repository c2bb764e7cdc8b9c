// tarvika-cli insert-cases, delete-cases, insert-variables, delete-variables: the commands
// that change the shape of a project's tables.

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "editing/editing_tables.h"
#include "editing/table_shape.h"
#include "editing_cli.h"

namespace tarvika::cli {
namespace {

struct ShapeOptions {
  std::string project;
  std::string out;
  int count = 1;
  std::string at;
  std::string cases;
  std::vector<std::string> vars;
  std::string like;
  std::string type;
};

int Refuse(Workspace& ws, std::string_view english, std::string_view hungarian) {
  ws.user.Tell(ws.Text(english, hungarian));
  return kInputError;
}

// --at START | END | before:X | after:X, split into its word (start, end, before, after)
// and X; nullopt (told) for another form.
struct Place {
  enum class Where { Start, End, Before, After } where = Where::End;
  std::string anchor;
};
std::optional<Place> ParsePlace(Workspace& ws, const std::string& given, std::string_view start, std::string_view end,
                                std::string_view english, std::string_view hungarian) {
  if (given.empty() || given == end) return Place{};
  if (given == start) return Place{Place::Where::Start, ""};
  for (auto [word, where] : {std::pair{"before:", Place::Where::Before}, std::pair{"after:", Place::Where::After}}) {
    if (given.rfind(word, 0) == 0) return Place{where, given.substr(std::string_view(word).size())};
  }
  ws.user.Tell(ws.Text(english, hungarian));
  return std::nullopt;
}

int InsertCasesCommand(CliContext& context, const ShapeOptions& o) {
  auto session = OpenForEditing(context, o.project);
  if (!session) return context.exitCode;
  Workspace& ws = session->ws;
  auto at = ParsePlace(ws, o.at, "top", "bottom", "--at is top, bottom, before:CASE or after:CASE.",
                      "Az --at értéke top, bottom, before:ESET vagy after:ESET.");
  if (!at) return kInputError;
  using Where = Place::Where;
  const CasePlace place = at->where == Where::Start    ? CasePlace::Top
                          : at->where == Where::End    ? CasePlace::Bottom
                          : at->where == Where::Before ? CasePlace::BeforeActual
                                                       : CasePlace::AfterActual;
  int actual = 1;
  if (at->where == Where::Before || at->where == Where::After) {
    auto range = ParseIndexRange(at->anchor);
    if (!range || range->first != range->last || range->first > ws.NumberOfCases()) {
      ws.user.Tell(CaseRangeMessage(ws));
      return kInputError;
    }
    actual = range->first;
  }
  if (!InsertCases(ws, o.count, place, actual)) return kInputError;
  SaveResult(context, ws, o.out);
  return context.exitCode;
}

int DeleteCasesCommand(CliContext& context, const ShapeOptions& o) {
  auto session = OpenForEditing(context, o.project);
  if (!session) return context.exitCode;
  Workspace& ws = session->ws;
  auto range = ParseIndexRange(o.cases);
  if (!range) {
    ws.user.Tell(CaseRangeMessage(ws));
    return kInputError;
  }
  context.user.QueueAnswer(Answer::Yes);  // the command line is the confirmation
  if (!DeleteCases(ws, range->first, range->last)) return kInputError;
  SaveResult(context, ws, o.out);
  return context.exitCode;
}

int InsertVariablesCommand(CliContext& context, const ShapeOptions& o) {
  auto session = OpenForEditing(context, o.project);
  if (!session) return context.exitCode;
  Workspace& ws = session->ws;
  auto at = ParsePlace(ws, o.at, "first", "last", "--at is first, last, before:VARIABLE or after:VARIABLE.",
                      "Az --at értéke first, last, before:VÁLTOZÓ vagy after:VÁLTOZÓ.");
  if (!at) return kInputError;
  using Where = Place::Where;
  const VariablePlace place = at->where == Where::Start    ? VariablePlace::First
                              : at->where == Where::End    ? VariablePlace::Last
                              : at->where == Where::Before ? VariablePlace::Before
                                                           : VariablePlace::After;
  int actual = 1;
  if (at->where == Where::Before || at->where == Where::After) {
    actual = VariableByName(ws, at->anchor);
    if (actual == 0) return kInputError;
  }
  NewVariableProperties properties;
  if (!o.like.empty() && !o.type.empty()) {
    return Refuse(ws, "Give either --like or --type, not both.", "Vagy --like, vagy --type adható meg, a kettő együtt nem.");
  }
  if (!o.like.empty()) {
    properties.kind = NewVariableProperties::Kind::Identical;
    properties.model = VariableByName(ws, o.like);
    if (properties.model == 0) return kInputError;
  } else if (!o.type.empty()) {
    properties.kind = NewVariableProperties::Kind::Type;
    properties.type = o.type == "number" ? "num=0_0;" : o.type == "string" ? "string=0;" : o.type == "date" ? "date=;" : "link=;";
  }
  if (!InsertVariables(ws, o.count, place, actual, properties)) return kInputError;
  SaveResult(context, ws, o.out);
  return context.exitCode;
}

int DeleteVariablesCommand(CliContext& context, const ShapeOptions& o) {
  auto session = OpenForEditing(context, o.project);
  if (!session) return context.exitCode;
  Workspace& ws = session->ws;
  auto named = VariablesNamed(ws, SplitNames(o.vars));
  if (!named) return kInputError;
  std::vector<int> chosen = std::move(*named);
  std::sort(chosen.begin(), chosen.end());
  chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
  if (static_cast<int>(chosen.size()) >= ws.NumberOfVariables()) {
    return Refuse(ws, "You cannot delete all variables.", "Az összes változót nem lehet kitörölni.");
  }
  // Each run of neighbouring variables at once, the last run first so the others stay put.
  for (std::size_t end = chosen.size(); end > 0;) {
    std::size_t start = end - 1;
    while (start > 0 && chosen[start - 1] + 1 == chosen[start]) --start;
    context.user.QueueAnswer(Answer::Yes);
    if (!DeleteVariables(ws, chosen[start], chosen[end - 1])) return kInputError;
    end = start;
  }
  SaveResult(context, ws, o.out);
  return context.exitCode;
}

}  // namespace

void RegisterShapeCommands(CLI::App& app, CliContext& context) {
  auto o = std::make_shared<ShapeOptions>();
  auto* ic = app.add_subcommand("insert-cases", "Insert empty cases into a project");
  ic->add_option("project", o->project, "The project file")->required();
  ic->add_option("--count", o->count, "How many cases (default 1)")->check(CLI::PositiveNumber);
  ic->add_option("--at", o->at, "top, bottom (default), before:CASE or after:CASE");
  AddOutOption(ic, o->out);
  ic->callback([&context, o] { context.exitCode = InsertCasesCommand(context, *o); });

  auto* dc = app.add_subcommand("delete-cases", "Delete cases of a project");
  dc->add_option("project", o->project, "The project file")->required();
  dc->add_option("--cases", o->cases, "The cases FROM-TO (or one case)")->required();
  AddOutOption(dc, o->out);
  dc->callback([&context, o] { context.exitCode = DeleteCasesCommand(context, *o); });

  auto* iv = app.add_subcommand("insert-variables", "Insert new variables into a project");
  iv->add_option("project", o->project, "The project file")->required();
  iv->add_option("--count", o->count, "How many variables (default 1)")->check(CLI::PositiveNumber);
  iv->add_option("--at", o->at, "first, last (default), before:VAR or after:VAR");
  iv->add_option("--like", o->like, "Declarations identical with those of this variable");
  iv->add_option("--type", o->type, "The type: number, string, date or link")
      ->check(CLI::IsMember({"number", "string", "date", "link"}));
  AddOutOption(iv, o->out);
  iv->callback([&context, o] { context.exitCode = InsertVariablesCommand(context, *o); });

  auto* dv = app.add_subcommand("delete-variables", "Delete variables of a project");
  dv->add_option("project", o->project, "The project file")->required();
  dv->add_option("--vars", o->vars, "The variables, by short name (comma-separated)")->required();
  AddOutOption(dv, o->out);
  dv->callback([&context, o] { context.exitCode = DeleteVariablesCommand(context, *o); });
}

}  // namespace tarvika::cli
