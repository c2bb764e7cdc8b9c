#include "lang/help_files.h"

#include <charconv>
#include <filesystem>
#include <fstream>

#include "lang/language_files.h"

namespace tarvika {

std::map<int, std::string> LoadCommandHints(const std::string& programFolder, Language lang) {
  std::map<int, std::string> hints;
  std::ifstream in(std::filesystem::path(programFolder) / "language" / std::string(LanguageFileStem(lang)) / "help" /
                   "alaps.inf");
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::size_t eq = line.find('=');
    int code = 0;
    if (eq == std::string::npos || std::from_chars(line.data(), line.data() + eq, code).ec != std::errc()) continue;
    hints[code] = line.substr(eq + 1);
  }
  return hints;
}

}  // namespace tarvika
