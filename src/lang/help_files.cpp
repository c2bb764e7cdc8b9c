#include "lang/help_files.h"

#include <charconv>

#include "lang/input_file.h"
#include "lang/language_files.h"

namespace tarvika {

std::map<int, std::string> LoadCommandHints(const std::string& programFolder, Language lang) {
  std::map<int, std::string> hints;
  auto lines = ReadLines(LanguageBase(programFolder, lang) + "/help/alaps.inf", FileEncoding::Utf8);
  if (!lines) return hints;
  for (const std::string& line : *lines) {
    std::size_t eq = line.find('=');
    int code = 0;
    if (eq == std::string::npos || std::from_chars(line.data(), line.data() + eq, code).ec != std::errc()) continue;
    hints[code] = line.substr(eq + 1);
  }
  return hints;
}

}  // namespace tarvika
