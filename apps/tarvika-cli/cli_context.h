#pragma once
// What every command of the headless program shares: the program folder, the session
// language, a UserChannel on standard error, and the one start of a session that every
// command goes through.

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>

#include "lang/language.h"
#include "workspace/session.h"
#include "workspace/user_channel.h"
#include "workspace/workspace.h"

namespace tarvika::cli {

// Exit status of an input error (bad file, unknown variable, bad parameter).
inline constexpr int kInputError = 2;
// Exit status when the program folder is not fit to run in (tables missing, bad settings)
// or a report or file could not be written.
inline constexpr int kProgramError = 1;

// Tells on standard error, each message once (the load, the validation and the dialog
// find the same fault and tell it each). Asks by printing the question with the answer
// taken: the next prepared answer, else a cancel.
class StderrChannel : public ScriptedChannel {
 public:
  StderrChannel() : ScriptedChannel(Answer::Cancel) {}
  void Tell(std::string_view message) override;
  std::optional<std::string> AskText(std::string_view prompt, std::string_view initial) override;
  Answer AskYesNoCancel(std::string_view question) override;

  Language language = Language::English;  // of the words of the answers

 private:
  std::vector<std::string> printed_;
};

// The folder that holds the executable.
std::string ExecutableFolder();

struct CliContext {
  std::string programDir;  // the executable's folder unless --program-dir is given
  StderrChannel user;
  std::string lang;        // --lang, before or after the command: "en", "hu" or not given
  bool progress = false;   // --progress: progress lines on standard error even when it is no terminal
  int exitCode = 0;        // set by the command that ran

  std::string ProgramFolder() const { return programDir.empty() ? ExecutableFolder() : programDir; }
  // The language of --lang; without it that of "Tarvika.cfg".
  std::optional<Language> ChosenLanguage() const;
};

void RegisterMenuCommand(CLI::App& app, CliContext& context);
void RegisterCommandsCommand(CLI::App& app, CliContext& context);
void RegisterRunCommand(CLI::App& app, CliContext& context);
void RegisterInfo(CLI::App& app, CliContext& context);
void RegisterResave(CLI::App& app, CliContext& context);
void RegisterSettingsCommands(CLI::App& app, CliContext& context);
void RegisterTransformCommand(CLI::App& app, CliContext& context);
void RegisterRandomCommand(CLI::App& app, CliContext& context);
void RegisterRecodeCommand(CLI::App& app, CliContext& context);
void RegisterCountCommand(CLI::App& app, CliContext& context);
void RegisterImportCommand(CLI::App& app, CliContext& context);
void RegisterExportCommand(CLI::App& app, CliContext& context);

// What a command needs of the program folder beyond what every command needs.
enum class Needs { Settings, Tables };

// The start of every command, as the desktop program starts: "Tarvika.cfg" (its language
// unless --lang is given), the folder of the statistical tables, the folders of the program,
// the default variable and "r_path.cfg"; with Needs::Tables also every table file. The
// session's workspace has the machine's decimal separator and shows progress on standard
// error. nullptr when the program can't run in the folder: the reason is on standard error
// and context.exitCode is kProgramError.
std::unique_ptr<Session> StartSession(CliContext& context, Needs needs = Needs::Settings);

}  // namespace tarvika::cli
