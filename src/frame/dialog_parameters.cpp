#include "frame/dialog_parameters.h"

#include <algorithm>
#include <fmt/format.h>

#include "lang/utf8.h"
#include "workspace/numbers.h"

namespace tarvika {
namespace {

using K = ParameterKind;

const std::vector<ParameterDefinition>& SingleSampleParameters() {
  static const std::vector<ParameterDefinition> definitions = {
      {"confidenceIndex", K::Integer, {12}, "1", 0, 2, {}, "Confidence % (0: 90, 1: 95, 2: 99)", "Megbízhatóság % (0: 90, 1: 95, 2: 99)"},
      {"trimmingPercent", K::Integer, {12, 14}, "0", 0, 25, {}, "Trimming %", "Trimmelés %"},
      {"classMultiplier", K::Integer, {13}, "1", 1, 6, {}, " Class number multiplier ", " Osztályszám-szorzó "},
      {"testEqualFrequencies", K::Flag, {13}, "off", 0, 0, {},
       "Test equality of theoretical frequencies for group.def. variables",
       "Az elméleti gyakoriságok egyenlőségének tesztelése csop.def. változókra"},
      {"binarize", K::Flag, {13}, "off", 0, 0, {}, "Binarization", "Binarizálás"},
      {"percentile", K::Flag, {13}, "off", 0, 0, {}, "Percentile variables", "Percentilis változók"},
      {"saveStandardized", K::Toggle, {15}, kNo, 0, 0, {}, "Save selected...", "Kijelöltek mentése..."},
      {"standardizedKind", K::Integer, {15}, "1", 1, 2, {}, "1: Ordinary..., 2: T-scale...", "1: Szokásos..., 2: T-skála..."},
      {"scaleType", K::Choice, {13}, "continuous", 0, 0, {"continuous", "discrete", "group.def."}, "Scale type",
       "Skálatípus", true},
      {"hypotheticalValue", K::Number, {14}, "1", 0, 0, {}, "Hypothetical value", "Hipotetikus érték", true},
  };
  return definitions;
}

const std::vector<ParameterDefinition>& GroupsParameters() {
  static const std::vector<ParameterDefinition> definitions = {
      {"scaleType", K::Choice, {21, 22}, "interval", 0, 0, {"interval", "ordinal", "nominal"}, "Scale type",
       "Skálatípus", true},
      {"commonScale", K::Integer, {21, 22}, "0", 0, 2, {}, " Common scale type  (0 interval, 1 ordinal, 2 nominal)",
       " Közös skálatípus  (0 intervallum, 1 ordinális, 2 nominális)"},
      {"trimmingPercent", K::Integer, {21, 22, 23}, "0", 0, 25, {}, "Trimming %", "Trimmelés %"},
      {"compareDistributions", K::Toggle, {21}, kNo, 0, 0, {}, "Detailed comparison of distributions    for ordinal scales:",
       "Eloszlások részletes összehasonlítása ordinális skálákra:"},
      {"maxCutpoints", K::Integer, {21}, "10", 3, 25, {}, "Osztópontok maximális száma", "Osztópontok maximális száma"},
      {"significantOnly", K::Flag, {21, 23, 25}, "off", 0, 0, {},
       "List results only for variables significantly discriminating groups",
       "Csak a csoportokat szignifikánsan megkülönböztető változók eredményeinek listázása"},
      {"significanceLevel", K::Integer, {21, 23, 25}, "1", 0, 2, {}, "Level of significance (0: 10%, 1: 5%, 2: 1%)",
       "Szignifikanciaszint (0: 10%, 1: 5%, 2: 1%)"},
      {"trialName", K::Text, {22, 24}, "Trial", 0, 0, {}, "name of trial factor:", "az ismételt tényező neve:"},
  };
  return definitions;
}

const std::vector<ParameterDefinition>& RelationsParameters() {
  static const std::vector<ParameterDefinition> definitions = {
      {"pairing", K::Choice, {31, 32}, "Cross", 0, 0, {"Cross", "Pair"}, "X-Y correspondence", "X-Y megfeleltetés"},
      {"confidence", K::Choice, {31}, "95", 0, 0, {"90", "95", "99"}, "Confidence %", "Megbízhatóság %"},
      {"trimmingPercent", K::Integer, {31}, "0", 0, 25, {}, "Trimming %", "Trimmelés %"},
      {"localCorrelations", K::Toggle, {31}, kNo, 0, 0, {}, "Compute local correlations:", "Lokális korrelációk számítása:"},
      {"localRange", K::Integer, {31}, "0", -3, 9, {}, "size of the local range", "a lokális tartomány mérete"},
      {"bivariatePlot", K::Toggle, {31}, kNo, 0, 0, {}, "Prepare Bivariate Plot:", "Pontdiagram készítése:"},
      {"correlationType", K::Choice, {32}, "Pearson r", 0, 0, {"Pearson r", "Spearman rho", "Kendall tau"},
       " Type of correlation measure", " A korrelációs mérték típusa"},
      {"listCorrelations", K::Toggle, {32}, kNo, 0, 0, {}, "Korrelációk listázása csökkenő/növekvő sorrendben:",
       "Korrelációk listázása csökkenő/növekvő sorrendben:"},
      {"listLength", K::Integer, {32}, "100", 3, 2000, {}, "list length", "a lista hossza"},
      {"listByAbsoluteValue", K::Flag, {32}, "on", 0, 0, {}, "by absolute value", "abszolút érték szerint"},
      {"listDescending", K::Flag, {32}, "on", 0, 0, {}, "in descending order", "csökkenő sorrendben"},
      {"listPValues", K::Flag, {31, 32}, "off", 0, 0, {}, "List p-values", "p-értékek listázása"},
      {"basicStatistics", K::Flag, {31, 32}, "off", 0, 0, {}, "Alapstatisztikák kilistázása", "Alapstatisztikák kilistázása"},
      {"compareConditionalGroups", K::Flag, {31, 32}, "off", 0, 0, {}, "Feltételes csoportok összehasonlítása",
       "Feltételes csoportok összehasonlítása"},
      {"significantOnly", K::Flag, {32}, "off", 0, 0, {}, "List results only for variables significantly discriminating groups",
       "Csak a csoportokat szignifikánsan megkülönböztető változók eredményeinek listázása"},
      {"significanceLevel", K::Integer, {32}, "1", 0, 2, {}, "Level of significance (0: 10%, 1: 5%, 2: 1%)",
       "Szignifikanciaszint (0: 10%, 1: 5%, 2: 1%)"},
      {"forced", K::Flag, {33}, "off", 0, 0, {}, "Enter all variables", "Minden változó bevonása"},
      {"enterF", K::Number, {33}, "3.84", 0, 0, {}, "F to enter", "Belépési F"},
      {"saveRegression", K::Toggle, {31, 33}, kNo, 0, 0, {}, "Save regression estimation:", "Regressziós becslés mentése:"},
      {"regressionName", K::Text, {31, 33}, "RegVar", 0, 0, {}, "Name of regression variable:", "A regressziós változó neve:"},
      {"expectedFrequencies", K::Toggle, {34}, kNo, 0, 0, {}, "Table of expected frquencies:", "Várt gyakoriságok táblázata:"},
      {"rowPercents", K::Toggle, {34}, kNo, 0, 0, {}, "Table of row persents:", "Sorszázalékok táblázata:"},
      {"columnPercents", K::Toggle, {34}, kNo, 0, 0, {}, "Table of column percents:", "Oszlopszázalékok táblázata:"},
      {"totalPercents", K::Toggle, {34}, kNo, 0, 0, {}, "Table of total percents:", "Teljes százalékok táblázata:"},
      {"monotonicityMeasures", K::Toggle, {34}, kNo, 0, 0, {}, "Monotonocity measures:", "Monotonitási mutatók:"},
      {"predictionMeasures", K::Toggle, {34}, kNo, 0, 0, {}, "Prediction measures:", "Predikciós mutatók:"},
      {"compareColumns", K::Toggle, {34}, kNo, 0, 0, {}, "Compare columns:", "Oszlopok összehasonlítása:"},
      {"cohenKappa", K::Toggle, {34}, kNo, 0, 0, {}, "Cohen interrater reliability:", "Cohen-féle megbízhatóság:"},
      {"jaccardMatrix", K::Toggle, {34}, kNo, 0, 0, {},
       "Matrix of Jaccard proximity measure for selected binary variables:",
       "A kijelölt bináris változók Jaccard-hasonlósági mátrixa:"},
      {"ScaleName", K::Text, {35}, "Scale", 0, 0, {}, "Scale name:", "A skála neve:"},
      {"SaveScale", K::Toggle, {35}, kNo, 0, 0, {}, "Save scale:", "Skála mentése:"},
      {"ItemMin", K::Integer, {35}, "1", -1000000, 1000000, {}, "item minimum:", "item minimum:"},
      {"ItemMax", K::Integer, {35}, "5", -1000000, 1000000, {}, "item maximum:", "item maximum:"},
      {"ConvertNegativeItems", K::Flag, {35}, "off", 0, 0, {}, "Convert negative items", "Negatív itemek átfordítása"},
  };
  return definitions;
}

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
    default:
      return RelationsParameters();
  }
}

const ParameterDefinition* FindParameter(DialogKind dialog, std::string_view name) {
  for (const ParameterDefinition& param : DialogParameters(dialog)) {
    if (param.name == name) return &param;
  }
  return nullptr;
}

bool AppliesTo(const ParameterDefinition& param, int command) {
  return std::find(param.commands.begin(), param.commands.end(), command) != param.commands.end();
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
