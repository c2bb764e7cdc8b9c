#pragma once
// The names of the dialog parameters as typed constants: an analysis reads a parameter
// through one of these (AnalysisRequest::Get), so that its kind is known where it is read
// and a misspelt name can't compile. The catalogue of each dialog (kinds, defaults, bounds,
// captions) is in the parameters_*.cpp files beside this one.

#include <string_view>

#include "frame/dialog_parameters.h"

namespace tarvika {

template <ParameterKind K>
struct TypedParameter {
  std::string_view name;
  static constexpr ParameterKind kind = K;
};

using IntegerParameter = TypedParameter<ParameterKind::Integer>;
using NumberParameter = TypedParameter<ParameterKind::Number>;
using ToggleParameter = TypedParameter<ParameterKind::Toggle>;
using ThreeStateParameter = TypedParameter<ParameterKind::ThreeState>;
using FlagParameter = TypedParameter<ParameterKind::Flag>;
using ChoiceParameter = TypedParameter<ParameterKind::Choice>;
using TextParameter = TypedParameter<ParameterKind::Text>;

namespace param {

// Single-sample dialog.
inline constexpr IntegerParameter kConfidenceIndex{"confidenceIndex"};
inline constexpr IntegerParameter kTrimmingPercent{"trimmingPercent"};
inline constexpr IntegerParameter kClassMultiplier{"classMultiplier"};
inline constexpr FlagParameter kTestEqualFrequencies{"testEqualFrequencies"};
inline constexpr FlagParameter kBinarize{"binarize"};
inline constexpr FlagParameter kPercentile{"percentile"};
inline constexpr ToggleParameter kSaveStandardized{"saveStandardized"};
inline constexpr IntegerParameter kStandardizedKind{"standardizedKind"};
inline constexpr ChoiceParameter kScaleType{"scaleType"};                 // per variable; also the groups dialog
inline constexpr NumberParameter kHypotheticalValue{"hypotheticalValue"};  // per variable

// Groups dialog.
inline constexpr IntegerParameter kCommonScale{"commonScale"};
inline constexpr ToggleParameter kCompareDistributions{"compareDistributions"};
inline constexpr IntegerParameter kMaxCutpoints{"maxCutpoints"};
inline constexpr FlagParameter kSignificantOnly{"significantOnly"};  // also the relations dialog
inline constexpr IntegerParameter kSignificanceLevel{"significanceLevel"};
inline constexpr TextParameter kTrialName{"trialName"};

// Relations dialog.
inline constexpr ChoiceParameter kPairing{"pairing"};
inline constexpr ChoiceParameter kConfidence{"confidence"};
inline constexpr ToggleParameter kLocalCorrelations{"localCorrelations"};
inline constexpr IntegerParameter kLocalRange{"localRange"};
inline constexpr ToggleParameter kBivariatePlot{"bivariatePlot"};
inline constexpr ChoiceParameter kCorrelationType{"correlationType"};
inline constexpr ToggleParameter kListCorrelations{"listCorrelations"};
inline constexpr IntegerParameter kListLength{"listLength"};
inline constexpr FlagParameter kListByAbsoluteValue{"listByAbsoluteValue"};
inline constexpr FlagParameter kListDescending{"listDescending"};
inline constexpr FlagParameter kListPValues{"listPValues"};
inline constexpr FlagParameter kBasicStatistics{"basicStatistics"};
inline constexpr FlagParameter kCompareConditionalGroups{"compareConditionalGroups"};
inline constexpr FlagParameter kForced{"forced"};
inline constexpr NumberParameter kEnterF{"enterF"};
inline constexpr ToggleParameter kSaveRegression{"saveRegression"};
inline constexpr TextParameter kRegressionName{"regressionName"};
inline constexpr ToggleParameter kExpectedFrequencies{"expectedFrequencies"};
inline constexpr ToggleParameter kRowPercents{"rowPercents"};
inline constexpr ToggleParameter kColumnPercents{"columnPercents"};
inline constexpr ToggleParameter kTotalPercents{"totalPercents"};
inline constexpr ToggleParameter kMonotonicityMeasures{"monotonicityMeasures"};
inline constexpr ToggleParameter kPredictionMeasures{"predictionMeasures"};
inline constexpr ToggleParameter kCompareColumns{"compareColumns"};
inline constexpr ToggleParameter kCohenKappa{"cohenKappa"};
inline constexpr ToggleParameter kJaccardMatrix{"jaccardMatrix"};
inline constexpr TextParameter kScaleName{"scaleName"};
inline constexpr ToggleParameter kSaveScale{"saveScale"};
inline constexpr IntegerParameter kItemMin{"itemMin"};
inline constexpr IntegerParameter kItemMax{"itemMax"};
inline constexpr FlagParameter kConvertNegativeItems{"convertNegativeItems"};
inline constexpr FlagParameter kSociometric{"sociometric"};

}  // namespace param
}  // namespace tarvika
