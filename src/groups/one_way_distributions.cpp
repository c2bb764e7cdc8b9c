#include "groups/one_way_distributions.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "frame/number_text.h"
#include "frame/report_writer.h"
#include "groups/one_way_text.h"
#include "stats/distribution_comparison.h"

namespace tarvika {

using namespace one_way_text;
namespace {

std::string_view T(const DistributionRequest& d, std::string_view en, std::string_view hu) {
  return d.hungarian ? hu : en;
}

// The cut value of a cell, with decimals by the cell width.
std::string CutText(const CellTable& cells, int c) {
  const double w = cells.cellWidth;
  const int decimals = w > 5 ? 1 : w > 0.5 ? 2 : w > 0.05 ? 3 : 4;
  return Fixed((c + 0.5) * w + cells.rangeMin, decimals);
}

std::vector<double> Pooled(const CellTable& cells) {
  std::vector<double> pooled(101, 0);
  for (const auto& c : cells.counts) {
    for (int i = 0; i < 101; ++i) pooled[i] += c[i];
  }
  return pooled;
}

void WriteRegion(ReportWriter& r, double epsmin) {
  r.Line(fmt::format("Compared regions: middle {}% of the pooled distribution of the dependent variable",
                     std::lround((1 - 2 * epsmin) * 100)));
}

std::string Signed(double x, int decimals) {
  return x < 0 ? Fixed(x, decimals) : " " + Fixed(x, decimals);
}

}  // namespace

void WriteTwoDistributions(ReportWriter& r, const DistributionRequest& d) {
  const int n1 = static_cast<int>(d.values[0].size()), n2 = static_cast<int>(d.values[1].size());
  r.BlankLine();
  if (n1 < 8 || n2 < 8) {
    r.Line("One sample size is < 8. The comparison of distributions cannot be valid and therefore will no performed.");
    return;
  }
  const CellTable cells = BinIntoCells(d.values);
  r.Line("Detailed point-wise comparison of the two distribution functions");
  WriteRegion(r, d.epsmin);
  r.BeginTable();
  r.FirstCellRightAligned("c", 5);
  for (std::string_view head : {std::string_view("F1(c)"), std::string_view("F2(c)"), std::string_view(" F1-F2"),
                                T(d, "Correct%", "Korrekt%"), std::string_view(" Phi"), T(d, "Odds r.", "Esélyh."),
                                T(d, "Chi|Fish", "Khi|Fish"), T(d, " p-value", " p-érték"),
                                T(d, "Adjusted p", "Korrigált p")}) {
    r.Cell(head);
  }
  r.EndRow();
  double largest = 0;
  if (!cells.counts.empty()) {
    const std::vector<double> pooled = Pooled(cells);
    const std::vector<int> cuts = SelectCutpoints(pooled, d.epsmin, d.maxCutpoints);
    const auto cum = CumulativeCounts(cells);
    for (int c = 0; c < 101; ++c) {
      if (pooled[c] <= 0) continue;
      const int a = cum[0][c], b = cum[1][c];
      const double F1 = static_cast<double>(a) / n1, F2 = static_cast<double>(b) / n2;
      largest = std::max(largest, std::fabs(F1 - F2));
      r.FirstCellRightAligned(CutText(cells, c), 5);
      r.Cell(Fixed(F1, 3));
      r.Cell(Fixed(F2, 3));
      const CutComparison x = CompareAtCut(a, b, n1, n2);
      if (x.defined) {
        r.Cell(Signed(F1 - F2, 3));
        r.Cell(Fixed(x.correctPercent, 1));
        r.Cell(Signed(x.phi, 2));
        r.Cell(x.oddsDefined ? Fixed(x.odds, 2) : "....");
        r.Cell(x.fisher ? "Fisher" : Fixed(x.chiSquare, 3));
        r.Cell(Fixed(x.p.p, 4));
        if (std::find(cuts.begin(), cuts.end(), c) != cuts.end()) {
          const double adjusted = std::min(1.0, static_cast<double>(cuts.size()) * x.p.p);
          r.Cell(Fixed(adjusted, 4) + std::string(ChiSquareCaseMark(adjusted)));
        }
      }
      r.EndRow();
    }
  }
  r.EndTable();
  r.Line("Correct%: Average correct identification of the two groups compared");
  r.Line("    by discriminating them based on the current cutpoint of the dependent variable X.");
  r.Line("Phi: phi contingency coefficient between dichotomized X and the grouping variable.");
  r.Line("Odds r.: Odds ratio between dichotomized X and the grouping variable.");
  r.Line("The significance of phi is tested via chi-square (Chi) or Fisher-exact (Fisher) test.");
  r.Line("Tail probability (p) is adjusted by means of Bonferroni method.");
  r.BlankLine();
  r.Line("Testing the identity of the two distributions:");
  const double J = largest * std::sqrt(static_cast<double>(n1) * n2 / (n1 + n2));
  const PValue p = KolmogorovP(J);
  r.Line(fmt::format("Kolmogorov-Smirnov's two-sample test:  J* = {:.3f}{}", J, PText(p)));
}

void WriteSeveralDistributions(ReportWriter& r, const DistributionRequest& d) {
  const int k = static_cast<int>(d.values.size());
  r.BlankLine();
  // Six groups still pass this test, whatever the message says.
  if (k > 6) {
    r.Line("Since the number of groups > 5 comparison of distributions will not be made.");
    return;
  }
  for (const auto& v : d.values) {
    if (v.size() < 8) {
      r.Line("One sample size < 8. The comparison of distributions cannot be valid, hence will not be done.");
      return;
    }
  }
  const CellTable cells = BinIntoCells(d.values);
  r.Line("Cumulative distribution functions with signs and significance of the differences");
  WriteRegion(r, d.epsmin);
  r.BeginTable();
  r.FirstCellRightAligned("c", 5);
  for (int i : d.indices) r.Cell(fmt::format("F{}(c)", i));
  for (int a = 0; a < k; ++a) {
    for (int b = a + 1; b < k; ++b) r.Cell(fmt::format("{}-{}", d.indices[a], d.indices[b]));
  }
  for (std::string_view head : {"Chi-sq.", "p-value", "Adjusted p"}) r.Cell(head);
  r.EndRow();
  if (!cells.counts.empty()) {
    const std::vector<double> pooled = Pooled(cells);
    const std::vector<int> cuts = SelectCutpoints(pooled, d.epsmin, d.maxCutpoints);
    const auto cum = CumulativeCounts(cells);
    double N = 0;
    for (int n : cells.sizes) N += n;
    double C = 0;
    for (int c = 0; c < 101; ++c) {
      C += pooled[c];
      if (pooled[c] <= 0) continue;
      r.FirstCellRightAligned(CutText(cells, c), 5);
      std::vector<double> F(k);
      for (int g = 0; g < k; ++g) {
        F[g] = static_cast<double>(cum[g][c]) / cells.sizes[g];
        r.Cell(Fixed(F[g], 3));
      }
      for (int a = 0; a < k; ++a) {
        for (int b = a + 1; b < k; ++b) {
          const double na = cells.sizes[a], nb = cells.sizes[b], ca = cum[a][c], cb = cum[b][c];
          const double n = na + nb, below = ca + cb, above = n - below;
          // Yates's chi-square of the pair at this cut.
          double y = 0;
          if (below * above > 0) {
            const double term = std::max(0.0, std::fabs(ca * (nb - cb) - cb * (na - ca)) - n / 2);
            y = n * term * term / (na * nb * below * above);
          }
          const char* sign = F[a] > F[b] + 0.05 ? "+" : F[a] < F[b] - 0.05 ? "_" : ".";
          r.Cell(std::string(sign) + (y >= 10.8307 ? "!!" : y >= 6.635 ? "! " : "  "));
        }
      }
      double sum = 1;
      if ((N - C) * C > 1) {
        sum = 0;
        for (int g = 0; g < k; ++g) {
          const double cg = cum[g][c], ng = cells.sizes[g];
          sum += (cg * cg / C + (ng - cg) * (ng - cg) / (N - C)) / ng;
        }
      }
      const double X = N * (sum - 1);
      r.Cell(Fixed(X, 2));
      if (std::find(cuts.begin(), cuts.end(), c) != cuts.end()) {
        const PValue p = ChiSquareP(X, k - 1);
        const double adjusted = std::min(1.0, static_cast<double>(cuts.size()) * p.p);
        r.Cell(Fixed(p.p, 4));
        r.Cell(Fixed(adjusted, 4) + std::string(ChiSquareCaseMark(adjusted)));
      }
      r.EndRow();
    }
  }
  r.EndTable();
  r.Line("The significance of phi is tested via chi-square test.");
  r.Line("Tail probability (p) is adjusted by means of Bonferroni method.");
}

}  // namespace tarvika
