#include "edit_project.h"

#include <iostream>

#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/project_file.h"

namespace tarvika::cli {

void AddEditOptions(CLI::App* cmd, EditOptions& options) {
  cmd->add_option("project", options.project, "The project file (.msw)")->required();
  cmd->add_option("--out", options.out, "Write the changed project to this file (.msw)");
  cmd->add_flag("--in-place", options.inPlace, "Write the changed project back to its file");
}

int EditProject(CliContext& context, const EditOptions& options, const std::function<bool(Workspace&)>& edit) {
  auto session = StartSession(context);
  if (!session) return kProgramError;
  Workspace& ws = session->ws;
  if (options.out.empty() == !options.inPlace) {
    std::cerr << ws.Text("Give either --out FILE or --in-place.", "Adja meg vagy a --out FÁJL, vagy az --in-place kapcsolót.")
              << '\n';
    return kInputError;
  }
  const std::size_t toldBefore = context.user.told.size();
  if (LoadProject(ws, options.project) != LoadResult::Loaded) {
    if (context.user.told.size() == toldBefore) {
      std::cerr << ws.Text("The project can't be read: ", "A projekt nem olvasható: ") << options.project << '\n';
    }
    return kInputError;
  }
  ValidateDeclarations(ws);
  if (!edit(ws)) return kInputError;
  const std::string& target = options.inPlace ? options.project : options.out;
  if (!SaveProject(ws, target)) {
    std::cerr << ws.Text("Can't write ", "Nem írható: ") << target << '\n';
    return kProgramError;
  }
  return 0;
}

std::optional<std::vector<int>> VariablesNamed(Workspace& ws, const std::vector<std::string>& names) {
  std::vector<int> variables;
  for (const std::string& name : names) {
    const int v = ws.vars.VariableIndex(name);
    if (v < 1) {
      ws.user.Tell(std::string(ws.Text("Unknown variable: ", "Ismeretlen változó: ")) + name);
      return std::nullopt;
    }
    variables.push_back(v);
  }
  return variables;
}

std::optional<double> ParameterNumber(Workspace& ws, std::string_view name, std::string_view text) {
  auto value = ParseFourDecimals(text, ws.decimalSeparator);
  if (!value) {
    ws.user.Tell(std::string(name) + std::string(ws.Text(": not a number: ", ": nem szám: ")) + std::string(text));
  }
  return value;
}

}  // namespace tarvika::cli
