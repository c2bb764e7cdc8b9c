#pragma once
// The small settings files of the program folder: lines of the form "key=value;".
// "Tarvika.cfg" holds the language and a version stamp, "r_path.cfg" the R folder and the
// font size of the grids.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"

namespace tarvika {

// The key of a "key=value;" line: all before the first "=", with every "&" dropped; a line
// without "=" has an empty key.
std::string KeyOf(std::string_view line);
// All after the first "=" up to the first ";" after it, or to the end of the line.
std::string ValueOf(std::string_view line);

// The lines of a text file without their line ends (CR LF, LF or CR); nullopt when the file
// cannot be read.
std::optional<std::vector<std::string>> ReadTextLines(const std::string& path);
// Writes the lines with CR LF through a temporary file renamed over the target.
bool WriteTextLines(const std::string& path, const std::vector<std::string>& lines);

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
// Reads "r_path.cfg". A "font_size" that is no whole number is an error: the message is
// returned and the settings keep what was read before that line.
std::optional<std::string> ReadRPathFile(const std::string& programFolder, ProgramSettings& settings);

bool WriteConfig(const std::string& programFolder, const ProgramSettings& settings);
bool WriteRPathFile(const std::string& programFolder, const ProgramSettings& settings);

}  // namespace tarvika

namespace tarvika {

class Workspace;

inline constexpr const char* kDefaultVariableFile = "default.var";

// Reads "default.var" into row 0 of the variable table; a missing file is created with
// "num=0_0;", an empty line and "nincs".
void LoadDefaultVariable(Workspace& ws);
// Writes row 0's type, labels and group type to "default.var".
bool SaveDefaultVariable(const Workspace& ws);

}  // namespace tarvika
