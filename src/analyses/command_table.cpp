#include "analyses/command_table.h"

#include "frame/parameter_names.h"
#include "groups/one_way_independent.h"
#include "relations/correlation.h"
#include "relations/correlation_matrix.h"
#include "relations/crosstab.h"
#include "relations/item_analysis.h"
#include "relations/multiple_regression.h"
#include "single/single_sample_run.h"
#include "workspace/main_menu.h"

namespace tarvika {

namespace {

using D = DialogKind;
using T = StatTable;
namespace p = param;

std::vector<CommandInfo> Rows() {
  // One row per command, in the order of the dialogs' lists; a row names only what differs
  // from the defaults of CommandInfo.
  return {
      // The single-sample dialog.
      {.code = kBasicStatistics, .dialog = D::SingleSample,
       .english = "Basic descriptive statistics", .hungarian = "Alapstatisztikák",
       .titleEnglish = "Basic descriptive statistics", .titleHungarian = "Alapstatisztikák",
       .analyse = BasicStatistics},
      {.code = kDetailedStatistics, .dialog = D::SingleSample,
       .english = "Detailed statistics", .hungarian = "Részletesebb mintastatisztikák",
       .titleEnglish = "Detailed descriptive statistics", .titleHungarian = "Részletes leíró statisztikák",
       .parameters = {p::kConfidenceIndex.name, p::kTrimmingPercent.name},
       .tables = {T::F},
       .analyse = DetailedStatistics},
      {.code = kFrequencies, .dialog = D::SingleSample,
       .english = "Frequency, histogram", .hungarian = "Gyakoriság, hisztogram",
       .titleEnglish = "Frequencies, histogram", .titleHungarian = "Gyakoriság, hisztogram",
       .scratch = {.attribute = p::kScaleType.name},
       .parameters = {p::kClassMultiplier.name, p::kTestEqualFrequencies.name, p::kBinarize.name, p::kPercentile.name,
                      p::kScaleType.name},
       .tables = {T::F},
       .analyse = Frequencies},
      {.code = kMeanMedianTests, .dialog = D::SingleSample,
       .english = "Tests on the mean and median", .hungarian = "Középértékekre vonatkozó hipotézisvizsgálatok",
       .titleEnglish = "Tests on the mean and the median",
       .titleHungarian = "Változók középértékére vonatkozó hipotézisek vizsgálata",
       .scratch = {.parameter = p::kHypotheticalValue.name},
       .parameters = {p::kTrimmingPercent.name, p::kHypotheticalValue.name},
       .tables = {T::F, T::Wilcoxon, T::Sign},
       .analyse = MeanMedianTests},
      {.code = kNormalityTests, .dialog = D::SingleSample,
       .english = "Test of normality", .hungarian = "Normalitásvizsgálat",
       .titleEnglish = "Test of normality (Null hypothesis: X is normally distributed)",
       .titleHungarian = "Normalitásvizsgálat (a normális eloszlás nullhipotézisének tesztelése)",
       .parameters = {p::kSaveStandardized.name, p::kStandardizedKind.name},
       .tables = {T::F},
       .analyse = NormalityTests},
      {.code = kDistributionFitting, .dialog = D::SingleSample,
       .english = "Distribution fitting", .hungarian = "Eloszlásvizsgálat",
       .titleEnglish = "Distribution fitting", .titleHungarian = "Eloszlásvizsgálat",
       .offered = false},

      // The group comparison dialog.
      {.code = kOneWayIndependent, .dialog = D::Groups,
       .english = "One-way comparison of independent samples",
       .hungarian = "Független minták egyszempontos összehasonlítása",
       .titleEnglish = "One-way comparison of independent samples",
       .titleHungarian = "Független minták (csoportok) egyszempontos összehasonlítása",
       .selection = {.minimumGrouping = 1},
       .scratch = {.attribute = p::kScaleType.name},
       .parameters = {p::kScaleType.name, p::kCommonScale.name, p::kTrimmingPercent.name, p::kCompareDistributions.name,
                      p::kMaxCutpoints.name, p::kSignificantOnly.name, p::kSignificanceLevel.name},
       .tables = {T::StudentizedRange},
       .analyse = OneWayIndependent},
      {.code = kOneWayRepeated, .dialog = D::Groups,
       .english = "One-way comparison of repeated measures",
       .hungarian = "Összetartozó minták (változók) egyszempontos összehasonlítása",
       .selection = {.minimumSelected = 2},
       .scratch = {.attribute = p::kScaleType.name},
       .parameters = {p::kScaleType.name, p::kCommonScale.name, p::kTrimmingPercent.name, p::kTrialName.name}},
      {.code = kTwoWayIndependent, .dialog = D::Groups,
       .english = "Two-way independent samples ANOVA", .hungarian = "Kétszempontos független mintás varianciaanalízis",
       .selection = {.minimumGrouping = 2},
       .scratch = {.attribute = p::kScaleType.name},
       .parameters = {p::kTrimmingPercent.name, p::kSignificantOnly.name, p::kSignificanceLevel.name}},
      {.code = kTwoWayMixed, .dialog = D::Groups,
       .english = "Two-way mixed ANOVA", .hungarian = "Kétszempontos kevert varianciaanalízis",
       .scratch = {.attribute = p::kScaleType.name},
       .parameters = {p::kTrialName.name}},
      {.code = kTwoWayRank, .dialog = D::Groups,
       .english = "Two-way independent samples rank ANOVA",
       .hungarian = "Kétszempontos független mintás rangvarianciaanalízis",
       .scratch = {.attribute = p::kScaleType.name},
       .parameters = {p::kSignificantOnly.name, p::kSignificanceLevel.name}},
      {.code = kInterRater, .dialog = D::Groups,
       .english = "Inter-rater reliability with quantitative scales",
       .hungarian = "Értékelők közötti megbízhatóság kvantitatív skálákkal",
       .selection = {.caseCode = true},
       .scratch = {.attribute = p::kScaleType.name}},

      // The relationship dialog, in the order of its list.
      {.code = kCorrelationRegression, .dialog = D::Relations,
       .english = "Correlation, regression", .hungarian = "Korreláció, regresszió",
       .titleEnglish = "Bivariate correlation, linear regression",
       .titleHungarian = "Kétváltozós korreláció, lineáris regresszió",
       .outputNames = {{p::kRegressionName.name, p::kSaveRegression.name, "RegVar"}},
       .parameters = {p::kPairing.name, p::kConfidence.name, p::kTrimmingPercent.name, p::kLocalCorrelations.name,
                      p::kLocalRange.name, p::kBivariatePlot.name, p::kListPValues.name, p::kBasicStatistics.name,
                      p::kCompareConditionalGroups.name, p::kSaveRegression.name, p::kRegressionName.name},
       .analyse = BivariateCorrelation},
      {.code = kCorrelationMatrix, .dialog = D::Relations,
       .english = "Correlation, partial correlation matrix", .hungarian = "Korrelációs, parciális korrelációs mátrix",
       .titleEnglish = "Correlation, partial correlation matrix",
       .titleHungarian = "Korrelációs, parciális korrelációs mátrix",
       .parameters = {p::kPairing.name, p::kCorrelationType.name, p::kListCorrelations.name, p::kListLength.name,
                      p::kListByAbsoluteValue.name, p::kListDescending.name, p::kListPValues.name,
                      p::kBasicStatistics.name, p::kCompareConditionalGroups.name, p::kSignificantOnly.name,
                      p::kSignificanceLevel.name},
       .analyse = CorrelationMatrix},
      {.code = kCrosstab, .dialog = D::Relations,
       .english = "Relationship of discrete variables - Crosstab",
       .hungarian = "Diszkrét változók kapcsolata - kereszttábla",
       .titleEnglish = "Relationship of discrete variables - Crosstab",
       .titleHungarian = "Diszkrét változók kapcsolata - kereszttábla",
       .parameters = {p::kExpectedFrequencies.name, p::kRowPercents.name, p::kColumnPercents.name,
                      p::kTotalPercents.name, p::kMonotonicityMeasures.name, p::kPredictionMeasures.name,
                      p::kCompareColumns.name, p::kCohenKappa.name, p::kJaccardMatrix.name},
       .analyse = Crosstab},
      {.code = kItemAnalysis, .dialog = D::Relations,
       .english = "Item analysis", .hungarian = "Itemanalízis",
       .titleEnglish = "Scale reliability and item analysis", .titleHungarian = "Skála-reliabilitás és itemanalízis",
       .outputNames = {{p::kScaleName.name, "", "Scale"}},
       .parameters = {p::kScaleName.name, p::kSaveScale.name, p::kItemMin.name, p::kItemMax.name,
                      p::kConvertNegativeItems.name, p::kSociometric.name},
       .analyse = ItemAnalysis},
      {.code = kMultipleRegression, .dialog = D::Relations,
       .english = "Multiple linear regression", .hungarian = "Többszörös lineáris regresszió",
       .titleEnglish = "Multiple linear regression", .titleHungarian = "Többszörös lineáris regresszió",
       .outputNames = {{p::kRegressionName.name, p::kSaveRegression.name, "RegVar"}},
       .parameters = {p::kForced.name, p::kEnterF.name, p::kBasicStatistics.name, p::kSaveRegression.name,
                      p::kRegressionName.name},
       .analyse = MultipleRegressionRun},
  };
}

}  // namespace

const CommandTable& AllCommands() {
  static const CommandTable table(Rows());
  return table;
}

bool RunRequest(Workspace& ws, const AnalysisRequest& request, ReportFormat format) {
  const CommandInfo* command = AllCommands().Find(request.commandCode);
  return command != nullptr && command->Built() && RunCommand(ws, request, *command, format).result == RunResult::Ran;
}

bool MenuEntryIsBuilt(std::string_view menuCommand) {
  return CommandIsBuilt(menuCommand) || AllCommands().MenuEntryHasBuiltCommand(menuCommand);
}

}  // namespace tarvika
