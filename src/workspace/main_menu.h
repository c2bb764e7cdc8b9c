#pragma once
// The main menu as data: every entry with the command it triggers and its tag, the line of
// its caption in the language files. The desktop program builds its menu bar from it; the
// CLI prints it.

#include <string_view>
#include <vector>


namespace tarvika {

struct MenuEntry {
  std::string_view command;  // what the entry triggers; empty for a sub-menu
  int tag = 0;
  std::vector<MenuEntry> children = {};
};

// The top-level menus in order, each with its entries.
const std::vector<MenuEntry>& MainMenu();

// Whether the workspace's own work behind a menu entry is built; the others answer "Sorry,
// under construction.". The entries that open analysis dialogs are built when the command
// table has a built command for them (MenuEntryIsBuilt in src/analyses).
bool CommandIsBuilt(std::string_view command);

}  // namespace tarvika
