// tarvika-cli resave IN OUT: loads a project file, repairs its declarations and writes it
// again, so that the file format can be tried from a shell.

#include <string>

#include "cli_context.h"
#include "workspace/declarations.h"
#include "workspace/project_file.h"
#include "workspace/workspace.h"

namespace tarvika::cli {

void RegisterResave(CLI::App& app, CliContext& context) {
  auto* cmd = app.add_subcommand("resave", "Load a project file, validate its declarations and save it");
  auto in = std::make_shared<std::string>();
  auto out = std::make_shared<std::string>();
  cmd->add_option("input", *in, "The project file to read")->required();
  cmd->add_option("output", *out, "The project file to write")->required();
  cmd->callback([&context, in, out] {
    auto session = StartSession(context);
    if (!session) return;
    Workspace& ws = session->ws;
    if (LoadProject(ws, *in) != LoadResult::Loaded) {
      context.exitCode = kInputError;
      return;
    }
    ValidateDeclarations(ws);
    if (!SaveProject(ws, *out)) context.exitCode = kProgramError;
  });
}

}  // namespace tarvika::cli
