#pragma once
// The small settings files of the program folder: lines of the form "key=value;".
// "Tarvika.cfg" holds the language and a version stamp, "r_path.cfg" the R folder and the
// font size of the grids.

#include <optional>
#include <string>

#include "lang/language.h"

namespace tarvika {

struct ProgramSettings {
  Language language = Language::Hungarian;  // "nyelv": "angol" is English, anything else Hungarian
  std::string lastModYear, lastModMonth, lastModDay, versionNumber;  // kept as text, written back
  std::string rProgramPath;
  std::optional<int> fontSize;
};

inline constexpr const char* kConfigFile = "Tarvika.cfg";
inline constexpr const char* kRPathFile = "r_path.cfg";

// Reads "Tarvika.cfg"; a missing file leaves the defaults (Hungarian).
void ReadConfig(const std::string& programFolder, ProgramSettings& settings);
// Reads "r_path.cfg". A "font_size" that is no whole number is an error (an empty one means
// that none was set): the message is returned and the settings keep what was read before
// that line.
std::optional<std::string> ReadRPathFile(const std::string& programFolder, ProgramSettings& settings);

bool WriteConfig(const std::string& programFolder, const ProgramSettings& settings);
bool WriteRPathFile(const std::string& programFolder, const ProgramSettings& settings);

}  // namespace tarvika

