#pragma once
// Text between the core (UTF-8 std::string) and Qt (QString), and the captions of
// controls by their tag in the language files.

#include <QComboBox>
#include <QString>

#include <string>
#include <string_view>

#include "lang/language.h"
#include "lang/language_files.h"
#include "workspace/variable_table.h"

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

// A drop-down of the three group type words of the language, showing the given word's kind.
inline void FillGroupTypeBox(QComboBox* box, Language lang, std::string_view current) {
  box->clear();
  for (GroupKind kind : {GroupKind::None, GroupKind::Codes, GroupKind::Intervals}) box->addItem(ToQt(GroupTypeWord(kind, lang)));
  GroupKind kind = GroupKindOf(current);
  box->setCurrentIndex(kind == GroupKind::Codes ? 1 : kind == GroupKind::Intervals ? 2 : 0);
}

}  // namespace tarvika
