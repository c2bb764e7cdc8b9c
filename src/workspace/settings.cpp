#include "workspace/settings.h"

#include <filesystem>

#include "lang/input_file.h"
#include "workspace/numbers.h"
#include "workspace/text_files.h"

namespace tarvika {

namespace {
std::string InFolder(const std::string& folder, const char* name) {
  return (std::filesystem::path(folder) / name).string();
}
}  // namespace

void ReadConfig(const std::string& programFolder, ProgramSettings& settings) {
  settings.language = Language::Hungarian;
  auto lines = ReadLines(InFolder(programFolder, kConfigFile), FileEncoding::Windows1250);
  if (!lines) return;
  for (const std::string& line : *lines) {
    std::string key = KeyOf(line);
    std::string value(ValueOf(line));
    if (key == "nyelv") settings.language = value == "angol" ? Language::English : Language::Hungarian;
    if (key == "LastModEv") settings.lastModYear = value;
    if (key == "LastModHo") settings.lastModMonth = value;
    if (key == "LastModNap") settings.lastModDay = value;
    if (key == "VerNum") settings.versionNumber = value;
  }
}

std::optional<std::string> ReadRPathFile(const std::string& programFolder, ProgramSettings& settings) {
  auto lines = ReadLines(InFolder(programFolder, kRPathFile), FileEncoding::Windows1250);
  if (!lines) return std::nullopt;
  for (const std::string& line : *lines) {
    std::string key = KeyOf(line);
    std::string value(ValueOf(line));
    if (key == "R_prog_path") settings.rProgramPath = value;
    // An empty size (the line a language change writes when none was set) gives none.
    if (key == "font_size" && !value.empty()) {
      auto size = ParseWholeNumber(value);
      if (!size || *size <= 0 || *size > 1000) {
        return "r_path.cfg: font_size=" + value + " is not a positive whole number.";
      }
      settings.fontSize = static_cast<int>(*size);
    }
  }
  return std::nullopt;
}

bool WriteConfig(const std::string& programFolder, const ProgramSettings& settings) {
  return WriteTextLines(InFolder(programFolder, kConfigFile),
                        {settings.language == Language::English ? "nyelv=angol;" : "nyelv=magyar;",
                         "LastModEv=" + settings.lastModYear + ";", "LastModHo=" + settings.lastModMonth + ";",
                         "LastModNap=" + settings.lastModDay + ";", "VerNum=" + settings.versionNumber + ";"});
}

bool WriteRPathFile(const std::string& programFolder, const ProgramSettings& settings) {
  std::string font = settings.fontSize ? std::to_string(*settings.fontSize) : "";
  return WriteTextLines(InFolder(programFolder, kRPathFile),
                        {"font_size=" + font + ";", "R_prog_path=" + settings.rProgramPath + ";"});
}

}  // namespace tarvika
