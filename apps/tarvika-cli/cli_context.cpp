#include "cli_context.h"

#include <unistd.h>

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

void ShowProgressOnStderr(CliContext& context, Workspace& ws) {
  bool terminal = ::isatty(STDERR_FILENO) != 0;
  if (!terminal && !context.progress) return;
  // On a terminal one line is rewritten in place; elsewhere each message is a line.
  ws.hooks.progress = [terminal](std::string_view text, std::string_view) {
    if (terminal) {
      std::cerr << '\r' << text << "\033[K" << std::flush;
    } else if (!text.empty()) {
      std::cerr << text << '\n';
    }
  };
}

Workspace MakeWorkspace(CliContext& context, std::optional<Language> language) {
  Workspace ws(context.user, language.value_or(context.language), DecimalSeparatorFromLocale());
  ws.programFolder = context.ProgramFolder();
  ShowProgressOnStderr(context, ws);
  return ws;
}

}  // namespace tarvika::cli
