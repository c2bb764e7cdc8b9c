#include "ui/form_hints.h"

#include <map>

namespace tarvika {

const FormHints& HintsOf(DialogKind kind) {
  using R = ListRole;
  static const std::map<DialogKind, FormHints> hints = {
      {DialogKind::SingleSample,
       {"Single sample analyses", "Egymintás elemzések", 100,
        {{R::Selected, "Selected variables", "Kijelölt változók", 0, {}, 103},
         {R::Conditional, "Cond. grouping variable", "Feltételes csoportosító változó", 1, {}, 104}},
        {}}},
      {DialogKind::Groups,
       {"Comparison of groups and repeated measures", "Csoportok és ismételt mérések összehasonlítása", 0,
        {{R::Selected, "Dependent variables", "Függő változók"},
         {R::Grouping, "Grouping variable", "Csoportosító változó", 2, {21, 23, 24, 25}},
         {R::Covariate, "Case code variable", "Esetkód változó", 1, {26}},
         {R::Conditional, "Conditional grouping var.", "Feltételes csoportosító vált.", 1}},
        {{21, R::Grouping, "Grouping variable", "Csoportosító változó", 1}}}},
      {DialogKind::Relations,
       {"Relationship of variables", "Változók kapcsolata", 0,
        {{R::Selected, "X variables", "X változók"},
         {R::Y, "Y variables", "Y változók", 0, {31, 32, 33, 34, 35}},
         {R::Covariate, "Partial variables", "Parciális változók", 0, {32}},
         {R::Conditional, "Cond. grouping variable", "Feltételes csoportosító változó", 1}},
        {{33, R::Selected, "Predictors (X)", "Magyarázó változók (X)"},
         {33, R::Y, "Dependent variable (Y)", "Függő változó (Y)", 1},
         {35, R::Selected, "Items", "Itemek"},
         {35, R::Y, "Negative items", "Negatív itemek"}}}},
  };
  static const FormHints fallback = {"", "", 0,
                                     {{R::Selected, "Selected variables", "Kijelölt változók"},
                                      {R::Conditional, "Cond. grouping variable", "Feltételes csoportosító változó", 1}},
                                     {}};
  auto it = hints.find(kind);
  return it == hints.end() ? fallback : it->second;
}

std::string_view SwitchOf(std::string_view parameter) {
  static const std::map<std::string_view, std::string_view> switches = {
      {"standardizedKind", "saveStandardized"}, {"regressionName", "saveRegression"},
      {"localRange", "localCorrelations"},      {"listLength", "listCorrelations"},
      {"listByAbsoluteValue", "listCorrelations"}, {"listDescending", "listCorrelations"},
      {"maxCutpoints", "compareDistributions"}, {"significanceLevel", "significantOnly"},
  };
  auto it = switches.find(parameter);
  return it == switches.end() ? std::string_view() : it->second;
}

}  // namespace tarvika
