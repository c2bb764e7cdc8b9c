#pragma once
// The main menu as data: every entry with its captions in both languages and the command
// it triggers. The desktop program builds its menu bar from it; the CLI prints it.

#include <string_view>
#include <vector>

#include "lang/language.h"

namespace tarvika {

struct MenuEntry {
  std::string_view command;  // what the entry triggers; empty for a sub-menu
  std::string_view english;
  std::string_view hungarian;
  std::vector<MenuEntry> children = {};

  std::string_view Caption(Language lang) const { return Pick(lang, english, hungarian); }
};

// The top-level menus in order, each with its entries.
const std::vector<MenuEntry>& MainMenu();

// Whether the work behind a command is built; the others answer "Sorry, under construction.".
bool CommandIsBuilt(std::string_view command);

}  // namespace tarvika
