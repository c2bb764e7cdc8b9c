// tarvika-cli verify: the error list of a project's numeric cells against their
// declarations, on standard output; --out writes the project with its cleaned numbers.

#include <iostream>

#include "editing/verify_data.h"
#include "editing_cli.h"

namespace tarvika::cli {

void RegisterVerifyCommand(CLI::App& app, CliContext& context) {
  auto project = std::make_shared<std::string>();
  auto out = std::make_shared<std::string>();
  auto* cmd = app.add_subcommand("verify", "List the non-numeric and out-of-range cells of numeric variables");
  cmd->add_option("project", *project, "The project file")->required();
  cmd->add_option("--out", *out, "Write the project with its numbers cleaned");
  cmd->callback([&context, project, out] {
    auto session = OpenForEditing(context, *project);
    if (!session) return;
    for (const VerifyFinding& f : VerifyData(session->ws)) std::cout << f.line << '\n';
    if (!out->empty()) SaveResult(context, session->ws, *out);
  });
}

}  // namespace tarvika::cli
