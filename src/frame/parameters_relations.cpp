// The parameters of the relationship dialog (TK31Form): kinds, defaults, bounds and captions.
// Which commands read which of them is said by the command table.

#include "frame/dialog_parameters.h"

namespace tarvika {

const std::vector<ParameterDefinition>& RelationsParameters() {
  using K = ParameterKind;
  static const std::vector<ParameterDefinition> definitions = {
      {"pairing", K::Choice, "Cross", 0, 0, {"Cross", "Pair"}, "X-Y correspondence", "X-Y megfeleltetés"},
      {"confidence", K::Choice, "95", 0, 0, {"90", "95", "99"}, "Confidence %", "Megbízhatóság %"},
      {"trimmingPercent", K::Integer, "0", 0, 25, {}, "Trimming %", "Trimmelés %"},
      {"localCorrelations", K::Toggle, kNo, 0, 0, {}, "Compute local correlations:", "Lokális korrelációk számítása:"},
      {"localRange", K::Integer, "0", -3, 9, {}, "size of the local range", "a lokális tartomány mérete"},
      {"bivariatePlot", K::Toggle, kNo, 0, 0, {}, "Prepare Bivariate Plot:", "Pontdiagram készítése:"},
      {"correlationType", K::Choice, "Pearson r", 0, 0, {"Pearson r", "Spearman rho", "Kendall tau"},
       " Type of correlation measure", " A korrelációs mérték típusa"},
      {"listCorrelations", K::Toggle, kNo, 0, 0, {}, "Korrelációk listázása csökkenő/növekvő sorrendben:",
       "Korrelációk listázása csökkenő/növekvő sorrendben:"},
      {"listLength", K::Integer, "100", 3, 2000, {}, "list length", "a lista hossza"},
      {"listByAbsoluteValue", K::Flag, "on", 0, 0, {}, "by absolute value", "abszolút érték szerint"},
      {"listDescending", K::Flag, "on", 0, 0, {}, "in descending order", "csökkenő sorrendben"},
      {"listPValues", K::Flag, "off", 0, 0, {}, "List p-values", "p-értékek listázása"},
      {"basicStatistics", K::Flag, "off", 0, 0, {}, "Alapstatisztikák kilistázása", "Alapstatisztikák kilistázása"},
      {"compareConditionalGroups", K::Flag, "off", 0, 0, {}, "Feltételes csoportok összehasonlítása",
       "Feltételes csoportok összehasonlítása"},
      {"significantOnly", K::Flag, "off", 0, 0, {}, "List results only for variables significantly discriminating groups",
       "Csak a csoportokat szignifikánsan megkülönböztető változók eredményeinek listázása"},
      {"significanceLevel", K::Integer, "1", 0, 2, {}, "Level of significance (0: 10%, 1: 5%, 2: 1%)",
       "Szignifikanciaszint (0: 10%, 1: 5%, 2: 1%)"},
      {"forced", K::Flag, "off", 0, 0, {}, "Enter all variables", "Minden változó bevonása"},
      {"enterF", K::Number, "3.84", 0, 0, {}, "F to enter", "Belépési F"},
      {"saveRegression", K::Toggle, kNo, 0, 0, {}, "Save regression estimation:", "Regressziós becslés mentése:"},
      {"regressionName", K::Text, "RegVar", 0, 0, {}, "Name of regression variable:", "A regressziós változó neve:"},
      {"expectedFrequencies", K::Toggle, kNo, 0, 0, {}, "Table of expected frquencies:", "Várt gyakoriságok táblázata:"},
      {"rowPercents", K::Toggle, kNo, 0, 0, {}, "Table of row persents:", "Sorszázalékok táblázata:"},
      {"columnPercents", K::Toggle, kNo, 0, 0, {}, "Table of column percents:", "Oszlopszázalékok táblázata:"},
      {"totalPercents", K::Toggle, kNo, 0, 0, {}, "Table of total percents:", "Teljes százalékok táblázata:"},
      {"monotonicityMeasures", K::Toggle, kNo, 0, 0, {}, "Monotonocity measures:", "Monotonitási mutatók:"},
      {"predictionMeasures", K::Toggle, kNo, 0, 0, {}, "Prediction measures:", "Predikciós mutatók:"},
      {"compareColumns", K::Toggle, kNo, 0, 0, {}, "Compare columns:", "Oszlopok összehasonlítása:"},
      {"cohenKappa", K::Toggle, kNo, 0, 0, {}, "Cohen interrater reliability:", "Cohen-féle megbízhatóság:"},
      {"jaccardMatrix", K::Toggle, kNo, 0, 0, {},
       "Matrix of Jaccard proximity measure for selected binary variables:",
       "A kijelölt bináris változók Jaccard-hasonlósági mátrixa:"},
      {"scaleName", K::Text, "Scale", 0, 0, {}, "Scale name:", "A skála neve:"},
      {"saveScale", K::Toggle, kNo, 0, 0, {}, "Save scale:", "Skála mentése:"},
      {"itemMin", K::Integer, "1", -1000000, 1000000, {}, "item minimum:", "item minimum:"},
      {"itemMax", K::Integer, "5", -1000000, 1000000, {}, "item maximum:", "item maximum:"},
      {"convertNegativeItems", K::Flag, "off", 0, 0, {}, "Convert negative items", "Negatív itemek átfordítása"},
      {"sociometric", K::Flag, "off", 0, 0, {}, "Sociometric questionnaire", "Szociometriai kérdőív"},
  };
  return definitions;
}

}  // namespace tarvika
