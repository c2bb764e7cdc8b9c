#include "groups/one_way_rank_summary.h"

#include <fmt/format.h>

#include <cmath>
#include <string>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "groups/one_way_text.h"
#include "stats/one_way.h"

namespace tarvika {
namespace {

using one_way_text::BySize;
using one_way_text::PCell;
using one_way_text::WriteTriple;

constexpr int kMaxSummaryGroups = 10;

void WriteTwoGroups(AnalysisRun& run, const std::vector<const RankSummaryRow*>& rows) {
  ReportWriter& r = run.report;
  r.BlankLine();
  r.Line("SUMMARY TABLE OF NONPARAMETRIC COMPARISONS OF THE TWO GROUPS");
  r.BeginTable();
  r.FirstCell(run.T("Variable       ", "Változó        "));
  for (std::string_view head : {"RMean1", "RMean2", "A_est", "Som.d^2", "p/Levene", " p/MW", " FPW", " df", "p/FPW",
                                " BM", " df", "p/BM"}) {
    r.Cell(head);
  }
  r.Cell(run.T("Long variable name", "Hosszú változónév"));
  r.EndRow();
  for (const RankSummaryRow* row : rows) {
    r.FirstCell(run.request.shortNames.at(row->dependent));
    r.NumberCell(BySize(row->rankMeans[row->nonEmpty[0]]));
    r.NumberCell(BySize(row->rankMeans[row->nonEmpty[1]]));
    r.NumberCell(Fixed(row->aEstimate, 3));
    r.NumberCell(Fixed(row->somersD2, 3));
    r.NumberCell(PCell(row->pLevene));
    r.NumberCell(PCell(row->pMannWhitney));
    WriteTriple(r, row->fp, row->fpDf, row->fpP, row->fpDefined);
    WriteTriple(r, row->bm, row->bmDf, row->bmP, row->bmDefined);
    r.Cell(run.request.longNames.at(row->dependent));
    r.EndRow();
  }
  r.EndTable();
  r.BlankLine();
  for (std::string_view line : {"Notations:", "  - A_est: Sample measure of stochastic superiority",
                                "  - Som.d^2: Square of Somers' d as ordinal effect size (d = 2A_est - 1)",
                                "  - p/Levene: p value of Levene-test", "  - MW: Mann-Whitney test",
                                "  - FPW: Fligner-Policello test with Welch-like df", "  - BM: Brunner-Munzel test"}) {
    r.Line(line);
  }
}

void WriteMoreGroups(AnalysisRun& run, const std::vector<const RankSummaryRow*>& rows) {
  ReportWriter& r = run.report;
  const GroupDefinition groups = GetGroupDefinition(run.ws, run.index.columns[run.index.grouping]);
  const RankSummaryRow& first = *rows.front();
  r.BlankLine();
  r.Line("SUMMARY TABLE OF STOCHASTIC COMPARISONS OF THE COMPARED GROUPS");
  std::vector<int> shown;
  for (std::size_t j = 0; j < first.rankMeans.size(); ++j) {
    if (std::isnan(first.rankMeans[j])) continue;
    shown.push_back(static_cast<int>(j));
    r.Line(fmt::format("RankM{}: Rank mean of group {}", j + 1, groups.distinctNames[j + 1]));
  }
  r.BeginTable();
  r.FirstCell(run.T("Variable       ", "Változó        "));
  for (int j : shown) r.Cell(fmt::format("RankM{}", j + 1));
  for (std::string_view head : {"p/Lev.", "Kru-Wal", "p-value", "rW3", "p-value", "Kulle", "p-value", "Rank eta^2"}) {
    r.Cell(head);
  }
  r.EndRow();
  for (const RankSummaryRow* row : rows) {
    r.FirstCell(run.request.shortNames.at(row->dependent));
    for (int j : shown) r.NumberCell(std::isnan(row->rankMeans[j]) ? std::string() : BySize(row->rankMeans[j]));
    r.NumberCell(PCell(row->pLevene));
    r.NumberCell(Fixed(row->H, 3));
    r.NumberCell(PCell(row->hP));
    if (row->welchDefined) {
      r.NumberCell(Fixed(row->rW3, 3));
      r.NumberCell(PCell(row->rW3P));
    } else {
      r.NumberCell("...");
      r.NumberCell("...");
    }
    r.NumberCell(Fixed(row->kulle, 3));
    r.NumberCell(PCell(row->kulleP));
    r.NumberCell(Fixed(row->rankEtaSquared, 3));
    r.EndRow();
  }
  r.EndTable();
  r.BlankLine();
  for (std::string_view line : {"Note: p/Lev. = The p-value of Levene's test of rank variance homogeneity.",
                                "   - Kru-Wal = Test statistic of Kruskal-Wallis test.",
                                "   - rW3 = Test statistic of adjusted rank-Welch test.",
                                "   - Kulle = Test statistic of Kulle's test with equal population weights.",
                                "   - Rank eta^2 = Rank eta squared."}) {
    r.Line(line);
  }
}

}  // namespace

// The conditions are those of the tables of interval dependents.
void WriteRankSummaries(AnalysisRun& run, const std::vector<RankSummaryRow>& rows) {
  if (rows.empty()) return;
  std::vector<const RankSummaryRow*> two, more;
  for (const RankSummaryRow& row : rows) {
    if (row.k == 2) two.push_back(&row);
    if (row.k > 2) more.push_back(&row);
  }
  if (two.size() > 1) WriteTwoGroups(run, two);
  const int kAssigned = static_cast<int>(rows.front().rankMeans.size());
  if (more.size() < 2 || kAssigned <= 2 || kAssigned > kMaxSummaryGroups || run.index.analysed <= 2) return;
  for (const RankSummaryRow& row : rows) {
    if (row.nonEmpty != rows.front().nonEmpty) return;
    if (row.smallGroup && row.k < 3) return;
  }
  WriteMoreGroups(run, more);
}

}  // namespace tarvika
