#include "relations/correlation_matrix.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <map>
#include <string>
#include <vector>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "frame/parameter_names.h"
#include "lang/utf8.h"
#include "numeric/parallel_parts.h"
#include "numeric/probability.h"
#include "numeric/tolerance.h"
#include "relations/correlation.h"
#include "stats/correlation.h"
#include "stats/correlation_matrix.h"

namespace tarvika {
namespace {

constexpr int kMaxVariables = 100;

struct Names {
  std::string_view english, hungarian;
};

Names TitleOf(CorrelationKind kind, bool partial) {
  switch (kind) {
    case CorrelationKind::Pearson:
      return partial ? Names{"PEARSON PARTIAL CORRELATION", "PEARSON-FÉLE PARCIÁLIS KORRELÁCIÓ"}
                     : Names{"PEARSON CORRELATION", "PEARSON-FÉLE KORRELÁCIÓ"};
    case CorrelationKind::Spearman:
      return partial ? Names{"SPEARMAN PARTIAL RANK CORRELATION", "SPEARMAN-FÉLE PARCIÁLIS RANGKORRELÁCIÓ"}
                     : Names{"SPEARMAN RANK CORRELATION", "SPEARMAN-FÉLE RANGKORRELÁCIÓ"};
    case CorrelationKind::KendallTauB:
      return partial ? Names{"KENDALL TAU-B PARTIAL MONOTONICITY MEASURE", "KENDALL TAU-B PARCIÁLIS RANGKORRELÁCIÓ"}
                     : Names{"KENDALL TAU-B MONOTONICITY MEASURE", "KENDALL TAU-B RANGKORRELÁCIÓ"};
    case CorrelationKind::KendallTau:
      return partial ? Names{"KENDALL TAU PARTIAL MONOTONICITY MEASURE", "KENDALL TAU PARCIÁLIS RANGKORRELÁCIÓ"}
                     : Names{"KENDALL TAU MONOTONICITY MEASURE", "KENDALL TAU RANGKORRELÁCIÓ"};
  }
  return {};
}

// The measures of the dialog's choice: Kendall's gives both tau-b and tau.
std::vector<CorrelationKind> KindsOf(const AnalysisRequest& request) {
  const std::string_view type = request.Get(param::kCorrelationType);
  if (type == "Spearman rho") return {CorrelationKind::Spearman};
  if (type == "Kendall tau") return {CorrelationKind::KendallTauB, CorrelationKind::KendallTau};
  return {CorrelationKind::Pearson};
}

bool IsKendall(CorrelationKind kind) { return kind == CorrelationKind::KendallTauB || kind == CorrelationKind::KendallTau; }

// One coefficient with its test.
struct Cell {
  double value = 0;
  PValue p;
  bool defined = true;
};

// The variables of the run: the rows (X list), the columns (Y list, or the X list again),
// the controlled ones, and all of them in one list whose positions index the matrix.
struct Layout {
  std::vector<int> rows, columns, controls, all;
  bool square = true;
  bool paired = false;  // X[i] with Y[i] only
  bool Shown(std::size_t i, std::size_t j) const { return !paired || i == j; }
  int Position(int v) const { return static_cast<int>(std::find(all.begin(), all.end(), v) - all.begin()); }
};

// The coefficients a group's report showed, for the comparison of the groups.
struct GroupMatrices {
  int group = 0;
  int n = 0;
  std::vector<std::pair<CorrelationKind, std::vector<std::vector<Cell>>>> matrices;
};

class MatrixReport {
 public:
  MatrixReport(AnalysisRun& run, const Layout& layout) : run_(run), r_(run.report), l_(layout) {}
  GroupMatrices Write();

 private:
  std::string T(std::string_view english, std::string_view hungarian) const {
    return std::string(run_.T(english, hungarian));
  }
  const std::string& Name(int v) const { return run_.request.shortNames[v]; }
  void Read();
  void WriteBasicStatistics();
  std::vector<std::vector<Cell>> WriteMatrix(CorrelationKind kind);
  void WriteListing(CorrelationKind kind, const std::vector<std::vector<Cell>>& cells);
  void WriteIndependence();
  Cell Test(CorrelationKind kind, double value, int df) const;

  // The matrix of the measure; a Kendall one from the measures of the pairs, each pair
  // computed once for the group.
  Matrix CoefficientsOf(CorrelationKind kind);

  AnalysisRun& run_;
  ReportWriter& r_;
  const Layout& l_;
  std::vector<std::vector<double>> columns_;  // by position in l_.all
  // Kendall's measures of the ordered pairs of positions (a, b) of this group: the tau-b
  // and tau matrices and the tests of tau-b all read them.
  std::map<std::pair<int, int>, KendallMeasures> kendall_;
  int n_ = 0;
};

void MatrixReport::Read() {
  std::vector<int> feedColumns = {0};
  feedColumns.insert(feedColumns.end(), l_.all.begin(), l_.all.end());
  DataFeed feed(run_.ws, r_.Missing(), feedColumns);
  const int k = static_cast<int>(l_.all.size());
  std::vector<double> value(k + 1, 0);
  std::vector<std::uint8_t> missing(k + 1, 1);
  columns_.assign(k, {});
  kendall_.clear();
  int seen = 0;
  for (int row : run_.GroupRows()) {
    if (++seen % 10000 == 0) run_.ShowCaseProgress(row);
    feed.ReadRow(row, k, value, missing);
    if (std::any_of(missing.begin() + 1, missing.end(), [](std::uint8_t m) { return m != 0; })) continue;
    for (int i = 0; i < k; ++i) columns_[i].push_back(value[i + 1]);
  }
  n_ = k > 0 ? static_cast<int>(columns_[0].size()) : 0;
}

Cell MatrixReport::Test(CorrelationKind kind, double value, int df) const {
  Cell c{.value = value};
  if (std::isnan(value)) return {.defined = false};
  if (IsKendall(kind)) {
    // Under independence tau is near normal with the SD of untied data.
    const double sd = TauNullSd(n_);
    c.p = n_ < 5 || sd <= 0 ? Marked(1) : NormalP2(value / sd);
    return c;
  }
  if (df < 1) {
    c.p = Marked(1);
    return c;
  }
  const double unexplained = 1 - value * value;
  c.p = unexplained <= 0 ? Marked(0) : StudentP2(std::sqrt(df * value * value / unexplained), df);
  return c;
}

GroupMatrices MatrixReport::Write() {
  Read();
  GroupMatrices out{.group = run_.Group(), .n = n_};
  if (run_.Conditional() > 0) r_.BlankLine();
  r_.Line(fmt::format("{}{}", T("Number of acceptable cases, N = ", "Az érvényes esetek száma: N = "), n_));
  if (n_ < 3) {
    r_.Line(T("Since N < 3, no analysis can be performed.", "Mivel N < 3, nem végzünk elemzést."));
    return out;
  }
  if (run_.request.Get(param::kBasicStatistics)) WriteBasicStatistics();
  for (CorrelationKind kind : KindsOf(run_.request)) out.matrices.emplace_back(kind, WriteMatrix(kind));
  if (l_.square && l_.controls.empty()) WriteIndependence();
  return out;
}

Matrix MatrixReport::CoefficientsOf(CorrelationKind kind) {
  if (!IsKendall(kind)) return CoefficientMatrix(kind, columns_, run_.Threads());
  const int p = static_cast<int>(columns_.size());
  if (kendall_.empty()) {
    // The pairs of the matrix (a < b) and, without controls, those of the cells' tests
    // below the diagonal: KendallOf(x, y) is kept as it was asked for, in its own order.
    std::vector<std::pair<int, int>> pairs;
    for (int a = 0; a < p; ++a) {
      for (int b = a + 1; b < p; ++b) pairs.emplace_back(a, b);
    }
    if (l_.controls.empty()) {
      for (int row : l_.rows) {
        for (int column : l_.columns) {
          const int a = l_.Position(row), b = l_.Position(column);
          if (a > b) pairs.emplace_back(a, b);
        }
      }
    }
    std::sort(pairs.begin(), pairs.end());
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    std::vector<KendallMeasures> measures(pairs.size());
    const int count = static_cast<int>(pairs.size());
    const int parts = PartsFor(run_.Threads(), count, n_);
    ForEachItemInParts(parts, count, [&](int k) { measures[k] = KendallOf(columns_[pairs[k].first], columns_[pairs[k].second]); });
    for (int k = 0; k < count; ++k) kendall_[pairs[k]] = measures[k];
  }
  Matrix m(p, std::vector<double>(p, 1));
  for (int a = 0; a < p; ++a) {
    for (int b = a + 1; b < p; ++b) {
      const KendallMeasures& k = kendall_.at({a, b});
      m[a][b] = m[b][a] = kind == CorrelationKind::KendallTauB ? k.tauB : k.tau;
    }
  }
  return m;
}

void MatrixReport::WriteBasicStatistics() {
  r_.BlankLine();
  r_.BeginTitledTable(T("BASIC DESCRIPTIVE STATISTICS", "ALAPSTATISZTIKÁK"),
                      {run_.T("Index", "Index"), run_.T("Variable     ", "Változó      "), run_.T("Mean", "Átlag"),
                       run_.T("SD", "Szórás"), run_.T("Long variable name", "Hosszú változónév")});
  for (std::size_t i = 0; i < l_.all.size(); ++i) {
    const PairMoments m = MomentsOf(columns_[i], columns_[i]);
    r_.FirstCell(fmt::format("{}", i + 1));
    r_.Cell(Name(l_.all[i]));
    r_.WriteRatio(9, 9, 1, m.meanX, 1);
    r_.WriteRatio(9, 9, 1, m.sdX, 1);
    r_.Cell(run_.request.longNames[l_.all[i]]);
    r_.EndRow();
  }
  r_.EndTable();
}

std::vector<std::vector<Cell>> MatrixReport::WriteMatrix(CorrelationKind kind) {
  const int threads = run_.Threads();
  const Matrix m = CoefficientsOf(kind);
  const int c = static_cast<int>(l_.controls.size());
  const int df = n_ - 2 - c;
  std::vector<int> controlPositions;
  for (int v : l_.controls) controlPositions.push_back(l_.Position(v));
  const bool approximate = IsKendall(kind) && n_ <= kTauTableLastN;
  const int width = static_cast<int>(l_.columns.size());
  const int count = static_cast<int>(l_.rows.size()) * width;
  std::vector<std::vector<Cell>> cells(l_.rows.size(), std::vector<Cell>(width));
  // The cells are computed side by side (each its own), then written in order below.
  const int parts = PartsFor(threads, count, n_);
  ForEachItemInParts(parts, count, [&](int k) {
    const int i = k / width, j = k % width;
    const int a = l_.Position(l_.rows[i]), b = l_.Position(l_.columns[j]);
    const double value = a == b ? 1 : c == 0 ? m[a][b] : PartialCoefficient(m, a, b, controlPositions);
    cells[i][j] = Test(kind, value, df);
    // tau-b of two variables has the test with its ties, as in the analysis of pairs.
    if (kind == CorrelationKind::KendallTauB && c == 0 && a != b && cells[i][j].value != 0) {
      cells[i][j].p = NormalP2(kendall_.at({a, b}).zTauB);
    }
  });
  const Names title = TitleOf(kind, c > 0);
  r_.BlankLine();
  // The p values of small Kendall samples are approximate: their notation, and their
  // markers, stop at 0.01.
  const std::string_view notation = run_.English() ? (approximate ? ";  +: p < 0.10  *: p < 0.05   **: p < 0.01)"
                                                                  : ";  +: p < 0.10  *: p < 0.05   **: p < 0.01   ***: p < 0.001)")
                                                   : (approximate ? ";  +: p < 0,10  *: p < 0,05   **: p < 0,01)"
                                                                  : ";  +: p < 0,10  *: p < 0,05   **: p < 0,01   ***: p < 0,001)");
  r_.Line(run_.English() ? fmt::format("{} MATRIX (df = {}{}", title.english, df, notation)
                         : fmt::format("{}S MÁTRIX (f = {}{}", title.hungarian, df, notation));
  if (c > 0) {
    std::string controlled = T("Controlled variables:", "Kontrollált változók:");
    for (int v : l_.controls) controlled += " " + Name(v);
    r_.Line(controlled);
  }
  const bool listP = run_.request.Get(param::kListPValues);
  r_.BeginTable();
  r_.FirstCell(T("Variable", "Változó"));
  for (int v : l_.columns) r_.Cell(Name(v));
  r_.EndRow();
  for (std::size_t i = 0; i < l_.rows.size(); ++i) {
    r_.FirstCell(Name(l_.rows[i]));
    for (std::size_t j = 0; j < l_.columns.size(); ++j) {
      const Cell& cell = cells[i][j];
      const bool diagonal = l_.rows[i] == l_.columns[j];
      const std::string_view marker = diagonal ? "" : approximate && cell.p.marker == "***" ? "**" : cell.p.marker;
      if (!l_.Shown(i, j)) {
        r_.NumberCell("");
      } else {
        r_.NumberCell(!cell.defined ? "......" : Fixed(cell.value, 3) + std::string(marker));
      }
    }
    r_.EndRow();
    if (!listP) continue;
    r_.FirstCell(T(" p-value:        ", " p-érték:        "));
    for (std::size_t j = 0; j < l_.columns.size(); ++j) {
      const Cell& cell = cells[i][j];
      if (!l_.Shown(i, j)) {
        r_.NumberCell("");
      } else if (l_.rows[i] == l_.columns[j] || !cell.defined) {
        r_.NumberCell("   .");
      } else {
        r_.NumberCell(approximate ? "(" + Fixed(cell.p.p, 4) + ")" : Fixed(cell.p.p, 4));
      }
    }
    r_.EndRow();
  }
  r_.EndTable();
  if (listP && approximate) {
    r_.Line(T("(p-values in parentheses are only approximate due to the small sample size)",
              "(a zárójelben álló p-értékek a kis minta miatt csak közelítők)"));
  }
  if (run_.request.Get(param::kListCorrelations)) WriteListing(kind, cells);
  return cells;
}

void MatrixReport::WriteListing(CorrelationKind kind, const std::vector<std::vector<Cell>>& cells) {
  struct Entry {
    int row, column;
    Cell cell;
  };
  std::vector<Entry> entries;
  for (std::size_t i = 0; i < l_.rows.size(); ++i) {
    for (std::size_t j = 0; j < l_.columns.size(); ++j) {
      // In a square matrix the upper triangle holds every pair once.
      if (l_.square && l_.Position(l_.columns[j]) <= l_.Position(l_.rows[i])) continue;
      if (!l_.Shown(i, j)) continue;
      if (cells[i][j].defined) entries.push_back({l_.rows[i], l_.columns[j], cells[i][j]});
    }
  }
  const bool absolute = run_.request.Get(param::kListByAbsoluteValue);
  const bool descending = run_.request.Get(param::kListDescending);
  auto key = [absolute](const Entry& e) { return absolute ? std::fabs(e.cell.value) : e.cell.value; };
  std::stable_sort(entries.begin(), entries.end(),
                   [&](const Entry& a, const Entry& b) { return descending ? key(a) > key(b) : key(a) < key(b); });
  entries.resize(std::min<std::size_t>(entries.size(), std::max(1, run_.request.Get(param::kListLength))));
  const std::string title =
      run_.English() ? fmt::format("The list of {}{}correlations in {} order ({})", descending ? "largest" : "smallest",
                                   absolute ? " absolute " : " ", descending ? "decreasing" : "increasing",
                                   TitleOf(kind, !l_.controls.empty()).english)
                     : fmt::format("A {}{}korrelációk listája {} sorrendben ({})", descending ? "legnagyobb" : "legkisebb",
                                   absolute ? " abszolút értékű " : " ", descending ? "csökkenő" : "növekvő",
                                   TitleOf(kind, !l_.controls.empty()).hungarian);
  r_.BlankLine();
  r_.BeginTitledTable(title, {run_.T("Rank", "Sorszám"), run_.T("X variable", "X változó"), run_.T("Y variable", "Y változó"),
                              " r(X,Y)", run_.T(" Significance", " Szignifikancia"),
                              run_.T("Long variable name", "Hosszú változónév")});
  int rank = 0;
  for (const Entry& e : entries) {
    r_.FirstCell(fmt::format("{}", ++rank));
    r_.Cell(Name(e.row));
    r_.Cell(Name(e.column));
    r_.NumberCell(Fixed(e.cell.value, 3));
    r_.Cell(fmt::format("p = {}{}", Fixed(e.cell.p.p, 4), e.cell.p.marker));
    r_.Cell(run_.request.longNames[e.column]);
    r_.EndRow();
  }
  r_.EndTable();
}

void MatrixReport::WriteIndependence() {
  const Matrix m = CoefficientMatrix(CorrelationKind::Pearson, columns_, run_.Threads());
  const double d = Determinant(m);
  const int p = static_cast<int>(m.size());
  r_.BlankLine();
  if (std::fabs(d) < kZeroTolerance) {
    r_.Line(T("Matrix is singular, Determinant = 0.", "A mátrix szinguláris, determináns = 0."));
    return;
  }
  const int df = p * (p - 1) / 2;
  r_.Line(T("Bartlett's chi-square statistic for testing the independence of the",
            "Bartlett-féle khi-négyzet próba a függő változók teljes halmazának"));
  if (d < 0) {
    r_.Line(fmt::format("{}{}) = {}", T("whole set of dependent variables: Chi2(", "függetlenségére: Khi2("), df,
                        T("infinite large (p <.0000001)", "végtelen nagy (p <,0000001)")));
    return;
  }
  const double chi = -std::fabs(n_ - 1 - (2.0 * p + 5) / 6) * std::log(d);
  const PValue pv = ChiSquareP(chi, df);
  r_.Line(fmt::format("{}{}) = {} (p = {}){}", T("whole set of dependent variables: Chi2(", "függetlenségére: Khi2("), df,
                      Fixed(chi, 3), Fixed(pv.p, 4), pv.marker));
}

std::string_view MeasureWord(CorrelationKind kind) {
  switch (kind) {
    case CorrelationKind::Pearson:
      return "Pearson";
    case CorrelationKind::Spearman:
      return "Spearman";
    case CorrelationKind::KendallTauB:
      return "Kendall tau-b";
    case CorrelationKind::KendallTau:
      return "Kendall tau";
  }
  return "";
}

// Fisher's z of Pearson and Spearman coefficients with variance 1/(N - 3 - c); the Kendall
// coefficients themselves with the variance of tau under independence.
struct Standardized {
  double z = 0, variance = 0;
  bool usable = false;
};
Standardized StandardizedOf(CorrelationKind kind, double value, int n, int c) {
  if (IsKendall(kind)) {
    if (n <= 3) return {};
    return {value, 2.0 * (2 * n + 5) / (9.0 * n * (n - 1)), true};
  }
  if (n - 3 - c <= 3) return {};
  return {FisherZ(value), 1.0 / (n - 3 - c), true};
}

constexpr int kMaxComparedGroups = 50;

void WriteGroupComparisons(AnalysisRun& run, const Layout& l, const std::vector<GroupMatrices>& groups) {
  ReportWriter& r = run.report;
  const int c = static_cast<int>(l.controls.size());
  auto groupName = [&](int g) { return std::string(Utf8Prefix(run.Groups().distinctNames[g], 22)); };
  r.BlankLine();
  r.Line(run.T("PAIRWISE COMPARISON OF CORRELATION MATRICES OF CONDITIONAL GROUPS",
               "A FELTÉTELES CSOPORTOK KORRELÁCIÓS MÁTRIXAINAK PÁRONKÉNTI ÖSSZEHASONLÍTÁSA"));
  const std::size_t count = std::min<std::size_t>(groups.size(), kMaxComparedGroups);
  for (std::size_t a = 0; a < count; ++a) {
    for (std::size_t b = a + 1; b < count; ++b) {
      const GroupMatrices &g1 = groups[a], &g2 = groups[b];
      r.BlankLine();
      r.Line(run.T("The two groups to be compared:", "Az összehasonlítandó két csoport:"));
      for (const GroupMatrices* g : {&g1, &g2}) {
        r.Line(fmt::format("  {}{}{}{}, N = {}", run.T("GROUP INDEX: ", "CSOPORTINDEX: "), g->group,
                           run.T(".  GROUP NAME: ", ".  CSOPORTNÉV: "), groupName(g->group), g->n));
      }
      if (c > 0) r.Line(fmt::format("{}{}", run.T("Number of covariates: ", "Kovariáns változók száma: "), c));
      if (g1.n - 3 - c < 4 || g2.n - 3 - c < 4 || g1.matrices.empty() || g2.matrices.empty()) {
        r.Line(run.T("Comparisons will not be performed due to low (< 5) degrees of freedom.",
                     "Egy 5-nél kisebb szabadságfok miatt nem végzünk összehasonlítást."));
        continue;
      }
      for (std::size_t k = 0; k < g1.matrices.size(); ++k) {
        const CorrelationKind kind = g1.matrices[k].first;
        const auto &m1 = g1.matrices[k].second, &m2 = g2.matrices[k].second;
        r.BlankLine();
        r.Line(run.English()
                   ? fmt::format("Matrix of standardized differences of {}{} correlations ({}, {})",
                                 MeasureWord(kind), c > 0 ? " partial" : "", groupName(g1.group), groupName(g2.group))
                   : fmt::format("A {}-féle{} korrelációk standardizált különbségeinek táblázata ({}, {})",
                                 MeasureWord(kind), c > 0 ? " parciális" : "", groupName(g1.group),
                                 groupName(g2.group)));
        r.BeginTable();
        r.FirstCell(run.T("Variable", "Változó"));
        for (int v : l.columns) r.Cell(run.request.shortNames[v]);
        r.EndRow();
        for (std::size_t i = 0; i < l.rows.size(); ++i) {
          r.FirstCell(run.request.shortNames[l.rows[i]]);
          for (std::size_t j = 0; j < l.columns.size(); ++j) {
            if (l.square && j >= i) {
              r.NumberCell(j == i ? "    ." : "");
              continue;
            }
            if (!l.Shown(i, j)) {
              r.NumberCell("");
              continue;
            }
            const Standardized s1 = StandardizedOf(kind, m1[i][j].value, g1.n, c);
            const Standardized s2 = StandardizedOf(kind, m2[i][j].value, g2.n, c);
            if (!s1.usable || !s2.usable || !m1[i][j].defined || !m2[i][j].defined) {
              r.NumberCell("......");
              continue;
            }
            const double z = (s1.z - s2.z) / std::sqrt(s1.variance + s2.variance);
            r.NumberCell(Fixed(z, 3) + std::string(NormalP2(z).marker));
          }
          r.EndRow();
        }
        r.EndTable();
      }
    }
  }
}

}  // namespace

void CorrelationMatrix(AnalysisRun& run) {
  const AnalysisRequest& q = run.request;
  Layout l;
  for (int v = 1; v <= q.numberOfVariables; ++v) {
    if (q.role[v] == 'X') l.rows.push_back(v);
    if (q.role[v] == 'Y') l.columns.push_back(v);
    if (q.role[v] == 'C') l.controls.push_back(v);
  }
  ReportWriter& r = run.report;
  if (q.Get(param::kPairing) == "Pair" && !l.columns.empty() && l.rows.size() != l.columns.size()) {
    r.Line(run.T("Since there are different number of X and Y variables, pairing is impossible, program stops.",
                 "Mivel az X és az Y változók száma különböző, a párosítás nem lehetséges, a program leáll."));
    return;
  }
  l.square = l.columns.empty();
  l.paired = !l.square && q.Get(param::kPairing) == "Pair";
  if (l.square) l.columns = l.rows;
  for (const std::vector<int>* list : {&l.rows, &l.columns, &l.controls}) {
    for (int v : *list) {
      if (std::find(l.all.begin(), l.all.end(), v) == l.all.end()) l.all.push_back(v);
    }
  }
  const int selected = static_cast<int>(l.all.size() - l.controls.size());
  if (selected < 2) {
    r.Line(run.T("Number of dependent variables is less than 2.", "A függő változók száma kevesebb, mint 2."));
    r.Line(run.T("No analysis can be performed.", "Nem végezhető elemzés."));
    return;
  }
  if (static_cast<int>(l.all.size()) > kMaxVariables) {
    r.Line(fmt::format("{}{}", run.T("Number of selected variables: V = ", "A kijelölt változók száma: V = "), l.all.size()));
    r.Line(run.English() ? fmt::format("Since V is greater than {} no analysis is performed.", kMaxVariables)
                         : fmt::format("Mivel V nagyobb, mint {}, nem végzünk elemzést.", kMaxVariables));
    return;
  }
  std::vector<GroupMatrices> groups;
  run.ForEachGroup([&] {
    WriteCorrelationGroupHeading(run);
    groups.push_back(MatrixReport(run, l).Write());
  });
  if (q.Get(param::kCompareConditionalGroups) && run.Conditional() > 0 && groups.size() >= 2) {
    WriteGroupComparisons(run, l, groups);
  }
}

}  // namespace tarvika
