#pragma once
// Captions and hints of the screen, kept in text files per language ("language/angol.cap",
// "language/magyar.cap" and the ".hnt" files beside them), not in the code. Each control
// has a number (its tag); line `tag` of the caption file is its caption, line `tag` of the
// hint file its hint: short hint, "|", long hint, with "*" for a line break.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"

namespace tarvika {

struct Hint {
  std::string shortHint;
  std::string longHint;
};

class LanguageTexts {
 public:
  // Reads both files of the language from "<programFolder>/language"; nullopt when the
  // caption file is missing (a missing hint file gives no hints).
  static std::optional<LanguageTexts> Load(const std::string& programFolder, Language lang);
  static LanguageTexts FromLines(std::vector<std::string> captions, const std::vector<std::string>& hintLines);

  // The caption of a tag; empty for tag 0 and for tags beyond the file, which keep the
  // text the control was designed with.
  std::string_view Caption(int tag) const;
  const Hint* HintOf(int tag) const;

  int CaptionCount() const { return static_cast<int>(captions_.size()); }

 private:
  std::vector<std::string> captions_;
  std::vector<Hint> hints_;
};

// The file form of a hint's text: each CR LF becomes "*", a lone LF is dropped.
std::string HintToFileForm(std::string_view text);
// And back: each "*" becomes CR LF.
std::string HintFromFileForm(std::string_view text);

std::string_view LanguageFileStem(Language lang);  // "angol" or "magyar"
// "<programFolder>/language/angol" or ".../magyar": the base of the language's files.
std::string LanguageBase(const std::string& programFolder, Language lang);

}  // namespace tarvika
