// tarvika-cli: everything the desktop program does, from a shell.

#include <CLI/CLI.hpp>

#include "cli_context.h"
#include "editing_cli.h"

int main(int argc, char** argv) {
  tarvika::cli::CliContext context;
  CLI::App app{"Tarvika 2.0, headless: statistics for the social and behavioural sciences"};
  app.require_subcommand(1);
  // These options may stand before or after the command, with the same effect.
  app.fallthrough();
  app.add_option("--program-dir", context.programDir, "The program folder (default: the executable's folder)");
  app.add_flag("--progress", context.progress, "Progress lines on standard error even when it is no terminal");
  app.add_option("--lang", context.lang, "Session language: en or hu (default: that of Tarvika.cfg)")
      ->check(CLI::IsMember({"en", "hu"}));

  // Commands register here, one file each: void RegisterX(CLI::App&, CliContext&), whose
  // callback starts the session (StartSession), does the work and sets context.exitCode.
  tarvika::cli::RegisterMenuCommand(app, context);
  tarvika::cli::RegisterCommandsCommand(app, context);
  tarvika::cli::RegisterInfo(app, context);
  tarvika::cli::RegisterResave(app, context);
  tarvika::cli::RegisterSettingsCommands(app, context);
  tarvika::cli::RegisterRunCommand(app, context);
  tarvika::cli::RegisterImportCommand(app, context);
  tarvika::cli::RegisterExportCommand(app, context);
  tarvika::cli::RegisterShapeCommands(app, context);
  tarvika::cli::RegisterSortCommand(app, context);
  tarvika::cli::RegisterFindCommand(app, context);
  tarvika::cli::RegisterMergeSplitCommands(app, context);
  tarvika::cli::RegisterVerifyCommand(app, context);
  tarvika::cli::RegisterTransformCommand(app, context);
  tarvika::cli::RegisterRandomCommand(app, context);
  tarvika::cli::RegisterRecodeCommand(app, context);
  tarvika::cli::RegisterCountCommand(app, context);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    int code = app.exit(e);
    return code == 0 ? 0 : tarvika::cli::kInputError;
  }
  return context.exitCode;
}
