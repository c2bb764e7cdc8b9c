#include "groups/one_way_ancova_report.h"

#include <fmt/format.h>

#include "frame/analysis_run.h"
#include "groups/one_way_text.h"

namespace tarvika {

using namespace one_way_text;

void WriteAncovaReport(AnalysisRun& run, int dependent, int covariate, const AncovaResult& a,
                       double partialR) {
  ReportWriter& r = run.report;
  auto T = [&](std::string_view en, std::string_view hu) { return run.T(en, hu); };
  if (!a.done) {
    r.BlankLine();
    r.Line(T("Number of groups having at least 3 usable cases is less than 2.",
             "A legalább 3 használható esetet tartalmazó csoportok száma kisebb, mint 2."));
    r.Line(T("The ANCOVA for this dependent variable will not be performed.",
             "Erre a függő változóra a kovarianciaanalízis elmarad."));
    return;
  }
  const int grouping = run.index.columns[run.index.grouping];
  const GroupDefinition definition = GetGroupDefinition(run.ws, grouping);
  const std::string& x = run.request.shortNames.at(dependent);
  const std::string& cov = run.request.shortNames.at(covariate);
  r.BlankLine();
  r.Line(T("ANALYSIS OF COVARIANCE", "KOVARIANCIAANALÍZIS"));
  r.Line(std::string(T("Covariate = ", "Kovariáns = ")) + NameWithLong(run.ws, covariate));
  r.Line(T(" (ANOVA on dependent variable, removing the linear effect of the covariate)",
           " (varianciaanalízis a függő változón, a kovariáns lineáris hatásának kiszűrésével)"));
  const std::string rHead = " r(" + x + ", " + cov + ")";
  const std::string groupName = PaddedName(run.request.shortNames.at(grouping));
  r.BeginTable();
  r.FirstCell("Index");
  for (std::string_view head : {std::string_view(groupName), T("Size", "Elemszám"), T("Mean", "Átlag"),
                                T("Adj.Mean", "Korr.átlag"), std::string_view(rHead)}) {
    r.Cell(head);
  }
  r.EndRow();
  for (std::size_t i = 0; i < a.used.size(); ++i) {
    const AncovaGroupResult& g = a.groups[i];
    r.FirstCellRightAligned(std::to_string(a.used[i] + 1), 4);
    r.Cell(PaddedName(definition.distinctNames[a.used[i] + 1]));
    r.Cell(std::to_string(g.n));
    r.WriteRatio(9, 9, 1, g.meanX, 1);
    r.WriteRatio(9, 0, 1, g.adjustedMean, 1);
    r.Cell(fmt::format("{}  (p = {:.3f}){}", SignSlot3(g.r), g.rP.p, g.rP.marker));
    r.EndRow();
  }
  r.EndTable();
  r.BlankLine();
  r.Line(fmt::format("{}{}{}{}{}{}):  r = {:5.3f}{}",
                     T("Pearson correlation between ", "Pearson-féle korreláció: "), x, T(" and ", " és "),
                     cov, T(" for the whole sample (df = ", " a teljes mintán (df = "), a.total - 2, a.r,
                     PText(a.rP)));
  if (definition.kind <= 3) {
    r.Line(fmt::format("{}:  r(xc.g) = {:.3f}{}",
                       T("Partial correlation after removing the effect of grouping variable",
                         "Parciális korreláció a csoportosító változó hatásának kiszűrése után"),
                       partialR, PText(CorrelationP2(partialR, a.total - 3))));
  }
  r.Line(T("Testing the equality of theoretical group correlations:",
           "Az elméleti csoportkorrelációk egyenlőségének tesztelése:"));
  r.Line(fmt::format(" Chi2({:.0f}) = {:3.3f}{}", a.df1, a.chiSquare, PText(a.chiSquareP)));
  r.BlankLine();
  r.Line(fmt::format("{}{:.3f}",
                     T("Partial Eta-squared after removing the linear effect of the covariate = ",
                       "Parciális eta-négyzet a kovariáns lineáris hatásának kiszűrése után = "),
                     a.partialEtaSquared));
  r.Line(fmt::format(
      "{}{:.3f}",
      T("Omega squared (~ Adjusted R squared) after removing the linear effect of the covariate = ",
        "Omega négyzet (~ korrigált R négyzet) a kovariáns lineáris hatásának kiszűrése után = "),
      a.omegaSquared));
  if (a.df1 == 1) {
    r.Line(fmt::format("{}{:.3f}",
                       T("Cohen delta effect size after removing the linear effect of the covariate: d = ",
                         "Cohen-féle delta hatásnagyság a kovariáns lineáris hatásának kiszűrése után: d = "),
                       a.cohenD));
  }
  r.BlankLine();
  r.Line(T("Testing the equality of adjusted group means:",
           "A korrigált csoportátlagok egyenlőségének tesztelése:"));
  r.Line(fmt::format(" F({:.0f}; {:.0f}) = {:.3f}{}", a.df1, a.df2, a.F, PText(a.p)));
}

}  // namespace tarvika
