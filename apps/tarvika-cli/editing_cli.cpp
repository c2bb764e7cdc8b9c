#include "editing_cli.h"

#include <fmt/format.h>

#include "workspace/declarations.h"
#include "workspace/project_file.h"

namespace tarvika::cli {

std::unique_ptr<Session> OpenForEditing(CliContext& context, const std::string& project) {
  auto session = StartSession(context);
  if (!session) return nullptr;
  if (LoadProject(session->ws, project) != LoadResult::Loaded) {
    context.exitCode = kInputError;
    return nullptr;
  }
  ValidateDeclarations(session->ws);
  return session;
}

int VariableByName(Workspace& ws, const std::string& name) {
  if (int v = ws.vars.VariableNamed(name)) return v;
  ws.user.Tell(fmt::format("{}{}", ws.Text("Unknown variable: ", "Ismeretlen változó: "), name));
  return 0;
}

std::optional<std::vector<int>> VariablesNamed(Workspace& ws, const std::vector<std::string>& names) {
  std::vector<int> variables;
  for (const std::string& name : names) {
    const int v = VariableByName(ws, name);
    if (v == 0) return std::nullopt;
    variables.push_back(v);
  }
  return variables;
}

std::vector<std::string> SplitNames(const std::vector<std::string>& given) {
  std::vector<std::string> names;
  for (const std::string& g : given) {
    std::size_t start = 0;
    for (std::size_t comma; (comma = g.find(',', start)) != std::string::npos; start = comma + 1) {
      if (comma > start) names.push_back(g.substr(start, comma - start));
    }
    if (start < g.size()) names.push_back(g.substr(start));
  }
  return names;
}

void SaveResult(CliContext& context, Workspace& ws, const std::string& out) {
  if (!SaveProject(ws, out)) context.exitCode = kProgramError;
}

void AddOutOption(CLI::App* cmd, std::string& out) {
  cmd->add_option("--out", out, "The project file to write (nothing is written on an error)")->required();
}

}  // namespace tarvika::cli
