#include "cli_context.h"

#include <filesystem>
#include <iostream>

#include "workspace/numbers.h"

namespace tarvika::cli {

void StderrChannel::Tell(std::string_view message) {
  ScriptedChannel::Tell(message);
  std::string text(message);
  for (std::size_t p; (p = text.find("\r\n")) != std::string::npos;) text.replace(p, 2, "\n");
  std::cerr << text << '\n';
}

std::string ExecutableFolder() {
  std::error_code ec;
  auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) return std::filesystem::current_path().string();
  return exe.parent_path().string();
}

Workspace MakeWorkspace(CliContext& context) {
  Workspace ws(context.user, context.language, DecimalSeparatorFromLocale());
  ws.programFolder = context.ProgramFolder();
  return ws;
}

}  // namespace tarvika::cli
