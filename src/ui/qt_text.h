#pragma once
// Text between the core (UTF-8 std::string) and Qt (QString), and the captions of
// controls by their tag in the language files.

#include <QString>

#include <string>
#include <string_view>

#include "lang/language.h"
#include "lang/language_files.h"

namespace tarvika {

inline QString ToQt(std::string_view s) { return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size())); }
inline std::string ToStd(const QString& s) { return s.toStdString(); }

// The caption of a control's tag; the designed text (the fallback) when the file has none.
inline QString TagCaption(const LanguageTexts* texts, int tag, std::string_view fallback = {}) {
  std::string_view caption = texts != nullptr ? texts->Caption(tag) : std::string_view();
  return ToQt(caption.empty() ? fallback : caption);
}

// The tool tip of a tag: the short hint, then the long one below it.
inline QString TagHint(const LanguageTexts* texts, int tag) {
  const Hint* hint = texts != nullptr ? texts->HintOf(tag) : nullptr;
  if (hint == nullptr || (hint->shortHint.empty() && hint->longHint.empty())) return {};
  QString text = ToQt(hint->shortHint);
  if (!hint->longHint.empty()) text += "\n" + ToQt(hint->longHint).replace("\r\n", "\n");
  return text;
}

}  // namespace tarvika
