#include "groups/one_way_means.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "frame/parameter_names.h"
#include "groups/one_way_ancova_report.h"
#include "groups/one_way_text.h"
#include "groups/pairwise_report.h"
#include "lang/utf8.h"
#include "numeric/tolerance.h"
#include "stats/ancova.h"
#include "stats/moments.h"
#include "stats/one_way.h"
#include "stats/pairwise.h"
#include "workspace/workspace.h"

namespace tarvika {

using namespace one_way_text;
namespace {

constexpr double kTiny = kZeroTolerance;

// 0 for no marker, 1 for "+", 3 from "**" on, else 2: compared with the level code of the
// "significant only" filter (0: 10%, 1: 5%, 2: 1%).
int MarkRank(std::string_view marker) {
  if (marker.empty() || marker == " ") return 0;
  if (marker == "+") return 1;
  return marker.starts_with("**") ? 3 : 2;
}

// Everything the report of one dependent shows, computed before a line is written.
struct Comparison {
  int kAssigned = 0;
  std::vector<std::vector<double>> values;  // per group, sorted when trimmed
  std::vector<MomentAccumulator> moments;
  std::vector<GroupSample> groups;
  std::vector<int> active;  // indices of the groups of at least two cases
  bool zeroSd = false;
  bool smallGroup = false;  // some assigned group has at most 2 cases
  VarianceTest obrien, levene;
  AnovaFamilyResult anova;
  AnovaEffects effects;
  PValue pMeans, pWelch, pBF;  // the t or F of the ANOVA, Welch's W (or t), Brown-Forsythe
  double t = 0, tWelch = 0;    // two groups: the roots of F and W
  double difference = 0;       // m1 - m2 of the first two active groups
  double pooledSd = 0;         // of those two, weighted by n (not n - 1); 0 without spread
  double cohenD = 0;           // difference / pooledSd
  bool trimmed = false;
  bool trimmedUsable = false;
  std::vector<TrimmedGroup> trim;  // per active group
  TrimmedTest trimmedTest;
  int covariate = 0;                                       // its variable, 0 for none
  std::vector<AncovaGroupData> complete;                   // per group, the cases valid on the covariate too
  std::vector<double> completeX, completeC, completeCode;  // the same cases in one series
  AncovaResult ancova;
  double partialR = 0;
  int keepRank = 0;  // the largest MarkRank of the reported tests
};

class IntervalPass {
 public:
  IntervalPass(AnalysisRun& run, int dependent) : run_(run), r_(run.report), dependent_(dependent) {}
  // Reads the cases of the conditional group; false when fewer than two groups have two.
  bool Read();
  void Compute();
  void WriteHeading();
  void WriteTooFewGroups();
  void Write();
  bool Kept() const;
  OneWaySummaryRow SummaryRow() const;

 private:
  std::string_view T(std::string_view en, std::string_view hu) const { return run_.T(en, hu); }
  void Keep(std::string_view marker) { c_.keepRank = std::max(c_.keepRank, MarkRank(marker)); }
  void WriteGroupTable();
  void WriteVarianceTests();
  void WriteVarianceLine(std::string_view name, std::string_view hungarian, const VarianceTest& t);
  void WriteMeanTests();
  void WriteInterval(std::string_view label, double se, double df);
  void ComputeTrimmed();
  void WriteTrimmed();
  // The pairwise comparisons after an overall test of means with p at most 0.10.
  bool MeansTrend() const;
  void WritePairwise(PairwiseKind kind, PairwiseMethod method, const std::vector<PairwiseGroup>& groups,
                     int k, double df, double msError);
  void WriteMeanComparisons();
  void WriteTrimmedComparisons();
  void WriteAdjustedComparisons();

  AnalysisRun& run_;
  ReportWriter& r_;
  int dependent_;
  Comparison c_;
  bool significantOnly_ = false;
  int percent_ = 0;
};

bool IntervalPass::Read() {
  const int grouping = run_.index.columns[run_.index.grouping];
  const GroupDefinition definition = GetGroupDefinition(run_.ws, grouping);
  c_.kAssigned = definition.distinct;
  c_.values.assign(c_.kAssigned, {});
  const SelectedIndex& index = run_.index;
  c_.covariate = index.covariates > 0 ? index.columns[index.analysed + index.covariates] : 0;
  c_.complete.assign(c_.kAssigned, {});
  DataFeed feed(run_.ws, r_.Missing(),
                {0, dependent_, grouping, c_.covariate > 0 ? c_.covariate : dependent_});
  std::vector<double> value(4, 0);
  std::vector<std::uint8_t> missing(4, 1);
  for (int row : run_.GroupRows()) {
    feed.ReadRow(row, 3, value, missing);
    if (missing[1] || missing[2]) continue;
    const int group = FindMergedGroup(definition, value[2]);
    if (group == 0) continue;
    c_.values[group - 1].push_back(value[1]);
    if (c_.covariate > 0 && !missing[3]) {
      c_.complete[group - 1].x.push_back(value[1]);
      c_.complete[group - 1].c.push_back(value[3]);
      c_.completeX.push_back(value[1]);
      c_.completeC.push_back(value[3]);
      c_.completeCode.push_back(value[2]);
    }
  }
  c_.moments.assign(c_.kAssigned, MomentAccumulator());
  c_.groups.assign(c_.kAssigned, GroupSample{});
  for (int j = 0; j < c_.kAssigned; ++j) {
    MomentAccumulator& m = c_.moments[j];
    for (double x : c_.values[j]) m.Add(x);
    GroupSample& g = c_.groups[j];
    g.n = m.count;
    g.mean = m.mean;
    if (m.count > 1 && m.m2 > kTiny) g.variance = m.m2 / (m.count - 1);
    if (g.n <= 2) c_.smallGroup = true;
    if (g.n < 2) continue;
    c_.active.push_back(j);
    if (g.variance < kTiny) c_.zeroSd = true;
  }
  significantOnly_ = run_.request.Get(param::kSignificantOnly);
  return c_.active.size() >= 2;
}

void IntervalPass::WriteHeading() {
  r_.BlankLine();
  r_.Line(std::string(T("DEPENDENT VARIABLE: ", "FÜGGŐ VÁLTOZÓ: ")) + NameWithLong(run_.ws, dependent_));
}

void IntervalPass::WriteTooFewGroups() {
  r_.Line(T("Number of groups of size at least 2 is less than 2.",
            "A legalább 2 elemű csoportok száma kisebb, mint 2."));
  r_.Line(T("No analysis can be performed for this dependent variable.",
            "Erre a függő változóra nem végezhető elemzés."));
}

void IntervalPass::Compute() {
  percent_ = run_.request.Get(param::kTrimmingPercent);
  c_.trimmed = percent_ >= 1;
  c_.obrien = OBrienTest(c_.values, c_.groups);
  c_.levene = LeveneTest(c_.values, c_.groups);
  c_.anova = AnovaFamily(c_.groups);
  c_.effects = Effects(c_.anova);
  const GroupSample& g1 = c_.groups[c_.active[0]];
  const GroupSample& g2 = c_.groups[c_.active[1]];
  c_.difference = g1.mean - g2.mean;
  if (std::sqrt(g1.variance) + std::sqrt(g2.variance) > kTiny) {
    c_.pooledSd = std::sqrt((g1.n * g1.variance + g2.n * g2.variance) / (g1.n + g2.n));
    c_.cohenD = c_.difference / c_.pooledSd;
  }
  const AnovaFamilyResult& a = c_.anova;
  if (a.k == 2) {
    c_.t = a.F > kTiny ? std::sqrt(a.F) : a.F;
    c_.tWelch = a.W > kTiny ? std::sqrt(a.W) : a.W;
    c_.pMeans = StudentP2(c_.t, a.df2);
    c_.pWelch = StudentP2(c_.tWelch, a.dfWelch);
  } else {
    c_.pMeans = FProb(a.F, a.df1, a.df2);
    c_.pWelch = FProb(a.W, a.df1, a.dfWelch);
    c_.pBF = FProb(a.BF, a.df1, a.dfBF);
  }
  if (c_.trimmed) ComputeTrimmed();
  if (c_.covariate > 0) {
    c_.ancova = Ancova(c_.complete);
    c_.partialR =
        PartialCorrelation(PearsonR(c_.completeX, c_.completeC), PearsonR(c_.completeX, c_.completeCode),
                           PearsonR(c_.completeC, c_.completeCode));
  }
  // The tests whose p the report shows decide whether a "significant only" run keeps the variable.
  if (c_.obrien.done && c_.obrien.df2 > 0) Keep(c_.obrien.p.marker);
  Keep(c_.levene.p.marker);
  Keep(c_.pMeans.marker);
  const bool welchDefined = a.k == 2 || !(c_.zeroSd || a.W < -0.5);
  if (welchDefined) Keep(c_.pWelch.marker);
  if (a.k > 2 && welchDefined) Keep(a.jamesMarker);
  if (c_.trimmedUsable) Keep(c_.trimmedTest.p.marker);
  if (c_.ancova.done) Keep(c_.ancova.p.marker);
}

void IntervalPass::ComputeTrimmed() {
  bool anyTrimmed = false;
  for (int j : c_.active) {
    std::vector<double>& v = c_.values[j];
    std::sort(v.begin(), v.end());
    c_.trim.push_back(TrimGroup(v, percent_));
    const TrimmedGroup& t = c_.trim.back();
    if (t.kept < 1) return;
    if (t.kept < t.n) anyTrimmed = true;
  }
  if (!anyTrimmed) return;
  const bool twoGroups = c_.trim.size() == 2;
  for (const TrimmedGroup& t : c_.trim) {
    if (!twoGroups && t.yuenScale < kTiny) return;
  }
  c_.trimmedUsable = true;
  c_.trimmedTest = twoGroups ? YuenTest(c_.trim[0], c_.trim[1]) : TrimmedWelch(c_.trim);
}

OneWaySummaryRow IntervalPass::SummaryRow() const {
  OneWaySummaryRow row;
  const AnovaFamilyResult& a = c_.anova;
  row.dependent = dependent_;
  row.k = a.k;
  row.smallGroup = c_.smallGroup;
  for (int j = 0; j < c_.kAssigned; ++j) {
    if (c_.groups[j].n > 0) row.nonEmpty.push_back(j);
    row.means.push_back(c_.groups[j].n > 1 ? c_.groups[j].mean : std::nan(""));
  }
  const GroupSample& g1 = c_.groups[c_.active[0]];
  const GroupSample& g2 = c_.groups[c_.active[1]];
  row.mean1 = g1.mean;
  row.mean2 = g2.mean;
  row.sd1 = std::sqrt(g1.variance);
  row.sd2 = std::sqrt(g2.variance);
  row.pooledSd = c_.pooledSd;
  row.pLevene = c_.levene.p;
  const double sign = c_.difference < 0 ? -1 : 1;
  row.t = sign * c_.t;
  row.tDf = a.df2;
  row.tP = c_.pMeans;
  row.welchT = sign * c_.tWelch;
  row.welchDf = a.dfWelch;
  row.welchP = c_.pWelch;
  row.welchDefined = a.k == 2 || !(c_.zeroSd || a.W < -0.5);
  row.F = a.F;
  row.fP = c_.pMeans;
  row.W = a.W;
  row.wP = c_.pWelch;
  row.etaSquared = c_.effects.etaSquared;
  const AncovaResult& an = c_.ancova;
  if (!an.done) return row;
  // With a covariate the tables show the covariance analysis.
  row.ancova = true;
  row.k = static_cast<int>(an.used.size());
  row.r = an.r;
  std::fill(row.means.begin(), row.means.end(), std::nan(""));
  for (std::size_t i = 0; i < an.used.size(); ++i) row.means[an.used[i]] = an.groups[i].adjustedMean;
  const AncovaGroupResult& a1 = an.groups[0];
  const AncovaGroupResult& a2 = an.groups[1];
  row.mean1 = a1.adjustedMean;
  row.mean2 = a2.adjustedMean;
  row.sd1 = a1.sdX;
  row.sd2 = a2.sdX;
  row.pooledSd = std::sqrt(((a1.n - 1) * a1.sdX * a1.sdX + (a2.n - 1) * a2.sdX * a2.sdX) / (a1.n + a2.n - 2));
  row.t = (a1.adjustedMean < a2.adjustedMean ? -1 : 1) * std::sqrt(an.F);
  row.tDf = an.df2;
  row.tP = an.p;
  row.F = an.F;
  row.fP = an.p;
  return row;
}

bool IntervalPass::Kept() const {
  return !significantOnly_ || c_.keepRank > run_.request.Get(param::kSignificanceLevel);
}

void IntervalPass::Write() {
  WriteGroupTable();
  int withVariance = 0;
  for (int j : c_.active) {
    if (c_.groups[j].variance > kTiny) ++withVariance;
  }
  if (withVariance == 0) {
    r_.BlankLine();
    r_.Line(T("The SD of the dependent variable is zero for each group. No further analysis can be done.",
              "A függő változó szórása minden csoportban nulla. További elemzés nem végezhető."));
    return;
  }
  WriteVarianceTests();
  WriteMeanTests();
  if (MeansTrend()) WriteMeanComparisons();
  if (c_.trimmed) WriteTrimmed();
  if (c_.covariate > 0) {
    WriteAncovaReport(run_, dependent_, c_.covariate, c_.ancova, c_.partialR);
    if (c_.ancova.done && c_.ancova.p.p <= 0.10) WriteAdjustedComparisons();
  }
}

// Any of the F, Welch's W (when it is defined) and Brown and Forsythe's F* of more groups.
// With two groups the comparisons would print nothing.
bool IntervalPass::MeansTrend() const {
  const AnovaFamilyResult& a = c_.anova;
  if (a.k < 3) return false;
  const bool welchDefined = !(c_.zeroSd || a.W < -0.5);
  return c_.pMeans.p <= 0.10 || (welchDefined && c_.pWelch.p <= 0.10) || c_.pBF.p <= 0.10;
}

void IntervalPass::WritePairwise(PairwiseKind kind, PairwiseMethod method,
                                 const std::vector<PairwiseGroup>& groups, int k, double df, double msError) {
  WritePairwiseComparisons(r_, kind,
                           PairwiseComparisons(method, groups, k, static_cast<int>(std::lround(df)), msError,
                                               run_.tables.studentizedRange));
}

// Every assigned group keeps its place in the table, so that the pairs carry the groups'
// indices; a group of fewer than two cases takes no part.
void IntervalPass::WriteMeanComparisons() {
  std::vector<PairwiseGroup> groups(c_.kAssigned);
  for (int j : c_.active) {
    const GroupSample& g = c_.groups[j];
    groups[j] = {g.mean, std::sqrt(g.variance), g.n};
  }
  const AnovaFamilyResult& a = c_.anova;
  WritePairwise(PairwiseKind::Means, PairwiseMethod::TukeyKramer, groups, a.k, a.df2, a.msWithin);
  WritePairwise(PairwiseKind::Means, PairwiseMethod::GamesHowell, groups, a.k, a.df2, a.msWithin);
}

// Each pair on the trimmed sizes h and the squared standard errors d/h of the trimmed test,
// so that q is the root of 2 times Yuen's t of the pair, marked at Yuen's df.
void IntervalPass::WriteTrimmedComparisons() {
  std::vector<PairwiseGroup> groups(c_.kAssigned);
  for (std::size_t i = 0; i < c_.active.size(); ++i) {
    const TrimmedGroup& t = c_.trim[i];
    groups[c_.active[i]] = {t.mean, std::sqrt(t.yuenScale), t.kept};
  }
  const TrimmedTest& y = c_.trimmedTest;
  WritePairwise(PairwiseKind::TrimmedMeans, PairwiseMethod::GamesHowell, groups,
                static_cast<int>(c_.trim.size()), y.df2, y.errorTerm);
}

// The adjusted means on the cases of the covariance analysis, with its residual mean square.
void IntervalPass::WriteAdjustedComparisons() {
  const AncovaResult& a = c_.ancova;
  std::vector<PairwiseGroup> groups(c_.kAssigned);
  for (std::size_t i = 0; i < a.used.size(); ++i) {
    const AncovaGroupResult& g = a.groups[i];
    groups[a.used[i]] = {g.adjustedMean, g.sdX, g.n};
  }
  const int k = static_cast<int>(a.df1) + 1;
  const double msError = a.total * a.adjustedWithin / a.df2;
  WritePairwise(PairwiseKind::AdjustedMeans, PairwiseMethod::TukeyKramer, groups, k, a.df2, msError);
  WritePairwise(PairwiseKind::AdjustedMeans, PairwiseMethod::GamesHowell, groups, k, a.df2, msError);
}

void IntervalPass::WriteGroupTable() {
  const int grouping = run_.index.columns[run_.index.grouping];
  const GroupDefinition definition = GetGroupDefinition(run_.ws, grouping);
  r_.BlankLine();
  r_.Line(T("Basic group statistics", "Csoportonkénti alapstatisztikák"));
  const std::string name = PaddedName(run_.request.shortNames.at(dependent_));
  const std::string groupName = PaddedName(run_.request.shortNames.at(grouping));
  r_.BeginTitledTable(name, {"Index", groupName, T("Size", "Elemszám"), T("Mean", "Átlag"), T("SD", "Szórás"),
                             "Min.", "Max.", T("Skewness  ", "Ferdeség  "), T("Kurtosis", "Csúcsosság")});
  int total = 0;
  for (int j = 0; j < c_.kAssigned; ++j) {
    const MomentAccumulator& m = c_.moments[j];
    if (m.count == 0) continue;
    if (m.count > 1) total += m.count;
    r_.FirstCellRightAligned(std::to_string(j + 1), 4);
    r_.Cell(PaddedName(definition.distinctNames[j + 1]));
    r_.Cell(std::to_string(m.count));
    r_.WriteRatio(9, 8, 1, m.mean, 1);
    r_.WriteRatio(8, 9, 1, std::sqrt(c_.groups[j].variance), 1);
    r_.WriteRatio(9, 0, 1, m.minimum, 1);
    r_.WriteRatio(9, 0, 1, m.maximum, 1);
    ShapeTest shape;
    if (c_.groups[j].variance > kTiny) {
      shape = NormalityByShape(m);
      if (m.count <= 3) {
        // Below four cases the kurtosis is 3 by convention and untested.
        shape.kurtosis = 3;
        shape.kurtosisP = Marked(1);
      }
    }
    std::string skewMark(shape.skewnessP.marker);
    skewMark.resize(std::max<std::size_t>(skewMark.size(), 6), ' ');
    r_.Cell(SignSlot(shape.skewness) + skewMark);
    r_.Cell(SignSlot(shape.kurtosis) + std::string(shape.kurtosisP.marker));
    r_.EndRow();
  }
  r_.FirstCell(T("TOTAL:    ", "ÖSSZESEN: "));
  r_.Cell("");
  r_.Cell(std::to_string(total));
  r_.EndRow();
  r_.EndTable();
  r_.BlankLine();
  r_.Line(T("The significance of Skewness or Kurtosis is an evidence of nonnormality.",
            "A ferdeség vagy a csúcsosság szignifikanciája a normalitástól való eltérésre utal."));
  if (c_.smallGroup) {
    r_.Line(T("Warning! ", "Figyelem! "));
    r_.Line(T("Groups of size less than 2 have been dropped from further statistical analyses.",
              "A 2-nél kisebb elemszámú csoportok kimaradnak a további elemzésekből."));
    r_.Line(T("Rows of missing indices reflect empty groups.",
              "A hiányzó sorszámú sorok üres csoportokat jeleznek."));
  }
}

void IntervalPass::WriteVarianceLine(std::string_view name, std::string_view hungarian,
                                     const VarianceTest& t) {
  const std::string df1 = t.welchType ? fmt::format("{:.1f}", t.df1) : fmt::format("{:.0f}", t.df1);
  const std::string_view kind = t.welchType ? T(" (Welch type)", " (Welch-típusú)") : std::string_view();
  r_.Line(fmt::format("    - {}{}: F({}; {:.1f}) = {:.3f}{}", T(name, hungarian), kind, df1, t.df2,
                      t.statistic, PText(t.p)));
}

void IntervalPass::WriteVarianceTests() {
  r_.BlankLine();
  r_.Line(T("Testing the equality of population variances", "Elméleti szórások egyenlőségének tesztelése"));
  if (c_.obrien.done && c_.obrien.df2 > 0) WriteVarianceLine("O'Brien test", "O'Brien-próba", c_.obrien);
  WriteVarianceLine("Levene test", "Levene-próba", c_.levene);
}

void IntervalPass::WriteInterval(std::string_view label, double se, double df) {
  // From the standard error, not from D/t: equal means (t = 0) have an interval too.
  const DifferenceInterval i = IntervalFromSE(c_.difference, se, CriticalF95(df));
  const int d = IntervalDecimals(i.low, i.high);
  r_.Line(fmt::format("{} C(0.95) = ({}; {})", label, Fixed(i.low, d), Fixed(i.high, d)));
}

void IntervalPass::WriteMeanTests() {
  const AnovaFamilyResult& a = c_.anova;
  const AnovaEffects& e = c_.effects;
  r_.BlankLine();
  r_.Line(T("Testing the equality of population means", "Elméleti átlagok egyenlőségének tesztelése"));
  if (!significantOnly_) {
    r_.Line(T("    CONVENTIONAL TEST assuming the equality of population variances:",
              "    HAGYOMÁNYOS PRÓBA az elméleti szórások egyenlőségét feltételezve:"));
  }
  const bool two = a.k == 2;
  if (!two) {
    r_.Line(fmt::format("    - {}: F({:.0f}; {:.0f}) = {:.3f}{}", T("ANOVA", "Varianciaanalízis"), a.df1,
                        a.df2, a.F, PText(c_.pMeans)));
    r_.Line(fmt::format("      MS_treatment = {:.4f}, MS_error = {:.4f}", a.ssBetween / a.df1, a.msWithin));
    r_.Line(fmt::format("{}{:.3f}",
                        T("      Correlation ratio: Eta = ", "      Korrelációs hányados: Eta = "), e.eta));
    r_.Line(fmt::format("{}{:.3f}",
                        T("      Eta squared (Explained variance ratio) = ",
                          "      Eta négyzet (megmagyarázott varianciahányad) = "),
                        e.etaSquared));
    r_.Line(fmt::format(
        "{}{:.3f}",
        T("      Omega squared (~ Adjusted R squared) = ", "      Omega négyzet (~ korrigált R négyzet) = "),
        e.omegaSquared));
  } else {
    const double sign = c_.difference < 0 ? -1 : 1;
    r_.Line(fmt::format("    - {}: t({:.0f}) = {:.3f}{}", T("Two-sample t test", "Kétmintás t-próba"), a.df2,
                        sign * c_.t, PText(c_.pMeans)));
    if (!significantOnly_) {
      r_.Line(fmt::format("{}{:.3f}",
                          T("      Correlation ratio: Eta = ", "      Korrelációs hányados: Eta = "), e.eta));
      r_.Line(fmt::format("{}{:.3f}",
                          T("      Explained variance ratio: Eta squared = ",
                            "      Megmagyarázott varianciahányad: Eta négyzet = "),
                          e.etaSquared));
      r_.Line(fmt::format("{}{:.3f}",
                          T("      Omega squared (~ Adjusted R squared) = ",
                            "      Omega négyzet (~ korrigált R négyzet) = "),
                          e.omegaSquared));
      r_.Line(fmt::format(
          "{}{:.3f}",
          T("      Cohen-delta effect size measure: d = ", "      Cohen-féle delta hatásnagyság: d = "),
          c_.cohenD));
    }
  }
  if (!significantOnly_) {
    r_.Line(two ? T("    ROBUST TEST not assuming the equality of population variances:",
                    "    ROBUSZTUS PRÓBA az elméleti szórások egyenlőségének feltételezése nélkül:")
                : T("    ROBUST TESTS not assuming the equality of population variances:",
                    "    ROBUSZTUS PRÓBÁK az elméleti szórások egyenlőségének feltételezése nélkül:"));
  }
  if (!two) {
    if (c_.zeroSd || a.W < -0.5) {
      r_.Line(T("    - Robust Welch ANOVA: Undefined (the SD of one group is 0)",
                "    - Robusztus Welch-féle varianciaanalízis: nem definiált (egy csoport szórása 0)"));
      if (!significantOnly_) {
        r_.Line(T("    - James test: Undefined (the SD of one group is 0)",
                  "    - James-próba: nem definiált (egy csoport szórása 0)"));
      }
    } else {
      r_.Line(fmt::format("    - {}: W({:.0f}; {:.1f}) = {:.3f}{}",
                          T("Robust Welch ANOVA", "Robusztus Welch-féle varianciaanalízis"), a.df1, a.dfWelch,
                          a.W, PText(c_.pWelch)));
      r_.Line(fmt::format("    - {}: U = {:.3f}{}{}", T("James test", "James-próba"), a.U, a.jamesText,
                          a.jamesMarker));
    }
    if (!significantOnly_) {
      r_.Line(fmt::format("    - {}: BF({:.0f}; {:.0f}) = {:.3f}{}",
                          T("Brown-Forsythe test", "Brown-Forsythe-próba"), a.df1, a.dfBF, a.BF,
                          PText(c_.pBF)));
    }
    return;
  }
  const double sign = c_.difference < 0 ? -1 : 1;
  r_.Line(fmt::format("    - {}({:.1f}) = {:.3f}{}", T("Welch's modified t test: W", "Welch-féle d-próba: d"),
                      a.dfWelch, sign * c_.tWelch, PText(c_.pWelch)));
  if (significantOnly_) return;
  r_.BlankLine();
  r_.Line(T("95% level confidence interval for the m1-m2 difference of population means",
            "95%-os konfidenciaintervallum az m1-m2 elméleti átlagkülönbségre"));
  const GroupSample& g1 = c_.groups[c_.active[0]];
  const GroupSample& g2 = c_.groups[c_.active[1]];
  WriteInterval(T("    - based on the two-sample t test:", "    - a kétmintás t-próba alapján:"),
                std::sqrt(a.msWithin * (1.0 / g1.n + 1.0 / g2.n)), a.df2);
  WriteInterval(T("    - based on the Welch test:", "    - a Welch-próba alapján:"),
                std::sqrt(g1.variance / g1.n + g2.variance / g2.n), a.dfWelch);
}

void IntervalPass::WriteTrimmed() {
  if (!c_.trimmedUsable) {
    r_.BlankLine();
    r_.Line(T("Trimmed test was not performed due to small sample sizes and trimming %.",
              "A trimmelt próba a kis elemszámok és a trimmelési % miatt elmarad."));
    return;
  }
  const int grouping = run_.index.columns[run_.index.grouping];
  const GroupDefinition definition = GetGroupDefinition(run_.ws, grouping);
  r_.BlankLine();
  r_.Line(fmt::format(
      "{}{}%)",
      T("ANALYSIS OF TRIMMED SAMPLES (max. trimming = ", "TRIMMELT MINTÁK ELEMZÉSE (max. trimmelés = "),
      percent_));
  r_.BeginTable();
  r_.FirstCell("");
  for (std::string_view head :
       {std::string_view(), std::string_view(), T("Trimmed", "Trimmelt"), T("Trimmed", "Trimmelt"),
        T("Winsor.", "Winsor."), T("Trimmed", "Trimmelt"), std::string_view()}) {
    r_.Cell(head);
  }
  r_.EndRow();
  r_.FirstCell("Index");
  const std::string groupName = PaddedName(run_.request.shortNames.at(grouping));
  for (std::string_view head :
       {std::string_view(groupName), T("Size", "Elemszám"), T("size", "elemszám"), T("mean", "átlag"),
        T("SD", "szórás"), T("min.", "min."), T("max.", "max.")}) {
    r_.Cell(head);
  }
  r_.EndRow();
  for (std::size_t i = 0; i < c_.active.size(); ++i) {
    const TrimmedGroup& t = c_.trim[i];
    r_.FirstCellRightAligned(std::to_string(c_.active[i] + 1), 4);
    r_.Cell(PaddedName(definition.distinctNames[c_.active[i] + 1]));
    r_.Cell(std::to_string(t.n));
    r_.Cell(std::to_string(t.kept));
    r_.WriteRatio(9, 8, 1, t.mean, 1);
    r_.WriteRatio(8, 9, 1, t.winsorizedSD, 1);
    r_.WriteRatio(9, 0, 1, t.minimum, 1);
    r_.WriteRatio(9, 0, 1, t.maximum, 1);
    r_.EndRow();
  }
  r_.EndTable();
  r_.BlankLine();
  r_.Line(T("Testing the equality of population trimmed means",
            "Elméleti trimmelt átlagok egyenlőségének tesztelése"));
  const TrimmedTest& y = c_.trimmedTest;
  if (c_.trim.size() == 2) {
    r_.Line(fmt::format("    - {}: Y({:.1f}) = {:.3f}{}", T("Yuen test", "Yuen-próba"), y.df2, y.statistic,
                        PText(y.p)));
    r_.Line(fmt::format("{}{:.3f}", T("    - Trimmed Cohen d = ", "    - Trimmelt Cohen-d = "), y.cohenD));
    r_.Line(fmt::format("{}{:.3f}", T("    - Trimmed eta-squared = ", "    - Trimmelt eta-négyzet = "),
                        y.etaSquared));
    const TrimmedGroup& t1 = c_.trim[0];
    const TrimmedGroup& t2 = c_.trim[1];
    if (t1.yuenScale + t2.yuenScale > kTiny) {
      const DifferenceInterval i = IntervalFromSE(
          t1.mean - t2.mean, std::sqrt(t1.yuenScale / t1.kept + t2.yuenScale / t2.kept), CriticalF95(y.df2));
      const int d = IntervalDecimals(i.low, i.high);
      r_.Line(T("95% level confidence interval for the Tm1-Tm2 difference of",
                "95%-os konfidenciaintervallum a Tm1-Tm2 különbségre, az elméleti"));
      r_.Line(fmt::format(
          "{}({}; {})",
          T("    population trimmed means: C(0.95) = ", "    trimmelt átlagok alapján: C(0.95) = "),
          Fixed(i.low, d), Fixed(i.high, d)));
    }
  } else {
    r_.Line(fmt::format("    - Ft({:.0f}; {:.1f}) = {:.3f}{}", y.df1, y.df2, y.statistic, PText(y.p)));
    r_.Line(fmt::format("{}{:.3f}", T("    - Trimmed eta-squared = ", "    - Trimmelt eta-négyzet = "),
                        y.etaSquared));
    if (MarkRank(y.p.marker) > 0) WriteTrimmedComparisons();
  }
}

}  // namespace

bool OneWayGroupTooSmall(const AnalysisRun& run) { return run.GroupRows().size() < 5; }

bool WriteOneWayHeading(AnalysisRun& run, OneWayGroupState& state) {
  if (state.headingWritten) return !state.tooFewCases;
  state.headingWritten = true;
  ReportWriter& r = run.report;
  const int cases = static_cast<int>(run.GroupRows().size());
  r.BlankLine();
  if (run.Conditional() > 0) {
    r.Line(fmt::format("{}{:>5}",
                       run.T("Number of cases in this group: ", "Az aktuális csoport elemszáma:  "), cases));
  } else {
    r.Line(fmt::format("{}{:>5}",
                       run.T("Total number of cases read:    ", "A beolvasott esetek száma:      "), cases));
  }
  const int grouping = run.index.columns[run.index.grouping];
  r.Line(std::string(run.T("Grouping variable: ", "Csoportosító változó: ")) +
         NameWithLong(run.ws, grouping));
  if (OneWayGroupTooSmall(run)) {
    r.Line(fmt::format("{}{}",
                       run.T("Number of cases within this group: N = ", "Az esetek száma a csoportban: N = "),
                       cases));
    r.Line(run.T("Since N < 5, no analysis is performed.", "Mivel N < 5, elemzés nem végezhető."));
    state.tooFewCases = true;
    return false;
  }
  if (cases > 2) {
    r.BlankLine();
    r.Line(run.T("Notation:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001",
                 "Jelölés:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001"));
  }
  return true;
}

DependentWriter ComputeIntervalDependent(AnalysisRun& run, int dependent) {
  auto pass = std::make_shared<IntervalPass>(run, dependent);
  const bool read = !OneWayGroupTooSmall(run) && pass->Read();
  if (read) pass->Compute();
  return [&run, pass, read](OneWayGroupState& state) {
    if (!WriteOneWayHeading(run, state)) return;
    if (!read) {
      if (run.request.Get(param::kSignificantOnly)) return;
      pass->WriteHeading();
      pass->WriteTooFewGroups();
      return;
    }
    state.summary.push_back(pass->SummaryRow());
    if (!pass->Kept()) return;
    pass->WriteHeading();
    pass->Write();
  };
}

}  // namespace tarvika
