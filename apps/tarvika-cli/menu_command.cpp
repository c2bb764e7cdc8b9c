// tarvika-cli menu: the main menu tree with the command each entry triggers.

#include <fmt/format.h>

#include <functional>
#include <iostream>

#include "cli_context.h"
#include "lang/language_files.h"
#include "analyses/command_table.h"
#include "workspace/main_menu.h"
#include "workspace/session.h"

namespace tarvika::cli {

void RegisterMenuCommand(CLI::App& app, CliContext& context) {
  auto* cmd = app.add_subcommand("menu", "Print the main menu tree with the command of each entry");
  cmd->callback([&context] {
    auto session = StartSession(context);
    if (!session) return;
    const Language language = session->ws.language;
    auto texts = LanguageTexts::Load(context.ProgramFolder(), language);
    if (!texts) {
      std::cerr << "The language files are missing from " << context.ProgramFolder() << "/language\n";
      context.exitCode = kInputError;
      return;
    }
    std::function<void(const std::vector<MenuEntry>&, int)> print = [&](const std::vector<MenuEntry>& entries, int depth) {
      for (const MenuEntry& e : entries) {
        std::string caption(texts->Caption(e.tag));
        while (!caption.empty() && caption.back() == ' ') caption.pop_back();
        std::string line = fmt::format("{:{}}{}", "", depth * 2, caption);
        if (!e.command.empty()) {
          line = fmt::format("{:<48} {}{}", line, e.command,
                             MenuEntryIsBuilt(e.command) ? "" : fmt::format("  ({})", UnderConstruction(language)));
        }
        std::cout << line << '\n';
        print(e.children, depth + 1);
      }
    };
    print(MainMenu(), 0);
  });
}

}  // namespace tarvika::cli
