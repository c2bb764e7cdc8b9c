// tarvika-cli run: one analysis on a project, headless. The request is built as the
// analysis dialog's run command builds it; the report goes to output/ of the program
// folder as always, and to standard output (UTF-8) or a copy in --out.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "cli_context.h"
#include "frame/analysis_request.h"
#include "frame/report_writer.h"
#include "single/single_sample_run.h"
#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/project_file.h"
#include "workspace/settings.h"
#include "workspace/workspace.h"

namespace tarvika::cli {
namespace {

struct RunOptions {
  std::string project;
  int command = 0;
  std::vector<std::string> vars;
  std::string cond;
  std::string lang;
  std::string format = "text";
  std::string out;
};

int InputError(std::string_view message) {
  std::cerr << message << '\n';
  return kInputError;
}

int Run(CliContext& context, const RunOptions& o) {
  const std::string programFolder = context.ProgramFolder();
  Language language = o.lang == "en" ? Language::English : Language::Hungarian;
  if (o.lang.empty()) {
    ProgramSettings settings;
    ReadConfig(programFolder, settings);
    language = settings.language;
  }
  if (o.command < 11 || o.command > 16) {
    return InputError(std::string(Pick(language, "Unknown command: ", "Ismeretlen parancs: ")) + std::to_string(o.command));
  }

  Workspace ws(context.user, language, DecimalSeparatorFromLocale());
  ws.programFolder = programFolder;
  std::size_t toldBefore = context.user.told.size();
  LoadResult loaded = LoadProject(ws, o.project);
  if (loaded != LoadResult::Loaded) {
    if (context.user.told.size() == toldBefore) {
      std::cerr << Pick(language, "The project can't be read: ", "A projekt nem olvasható: ") << o.project << '\n';
    }
    return kInputError;
  }
  ValidateDeclarations(ws);

  PreparedRun run = PrepareSingleSampleRun(ws, {o.command, o.vars, o.cond, {}, {}});
  if (!run.ok()) return InputError(run.error);

  ReportFormat format = o.format == "html" ? ReportFormat::Html : ReportFormat::Text;
  if (!SingleSampleRun(ws, run.request, format)) {
    std::cerr << Pick(language, "The report can't be written: ", "A jelentés nem írható: ")
              << LastReportPath(programFolder, format) << '\n';
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
  cmd->add_option("--command", o->command, "The analysis: 11 basic descriptive statistics (11-16 single sample)")
      ->required();
  cmd->add_option("--vars", o->vars, "The selected variables, by short name")->delimiter(',');
  cmd->add_option("--cond", o->cond, "The conditional grouping variable");
  cmd->add_option("--lang", o->lang, "Language of the report (default: that of Tarvika.cfg)")
      ->check(CLI::IsMember({"en", "hu"}));
  cmd->add_option("--format", o->format, "Report format")->check(CLI::IsMember({"text", "html"}));
  cmd->add_option("--out", o->out, "Copy the report file here instead of printing it");
  cmd->callback([&context, o] { context.exitCode = Run(context, *o); });
}

}  // namespace tarvika::cli
