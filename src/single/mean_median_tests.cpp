// Mode 14: per variable, tests of a hypothetical value by the one-sample t test, Johnson's
// modified t, Gayen's probability, the trimmed t test, the Wilcoxon signed-rank test and
// the sign test. Mode 12 with trimming writes the same block with point estimates and
// confidence limits in place of the tests.

#include <algorithm>
#include <cmath>

#include "lang/utf8.h"
#include "numeric/probability.h"
#include "single/single_sample_context.h"
#include "stats/moments.h"
#include "stats/one_sample_tests.h"
#include "workspace/numbers.h"

namespace tarvika {
namespace {

// What a variable's block prints beyond the first pass: computed for all variables (two at
// a time on two threads) before any block is written.
struct TestFigures {
  bool hypotheticalSet = true;
  double h = 0;
  OrderStatistics order;
  TrimmedStatistics trim;
  SignedRanks ranks;
  Deviations deviations;
  double trimmedSE = 0;
};

// The second pass over the i-th variable into `table`, and the statistics read from it.
void ComputeFigures(const SingleSampleContext& c, int i, int percent, bool withTests, ValueTable& table,
                    bool tellProgress, TestFigures& f) {
  const VariableStats& s = c.stats[i];
  const int n = s.count;
  f.deviations.reference = f.h;
  FillValueTable(c, i, table, &f.deviations, tellProgress);
  // The signed ranks change the table, so they come after the order statistics and trimming.
  f.order = table.OrderStats(n, s.minimum, s.maximum);
  f.trim = table.TrimmedStats(n, percent);
  if (withTests) f.ranks = table.SignedRankSums(f.h, n);
  if (f.trim.hasTrimming) f.trimmedSE = TrimmedMeanSE(f.trim, percent, n);
}

std::vector<TestFigures> AllFigures(SingleSampleContext& c, bool withTests) {
  const int k = c.index.analysed;
  const int percent = c.request.Get(param::kTrimmingPercent);
  std::vector<TestFigures> figures(k + 1);
  std::vector<int> wanted;
  for (int i = 1; i <= k; ++i) {
    if (withTests) {
      auto h = ParseEitherSeparator(c.ws.vars.GetCell(kParameter, c.Column(i)), '.');
      figures[i].h = h ? *h : kUnsetHypothetical;
      figures[i].hypotheticalSet = std::fabs(figures[i].h - kUnsetHypothetical) >= kZeroTolerance;
    }
    if (figures[i].hypotheticalSet) wanted.push_back(i);
  }
  ValueTable second;
  ForVariablesInPairs(c, wanted, [&](int i, int part) {
    ComputeFigures(c, i, percent, withTests, part == 0 ? c.values : second, part == 0, figures[i]);
  });
  return figures;
}

class TestBlock {
 public:
  TestBlock(SingleSampleContext& c, int i, bool withTests, const TestFigures& f)
      : c_(c), r_(c.report), i_(i), withTests_(withTests), h_(f.h), order_(f.order), trim_(f.trim), ranks_(f.ranks),
        deviations_(f.deviations), trimmedSE_(f.trimmedSE), hypotheticalSet_(f.hypotheticalSet) {}
  void Write();

 private:
  void ParameterRow(std::string_view label, int df, int decimals, double se, double estimate);
  void LabelledCell(std::string_view label, std::string_view text);
  void EstimatesTable();
  void TestForm();
  std::string H() const { return Trimmed4(h_); }

  SingleSampleContext& c_;
  ReportWriter& r_;
  int i_;
  bool withTests_;
  double h_;
  int n_ = 0;
  double sd_ = 0;
  int percent_ = 0;
  const OrderStatistics& order_;
  const TrimmedStatistics& trim_;
  const SignedRanks& ranks_;
  const Deviations& deviations_;
  double trimmedSE_;
  bool hypotheticalSet_;
};

void TestBlock::Write() {
  const VariableStats& s = c_.stats[i_];
  if (!hypotheticalSet_) {
    c_.WriteVariableHeading(i_);
    r_.Line(c_.T("Since hypothetical value was not specified, no test has been performed.",
                 "Mivel hipotetikus érték nem volt megadva, elemzést nem végzünk."));
    return;
  }
  n_ = s.count;
  percent_ = c_.request.Get(param::kTrimmingPercent);
  sd_ = StandardDeviation(s);

  c_.WriteVariableHeading(i_);
  r_.BlankLine();
  r_.Line(fmt::format("{}{}", c_.T("Number of acceptable values: ", "Érvényes értékek száma: "), n_));
  if (n_ < 3) {
    r_.Line(c_.T("There are few cases to perform valid statistical calculations.",
                 "Mivel az érvényes értékek száma 3-nál kisebb, nem végezhető érvényes statisztikai elemzés."));
    return;
  }
  if (withTests_) {
    TestForm();
  } else {
    EstimatesTable();
  }
}

void TestBlock::LabelledCell(std::string_view label, std::string_view text) {
  const int length = static_cast<int>(Utf8Length(label));
  r_.FirstCell(std::string(label) + std::string(std::max(0, 30 - 2 * length), ' '));
  r_.Cell(text);
}

void TestBlock::ParameterRow(std::string_view label, int df, int decimals, double se, double estimate) {
  const int d = std::min(Decimals(estimate), decimals);
  LabelledCell(label, Fixed(estimate, d));
  if (se >= -0.5) {
    r_.Cell(Fixed(se, d));
    if (se > 0) {
      const double half = std::sqrt(c_.CriticalF(df)) * se;
      double lower = estimate - half;
      if (label.find("Kurt") != std::string_view::npos && lower < -2) lower = -2;
      r_.Cell("");
      r_.Cell("(" + Fixed(lower, d) + "; " + Fixed(estimate + half, d) + ")");
    }
  }
  r_.EndRow();
}

void TestBlock::EstimatesTable() {
  const VariableStats& s = c_.stats[i_];
  const bool en = c_.English();
  r_.BeginTable();
  r_.FirstCell("");
  for (std::string_view head : {c_.T("Point", "Pont-"), c_.T("Stand.", "Standard"), std::string_view(),
                                c_.T("Confidence", "Konfidencia")}) {
    r_.Cell(head);
  }
  r_.EndRow();
  r_.FirstCell(c_.T("Parameter", "Paraméter"));
  r_.Cell(c_.T("estim.", "becslés"));
  r_.Cell(c_.T("error", "hiba"));
  r_.Cell("");
  r_.Cell(fmt::format("{}{}%)", c_.T("limits (", "határok ("), c_.ConfidencePercent()));
  r_.EndRow();
  ParameterRow(c_.T("Mean:", "Átlag:"), n_ - 1, Decimals(s.mean), StandardErrorOfMean(s), s.mean);
  ParameterRow(c_.T("SD:", "Szórás:"), n_ - 1, 4, -1, sd_);
  if (s.mean > 2 * kZeroTolerance) {
    ParameterRow(c_.T("Coef. of variation:", "Variációs eh.:"), n_ - 1, 2, -1, sd_ / s.mean);
  }
  if (trim_.hasTrimming) {
    r_.FirstCell(fmt::format("{}{}%", c_.T("Trimming = ", "Trimmelés = "), percent_));
    r_.EndRow();
    ParameterRow(c_.T("Trimmed mean:", "Trimmelt átlag:"), trim_.trimDF, Decimals(trim_.trimmedMean), trimmedSE_,
                 trim_.trimmedMean);
    if (!en) {
      r_.FirstCell("Winsorizált");
      r_.EndRow();
    }
    ParameterRow(c_.T("Winsorized SD:", "  szórás:"), trim_.trimDF, 4, -1, trim_.winsorizedSD);
  }
  ParameterRow(c_.T("Median:", "Medián:"), n_ - 1, Decimals(order_.median), -1, order_.median);
  auto pair = [](double a, double b) { return "(" + Fixed(a, Decimals(a)) + "; " + Fixed(b, Decimals(b)) + ")"; };
  LabelledCell(c_.T("(Min; Max):", "(Min; Max):"), pair(s.minimum, s.maximum));
  r_.EndRow();
  LabelledCell(c_.T("(Quart1; Quart3):", "(Kvart1; Kvart3):"), pair(order_.quartile1, order_.quartile3));
  r_.EndRow();
  const double spread = (order_.quartile3 - order_.quartile1) * 0.5;
  LabelledCell(c_.T("(Quart3-Quart1)/2:", "(Kvart3-Kvart1)/2:"), Fixed(spread, Decimals(spread)));
  r_.EndRow();
  r_.EndTable();

  r_.BlankLine();
  r_.Line(c_.T("Testing normality via Skewness and Kurtosis:",
               "Normalitás tesztelése a Ferdeség és a Csúcsosság együtthatója segítségével:"));
  const ShapeTest shape = NormalityByShape(s);
  r_.Line(fmt::format("{}{}{}  (p = {})", c_.T("Skewness: ", "Ferdeség: "), Fixed(shape.skewness, 3),
                      shape.skewnessP.marker, Fixed(shape.skewnessP.p, 3)));
  r_.Line(fmt::format("{}{}{}  (p = {})", c_.T("Kurtosis (stand.): ", "Csúcsosság: "), Fixed(shape.kurtosis, 3),
                      shape.kurtosisP.marker, Fixed(shape.kurtosisP.p, 3)));
}

void TestBlock::TestForm() {
  const VariableStats& s = c_.stats[i_];
  r_.BeginTable();
  auto row = [&](std::string_view label, int width, double value) {
    r_.FirstCell(label);
    r_.WriteRatio(width, 0, 1, value, 1);
    r_.EndRow();
  };
  row(c_.T("Mean:", "Átlag:"), 21, s.mean);
  row(c_.T("SD:", "Szórás:"), 11, sd_);
  if (trim_.hasTrimming) {
    row(c_.T("Trimmed mean: ", "Trimmelt átlag: "), 13, trim_.trimmedMean);
    row(c_.T("Winsorized SD: ", "Winsorizált szórás: "), 11, trim_.winsorizedSD);
  }
  row(c_.T("Median:", "Medián:"), 21, order_.median);
  row("Minimum:  ", 16, s.minimum);
  row("Maximum:  ", 16, s.maximum);
  r_.FirstCell(c_.T("Hypothetical value:", "Hipotetikus érték:"));
  r_.Cell(H());
  r_.EndRow();
  r_.EndTable();
  if (ZeroVariance(s)) {
    r_.Line(c_.T("Variance is low (< 0.000001) to perform any statistical test.",
                 "A variancia nagyon kicsi (< 0.000001), emiatt nem végzünk statisztikai próbát."));
    return;
  }

  r_.BlankLine();
  r_.Line(c_.T("Testing normality via Skewness and Kurtosis:",
               "A normalitás tesztelése a Ferdeség és a Csúcsosság segítségével:"));
  const ShapeTest shape = NormalityByShape(s);
  r_.Line(fmt::format("{}{}  (p = {})", c_.T("Skewness:  ", "Ferdeség:  "), Fixed(shape.skewness, 3),
                      Fixed(shape.skewnessP.p, 3)));
  r_.Line(fmt::format("{}{}  (p = {})", c_.T("Kurtosis (g4 = a4 - 3):  ", "Csúcsosság (g4 = a4 - 3):  "),
                      Fixed(shape.kurtosis, 3), Fixed(shape.kurtosisP.p, 3)));

  // The mean.
  r_.BlankLine();
  r_.Line(c_.English() ? "Test of the null hypothesis that the population mean equals " + H()
                       : "A H0: Az elméleti átlag = " + H() + " nullhipotézis vizsgálata:");
  // The marker of t is read from the critical values of F(1, df) at t squared.
  const TTest t = OneSampleT(s, h_);
  const std::string tMarker = FTabLookup(c_.ftable, 1, t.df, t.t * t.t).marker;
  r_.Line(fmt::format("{}{}) = {}{}  (p = {})", c_.T("   - One-sample t test: t(", "   - Egymintás t-próba: t("), t.df,
                      Fixed(t.t, 3), tMarker, Fixed(t.p.p, 4)));
  if (SkewnessCorrectionsApply(t.t, n_)) {
    const TTest j = JohnsonT(s, t.t);
    r_.Line(fmt::format("{}{}) = {}  (p = {})", c_.T("   - Johnson's modified t test: J(", "   - Johnson-próba: J("),
                        j.df, Fixed(j.t, 3), Fixed(j.p.p, 4)));
    const PValue gayen = GayenP(s, t.t);
    r_.Line(fmt::format("{}{}{}", c_.T("   - Gayen's two-tailed probability:  p = ", "   - Gayen-próba szignifikanciája:  p = "),
                        Fixed(gayen.p, 4), gayen.marker));
  }

  // The trimmed mean; with a single kept value (df 0) there is no test to print.
  if (trim_.hasTrimming && trim_.trimDF > 0) {
    r_.BlankLine();
    r_.Line(c_.English() ? "Test of the null hypothesis that the population trimmed mean equals " + H()
                         : "A H0: Az elméleti trimmelt átlag = " + H() + " nullhipotézis vizsgálata:");
    const TTest tt = TrimmedT(trim_, percent_, n_, h_);
    const std::string ttMarker = FTabLookup(c_.ftable, 1, tt.df, tt.t * tt.t).marker;
    r_.Line(fmt::format("{}{}%): Tt({}) = {}{}  (p = {})",
                        c_.T("   - Trimmed t test (trimming = ", "   - Trimmelt t-próba (trimmelés = "),
                        100 * trim_.trimmedCount / n_, tt.df, Fixed(tt.t, 3), ttMarker, Fixed(tt.p.p, 4)));
  } else if (percent_ > 0.5) {
    r_.Line(c_.T("Trimmed t test was not performed due to small sample size and trimming %.",
                 "A trimmelt t-próbához kicsi a minta és/vagy a megadott trimmelési %."));
  }

  // The median.
  r_.BlankLine();
  r_.Line(c_.English() ? "Test of the null hypothesis that the population median equals " + H()
                       : "A H0: Az elméleti medián = " + H() + " nullhipotézis vizsgálata:");
  const SignedRankTest w = WilcoxonSignedRank(ranks_, deviations_.first, deviations_.count);
  std::string line = fmt::format("{}{}, R+ = {}", c_.T("   - Wilcoxon signed rank test: R- = ", "   - Wilcoxon-próba: R- = "),
                                 Fixed(w.rMinus, 1), Fixed(w.rPlus, 1));
  if (w.byNormal) line += fmt::format(", z = {}", Fixed(w.z, 3));
  line += fmt::format("  (p = {}){}", Fixed(w.p.p, 4), w.p.marker);
  r_.Line(line);

  // The sign test.
  r_.BlankLine();
  r_.Line(c_.English() ? "Test of the null hypothesis H0: P(X < " + H() + ") = P(X > " + H() + "):"
                       : "A H0: P(X < " + H() + ") = P(X > " + H() + ") nullhipotézis vizsgálata:");
  const SignTest sign = SignTestAround(ranks_);
  const double n = n_;
  line = fmt::format("{}{}) = {} ({}%),  #(X > {}) = {} ({}%)", c_.T("   - Sign test: #(X < ", "   - Előjelpróba: #(X < "),
                     H(), sign.below, Fixed(100.0 * sign.below / n, 1), H(), sign.above, Fixed(100.0 * sign.above / n, 1));
  if (sign.byNormal) {
    line += fmt::format(", z = {}  (p = {}){}", Fixed(sign.z, 3), Fixed(sign.p.p, 4), sign.p.marker);
  } else {
    line += fmt::format(" |  (p = {}){}", Fixed(sign.p.p, 4), sign.p.marker);
  }
  r_.Line(line);
}

}  // namespace

void WriteTestBlocks(SingleSampleContext& c, bool withTests) {
  const std::vector<TestFigures> figures = AllFigures(c, withTests);
  for (int i = 1; i <= c.index.analysed; ++i) {
    TestBlock block(c, i, withTests, figures[i]);
    block.Write();
  }
}

}  // namespace tarvika
