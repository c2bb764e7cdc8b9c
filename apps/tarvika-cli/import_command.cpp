// tarvika-cli import IN OUT.msw: reads a text, spreadsheet or SPSS file into a project and
// saves it.

#include <filesystem>
#include <map>
#include <string>

#include "cli_context.h"
#include "exchange/import.h"
#include "lang/utf8.h"
#include "workspace/project_file.h"
#include "workspace/workspace.h"

namespace tarvika::cli {

namespace {

struct ImportArgs {
  std::string in, out, delimiter, header, sheet;
};

}  // namespace

void RegisterImportCommand(CLI::App& app, CliContext& context) {
  auto* cmd = app.add_subcommand("import", "Read a .sav, .por, .csv, .txt, .tsv, .xlsx or .xls file into a project file");
  auto args = std::make_shared<ImportArgs>();
  cmd->add_option("input", args->in, "The file to read")->required();
  cmd->add_option("output", args->out, "The project file to write (.msw)")->required();
  cmd->add_option("--delimiter", args->delimiter, "Text files: the field delimiter (default: what the first line suggests)")
      ->check(CLI::IsMember({"tab", "semicolon", "comma"}));
  cmd->add_option("--header", args->header, "Text files and sheets: whether the first row holds the names (default yes)")
      ->check(CLI::IsMember({"yes", "no"}));
  cmd->add_option("--sheet", args->sheet, "Spreadsheets: the sheet to read (default the first)");
  cmd->callback([&context, args] {
    auto session = StartSession(context);
    if (!session) return;
    Workspace& ws = session->ws;
    if (FoldCase(std::filesystem::path(args->out).extension().string()) != ".msw") {
      ws.user.Tell(ws.Text("The project file to write must end in .msw.", "A kiírandó projektfájl kiterjesztése .msw kell legyen."));
      context.exitCode = kInputError;
      return;
    }
    ImportOptions options;
    static const std::map<std::string, char> kDelimiters = {{"tab", '\t'}, {"semicolon", ';'}, {"comma", ','}};
    if (!args->delimiter.empty()) options.delimiter = kDelimiters.at(args->delimiter);
    options.headerRow = args->header != "no";
    options.sheet = args->sheet;
    if (!ImportFile(ws, args->in, options)) {
      context.exitCode = kInputError;
      return;
    }
    if (!SaveProject(ws, args->out)) context.exitCode = kProgramError;
  });
}

}  // namespace tarvika::cli
