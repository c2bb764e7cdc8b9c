#include "edit_project.h"

#include <iostream>

#include "editing_cli.h"
#include "workspace/numbers.h"

namespace tarvika::cli {

void AddEditOptions(CLI::App* cmd, EditOptions& options) {
  cmd->add_option("project", options.project, "The project file (.msw)")->required();
  cmd->add_option("--out", options.out, "Write the changed project to this file (.msw)");
  cmd->add_flag("--in-place", options.inPlace, "Write the changed project back to its file");
}

int EditProject(CliContext& context, const EditOptions& options, const std::function<bool(Workspace&)>& edit) {
  if (options.out.empty() == !options.inPlace) {
    std::cerr << Pick(context.ChosenLanguage().value_or(Language::English), "Give either --out FILE or --in-place.",
                      "Adja meg vagy a --out FÁJL, vagy az --in-place kapcsolót.")
              << '\n';
    return kInputError;
  }
  auto session = OpenForEditing(context, options.project);
  if (!session) return context.exitCode;
  if (!edit(session->ws)) return kInputError;
  SaveResult(context, session->ws, options.inPlace ? options.project : options.out);
  return context.exitCode;
}

std::optional<double> ParameterNumber(Workspace& ws, std::string_view name, std::string_view text) {
  auto value = ParseFourDecimals(text, ws.decimalSeparator);
  if (!value) {
    ws.user.Tell(std::string(name) + std::string(ws.Text(": not a number: ", ": nem szám: ")) + std::string(text));
  }
  return value;
}

}  // namespace tarvika::cli
