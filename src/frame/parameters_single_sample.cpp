// The parameters of the single-sample dialog (TKijelolForm): kinds, defaults, bounds and captions.
// Which commands read which of them is said by the command table.

#include "frame/dialog_parameters.h"

namespace tarvika {

const std::vector<ParameterDefinition>& SingleSampleParameters() {
  using K = ParameterKind;
  static const std::vector<ParameterDefinition> definitions = {
      {"confidenceIndex", K::Integer, "1", 0, 2, {}, "Confidence % (0: 90, 1: 95, 2: 99)", "Megbízhatóság % (0: 90, 1: 95, 2: 99)", false, 108},
      {"trimmingPercent", K::Integer, "0", 0, 25, {}, "Trimming %", "Trimmelés %", false, 109},
      {"classMultiplier", K::Integer, "1", 1, 6, {}, " Class number multiplier ", " Osztályszám-szorzó ", false, 110},
      {"testEqualFrequencies", K::Flag, "off", 0, 0, {},
       "Test equality of theoretical frequencies for group.def. variables",
       "Az elméleti gyakoriságok egyenlőségének tesztelése csop.def. változókra", false, 111},
      {"binarize", K::Flag, "off", 0, 0, {}, "Binarization", "Binarizálás", false, 112},
      {"percentile", K::Flag, "off", 0, 0, {}, "Percentile variables", "Percentilis változók", false, 113},
      {"saveStandardized", K::Toggle, kNo, 0, 0, {}, "Save selected...", "Kijelöltek mentése...", false, 114},
      {"standardizedKind", K::Integer, "1", 1, 2, {}, "1: Ordinary..., 2: T-scale...", "1: Szokásos..., 2: T-skála..."},
      {"scaleType", K::Choice, "continuous", 0, 0, {"continuous", "discrete", "group.def."}, "Scale type",
       "Skálatípus", true, 117},
      {"hypotheticalValue", K::Number, "1", 0, 0, {}, "Hypothetical value", "Hipotetikus érték", true, 118},
  };
  return definitions;
}

}  // namespace tarvika
