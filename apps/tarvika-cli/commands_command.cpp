// tarvika-cli commands: every analysis command with its dialog, title and parameters.

#include <fmt/format.h>

#include <iostream>

#include "analyses/built_analyses.h"
#include "cli_context.h"
#include "frame/analysis_dialogs.h"

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
    for (DialogKind dialog : {DialogKind::SingleSample, DialogKind::Groups, DialogKind::Relations}) {
      std::vector<int> codes = CommandListOrder(dialog);
      if (dialog == DialogKind::SingleSample) codes.push_back(16);
      for (int code : codes) {
        const CommandInfo* c = FindCommand(code);
        bool offered = code != 16;
        bool built = BuiltAnalyses().count(code) > 0;
        std::cout << fmt::format("{}  {}  {}{}\n", code, DialogName(dialog), Pick(lang, c->english, c->hungarian),
                                 !offered ? Pick(lang, "  (not offered)", "  (nem érhető el)")
                                 : built  ? ""
                                          : fmt::format("  ({})", Pick(lang, "Sorry, under construction.",
                                                                       "Elnézést, ez a rész még készül.")));
        for (const ParameterDefinition& param : DialogParameters(dialog)) {
          if (AppliesTo(param, code)) std::cout << "      --set " << Describe(param) << '\n';
        }
      }
    }
  });
}

}  // namespace tarvika::cli
