#include "pattern/pattern_head.h"

#include <fmt/format.h>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "workspace/workspace.h"
#include "pattern/pattern_text.h"

namespace tarvika {

std::optional<PatternSet> PreparePatterns(AnalysisRun& run, const PatternVariables& vars,
                                          const std::vector<CaseValues>& cases, DistanceType type, bool standardize) {
  ReportWriter& r = run.report;
  const Language lang = run.ws.language;
  r.Line(fmt::format("{}{}", run.T("Distance measure used: ", "Az alkalmazott távolságmérték: "),
                     type == DistanceType::Ased ? run.T("Average Squared Euclidean (ASED)", "Átlagos négyzetes eltérés")
                                                : run.T("Pearson correlation (r)", "Pearson korreláció (r)")));
  PatternSet set = CollapsePatterns(cases, vars.V());
  r.Line(fmt::format("{}{}", run.T("Number of complete cases: N = ",
                                   "Az összes kiválasztott változóra érvényes adattal rendelkező esetek száma: N = "),
                     set.N));
  r.Line(run.T("Only complete cases are used in the analysis.", "A jelen elemzésben csak ezek az esetek vesznek részt."));
  r.Line(fmt::format("{}{}", run.T("Number of different complete cases = ", "Különböző komplett esetek száma = "), set.D));
  auto refuse = [&](std::string_view since, int limit) {
    r.Line(fmt::format("{}{}", run.T("Number of different cases without missing values: N = ",
                                     "Az érvényes különböző esetek száma: N = "),
                       set.D));
    r.Line(fmt::format("{}{}{}", since, limit, run.T(", no analysis is performed.", ", nem végezhető elemzés.")));
  };
  if (set.D < 3) {
    r.Line(run.T("Since the number of different complete cases (value patterns) is too small, the program stops",
                 "Mivel a különböző komplett esetek (értékmintázatok) száma túl kicsi, a program megáll."));
    refuse(run.T("Since N is less than ", "Mivel N kisebb, mint "), 3);
    r.Line(run.T("Suggested analysis: Configuration frequency analysis (CFA)", "Ajánlott elemzés: Konfigurációanalízis (CFA)"));
    return std::nullopt;
  }
  if (set.D > kMaxPatterns) {
    refuse(run.T("Since N is greater than ", "Mivel N nagyobb, mint "), kMaxPatterns);
    return std::nullopt;
  }
  if (!NormalizeWeights(set, vars.weights)) {
    r.Line(fmt::format("{}{}", run.T("Each variable has zero variance.", "Mivel minden változó 0 szórású,"),
                       run.T(" No analysis is performed.", " elemzést nem végzünk.")));
    return std::nullopt;
  }
  r.Line(standardize ? run.T("Variables are standardized.", "Az elemzés során a változókat standardizáljuk.")
                     : run.T("Variables are not standardized.", "Az elemzés során a változókat nem standardizáljuk."));
  r.BlankLine();
  r.BeginTitledTable(run.T("BASIC DESCRIPTIVE STATISTICS FOR COMPLETE CASES", "ALAPSTATISZTIKÁK a komplett esetekre"),
                     {"Index", run.T("Variable      ", "Változó      "), run.T("Weight", "Súly"), run.T("Mean", "Átlag"),
                      run.T("SD", "Szórás"), "Min", "Max", run.T("Long variable name", "Hosszú változónév")});
  for (int v = 0; v < set.V; ++v) {
    r.FirstCell(std::to_string(v + 1));
    r.Cell(vars.names[v]);
    r.NumberCell(PatternValueText(set.rawWeight[v], 10, 0, lang));
    r.NumberCell(PatternValueText(set.mean[v], 10, 8, lang));
    r.NumberCell(PatternValueText(set.sd[v], 10, 8, lang));
    r.NumberCell(PatternValueText(set.min[v], 10, 0, lang));
    r.NumberCell(PatternValueText(set.max[v], 10, 0, lang));
    r.Cell(vars.longNames[v]);
    r.EndRow();
  }
  r.EndTable();
  if (!standardize) {
    const PooledScale pooled = Pooled(set);
    r.BlankLine();
    r.Line(fmt::format("{}\t{}", Fixed(pooled.mt, 3), run.T("Total mean of variables (Mt)", "Változók összátlaga (Mt)")));
    r.Line(fmt::format("{}\t{}", Fixed(pooled.varT, 5), run.T("Mean variance (VarT)", "Átlagvariancia (VarT)")));
    r.Line(fmt::format("{}\t{}", Fixed(pooled.sdT, 5),
                       run.T("Square root of mean variance (SDt)", "Átlagvariancia négyzetgyöke (Se együttes szórás)")));
  } else {
    Standardize(set);
  }
  return set;
}

}  // namespace tarvika
