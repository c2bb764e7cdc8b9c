#include "frame/dialog_parameters.h"

#include <algorithm>
#include <fmt/format.h>

#include "lang/utf8.h"
#include "workspace/numbers.h"

namespace tarvika {
namespace {

using K = ParameterKind;

// Older spellings of parameter names, still accepted.
constexpr std::pair<std::string_view, std::string_view> kAliases[] = {
    {"ScaleName", "scaleName"}, {"SaveScale", "saveScale"}, {"ItemMin", "itemMin"},
    {"ItemMax", "itemMax"},     {"ConvertNegativeItems", "convertNegativeItems"},
};

struct ScaleWords {
  std::string_view english, hungarian;
};
constexpr ScaleWords kSingleScales[] = {{"continuous", "folytonos"}, {"discrete", "diszkrét"}, {"group.def.", "csop.def."}};
constexpr ScaleWords kGroupsScales[] = {{"interval", "intervallum"}, {"ordinal", "ordinális"}, {"nominal", "nominális"}};

std::string Trim(std::string_view s) {
  std::size_t b = s.find_first_not_of(' ');
  if (b == std::string_view::npos) return "";
  return std::string(s.substr(b, s.find_last_not_of(' ') - b + 1));
}

}  // namespace

int ToggleValue(std::string_view word) {
  if (word == kYes) return 2;
  if (word == kIfSignificant) return 1;
  return 0;
}

const std::vector<ParameterDefinition>& DialogParameters(DialogKind dialog) {
  switch (dialog) {
    case DialogKind::SingleSample:
      return SingleSampleParameters();
    case DialogKind::Groups:
      return GroupsParameters();
    case DialogKind::Pattern:
      return PatternParameters();
    default:
      return RelationsParameters();
  }
}

const ParameterDefinition* FindParameter(DialogKind dialog, std::string_view name) {
  for (const auto& [old, present] : kAliases) {
    if (name == old) name = present;
  }
  for (const ParameterDefinition& param : DialogParameters(dialog)) {
    if (param.name == name) return &param;
  }
  return nullptr;
}

std::optional<std::string> NormaliseParameterValue(const ParameterDefinition& param, std::string_view value, Language lang,
                                                   std::string* error) {
  std::string v = Trim(value);
  std::string folded = FoldCase(v);
  auto fail = [&](std::string message) -> std::optional<std::string> {
    if (error != nullptr) *error = std::move(message);
    return std::nullopt;
  };
  switch (param.kind) {
    case K::Integer: {
      auto n = ParseWholeNumber(v);
      if (!n || *n < param.minimum || *n > param.maximum) {
        return fail(fmt::format("{}{}{}{}{}{}", param.name, Pick(lang, " must be a whole number from ", " értéke egész szám legyen, "),
                                param.minimum, Pick(lang, " to ", " és "), param.maximum, Pick(lang, ".", " között.")));
      }
      return std::to_string(*n);
    }
    case K::Number: {
      auto x = ParseEitherSeparator(v, '.');
      if (!x) return fail(std::string(param.name) + std::string(Pick(lang, " must be a number.", " értéke szám legyen.")));
      return FormatGeneral(RoundToFourDecimals(*x), '.');
    }
    case K::Toggle:
    case K::ThreeState:
      if (folded == "yes" || folded == "igen") return std::string(kYes);
      if (folded == "no" || folded == "nem") return std::string(kNo);
      if (param.kind == K::ThreeState && (folded == "if signif." || folded == "if signif")) return std::string(kIfSignificant);
      return fail(std::string(param.name) + std::string(Pick(lang, " must be Yes or No.", " értéke Yes vagy No legyen.")));
    case K::Flag:
      if (folded == "on" || folded == "yes" || folded == "1" || folded == "true") return std::string("on");
      if (folded == "off" || folded == "no" || folded == "0" || folded == "false") return std::string("off");
      return fail(std::string(param.name) + std::string(Pick(lang, " must be on or off.", " értéke on vagy off legyen.")));
    case K::Choice:
      for (std::string_view choice : param.choices) {
        if (FoldCase(choice) == folded || FoldCase(TranslateScaleWord(choice, Language::Hungarian)) == folded) {
          return std::string(choice);
        }
      }
      {
        std::string list;
        for (std::string_view choice : param.choices) list += (list.empty() ? "" : ", ") + std::string(choice);
        return fail(std::string(param.name) + std::string(Pick(lang, " must be one of: ", " értéke ezek egyike legyen: ")) + list);
      }
    case K::Text:
      if (v.empty()) return fail(std::string(param.name) + std::string(Pick(lang, " must not be empty.", " nem lehet üres.")));
      return v;
  }
  return fail("?");
}

std::string_view SingleScaleWord(int kind, Language lang) {
  const ScaleWords& w = kSingleScales[std::clamp(kind, 0, 2)];
  return Pick(lang, w.english, w.hungarian);
}

std::string_view GroupsScaleWord(int kind, Language lang) {
  const ScaleWords& w = kGroupsScales[std::clamp(kind, 0, 2)];
  return Pick(lang, w.english, w.hungarian);
}

std::string TranslateScaleWord(std::string_view word, Language lang) {
  for (const auto* table : {kSingleScales, kGroupsScales}) {
    for (int k = 0; k < 3; ++k) {
      if (word == table[k].english || word == table[k].hungarian) return std::string(Pick(lang, table[k].english, table[k].hungarian));
    }
  }
  return std::string(word);
}

Trimming TrimmingFromPercent(int percent) {
  if (percent < 1) return {0.025, false};
  if (percent > 25) return {0.25, true};
  return {percent * 0.01, true};
}

}  // namespace tarvika
