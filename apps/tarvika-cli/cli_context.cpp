#include "cli_context.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "numeric/stat_tables.h"

namespace tarvika::cli {
namespace {

void Print(std::string_view message) {
  std::string text(message);
  for (std::size_t p; (p = text.find("\r\n")) != std::string::npos;) text.replace(p, 2, "\n");
  std::cerr << text << '\n';
}

void PrintAnswer(Language lang, std::string_view answer) {
  std::cerr << "  " << Pick(lang, "Answer taken: ", "A válasz: ") << answer << '\n';
}

std::string_view AnswerWord(Language lang, Answer answer) {
  switch (answer) {
    case Answer::Yes:
      return Pick(lang, "Yes", "Igen");
    case Answer::No:
      return Pick(lang, "No", "Nem");
    case Answer::Cancel:
      break;
  }
  return Pick(lang, "Cancel", "Mégse");
}

// On a terminal one line is rewritten in place; elsewhere each message is a line, and only
// with --progress.
void ShowProgressOnStderr(const CliContext& context, Workspace& ws) {
  bool terminal = ::isatty(STDERR_FILENO) != 0;
  if (!terminal && !context.progress) return;
  ws.hooks.progress = [terminal](std::string_view text, std::string_view) {
    if (terminal) {
      std::cerr << '\r' << text << "\033[K" << std::flush;
    } else if (!text.empty()) {
      std::cerr << text << '\n';
    }
  };
}

// Every table file is there: a run stops before it writes anything, not when an analysis
// first looks for its table.
bool TablesPresent(Workspace& ws) {
  const std::filesystem::path folder = TableFolder(ws.programFolder);
  for (std::string_view name : kTableFiles) {
    try {
      RequireTableFile(folder, name);
    } catch (const MissingTableFile& missing) {
      ws.user.Tell(MissingTableMessage(missing.name(), ws.language));
      return false;
    }
  }
  return true;
}

}  // namespace

void StderrChannel::Tell(std::string_view message) {
  ScriptedChannel::Tell(message);
  if (std::find(printed_.begin(), printed_.end(), message) != printed_.end()) return;
  printed_.emplace_back(message);
  Print(message);
}

std::optional<std::string> StderrChannel::AskText(std::string_view prompt, std::string_view initial) {
  std::optional<std::string> answer = ScriptedChannel::AskText(prompt, initial);
  Print(prompt);
  PrintAnswer(language, answer ? *answer : AnswerWord(language, Answer::Cancel));
  return answer;
}

Answer StderrChannel::AskYesNoCancel(std::string_view question) {
  Answer answer = ScriptedChannel::AskYesNoCancel(question);
  Print(question);
  PrintAnswer(language, AnswerWord(language, answer));
  return answer;
}

std::string ExecutableFolder() {
  std::error_code ec;
  auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) return std::filesystem::current_path().string();
  return exe.parent_path().string();
}

std::optional<Language> CliContext::ChosenLanguage() const {
  if (lang.empty()) return std::nullopt;
  return lang == "en" ? Language::English : Language::Hungarian;
}

std::unique_ptr<Session> StartSession(CliContext& context, Needs needs) {
  auto session = std::make_unique<Session>(context.user);
  StartOptions options;
  options.programFolder = context.ProgramFolder();
  options.language = context.ChosenLanguage();
  ShowProgressOnStderr(context, session->ws);
  StartResult started = session->StartUp(options);
  Workspace& ws = session->ws;
  context.user.language = ws.language;
  if (started == StartResult::TablesMissing) {
    std::cerr << ws.Text("The folder of the statistical tables is missing: ",
                         "Hiányzik a statisztikai táblák mappája: ")
              << TableFolder(ws.programFolder).string() << '\n';
  }
  if (started != StartResult::Ready || (needs == Needs::Tables && !TablesPresent(ws))) {
    context.exitCode = kProgramError;
    return nullptr;
  }
  return session;
}

}  // namespace tarvika::cli
