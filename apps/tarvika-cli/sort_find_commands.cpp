// tarvika-cli sort and find: the cases of a project sorted by keys, and a text searched
// for (and replaced) in its cells.

#include <fmt/format.h>

#include <iostream>

#include "editing/find_cells.h"
#include "editing/sort_cases.h"
#include "editing_cli.h"

namespace tarvika::cli {
namespace {

struct SortOptions {
  std::string project;
  std::vector<std::string> by;
  std::string out;
};

int SortCommand(CliContext& context, const SortOptions& o) {
  auto session = OpenForEditing(context, o.project);
  if (!session) return context.exitCode;
  Workspace& ws = session->ws;
  std::vector<SortKey> keys;
  for (const std::string& given : SplitNames(o.by)) {
    std::size_t colon = given.find(':');
    std::string name = given.substr(0, colon);
    std::string direction = colon == std::string::npos ? "asc" : given.substr(colon + 1);
    if (direction != "asc" && direction != "desc") {
      ws.user.Tell(fmt::format("{}{}", ws.Text("A key is VARIABLE, VARIABLE:asc or VARIABLE:desc: ",
                                               "Egy kulcs alakja VÁLTOZÓ, VÁLTOZÓ:asc vagy VÁLTOZÓ:desc: "),
                               given));
      return kInputError;
    }
    int v = VariableByName(ws, name);
    if (v == 0) return kInputError;
    keys.push_back({v, direction == "desc"});
  }
  if (!SortCases(ws, keys)) return kInputError;
  SaveResult(context, ws, o.out);
  return context.exitCode;
}

struct FindOptionsCli {
  std::string project;
  std::string text;
  std::string scope = "table";
  bool caseSensitive = false;
  bool whole = false;
  std::optional<std::string> replace;
  std::string out;
};

int FindCommand(CliContext& context, const FindOptionsCli& o) {
  auto session = OpenForEditing(context, o.project);
  if (!session) return context.exitCode;
  Workspace& ws = session->ws;
  FindScope scope = FindScope::Table;
  int column = 0;
  if (o.scope.rfind("column:", 0) == 0) {
    scope = FindScope::Column;
    column = VariableByName(ws, o.scope.substr(7));
    if (column == 0) return kInputError;
  } else if (o.scope != "table") {
    ws.user.Tell(ws.Text("--scope is table or column:VARIABLE.", "A --scope értéke table vagy column:VÁLTOZÓ."));
    return kInputError;
  }
  if (o.replace && o.out.empty()) {
    ws.user.Tell(ws.Text("--replace needs --out.", "A --replace mellé --out is kell."));
    return kInputError;
  }
  if (!o.replace && !o.out.empty()) {  // a find alone changes nothing: there is nothing to write
    ws.user.Tell(ws.Text("--out needs --replace.", "Az --out mellé --replace is kell."));
    return kInputError;
  }
  FindOptions options{o.caseSensitive, o.whole};
  auto hits = FindCells(ws, ActiveTable::DataTabl, o.text, scope, column, 0, options);
  for (const CellHit& hit : hits) std::cout << HitLine(ws, hit) << '\n';
  std::cout << MatchCount(ws, hits.size()) << '\n';
  if (!o.replace) return 0;
  int changed = ReplaceInCells(ws, ActiveTable::DataTabl, hits, o.text, *o.replace, options);
  std::cout << fmt::format("{}{}", ws.Text("Cells replaced: ", "Lecserélt cellák: "), changed) << '\n';
  SaveResult(context, ws, o.out);
  return context.exitCode;
}

}  // namespace

void RegisterSortCommand(CLI::App& app, CliContext& context) {
  auto o = std::make_shared<SortOptions>();
  auto* cmd = app.add_subcommand("sort", "Sort the cases of a project by one or more variables");
  cmd->add_option("project", o->project, "The project file")->required();
  cmd->add_option("--by", o->by, "The keys in order of priority: VAR[:desc],...")->required();
  AddOutOption(cmd, o->out);
  cmd->callback([&context, o] { context.exitCode = SortCommand(context, *o); });
}

void RegisterFindCommand(CLI::App& app, CliContext& context) {
  auto o = std::make_shared<FindOptionsCli>();
  auto* cmd = app.add_subcommand("find", "Find a text in the cells of a project; replace it with --replace");
  cmd->add_option("project", o->project, "The project file")->required();
  cmd->add_option("text", o->text, "The text to find (an empty text finds the empty cells)")->required();
  cmd->add_option("--scope", o->scope, "table (default) or column:VARIABLE");
  cmd->add_flag("--case-sensitive", o->caseSensitive, "Tell upper and lower case apart");
  cmd->add_flag("--whole", o->whole, "The whole content of a cell only");
  cmd->add_option("--replace", o->replace, "Replace the text found by this one and write --out");
  cmd->add_option("--out", o->out, "The project file to write after --replace");
  cmd->callback([&context, o] { context.exitCode = FindCommand(context, *o); });
}

}  // namespace tarvika::cli
