#include "relations/crosstab.h"

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
#include "relations/jaccard_matrix.h"
#include "stats/contingency.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

constexpr int kMaxCategories = 100;

// The categories of one variable in the current group: the groups of its definition, or
// the values found in the group's complete pairs.
class Categories {
 public:
  explicit Categories(const Workspace& ws, int variable) : groups_(GetGroupDefinition(ws, variable)) {}
  bool ByGroups() const { return groups_.kind != 0; }
  // Records a value found; the groups are fixed by the definition. Past the largest table
  // one more value is enough to refuse it.
  void Note(double x) {
    if (!ByGroups() && values_.size() <= kMaxCategories) values_.emplace(x, 0);
  }
  // True when x belongs to a category.
  bool Holds(double x) const { return !ByGroups() || FindMergedGroup(groups_, x) > 0; }
  // Numbers the values found in increasing order; call once all are noted.
  void Close() {
    int k = 0;
    for (auto& [value, index] : values_) index = k++;
  }
  int Count() const { return ByGroups() ? groups_.distinct : static_cast<int>(values_.size()); }
  // The category of x, from 0; x must be held.
  int Of(double x) const { return ByGroups() ? FindMergedGroup(groups_, x) - 1 : values_.at(x); }
  std::vector<std::string> Labels() const {
    std::vector<std::string> labels;
    if (ByGroups()) {
      labels.assign(groups_.distinctNames.begin() + 1, groups_.distinctNames.end());
    } else {
      for (const auto& entry : values_) labels.push_back(Trimmed4(entry.first));
    }
    return labels;
  }

 private:
  GroupDefinition groups_;
  std::map<double, int> values_;
};

class PairReport {
 public:
  PairReport(AnalysisRun& run, int rowVariable, int columnVariable, const CrosstabSections& sections)
      : run_(run),
        r_(run.report),
        s_(sections),
        x_(rowVariable),
        y_(columnVariable),
        rows_(run.ws, x_),
        columns_(run.ws, y_) {}
  void Write();

 private:
  std::string T(std::string_view english, std::string_view hungarian) const {
    return std::string(run_.T(english, hungarian));
  }
  const std::string& Name(int v) const { return run_.request.shortNames[v]; }
  // Reads the complete pairs of the group into pairs_, noting the categories.
  void Read();
  void WriteCategoryLine(const Categories& c, int v, std::string_view side);
  // A table with a heading row of the column categories: cell(i, j) gives the text of
  // every cell, i = R being the row of column margins and j = C the column of row margins.
  template <typename CellText>
  void WriteTable(std::string_view title, CellText cell);
  void WriteFrequencyTable();
  void WriteOptionalTables();
  void WriteRelationship(const IndependenceTest& test);
  void WriteMonotonicity();
  void WritePrediction();
  void WriteIndependence(const IndependenceTest& test);
  void WritePairwise(const Contingency& t, const std::vector<std::string>& labels, bool rows);
  void WriteKappa();
  std::string Number(double x, int decimals) const { return std::isnan(x) ? "......" : Fixed(x, decimals); }
  std::string Tested(double z, const PValue& p) const {
    if (std::isnan(z)) return "";
    return fmt::format(",  z = {}  (p = {}){}", Fixed(z, 3), Fixed(p.p, 4), p.marker);
  }

  AnalysisRun& run_;
  ReportWriter& r_;
  const CrosstabSections& s_;
  int x_, y_;
  Categories rows_, columns_;
  std::vector<std::pair<double, double>> pairs_;
  Contingency t_;
  std::vector<std::string> rowLabels_, columnLabels_;
};

void PairReport::Read() {
  run_.ForEachPair(x_, y_, [&](int, double x, double y) {
    if (!rows_.Holds(x) || !columns_.Holds(y)) return;
    rows_.Note(x);
    columns_.Note(y);
    pairs_.emplace_back(x, y);
  });
  rows_.Close();
  columns_.Close();
}

void PairReport::WriteCategoryLine(const Categories& c, int v, std::string_view side) {
  const std::string lead = c.ByGroups() ? T("Groups/categories of variable: ", "A változó csoportjai/kategóriái: ")
                                             : T("Values of variable: ", "A változó értékei: ");
  r_.Line(fmt::format("{}{}{}", lead, NameWithLong(run_.ws, v), side));
}

template <typename CellText>
void PairReport::WriteTable(std::string_view title, CellText cell) {
  std::vector<std::string_view> headings = {Name(x_)};
  for (const std::string& label : columnLabels_) headings.push_back(label);
  headings.push_back(run_.T("Total", "Összesen"));
  r_.BeginTitledTable(title, headings);
  for (int i = 0; i <= t_.R(); ++i) {
    r_.FirstCell(i < t_.R() ? std::string_view(rowLabels_[i]) : run_.T("Total", "Összesen"));
    for (int j = 0; j <= t_.C(); ++j) r_.NumberCell(cell(i, j));
    r_.EndRow();
  }
  r_.EndTable();
}

void PairReport::Write() {
  r_.BlankLine();
  r_.Line(fmt::format("{}{}{}{}", T("TWO-WAY FREQUENCY TABLE OF VARIABLES ", "KÉTSZEMPONTOS GYAKORISÁGI TÁBLÁZAT - Változók: "),
                      Name(x_), T(" and ", " és "), Name(y_)));
  Read();
  WriteCategoryLine(rows_, x_, T(" (rows)", " (sorok)"));
  WriteCategoryLine(columns_, y_, T(" (columns)", " (oszlopok)"));
  for (const auto& [c, word] : {std::pair{&rows_, T("rows", "sor")}, std::pair{&columns_, T("columns", "oszlop")}}) {
    if (c->Count() > kMaxCategories) {
      r_.Line(run_.English() ? fmt::format("There are more than {} {} in the contingency table.", kMaxCategories, word)
                             : fmt::format("A kontingenciatáblázatban {}-nál több {} van.", kMaxCategories, word));
      r_.Line(T("No valid statistics can be calculated.", "Érvényes statisztika nem számítható."));
      return;
    }
  }
  std::vector<std::vector<double>> f(rows_.Count(), std::vector<double>(columns_.Count(), 0));
  for (const auto& [a, b] : pairs_) f[rows_.Of(a)][columns_.Of(b)] += 1;
  t_ = MakeContingency(std::move(f));
  rowLabels_ = rows_.Labels();
  columnLabels_ = columns_.Labels();
  if (t_.R() < 2 || t_.C() < 2 || !IsComplete(t_)) {
    r_.Line(T("The two-way frequency table is incomplete.", "A kétszempontos gyakorisági táblázat hiányos."));
    r_.Line(T("No valid statistics can be calculated.", "Érvényes statisztika nem számítható."));
    return;
  }
  WriteFrequencyTable();
  WriteOptionalTables();
  const IndependenceTest test = PearsonIndependence(t_);
  WriteRelationship(test);
  if (s_.monotonicity) WriteMonotonicity();
  if (s_.prediction) WritePrediction();
  WriteIndependence(test);
  if (s_.pairwise) {
    WritePairwise(t_, rowLabels_, true);
    WritePairwise(Transposed(t_), columnLabels_, false);
  }
  if (s_.kappa) WriteKappa();
}

void PairReport::WriteFrequencyTable() {
  const int R = t_.R(), C = t_.C();
  auto count = [&](int i, int j) {
    const double x = i < R ? (j < C ? t_.f[i][j] : t_.rows[i]) : (j < C ? t_.columns[j] : t_.n);
    return fmt::format("{}", static_cast<long long>(x));
  };
  r_.BlankLine();
  WriteTable(T("FREQUENCIES", "GYAKORISÁGOK"), count);
}

void PairReport::WriteOptionalTables() {
  const int R = t_.R(), C = t_.C();
  // The margins of the percent tables are the shares of the margins themselves.
  auto cellOr = [&](int i, int j) {
    return i < R ? (j < C ? t_.f[i][j] : t_.rows[i]) : (j < C ? t_.columns[j] : t_.n);
  };
  if (s_.expected) {
    r_.BlankLine();
    WriteTable(T("TABLE OF EXPECTED FREQUENCIES", "VÁRT GYAKORISÁGOK TÁBLÁZATA"), [&](int i, int j) {
      return i < R && j < C ? Fixed(t_.Expected(i, j), 2) : Fixed(cellOr(i, j), 0);
    });
  }
  if (s_.rowPercents) {
    r_.BlankLine();
    WriteTable(T("TABLE OF ROW PERCENTS", "SORSZÁZALÉKOK TÁBLÁZATA"),
               [&](int i, int j) { return Fixed(100 * cellOr(i, j) / (i < R ? t_.rows[i] : t_.n), 2); });
  }
  if (s_.columnPercents) {
    r_.BlankLine();
    WriteTable(T("TABLE OF COLUMN PERCENTS", "OSZLOPSZÁZALÉKOK TÁBLÁZATA"),
               [&](int i, int j) { return Fixed(100 * cellOr(i, j) / (j < C ? t_.columns[j] : t_.n), 2); });
  }
  if (s_.totalPercents) {
    r_.BlankLine();
    WriteTable(T("TABLE OF TOTAL PERCENTS", "TELJES SZÁZALÉKOK TÁBLÁZATA"),
               [&](int i, int j) { return Fixed(100 * cellOr(i, j) / t_.n, 2); });
  }
}

void PairReport::WriteRelationship(const IndependenceTest& test) {
  const NominalAssociation m = NominalMeasures(t_, test.chiSquare);
  r_.BlankLine();
  r_.Line(T("MEASURES OF RELATIONSHIP", "KAPCSOLATI MUTATÓK"));
  r_.Line(T("Measure of association based on chi-square (Cramer's V) = ",
            "Khi-négyzet alapú asszociációs mutató (Cramer-féle V) = ") +
          Number(m.cramerV, 4));
  r_.Line(T("Pearson's contingency coefficient: V = ", "Pearson-féle kontingencia-együttható: V = ") +
          Number(m.contingencyCoefficient, 4));
  if (t_.R() != 2 || t_.C() != 2) return;
  const TwoByTwoMeasures two = TwoByTwo(t_);
  r_.Line(T("Yule's measure of association: Q = ", "Yule-féle asszociációs mutató: Q = ") + Number(two.yuleQ, 4));
  r_.Line(T("Yule's measure of colligation: Y = ", "Yule-féle kolligációs mutató: Y = ") + Number(two.yuleY, 4));
  r_.Line(T("Odds ratio = ", "Esélyhányados = ") + Number(two.oddsRatio, 4));
  if (two.oddsCorrected) {
    r_.Line(T("In order to enable computing the odds ratio, 0.5 was added to each of the 4 cell frequencies.",
              "Az esélyhányados kiszámíthatósága érdekében mind a 4 cellagyakorisághoz 0,5-öt adtunk."));
  }
  r_.Line(T("Jaccard index: ", "Jaccard-index: ") + Number(two.jaccard, 4));
}

void PairReport::WriteMonotonicity() {
  const Monotonicity m = MonotonicityMeasures(t_);
  const std::string tested = Tested(m.z, m.p);
  r_.BlankLine();
  r_.Line(T("Monotonicity coefficients", "Monotonitási együtthatók"));
  r_.Line(T("  - gamma = ", "  - gamma = ") + Number(m.gamma, 4) + tested);
  r_.Line(T("  - Kendall's tau-b = ", "  - Kendall-féle tau-b = ") + Number(m.tauB, 4) + tested);
  r_.Line(T("  - Predicting column category from row category: Somers' D(c,r) = ",
            "  - Az oszlopkategória előrejelzése a sorkategóriából: Somers-féle D(oszlop|sor) = ") +
          Number(m.somersCR, 4) + tested);
  r_.Line(T("  - Predicting row category from column category: Somers' D(r,c) = ",
            "  - A sorkategória előrejelzése az oszlopkategóriából: Somers-féle D(sor|oszlop) = ") +
          Number(m.somersRC, 4) + tested);
}

void PairReport::WritePrediction() {
  const PredictiveAssociation m = PredictiveMeasures(t_);
  const bool en = run_.English();
  auto pair = [&](std::string_view lambda, double l, std::string_view tau, double t) {
    r_.Line(fmt::format("{}{}{}{}", lambda, Number(l, 4), tau, Number(t, 4)));
  };
  r_.BlankLine();
  r_.Line(T("Goodman and Kruskal's measures of predictive association",
            "Goodman és Kruskal előrejelzési (prediktív asszociációs) mutatói"));
  r_.Line(T("Treating both row and column variables as random",
            "A sor- és az oszlopváltozót egyaránt véletlennek tekintve"));
  r_.Line(T("  - Predicting column category from known row category:",
            "  - Az oszlopkategória előrejelzése az ismert sorkategóriából:"));
  pair(en ? "    Lambda(c,r) = " : "    Lambda(oszlop|sor) = ", m.lambdaCR, en ? ",  Tau(c,r) = " : ",  Tau(oszlop|sor) = ",
       m.tauCR);
  r_.Line(T("  - Predicting row category from known column category:",
            "  - A sorkategória előrejelzése az ismert oszlopkategóriából:"));
  pair(en ? "    Lambda(r,c) = " : "    Lambda(sor|oszlop) = ", m.lambdaRC, en ? ",  Tau(r,c) = " : ",  Tau(sor|oszlop) = ",
       m.tauRC);
  r_.Line(T("Treating only predicted variable as random", "Csak az előrejelzett változót tekintve véletlennek"));
  r_.Line(T("  - Predicting column category from known row category:",
            "  - Az oszlopkategória előrejelzése az ismert sorkategóriából:"));
  pair(en ? "    Lambda-star(c,r) = " : "    Lambda-csillag(oszlop|sor) = ", m.lambdaStarCR,
       en ? ",  Tau-star(c,r) = " : ",  Tau-csillag(oszlop|sor) = ", m.tauStarCR);
  r_.Line(T("  - Predicting row category from known column category:",
            "  - A sorkategória előrejelzése az ismert oszlopkategóriából:"));
  pair(en ? "    Lambda-star(r,c) = " : "    Lambda-csillag(sor|oszlop) = ", m.lambdaStarRC,
       en ? ",  Tau-star(r,c) = " : ",  Tau-csillag(sor|oszlop) = ", m.tauStarRC);
  const Uncertainty uc = UncertaintyCoefficients(t_);
  r_.BlankLine();
  r_.Line(T("Uncertainty coefficients (explained uncertainty proportions)",
            "Bizonytalansági együtthatók (a megmagyarázott bizonytalanság aránya)"));
  r_.Line(T("  - Predicting column category from row category: UC(c,r) = ",
            "  - Az oszlopkategória előrejelzése a sorkategóriából: UC(oszlop|sor) = ") +
          Number(uc.columnFromRow, 4));
  r_.Line(T("  - Predicting row category from column category: UC(r,c) = ",
            "  - A sorkategória előrejelzése az oszlopkategóriából: UC(sor|oszlop) = ") +
          Number(uc.rowFromColumn, 4));
}

void PairReport::WriteIndependence(const IndependenceTest& test) {
  r_.BlankLine();
  r_.Line(T("TEST OF INDEPENDENCE", "FÜGGETLENSÉG TESZTELÉSE"));
  r_.Line(fmt::format("{}{}) = {}  (p = {}){}", T("Pearson's chi-square (df = ", "Pearson-féle khi-négyzet (df = "),
                      test.df, Fixed(test.chiSquare, 3), Fixed(test.p.p, 4), test.p.marker));
  if (test.minimumExpected < 5) {
    r_.Line(fmt::format("{}{} < 5.", T("    Minimal expected frequency, e_min = ", "    A legkisebb várt gyakoriság, e_min = "),
                        Fixed(test.minimumExpected, 2)));
    r_.Line(T("    This may invalidate the chi-square test.", "    Ez érvénytelenítheti a khi-négyzet próbát."));
  }
}

// Every pair of rows of t (of categories `labels`) by the chi-square of its 2 by C table;
// the marker of a pair is that of its p multiplied by the number of pairs.
void PairReport::WritePairwise(const Contingency& t, const std::vector<std::string>& labels, bool rows) {
  const int k = t.R(), df = t.C() - 1;
  const int pairs = k * (k - 1) / 2;
  r_.BlankLine();
  r_.Line(fmt::format("{}{}{})",
                      rows ? T("Pairwise comparison of row categories with chi-square tests",
                               "A sorkategóriák páronkénti összehasonlítása khi-négyzet próbákkal")
                           : T("Pairwise comparison of column categories with chi-square tests",
                               "Az oszlopkategóriák páronkénti összehasonlítása khi-négyzet próbákkal"),
                      " (df = ", df));
  r_.Line(T("(significance is decided according to the Bonferroni method)",
            "(a szignifikanciáról a Bonferroni-módszer szerint döntünk)"));
  r_.BeginTable();
  for (int a = 0; a < k; ++a) {
    for (int b = a + 1; b < k; ++b) {
      const double chi = RowPairChiSquare(t, a, b);
      const PValue p = ChiSquareP(chi, df);
      r_.FirstCell(labels[a]);
      r_.Cell(labels[b]);
      r_.Cell(fmt::format("  Chi2({}) =", df));
      r_.NumberCell(Fixed(chi, 3));
      r_.Cell(SignificanceMarker(std::min(1.0, p.p * pairs)));
      r_.EndRow();
    }
  }
  r_.EndTable();
}

void PairReport::WriteKappa() {
  r_.BlankLine();
  r_.Line(T("COHEN'S KAPPA (INTERRATER AGREEMENT)", "COHEN-FÉLE KAPPA (ÉRTÉKELŐK EGYETÉRTÉSE)"));
  if (rowLabels_ != columnLabels_) {
    r_.Line(T("Kappa needs the same categories in the rows and in the columns.",
              "A kappához a soroknak és az oszlopoknak ugyanazok a kategóriái kellenek."));
    return;
  }
  const Kappa k = CohenKappa(t_);
  r_.Line(T("Observed proportion of agreement: p_o = ", "Az egyezések megfigyelt aránya: p_o = ") + Number(k.observed, 4));
  r_.Line(T("Proportion of agreement expected by chance: p_e = ", "Az egyezések véletlentől várt aránya: p_e = ") +
          Number(k.chance, 4));
  r_.Line(T("Kappa = (p_o - p_e)/(1 - p_e) = ", "Kappa = (p_o - p_e)/(1 - p_e) = ") + Number(k.kappa, 4));
  if (std::isnan(k.z)) return;
  r_.Line(fmt::format("{}{},  z = {}  (p = {}){}", T("Standard error under independence = ", "Standard hiba függetlenség esetén = "),
                      Fixed(k.se0, 4), Fixed(k.z, 3), Fixed(k.p.p, 4), k.p.marker));
}

void WriteGroupHeading(AnalysisRun& run) {
  if (run.Conditional() == 0) return;
  const int group = run.Group();
  run.report.BlankLine();
  run.report.Line(fmt::format("{}{}{}{}", run.T("GROUP INDEX: ", "CSOPORTINDEX: "), group,
                              run.T(".  Group name: ", ".  Csoportnév: "),
                              Utf8Prefix(run.Groups().distinctNames[group], 22)));
  run.report.Line(fmt::format("{}{}", run.T("Cases in current group: ", "Az aktuális csoport elemszáma: "),
                              run.GroupSizes()[group]));
}

}  // namespace

CrosstabSections RequestedSections(const AnalysisRequest& request) {
  return {.expected = request.Get(param::kExpectedFrequencies),
          .rowPercents = request.Get(param::kRowPercents),
          .columnPercents = request.Get(param::kColumnPercents),
          .totalPercents = request.Get(param::kTotalPercents),
          .monotonicity = request.Get(param::kMonotonicityMeasures),
          .prediction = request.Get(param::kPredictionMeasures),
          .pairwise = request.Get(param::kCompareColumns),
          .kappa = request.Get(param::kCohenKappa)};
}

void WriteCrosstab(AnalysisRun& run, int rowVariable, int columnVariable, const CrosstabSections& sections) {
  PairReport(run, rowVariable, columnVariable, sections).Write();
}

void Crosstab(AnalysisRun& run) {
  std::vector<int> xs, ys;
  for (int v = 1; v <= run.request.numberOfVariables; ++v) {
    if (run.request.role[v] == 'X') xs.push_back(v);
    if (run.request.role[v] == 'Y') ys.push_back(v);
  }
  if (xs.empty() || ys.empty()) {
    run.report.Line(run.T("The crosstab needs a row variable (X list) and a column variable (Y list).",
                          "A kereszttáblához sorváltozó (X lista) és oszlopváltozó (Y lista) kell."));
    return;
  }
  const CrosstabSections sections = RequestedSections(run.request);
  run.ForEachGroup([&] {
    WriteGroupHeading(run);
    for (int x : xs) {
      for (int y : ys) WriteCrosstab(run, x, y, sections);
    }
    if (run.request.Get(param::kJaccardMatrix)) {
      std::vector<int> selected = xs;
      for (int y : ys) {
        if (std::find(xs.begin(), xs.end(), y) == xs.end()) selected.push_back(y);
      }
      std::sort(selected.begin(), selected.end());
      WriteJaccardMatrix(run, selected);
    }
  });
}

}  // namespace tarvika
