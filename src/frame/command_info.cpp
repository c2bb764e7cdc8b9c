#include "frame/command_info.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace tarvika {

const DialogInfo& Dialog(DialogKind kind) {
  static const DialogInfo dialogs[] = {
      {DialogKind::SingleSample, "TKijelolForm", "KijelolForm", "analysis.single"},
      {DialogKind::Groups, "TK20Form", "K20Form", "analysis.groups"},
      {DialogKind::Relations, "TK31Form", "K31Form", "analysis.relations"},
      {DialogKind::Pattern, "TVorelDesForm", "VorelDesForm", "analysis.pattern"},
  };
  return dialogs[static_cast<int>(kind)];
}

bool CommandInfo::Uses(std::string_view parameter) const {
  return std::find(parameters.begin(), parameters.end(), parameter) != parameters.end();
}

CommandTable::CommandTable(std::vector<CommandInfo> rows) : rows_(std::move(rows)) {
  // A row that names a parameter its dialog doesn't have is a mistake in the table.
  for (const CommandInfo& c : rows_) {
    for (std::string_view name : c.parameters) {
      if (FindParameter(c.dialog, name) == nullptr) {
        throw std::logic_error("command " + std::to_string(c.code) + " names an unknown parameter " + std::string(name));
      }
    }
  }
}

const CommandInfo* CommandTable::Find(int code) const {
  for (const CommandInfo& c : rows_) {
    if (c.code == code) return &c;
  }
  return nullptr;
}

std::vector<const CommandInfo*> CommandTable::ListOf(DialogKind dialog) const {
  std::vector<const CommandInfo*> list;
  for (const CommandInfo& c : rows_) {
    if (c.dialog == dialog && c.offered) list.push_back(&c);
  }
  return list;
}

bool CommandTable::MenuEntryHasBuiltCommand(std::string_view menuCommand) const {
  return std::any_of(rows_.begin(), rows_.end(), [&](const CommandInfo& c) {
    return c.offered && c.Built() && Dialog(c.dialog).menuCommand == menuCommand;
  });
}

}  // namespace tarvika
