// tarvika-cli export IN.msw OUT.(sav|txt) [--syntax OUT.sps]: writes a project for other
// programs: an SPSS data file, the tab-delimited data table, or with --syntax the SPSS pair
// of a fixed-column data file and the syntax that reads it.

#include <filesystem>
#include <string>

#include "cli_context.h"
#include "exchange/export.h"
#include "lang/utf8.h"
#include "workspace/declarations.h"
#include "workspace/project_file.h"
#include "workspace/workspace.h"

namespace tarvika::cli {

namespace {

struct ExportArgs {
  std::string in, out, syntax;
};

}  // namespace

void RegisterExportCommand(CLI::App& app, CliContext& context) {
  auto* cmd = app.add_subcommand(
      "export", "Write a project as an SPSS .sav file, as tab-delimited text, or (with --syntax) as SPSS data and syntax");
  auto args = std::make_shared<ExportArgs>();
  cmd->add_option("input", args->in, "The project file to read (.msw)")->required();
  cmd->add_option("output", args->out, "The file to write: .sav, or .txt")->required();
  cmd->add_option("--syntax", args->syntax, "With a .txt output: write it as fixed columns and this SPSS syntax file beside it");
  cmd->callback([&context, args] {
    auto session = StartSession(context);
    if (!session) return;
    Workspace& ws = session->ws;
    const std::string ext = FoldCase(std::filesystem::path(args->out).extension().string());
    if ((ext != ".sav" && ext != ".txt") || (ext == ".sav" && !args->syntax.empty())) {
      ws.user.Tell(ws.Text("Export writes a .sav file, or a .txt file (with --syntax: the SPSS data file of the syntax).",
                           "Az export .sav fájlt ír, vagy .txt fájlt (--syntax mellett: a syntax SPSS adatfájlját)."));
      context.exitCode = kInputError;
      return;
    }
    if (LoadProject(ws, args->in) != LoadResult::Loaded) {
      context.exitCode = kInputError;
      return;
    }
    ValidateDeclarations(ws);
    bool written = ext == ".sav"            ? ExportSav(ws, args->out)
                   : args->syntax.empty()   ? ExportTabDelimited(ws, args->out)
                                            : ExportToSpss(ws, args->out, args->syntax);
    if (!written) context.exitCode = kProgramError;
  });
}

}  // namespace tarvika::cli
