// tarvika-cli run: one analysis on a project, headless. The request is built as the
// analysis dialog's run command builds it; the report goes to output/ of the program
// folder as always, and to standard output (UTF-8) or a copy in --out.

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "cli_context.h"
#include "analyses/command_table.h"
#include "frame/analysis_dialogs.h"
#include "frame/report_writer.h"
#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/project_file.h"
#include "workspace/workspace.h"

namespace tarvika::cli {
namespace {

struct RunOptions {
  std::string project;
  int command = 0;
  std::vector<std::string> vars;
  std::vector<std::string> y;
  std::vector<std::string> group;
  std::vector<std::string> cov;
  std::vector<std::string> exclude;
  std::vector<std::string> set;
  std::string cond;
  std::string format = "text";
  std::string out;
  std::string save;
  bool saveInPlace = false;
};

int InputError(std::string_view message) {
  std::cerr << message << '\n';
  return kInputError;
}

int Run(CliContext& context, const RunOptions& o) {
  const std::string programFolder = context.ProgramFolder();
  // The program folder first: a run without its tables stops before it reads anything.
  auto session = StartSession(context, Needs::Tables);
  if (!session) return kProgramError;
  Workspace& ws = session->ws;
  const Language language = ws.language;
  const CommandInfo* command = AllCommands().Find(o.command);
  if (command == nullptr) {
    return InputError(std::string(Pick(language, "Unknown command: ", "Ismeretlen parancs: ")) + std::to_string(o.command));
  }
  if (!command->offered) {
    return InputError(fmt::format("{}{} ({}){}", Pick(language, "Command ", "A parancs nem érhető el: "), o.command,
                                  command->Entry(language), Pick(language, " is not offered.", ".")));
  }
  if (!o.save.empty() && o.saveInPlace) {
    return InputError(std::string(Pick(language, "Give either --save or --save-in-place, not both.",
                                       "Vagy --save, vagy --save-in-place adható meg, a kettő együtt nem.")));
  }
  // The dialog of the command, filled as a person would fill it.
  AnalysisDialog dialog(AllCommands(), command->dialog);
  dialog.commandCode = o.command;
  dialog.selected = o.vars;
  dialog.yList = o.y;
  dialog.grouping = o.group;
  dialog.covariates = o.cov;
  dialog.excluded = o.exclude;
  dialog.conditional = o.cond;
  for (const std::string& setting : o.set) {
    std::size_t eq = setting.find('=');
    if (eq == std::string::npos) {
      return InputError(std::string(Pick(language, "A setting is NAME=VALUE or NAME:VARIABLE=VALUE: ",
                                         "Egy beállítás alakja NÉV=ÉRTÉK vagy NÉV:VÁLTOZÓ=ÉRTÉK: ")) + setting);
    }
    std::string name = setting.substr(0, eq), value = setting.substr(eq + 1), error;
    std::size_t colon = name.find(':');
    const ParameterDefinition* param = FindParameter(dialog.kind, name.substr(0, colon));
    if (param != nullptr && !command->Uses(param->name)) {
      return InputError(fmt::format("{}{}{}", param->name, Pick(language, " does not apply to command ", " nem tartozik ehhez a parancshoz: "),
                                    o.command));
    }
    bool ok = colon == std::string::npos ? dialog.Set(name, value, language, &error)
                                         : dialog.SetFor(name.substr(0, colon), name.substr(colon + 1), value, language, &error);
    if (!ok) return InputError(error);
  }

  std::size_t toldBefore = context.user.told.size();
  LoadResult loaded = LoadProject(ws, o.project);
  if (loaded != LoadResult::Loaded) {
    if (context.user.told.size() == toldBefore) {
      std::cerr << Pick(language, "The project can't be read: ", "A projekt nem olvasható: ") << o.project << '\n';
    }
    return kInputError;
  }
  ValidateDeclarations(ws);
  // Opening the dialog checks the names again; a dialog with duplicate names closes at once.
  if (!OpenDialog(ws, dialog)) return kInputError;

  ReportFormat format = o.format == "html" ? ReportFormat::Html : ReportFormat::Text;
  const int variablesBefore = ws.NumberOfVariables();
  switch (RunAnalysis(ws, dialog, format)) {
    case RunResult::Ran:
      break;
    case RunResult::Refused:
    case RunResult::NotBuilt:
      return kInputError;  // the message is on standard error already
    case RunResult::TablesMissing:  // the program stops; the message is on standard error
    case RunResult::ReportFailed:
      return 1;
  }
  // New variables of the run are kept by writing the project back.
  const std::string target = o.saveInPlace ? o.project : o.save;
  if (!target.empty() && ws.NumberOfVariables() <= variablesBefore) {
    std::cerr << Pick(language, "The run created no variable; the project is not saved: ",
                      "A futás nem hozott létre változót; a projekt nem került mentésre: ")
              << target << '\n';
  } else if (!target.empty() && !SaveProject(ws, target)) {
    std::cerr << Pick(language, "Can't write ", "Nem írható: ") << target << '\n';
    return 1;
  }
  const std::string report = LastReportPath(programFolder, format);
  if (!o.out.empty()) {
    std::error_code ec;
    std::filesystem::copy_file(report, o.out, std::filesystem::copy_options::overwrite_existing, ec);
    if (ec) {
      std::cerr << Pick(language, "Can't write ", "Nem írható: ") << o.out << '\n';
      return 1;
    }
    return 0;
  }
  std::ifstream in(report, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  std::cout << FromReportEncoding(bytes.str());
  return 0;
}

}  // namespace

void RegisterRunCommand(CLI::App& app, CliContext& context) {
  auto o = std::make_shared<RunOptions>();
  auto* cmd = app.add_subcommand("run", "Run an analysis on a project and print its report");
  cmd->add_option("project", o->project, "The project file (.msw)")->required();
  cmd->add_option("--command", o->command, "The command code of the analysis (see 'commands')")
      ->required();
  cmd->add_option("--vars", o->vars, "The selected (dependent, X) variables, by short name")->delimiter(',');
  cmd->add_option("--y", o->y, "The Y variables of the relationship dialog")->delimiter(',');
  cmd->add_option("--group", o->group, "The grouping variables (one or two)")->delimiter(',');
  cmd->add_option("--cov", o->cov, "The covariate, or the case code variable")->delimiter(',');
  cmd->add_option("--exclude", o->exclude, "Variables excluded from the relationship dialog's roles")->delimiter(',');
  cmd->add_option("--set", o->set, "A dialog parameter NAME=VALUE, or NAME:VARIABLE=VALUE per variable (see 'commands')");
  cmd->add_option("--cond", o->cond, "The conditional grouping variable");
  cmd->add_option("--format", o->format, "Report format")->check(CLI::IsMember({"text", "html"}));
  cmd->add_option("--out", o->out, "Copy the report file here instead of printing it");
  cmd->add_option("--save", o->save, "Write the project with the variables the run created to this file (.msw)");
  cmd->add_flag("--save-in-place", o->saveInPlace, "Write the project with the variables the run created back to its file");
  cmd->callback([&context, o] { context.exitCode = Run(context, *o); });
}

}  // namespace tarvika::cli
