// The parameters of the group comparison dialog (TK20Form): kinds, defaults, bounds and captions.
// Which commands read which of them is said by the command table.

#include "frame/dialog_parameters.h"

namespace tarvika {

const std::vector<ParameterDefinition>& GroupsParameters() {
  using K = ParameterKind;
  static const std::vector<ParameterDefinition> definitions = {
      {"scaleType", K::Choice, "interval", 0, 0, {"interval", "ordinal", "nominal"}, "Scale type",
       "Skálatípus", true},
      {"commonScale", K::Integer, "0", 0, 2, {}, " Common scale type  (0 interval, 1 ordinal, 2 nominal)",
       " Közös skálatípus  (0 intervallum, 1 ordinális, 2 nominális)"},
      {"trimmingPercent", K::Integer, "0", 0, 25, {}, "Trimming %", "Trimmelés %"},
      {"compareDistributions", K::Toggle, kNo, 0, 0, {}, "Detailed comparison of distributions    for ordinal scales:",
       "Eloszlások részletes összehasonlítása ordinális skálákra:"},
      {"maxCutpoints", K::Integer, "10", 3, 25, {}, "Osztópontok maximális száma", "Osztópontok maximális száma"},
      {"significantOnly", K::Flag, "off", 0, 0, {},
       "List results only for variables significantly discriminating groups",
       "Csak a csoportokat szignifikánsan megkülönböztető változók eredményeinek listázása"},
      {"significanceLevel", K::Integer, "1", 0, 2, {}, "Level of significance (0: 10%, 1: 5%, 2: 1%)",
       "Szignifikanciaszint (0: 10%, 1: 5%, 2: 1%)"},
      {"trialName", K::Text, "Trial", 0, 0, {}, "name of trial factor:", "az ismételt tényező neve:"},
  };
  return definitions;
}

}  // namespace tarvika
