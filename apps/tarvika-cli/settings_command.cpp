// tarvika-cli settings: the settings of the program folder, shown or changed as the
// Settings menu changes them (language, grid font size), and tarvika-cli default-variable:
// the properties of the default variable ("default.var").

#include <fmt/format.h>

#include <iostream>
#include <memory>

#include "cli_context.h"
#include "workspace/declaration_editors.h"
#include "workspace/session.h"

namespace tarvika::cli {
namespace {

struct SettingsOptions {
  std::string language;
  std::string fontSize;
};

struct DefaultVariableOptions {
  std::string type;
  std::string minimum, maximum;
  int length = 0;
  std::string groupType;
  std::string labels;
  bool change = false;
};

}  // namespace

void RegisterSettingsCommands(CLI::App& app, CliContext& context) {
  auto s = std::make_shared<SettingsOptions>();
  auto* settings = app.add_subcommand("settings", "Show the program's settings, or change them");
  settings->add_option("--language", s->language, "Switch the session language (writes Tarvika.cfg)")
      ->check(CLI::IsMember({"en", "hu"}));
  settings->add_option("--font-size", s->fontSize, "The font size of the grids (writes r_path.cfg)");
  settings->callback([&context, s] {
    auto started = StartSession(context);
    if (!started) return;
    Session& session = *started;
    // The change is made from the stored language, whatever --lang the session runs in.
    Language wanted = s->language == "en" ? Language::English : Language::Hungarian;
    if (!s->language.empty() && wanted != session.settings.language) {
      session.ws.SetLanguage(session.settings.language);
      session.ChangeLanguage();
    }
    if (!s->fontSize.empty()) {
      context.user.QueueText(s->fontSize);
      if (!session.ChangeFontSize()) {
        context.exitCode = kInputError;
        return;
      }
    }
    const ProgramSettings& p = session.settings;
    std::cout << "language: " << (p.language == Language::English ? "en" : "hu") << '\n'
              << "font size: " << (p.fontSize ? std::to_string(*p.fontSize) : "") << '\n'
              << "R folder: " << p.rProgramPath << '\n'
              << "decimal separator: " << session.ws.decimalSeparator << '\n';
  });

  auto d = std::make_shared<DefaultVariableOptions>();
  auto* def = app.add_subcommand("default-variable", "Show the properties of the default variable, or change them");
  def->add_option("--type", d->type, "num, string, date or link")->check(CLI::IsMember({"num", "string", "date", "link"}));
  def->add_option("--min", d->minimum, "Smallest allowed value of a numeric type");
  def->add_option("--max", d->maximum, "Largest allowed value of a numeric type");
  def->add_option("--length", d->length, "Length of a string type (0: any)");
  def->add_option("--group-type", d->groupType, "none, codes or intervals (or their Hungarian words)");
  def->add_option("--labels", d->labels, "Group labels, e.g. \"1=no;/2=yes;/\"");
  def->callback([&context, d, def] {
    auto session = StartSession(context);
    if (!session) return;
    Workspace& ws = session->ws;
    bool change = def->count("--type") + def->count("--min") + def->count("--max") + def->count("--length") +
                      def->count("--group-type") + def->count("--labels") >
                  0;
    if (change) {
      // Properties not given keep their present values.
      TypeEditor type = TypeEditor::FromType(ws.vars.GetCell(kType, 0));
      if (!d->type.empty() && d->type != type.kind) {
        type = TypeEditor{};
        type.kind = d->type;
      }
      if (def->count("--min")) type.minimum = d->minimum;
      if (def->count("--max")) type.maximum = d->maximum;
      if (def->count("--length")) type.length = d->length;
      std::string groupType = d->groupType.empty() ? std::string(ws.vars.GetCell(kGroupType, 0)) : d->groupType;
      std::string labels = def->count("--labels") ? d->labels : std::string(ws.vars.GetCell(kGroupLabels, 0));
      if (!ChangeDefaultVariable(ws, type, groupType, labels)) {
        context.exitCode = kInputError;
        return;
      }
    }
    std::cout << fmt::format("type: {}\ngroup type: {}\ngroup labels: {}\n", ws.vars.GetCell(kType, 0),
                             ws.vars.GetCell(kGroupType, 0), ws.vars.GetCell(kGroupLabels, 0));
  });
}

}  // namespace tarvika::cli
