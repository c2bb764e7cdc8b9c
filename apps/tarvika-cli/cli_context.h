#pragma once
// What every command of the headless program shares: the program folder, the session
// language, and a UserChannel that writes to standard error and answers from --answer.

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

#include "lang/language.h"
#include "workspace/user_channel.h"
#include "workspace/workspace.h"

namespace tarvika::cli {

// Exit status of an input error (bad file, unknown variable, bad parameter).
inline constexpr int kInputError = 2;

// Tells on standard error; asks by taking the next prepared answer, else cancels.
class StderrChannel : public ScriptedChannel {
 public:
  StderrChannel() : ScriptedChannel(Answer::Cancel) {}
  void Tell(std::string_view message) override;
};

// The folder that holds the executable.
std::string ExecutableFolder();

struct CliContext {
  std::string programDir;  // the executable's folder unless --program-dir is given
  StderrChannel user;
  Language language = Language::English;  // --lang hu for Hungarian
  bool progress = false;  // --progress: progress lines on standard error even when it is no terminal
  int exitCode = 0;  // set by the command that ran

  std::string ProgramFolder() const { return programDir.empty() ? ExecutableFolder() : programDir; }
};

void RegisterMenuCommand(CLI::App& app, CliContext& context);
void RegisterCommandsCommand(CLI::App& app, CliContext& context);
void RegisterRunCommand(CLI::App& app, CliContext& context);
void RegisterInfo(CLI::App& app, CliContext& context);
void RegisterResave(CLI::App& app, CliContext& context);
void RegisterSettingsCommands(CLI::App& app, CliContext& context);

// A fresh workspace of the session: its language (or the one given), the machine's decimal
// separator, the program folder, the person on standard error, and progress on standard
// error for long work (a line rewritten in place on a terminal).
Workspace MakeWorkspace(CliContext& context, std::optional<Language> language = std::nullopt);
void ShowProgressOnStderr(CliContext& context, Workspace& ws);

}  // namespace tarvika::cli
