#include "groups/one_way_summary.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "lang/utf8.h"
#include "groups/one_way_text.h"
#include "stats/one_way.h"

namespace tarvika {
namespace {

using one_way_text::BySize;
using one_way_text::PCell;
using one_way_text::WriteTriple;

constexpr int kMaxSummaryGroups = 10;

std::string Cut(std::string_view name, std::size_t length) {
  return std::string(Utf8Prefix(name, length));
}

void WriteTwoGroups(AnalysisRun& run, const std::vector<const OneWaySummaryRow*>& rows, int covariate) {
  ReportWriter& r = run.report;
  const GroupDefinition groups = GetGroupDefinition(run.ws, run.index.columns[run.index.grouping]);
  const OneWaySummaryRow& first = *rows.front();
  const std::string name1 =
      Cut(groups.distinctNames[first.nonEmpty.size() > 0 ? first.nonEmpty[0] + 1 : 1], 5);
  const std::string name2 =
      Cut(groups.distinctNames[first.nonEmpty.size() > 1 ? first.nonEmpty[1] + 1 : 2], 5);
  const bool ancova = covariate > 0;
  r.BlankLine();
  r.Line(run.T("SUMMARY TABLE OF PARAMETRIC COMPARISONS OF THE TWO GROUPS",
               "A KÉT CSOPORT PARAMÉTERES ÖSSZEHASONLÍTÁSAINAK ÖSSZEFOGLALÓ TÁBLÁZATA"));
  if (ancova) r.Line(std::string(run.T("Covariate: ", "Kovariáns: ")) + run.request.shortNames.at(covariate));
  r.BeginTable();
  r.FirstCell("");
  for (std::string_view head :
       {std::string_view(name1), std::string_view(), std::string_view(name2), std::string_view(),
        run.T(" Effect", " Hatás"), ancova ? std::string_view() : run.T("VarTest", "Szórásp."),
        ancova ? run.T("Analysis of covariance", "Kovarianciaanalízis") : std::string_view()}) {
    r.Cell(head);
  }
  r.EndRow();
  r.FirstCell(run.T("Variable       ", "Változó        "));
  std::vector<std::string_view> heads;
  if (ancova) {
    heads = {run.T("AMean1", "KÁtlag1"),
             run.T("SD1", "Szórás1"),
             run.T("AMean2", "KÁtlag2"),
             run.T("SD2", "Szórás2"),
             "Cohen_d",
             " r(X,Cov)",
             " t-value",
             " df",
             run.T("p-value", "p-érték"),
             run.T("Long variable name", "Hosszú változónév")};
  } else {
    heads = {run.T("Mean1", "Átlag1"),
             run.T("SD1", "Szórás1"),
             run.T("Mean2", "Átlag2"),
             run.T("SD2", "Szórás2"),
             "Cohen_d",
             "p/Levene",
             " t-value",
             " df",
             run.T("p-value", "p-érték"),
             "Welch_t",
             " df",
             run.T("p-value", "p-érték"),
             run.T("Long variable name", "Hosszú változónév")};
  }
  for (std::string_view head : heads) r.Cell(head);
  r.EndRow();
  for (const OneWaySummaryRow* row : rows) {
    r.FirstCell(run.request.shortNames.at(row->dependent));
    r.NumberCell(BySize(row->mean1));
    r.NumberCell(BySize(row->sd1));
    r.NumberCell(BySize(row->mean2));
    r.NumberCell(BySize(row->sd2));
    r.NumberCell(BySize(row->pooledSd > 1e-8 ? (row->mean1 - row->mean2) / row->pooledSd : 0));
    if (ancova) {
      r.NumberCell(Fixed(row->r, 3));
      WriteTriple(r, row->t, row->tDf, row->tP);
    } else {
      r.NumberCell(PCell(row->pLevene));
      WriteTriple(r, row->t, row->tDf, row->tP);
      WriteTriple(r, row->welchT, row->welchDf, row->welchP, row->welchDefined);
    }
    r.Cell(run.request.longNames.at(row->dependent));
    r.EndRow();
  }
  r.EndTable();
  r.BlankLine();
  r.Line(run.T("Notations", "Jelölések"));
  if (ancova) r.Line(run.T("   - AMean = Adjusted mean", "   - KÁtlag = korrigált átlag"));
  r.Line(
      run.T("   - Cohen's d effect size measure is the  difference of means divided by the pooled SD of the "
            "two samples.",
            "   - A Cohen-féle d hatásnagyság az átlagok különbsége osztva a két minta közös szórásával."));
  if (ancova) {
    r.Line(run.T("   - r(X,Cov) = Correlation between dependent variable and covariate",
                 "   - r(X,Cov) = a függő változó és a kovariáns korrelációja"));
    r.Line(run.T("   - t-value = Square root of ANCOVA_F (df = df2_F)",
                 "   - t-value = a kovarianciaanalízis F-értékének négyzetgyöke (df = az F második df-je)"));
  } else {
    r.Line(run.T(
        "   - The column of VarTest contains the p-value of the Levene test for testing variance homogneity.",
        "   - A Szórásp. oszlop a szóráshomogenitást vizsgáló Levene-próba p-értékét tartalmazza."));
    r.Line(run.T("   - p/Levene denotes the p-values of the Levene test.",
                 "   - p/Levene: a Levene-próba p-értéke."));
    r.Line(run.T(
        "   - If p/Levene is small (p < 0.01) it is advisable to use the p-value of the Welch-test instead "
        "of "
        "that of the t-test.",
        "   - Ha p/Levene kicsi (p < 0.01), a t-próba helyett a Welch-próba p-értékét célszerű használni."));
  }
}

void WriteMoreGroups(AnalysisRun& run, const std::vector<const OneWaySummaryRow*>& rows, int covariate) {
  ReportWriter& r = run.report;
  const GroupDefinition groups = GetGroupDefinition(run.ws, run.index.columns[run.index.grouping]);
  const bool ancova = covariate > 0;
  const int kAssigned = static_cast<int>(rows.front()->means.size());
  // The groups with a mean in the first row stand in the table.
  std::vector<int> shown;
  for (int j = 0; j < kAssigned; ++j) {
    if (!std::isnan(rows.front()->means[j])) shown.push_back(j);
  }
  r.BlankLine();
  r.Line(run.T("SUMMARY TABLE OF PARAMETRIC COMPARISONS OF THE COMPARED GROUPS",
               "A CSOPORTOK PARAMÉTERES ÖSSZEHASONLÍTÁSAINAK ÖSSZEFOGLALÓ TÁBLÁZATA"));
  if (ancova) r.Line(std::string(run.T("Covariate: ", "Kovariáns: ")) + run.request.shortNames.at(covariate));
  for (int j : shown) {
    r.Line(fmt::format("{}{}{}{}", ancova ? run.T("AMean", "KÁtlag") : run.T("Mean", "Átlag"), j + 1,
                       ancova ? run.T(" = Adjusted mean of group ", " = a csoport korrigált átlaga: ")
                              : run.T(" = Mean of group ", " = a csoport átlaga: "),
                       groups.distinctNames[j + 1]));
  }
  r.BeginTable();
  r.FirstCell(run.T("Variable       ", "Változó        "));
  for (int j : shown)
    r.Cell(fmt::format("{}{}", ancova ? run.T("AMean", "KÁtlag") : run.T("Mean", "Átlag"), j + 1));
  if (ancova) {
    for (std::string_view head :
         {std::string_view(" r(X,Cov)"), std::string_view(" F_cova"), run.T("p-value", "p-érték")}) {
      r.Cell(head);
    }
  } else {
    for (std::string_view head :
         {std::string_view("p/Lev."), run.T("Anova_F", "VA_F"), run.T("p-value", "p-érték"),
          std::string_view("Welch"), run.T("p-value", "p-érték"), run.T("Eta squared", "Eta^2")}) {
      r.Cell(head);
    }
  }
  r.EndRow();
  for (const OneWaySummaryRow* row : rows) {
    r.FirstCell(run.request.shortNames.at(row->dependent));
    for (int j : shown) r.NumberCell(std::isnan(row->means[j]) ? " ..." : BySize(row->means[j]));
    if (ancova) {
      r.NumberCell(Fixed(row->r, 3));
      r.NumberCell(Fixed(row->F, 3));
      r.NumberCell(PCell(row->fP));
    } else {
      r.NumberCell(PCell(row->pLevene));
      r.NumberCell(Fixed(row->F, 3));
      r.NumberCell(PCell(row->fP));
      r.NumberCell(row->welchDefined ? Fixed(row->W, 3) : " ...");
      r.NumberCell(row->welchDefined ? PCell(row->wP) : " ...");
      r.NumberCell(Fixed(row->etaSquared, 3));
    }
    r.EndRow();
  }
  r.EndTable();
  if (ancova) return;
  r.BlankLine();
  if (run.English()) {
    r.Line("Note: p/Lev. = The p-value of Levene's test of variance homogeneity.");
  } else {
    r.Line("Jelölések:");
    r.Line("   - p/Lev. = a Levene-féle szóráshomogenitás-próba p-értéke");
    r.Line("   - VA_F = a varianciaanalízis F-értéke");
    r.Line("   - Welch = a Welch-féle robusztus varianciaanalízis W-értéke");
    r.Line("   - Eta^2 = a megmagyarázott varianciahányad");
  }
}

}  // namespace

void WriteOneWaySummaries(AnalysisRun& run, const std::vector<OneWaySummaryRow>& rows) {
  if (rows.empty()) return;
  const SelectedIndex& index = run.index;
  const int covariate = index.covariates > 0 ? index.columns[index.analysed + index.covariates] : 0;
  std::vector<const OneWaySummaryRow*> two, more;
  for (const OneWaySummaryRow& row : rows) {
    if (covariate > 0 && (row.smallGroup || !row.ancova)) continue;
    if (row.k == 2) two.push_back(&row);
    if (row.k > 2) more.push_back(&row);
  }
  if (two.size() > 1) WriteTwoGroups(run, two, covariate);
  // More groups: a table only over dependents compared across the same groups.
  const int kAssigned = static_cast<int>(rows.front().means.size());
  if (more.size() < 2 || kAssigned <= 2 || kAssigned > kMaxSummaryGroups || index.analysed <= 2) return;
  for (const OneWaySummaryRow& row : rows) {
    if (row.nonEmpty != rows.front().nonEmpty) return;
    if (row.smallGroup && row.k < 3) return;
  }
  WriteMoreGroups(run, more, covariate);
}

}  // namespace tarvika
