#include "workspace/session.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>

#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/project_file.h"

namespace fs = std::filesystem;

namespace tarvika {
namespace {

std::string UpperExtension(const std::string& path) {
  std::string ext = fs::path(path).extension().string();
  if (!ext.empty()) ext.erase(0, 1);
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::toupper(c); });
  return ext;
}

}  // namespace

std::string_view UnderConstruction(Language lang) {
  return Pick(lang, "Sorry, under construction.", "Elnézést, ez a rész még készül.");
}

Session::Session(UserChannel& user) : ws(user, Language::Hungarian, '.') {}

Session::~Session() {
  if (lockFd_ >= 0) close(lockFd_);
}

std::string Session::ProgramPath(std::string_view relative) const {
  return (fs::path(ws.programFolder) / fs::path(std::string(relative))).string();
}

bool Session::AcquireInstanceLock() {
  lockFd_ = open(ProgramPath("tarvika.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (lockFd_ < 0) return true;  // a read-only folder can't hold the lock; don't refuse to start
  if (flock(lockFd_, LOCK_EX | LOCK_NB) == 0) return true;
  close(lockFd_);
  lockFd_ = -1;
  return false;
}

std::string Session::FreeProjectPath(int limit) const {
  for (int n = 1; n <= limit; ++n) {
    std::string path = ProgramPath(fmt::format("dat/new_{}.msw", n));
    if (!fs::exists(path)) return path;
  }
  return ProgramPath(fmt::format("dat/new_{}.msw", limit));
}

StartResult Session::StartUp(const StartOptions& options) {
  ws.typeControl = false;
  ws.dataChanged = false;
  ws.programFolder = options.programFolder.empty() ? "." : options.programFolder;

  // The language of the settings file is known before anything can fail.
  ReadConfig(ws.programFolder, settings);
  const Language language = options.language.value_or(settings.language);
  ws.language = language;

  if (!fs::is_directory(ProgramPath("stattab"))) {
    ws.user.Tell(ws.Text(" The tarvika.exe is not in its natural place!\r\nMove it to the tarvika folder!\r\nThe Tarvika terminates.",
                         " Nincs a helyén a tarvika.exe!\r\nMozgassa vissza a tarvika mappába!\r\nA program kilép."));
    return StartResult::TablesMissing;
  }
  if (options.singleInstance && !AcquireInstanceLock()) {
    ws.user.Tell(ws.Text("Tarvika is running already.", "A Tarvika már fut."));
    return StartResult::AlreadyRunning;
  }
  dataFolder = options.fileToOpen ? fs::path(*options.fileToOpen).parent_path().string() : ws.programFolder;

  std::error_code ec;
  for (const char* folder : {"dat", "output", "agents", "aktualis", "collect", "distribute", "html", "mail", "upload", "undo"}) {
    fs::create_directories(ProgramPath(folder), ec);
  }
  bool deleteFailed = false;
  for (int n = 1; n <= 101; ++n) {
    for (const char* stem : {"zuli_tot", "zuli_akt"}) {
      fs::path copy = ProgramPath(fmt::format("output/{}{}.xls", stem, n));
      if (fs::exists(copy, ec) && !fs::remove(copy, ec)) deleteFailed = true;
    }
  }
  if (deleteFailed) {
    ws.user.Tell(ws.Text("A file intended to be deleted is open hence it cannot be deleted",
                         "Egy törlésre kijelölt fájl nyitva van, ezért nem törölhető"));
  }

  std::string project = FreeProjectPath(1000000);
  defaultProjectName = fs::path(project).stem().string();

  ws.Reset();
  LoadDefaultVariable(ws);
  ws.decimalSeparator = options.decimalSeparator ? *options.decimalSeparator : DecimalSeparatorFromLocale();

  if (auto error = ReadRPathFile(ws.programFolder, settings)) {
    ws.user.Tell(*error);
    return StartResult::BadSettings;
  }
  ws.SetLanguage(language);
  ws.SetCurrentFile(project);
  ws.dataChanged = false;

  if (options.fileToOpen) {
    OpenProject(*options.fileToOpen);
    if (UpperExtension(*options.fileToOpen) == "POR") {
      ws.user.Tell(ws.Text("WARNING: SPSS por files can only be opened\r\nfrom within Tarvika with the \"File/Open\" menu item,\r\n"
                           "setting the file type SPSS portable",
                           "FIGYELEM: SPSS por fájlok csak a Tarvikaból nyithatók meg,\r\na Fájl/Megnyit menüpontban, "
                           "SPSS portable fájltípus beállítással"));
    }
  }
  return StartResult::Ready;
}

bool Session::EndSession() {
  if (!ws.IsPristine()) {
    if (ws.user.AskYesNoCancel(ws.Text("Do you want to leave Tarvika?", "Tényleg ki akar lépni a Tarvika-ból?")) != Answer::Yes) {
      return false;
    }
    if (ws.user.AskYesNoCancel(ws.Text("Do you want to save the current data file?",
                                       "El akarja menteni a jelenlegi adatfájlt?")) == Answer::Yes &&
        !SaveCurrentProject()) {
      return false;  // the edits are not on disk: the program goes on
    }
  }
  // Remove the sub-folders of "output" that hold no files.
  std::error_code ec;
  std::vector<fs::path> empty;
  for (const auto& entry : fs::directory_iterator(ProgramPath("output"), ec)) {
    if (!entry.is_directory(ec)) continue;
    bool hasFiles = false;
    for (const auto& inner : fs::recursive_directory_iterator(entry.path(), ec)) {
      if (!inner.is_directory(ec)) {
        hasFiles = true;
        break;
      }
    }
    if (!hasFiles) empty.push_back(entry.path());
  }
  for (const fs::path& folder : empty) fs::remove_all(folder, ec);
  return true;
}

bool Session::NewProject() {
  if (!ws.IsPristine()) {
    Answer a = ws.user.AskYesNoCancel(ws.Text("Do you want to save the current project?", "El akarja menteni aktuális munkáját?"));
    if (a == Answer::Cancel) return false;
    if (a == Answer::Yes && !SaveCurrentProject()) return false;
  }
  ws.Reset();
  ws.SetCurrentFile(FreeProjectPath(1000000));
  proposedVariables = 3;
  proposedCases = 10;
  return true;
}

bool Session::OpenProject(const std::string& path) {
  if (!ws.IsPristine() &&
      ws.user.AskYesNoCancel(ws.Text("Do you want to save current project?", "El akarja menteni az aktuális projektet?")) ==
          Answer::Yes &&
      !SaveCurrentProject()) {
    return false;
  }
  std::string ext = UpperExtension(path);
  if (ext == "MSW") {
    LoadResult result = LoadProject(ws, path);
    if (result == LoadResult::NotAProject || result == LoadResult::Unreadable || result == LoadResult::Refused) {
      return false;
    }
    ValidateDeclarations(ws);
    dataFolder = fs::path(path).parent_path().string();
    return result == LoadResult::Loaded;
  }
  // Text, spreadsheet and SPSS files come through their importers.
  ws.user.Tell(UnderConstruction(ws.language));
  return false;
}

bool Session::SaveCurrentProject() {
  std::string path = ws.CurrentFileName();
  if (path.empty()) {
    auto answer = ws.user.AskText(ws.Text("The project is untitled. Save it as", "A projekt névtelen. Mentés ezen a néven"),
                                  FreeProjectPath(1000000));
    if (!answer || answer->empty()) return false;
    path = *answer;
    if (UpperExtension(path) != "MSW") path += ".msw";
  }
  return SaveProject(ws, path);
}

std::string Session::ProjectNameForImport(const std::string& mswPath) {
  std::string name = mswPath;
  while (fs::exists(name)) {
    std::string question = fmt::format("{}{}{}", ws.Text("The file (", "A fájl ("), name,
                                       ws.Text(") already exists. Do you want to overwrite it?", ") már létezik. Felül akarja írni?"));
    if (ws.user.AskYesNoCancel(question) == Answer::Yes) return name;
    auto answer = ws.user.AskText(ws.Text("Specify a new filename", "Adjon meg egy új fájlnevet"), name);
    if (!answer || answer->empty()) return FreeProjectPath(10000);
    name = *answer;
    if (UpperExtension(name) != "MSW") name += ".msw";
  }
  return name;
}

void Session::ChangeLanguage() {
  settings.language = ws.language == Language::English ? Language::Hungarian : Language::English;
  ws.SetLanguage(settings.language);
  WriteConfig(ws.programFolder, settings);
  WriteRPathFile(ws.programFolder, settings);
}

bool Session::ChangeDecimalSeparator() {
  auto answer = ws.user.AskText(ws.Text("Decimal separator (. or ,)", "Tizedesjel (. vagy ,)"), std::string(1, ws.decimalSeparator));
  if (!answer) return false;
  if (*answer != "." && *answer != ",") {
    ws.user.Tell(ws.Text("The decimal separator is either \".\" or \",\".", "A tizedesjel \".\" vagy \",\" lehet."));
    return false;
  }
  ws.decimalSeparator = answer->front();
  return true;
}

bool Session::ChangeFontSize() {
  auto answer = ws.user.AskText(ws.Text("Enter a new font size", "Adja meg az új betűméretet"),
                                settings.fontSize ? std::to_string(*settings.fontSize) : "");
  if (!answer) return false;
  auto size = ParseWholeNumber(*answer);
  if (!size || *size <= 0 || *size > 1000) {
    ws.user.Tell(ws.Text("You can only enter a positive integer.", "Csak pozitív egész számot írhat be."));
    return false;
  }
  settings.fontSize = static_cast<int>(*size);
  WriteRPathFile(ws.programFolder, settings);
  return true;
}

}  // namespace tarvika
