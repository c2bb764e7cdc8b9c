// tarvika-cli commands: every analysis command with its dialog, title and parameters.

#include <fmt/format.h>

#include <iostream>

#include "analyses/command_table.h"
#include "cli_context.h"
#include "frame/analysis_dialogs.h"
#include "workspace/session.h"

namespace tarvika::cli {
namespace {

std::string_view KindWord(ParameterKind kind) {
  switch (kind) {
    case ParameterKind::Integer:
      return "whole number";
    case ParameterKind::Number:
      return "number";
    case ParameterKind::Toggle:
      return "Yes/No";
    case ParameterKind::ThreeState:
      return "Yes/No/If signif.";
    case ParameterKind::Flag:
      return "on/off";
    case ParameterKind::Choice:
      return "one of";
    case ParameterKind::Text:
      return "name";
  }
  return "";
}

std::string Describe(const ParameterDefinition& param) {
  std::string text = fmt::format("{}{}: {}", param.name, param.perVariable ? ":VARIABLE" : "", KindWord(param.kind));
  if (param.kind == ParameterKind::Integer) text += fmt::format(" {} to {}", param.minimum, param.maximum);
  if (param.kind == ParameterKind::Choice) {
    for (std::size_t i = 0; i < param.choices.size(); ++i) text += fmt::format("{}{}", i ? ", " : " ", param.choices[i]);
  }
  std::string def(param.defaultValue);
  text += fmt::format("; default \"{}\"", def);
  return text;
}

}  // namespace

void RegisterCommandsCommand(CLI::App& app, CliContext& context) {
  auto* cmd = app.add_subcommand("commands", "List the analysis commands with their dialogs and parameters");
  cmd->callback([&context] {
    auto session = StartSession(context);
    if (!session) return;
    const Language lang = session->ws.language;
    for (const CommandInfo& c : AllCommands().Rows()) {
      std::cout << fmt::format("{}  {}  {}{}\n", c.code, Dialog(c.dialog).formName, c.Entry(lang),
                               !c.offered  ? Pick(lang, "  (not offered)", "  (nem érhető el)")
                               : c.Built() ? ""
                                           : fmt::format("  ({})", UnderConstruction(lang)));
      for (std::string_view name : c.parameters) std::cout << "      --set " << Describe(*FindParameter(c.dialog, name)) << '\n';
    }
  });
}

}  // namespace tarvika::cli
