#pragma once
// The session's data: the two tables, the state beside them, and the seams through which
// the core reaches the person (UserChannel) and the window (progress and report hooks).

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "lang/language.h"
#include "workspace/data_matrix.h"
#include "workspace/text_files.h"
#include "workspace/user_channel.h"
#include "workspace/variable_table.h"

namespace tarvika {

// The workspace limits. Inserting, merging and analyses that add cases or variables refuse
// beyond them.
inline constexpr int kMaxCases = 1000000;
inline constexpr int kMaxVariables = 1000;
inline constexpr int kShortNameLength = 8;

// Hooks the window fills; without a window they do nothing (or go to stderr in the CLI).
struct WindowHooks {
  // A running message on the status line of the named window; an empty text restores it.
  std::function<void(std::string_view text, std::string_view window)> progress;
  // The answer to a progress message of an analysis: true when the person asked to cancel.
  std::function<bool()> cancelAsked;
  // Hands a finished report file to the viewer.
  std::function<void(const std::string& path)> showReport;
};

class Workspace {
 public:
  Workspace(UserChannel& user, Language language, char decimalSeparator);

  DataMatrix data;
  VariableTable vars;

  UserChannel& user;
  WindowHooks hooks;

  // The program folder: settings files ("default.var", "last.mod"), "output", "stattab".
  std::string programFolder = ".";

  Language language;
  // Every numeric string in the tables uses it (the "Decimal separator" setting).
  char decimalSeparator;
  // The type control checks typed cells on leaving them; off at start-up.
  bool typeControl = false;
  // More than one: a project load cuts its lines, and an analysis computes its variables
  // or pairs, on two threads; the tables and the reports are the same either way.
  int workThreads = 2;

  // The window title, "Tarvika: " plus the path of the project. It is the authority for the
  // current file name.
  std::string title = "Tarvika: ";
  // The project path with "_imp" before the extension: where derived files are suggested.
  std::string suggestedOutputFile;
  bool dataChanged = false;
  bool busy = false;

  // The project file as it was when this workspace last read or wrote it (links followed):
  // a save over it refuses when another program has changed or replaced it since.
  std::string knownFile;
  std::optional<FileIdentity> knownFileIdentity;

  int NumberOfVariables() const { return data.NumberOfVariables(); }
  int NumberOfCases() const { return data.NumberOfCases(); }

  // The path after the first blank of the title; empty while the project is untitled.
  std::string CurrentFileName() const;
  void SetCurrentFile(const std::string& path);

  // Empties the workspace to the fresh state: one variable "var_1", one empty case.
  void Reset();

  // A fresh workspace that nobody has touched needs no save question.
  bool IsPristine() const;

  // Rewrites the titles and translates the stored group type words into the language.
  void SetLanguage(Language lang);

  // Messages in the session language.
  std::string_view Text(std::string_view english, std::string_view hungarian) const {
    return Pick(language, english, hungarian);
  }
  void ShowProgress(std::string_view text, std::string_view window = "MainForm") const {
    if (hooks.progress) hooks.progress(text, window);
  }
};

}  // namespace tarvika
