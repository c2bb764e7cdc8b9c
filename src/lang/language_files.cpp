#include "lang/language_files.h"

#include <filesystem>

#include "lang/input_file.h"

namespace tarvika {

std::string_view LanguageFileStem(Language lang) { return Pick(lang, "angol", "magyar"); }

std::string LanguageBase(const std::string& programFolder, Language lang) {
  return (std::filesystem::path(programFolder) / "language" / std::string(LanguageFileStem(lang))).string();
}

std::optional<LanguageTexts> LanguageTexts::Load(const std::string& programFolder, Language lang) {
  const std::string base = LanguageBase(programFolder, lang);
  auto captions = ReadLines(base + ".cap", FileEncoding::Utf8);
  if (!captions) return std::nullopt;
  auto hints = ReadLines(base + ".hnt", FileEncoding::Utf8);
  return FromLines(std::move(*captions), hints ? *hints : std::vector<std::string>{});
}

LanguageTexts LanguageTexts::FromLines(std::vector<std::string> captions, const std::vector<std::string>& hintLines) {
  LanguageTexts texts;
  texts.captions_ = std::move(captions);
  for (const std::string& line : hintLines) {
    std::size_t bar = line.find('|');
    Hint h;
    h.shortHint = HintFromFileForm(line.substr(0, bar));
    if (bar != std::string::npos) h.longHint = HintFromFileForm(line.substr(bar + 1));
    texts.hints_.push_back(std::move(h));
  }
  return texts;
}

std::string_view LanguageTexts::Caption(int tag) const {
  if (tag <= 0 || tag >= static_cast<int>(captions_.size())) return {};
  return captions_[tag];
}

const Hint* LanguageTexts::HintOf(int tag) const {
  if (tag <= 0 || tag >= static_cast<int>(hints_.size())) return nullptr;
  return &hints_[tag];
}

std::string HintToFileForm(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
      out.push_back('*');
      ++i;
    } else if (text[i] != '\n') {
      out.push_back(text[i]);
    }
  }
  return out;
}

std::string HintFromFileForm(std::string_view text) {
  std::string out;
  for (char c : text) {
    if (c == '*') {
      out += "\r\n";
    } else {
      out.push_back(c);
    }
  }
  return out;
}

}  // namespace tarvika
