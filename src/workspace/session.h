#pragma once
// The life of a session without a screen: start-up (folders, settings, the default
// variable, the language), the New and Open commands, the language and font commands, and
// the end of the session with its questions and clean-up.

#include <optional>
#include <string>
#include <string_view>

#include "workspace/settings.h"
#include "workspace/workspace.h"

namespace tarvika {

// The answer of menu entries whose work is not built yet.
std::string_view UnderConstruction(Language lang);

struct StartOptions {
  std::string programFolder;               // the executable's folder unless told otherwise
  std::optional<std::string> fileToOpen;   // the one file of the command line
  bool singleInstance = false;             // the desktop program refuses a second start
  std::optional<char> decimalSeparator;    // instead of the locale's
  std::optional<Language> language;        // instead of that of "Tarvika.cfg"
};

enum class StartResult { Ready, TablesMissing, AlreadyRunning, BadSettings };

class Session {
 public:
  explicit Session(UserChannel& user);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  Workspace ws;
  ProgramSettings settings;
  std::string dataFolder;           // where the file dialogs start
  std::string defaultProjectName;   // "new_N", the first free name in "dat"
  int proposedVariables = 3;        // the size the dialog for a new file proposes
  int proposedCases = 10;

  StartResult StartUp(const StartOptions& options);

  // The close question and the clean-up; true when the program may close (not after a
  // save that was asked for and failed).
  bool EndSession();
  // "New": false when the person cancelled or the save asked for failed (the workspace stays).
  bool NewProject();
  // "Open": asks to save a touched workspace, then reads the file by its extension. A save
  // that fails stops the command and keeps the workspace.
  bool OpenProject(const std::string& path);
  // Saves to the current file; an untitled project (after a damaged file) asks for a name
  // first. False when refused or when the save failed.
  bool SaveCurrentProject();
  // The project a foreign file becomes: asks before overwriting an existing one.
  std::string ProjectNameForImport(const std::string& mswPath);

  void ChangeLanguage();
  // Asks for the decimal separator of the numbers in the tables ("." or ","); false when
  // refused. The cells keep their text: readers accept either separator.
  bool ChangeDecimalSeparator();
  // Asks for a new grid font size and stores it in "r_path.cfg"; false when refused.
  bool ChangeFontSize();

  std::string ProgramPath(std::string_view relative) const;

 private:
  std::string FreeProjectPath(int limit) const;
  bool AcquireInstanceLock();
  int lockFd_ = -1;
};

}  // namespace tarvika
