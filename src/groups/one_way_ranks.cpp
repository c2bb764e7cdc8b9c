#include "groups/one_way_ranks.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "frame/analysis_run.h"
#include "frame/parameter_names.h"
#include "groups/one_way_distributions.h"
#include "groups/one_way_means.h"
#include "groups/one_way_text.h"
#include "groups/pairwise_report.h"
#include "numeric/tolerance.h"
#include "stats/one_way.h"
#include "stats/pairwise.h"
#include "stats/stochastic_equality.h"
#include "workspace/workspace.h"

namespace tarvika {

using namespace one_way_text;
namespace {

constexpr double kTiny = kZeroTolerance;

class RankPass {
 public:
  RankPass(AnalysisRun& run, int dependent) : run_(run), r_(run.report), dependent_(dependent) {}
  bool Read();
  void Compute();
  bool Kept() const;
  void Write();
  RankSummaryRow SummaryRow() const;

 private:
  std::string_view T(std::string_view en, std::string_view hu) const { return run_.T(en, hu); }
  void Keep(const PValue& p) {
    const std::string_view m = p.marker;
    const int rank = m.empty() || m == " " ? 0 : m == "+" ? 1 : m.starts_with("**") ? 3 : 2;
    keepRank_ = std::max(keepRank_, rank);
  }
  void WriteGroupTable();
  void WriteVarianceTests();
  void WriteSeveralGroups();
  void WriteKulle(std::string_view title, const KulleResult& kulle);
  void WriteEachAgainstTheRest();
  void WritePairwise();
  void WriteRankMeanComparisons();
  void WriteDistributions();
  void WriteTwoGroups();

  AnalysisRun& run_;
  ReportWriter& r_;
  int dependent_;
  int kAssigned_ = 0;
  std::vector<std::vector<double>> values_;  // per assigned group
  std::vector<int> active_;                  // groups of at least two cases
  std::vector<std::vector<double>> activeValues_;
  RankedGroups ranked_;
  bool zeroSd_ = false;
  VarianceTest obrien_, levene_;
  KruskalWallisResult kw_;
  KulleResult kulleEqual_, kulleProportional_;
  bool anyTrend_ = false;  // some test of stochastic homogeneity has p <= 0.10
  Dominance dominance_;
  AnovaFamilyResult welch_;
  double welchDf_ = 0, welchW_ = 0;
  PValue welchP_;
  TwoGroupRanks two_;
  bool exact_ = false, normal_ = false;
  PValue exactP_;
  MannWhitneyNormal normalTest_;
  PValue twoWelchP_;
  int keepRank_ = 0;
};

bool RankPass::Read() {
  const int grouping = run_.index.columns[run_.index.grouping];
  const GroupDefinition definition = GetGroupDefinition(run_.ws, grouping);
  kAssigned_ = definition.distinct;
  values_.assign(kAssigned_, {});
  DataFeed feed(run_.ws, r_.Missing(), {0, dependent_, grouping});
  std::vector<double> value(3, 0);
  std::vector<std::uint8_t> missing(3, 1);
  for (int row : run_.GroupRows()) {
    feed.ReadRow(row, 2, value, missing);
    if (missing[1] || missing[2]) continue;
    const int group = FindMergedGroup(definition, value[2]);
    if (group > 0) values_[group - 1].push_back(value[1]);
  }
  for (int j = 0; j < kAssigned_; ++j) {
    if (values_[j].size() < 2) continue;
    active_.push_back(j);
    activeValues_.push_back(values_[j]);
  }
  return active_.size() >= 2;
}

void RankPass::Compute() {
  ranked_ = RankGroups(activeValues_);
  for (const GroupSample& g : ranked_.samples) {
    if (g.variance < kTiny) zeroSd_ = true;
  }
  obrien_ = OBrienTest(ranked_.ranks, ranked_.samples);
  levene_ = LeveneTest(ranked_.ranks, ranked_.samples);
  if (obrien_.done && obrien_.df2 > 0) Keep(obrien_.p);
  Keep(levene_.p);
  welch_ = AnovaFamily(ranked_.samples);
  const int k = static_cast<int>(active_.size());
  if (k > 2) {
    kw_ = KruskalWallis(ranked_);
    dominance_ = StochasticDominance(activeValues_, ranked_);
    kulleEqual_ = KulleEqual(ranked_);
    kulleProportional_ = KulleProportional(ranked_);
    Keep(kw_.p);
    anyTrend_ = kw_.p.p <= 0.1;
    for (const KulleResult* kulle : {&kulleEqual_, &kulleProportional_}) {
      const PValue chi = FProb(kulle->F, kulle->f, 1000000);
      const PValue f = FProb(kulle->F, kulle->f, std::min(2 * kulle->f0, static_cast<double>(ranked_.total - k)));
      Keep(chi);
      Keep(f);
      anyTrend_ = anyTrend_ || chi.p <= 0.1 || f.p <= 0.1;
    }
    // The rank Welch test with its df and statistic reduced as the rank SDs grow unequal.
    std::vector<double> sds;
    for (const GroupSample& g : ranked_.samples) sds.push_back(std::sqrt(g.variance));
    double sum = 0, sumSq = 0;
    for (double s : sds) {
      sum += s;
      sumSq += s * s;
    }
    const double cv = sum > kTiny ? k * std::sqrt(std::max(0.0, (sumSq - sum * sum / k) / k)) / sum : 0;
    welchDf_ = welch_.dfWelch;
    welchW_ = welch_.W;
    if (cv > 0.1) {
      const double c = std::min(cv, 1.1);
      welchDf_ = std::round((1.1 - c) * welch_.dfWelch);
      if (welchDf_ < 0.2 * welch_.dfWelch) welchDf_ = std::round(0.2 * welch_.dfWelch);
      if (welchDf_ < 2) welchDf_ = 2;
      if (cv > 0.25) welchW_ = welchW_ / (1 + 0.5 * c);
    }
    if (!(zeroSd_ || welch_.W < -0.5)) {
      welchP_ = FProb(welchW_, k - 1, welchDf_);
      Keep(welchP_);
      anyTrend_ = anyTrend_ || welchP_.p <= 0.1;
    }
    return;
  }
  two_ = CompareTwoGroupRanks(activeValues_, ranked_);
  const int n1 = ranked_.samples[0].n, n2 = ranked_.samples[1].n;
  exact_ = MannWhitneyExactApplies(n1, n2);
  normal_ = MannWhitneyNormalApplies(n1, n2);
  if (exact_) {
    exactP_ = MannWhitneyExactP(ranked_);
    Keep(exactP_);
  }
  if (normal_) {
    normalTest_ = MannWhitneyNormalTest(ranked_);
    Keep(normalTest_.p);
  }
  if (two_.fpDefined) Keep(two_.fpP);
  if (!zeroSd_) {
    twoWelchP_ = StudentP2(std::sqrt(std::max(0.0, welch_.W)), welch_.dfWelch);
    Keep(twoWelchP_);
  }
  if (two_.bmDefined) Keep(two_.bm.p);
}

bool RankPass::Kept() const {
  return !run_.request.Get(param::kSignificantOnly) || keepRank_ > run_.request.Get(param::kSignificanceLevel);
}

void RankPass::Write() {
  r_.BlankLine();
  r_.Line(std::string(T("DEPENDENT VARIABLE: ", "FÜGGŐ VÁLTOZÓ: ")) + NameWithLong(run_.ws, dependent_));
  WriteGroupTable();
  WriteVarianceTests();
  if (active_.size() > 2) {
    WriteSeveralGroups();
  } else {
    WriteTwoGroups();
  }
}

void RankPass::WriteGroupTable() {
  const int grouping = run_.index.columns[run_.index.grouping];
  const GroupDefinition definition = GetGroupDefinition(run_.ws, grouping);
  const bool several = active_.size() > 2;
  r_.BlankLine();
  r_.Line(T("Basic group statistics", "Csoportonkénti alapstatisztikák"));
  r_.Line(PaddedName(run_.request.shortNames.at(dependent_)));
  r_.BeginTable();
  r_.FirstCell("");
  r_.Cell("");
  r_.Cell("");
  r_.Cell(T("Rank", "Rang"));
  r_.Cell(T("Rank", "Rang"));
  if (several) r_.Cell(T("Stochastic dominance", "Sztochasztikus dominancia"));
  r_.EndRow();
  r_.FirstCell("Index");
  r_.Cell(PaddedName(run_.request.shortNames.at(grouping)));
  r_.Cell(T("Size", "Elemszám"));
  r_.Cell(T("mean", "átlag"));
  r_.Cell(T("SD", "szórás"));
  if (several) {
    r_.Cell(T("Weighted", "Súlyozott"));
    r_.Cell(T("Unweighted", "Nem súlyozott"));
  } else {
    r_.Cell("Min.");
    r_.Cell("Max.");
  }
  r_.EndRow();
  int total = 0;
  bool smallGroup = false;
  std::size_t a = 0;
  for (int j = 0; j < kAssigned_; ++j) {
    const int n = static_cast<int>(values_[j].size());
    if (n <= 2) smallGroup = true;
    if (n == 0) continue;
    r_.FirstCellRightAligned(std::to_string(j + 1), 4);
    r_.Cell(PaddedName(definition.distinctNames[j + 1]));
    r_.Cell(std::to_string(n));
    if (n > 1) {
      total += n;
      const GroupSample& g = ranked_.samples[a];
      r_.WriteRatio(9, 8, 1, g.mean, 1);
      r_.WriteRatio(8, 9, 1, std::sqrt(g.variance), 1);
      if (several) {
        r_.Cell(Fixed(dominance_.weighted[a], 3));
        r_.Cell(Fixed(dominance_.unweighted[a], 3));
      } else {
        const auto [low, high] = std::minmax_element(values_[j].begin(), values_[j].end());
        r_.WriteRatio(9, 0, 1, *low, 1);
        r_.WriteRatio(9, 0, 1, *high, 1);
      }
      ++a;
    }
    r_.EndRow();
  }
  r_.FirstCell(T("TOTAL:    ", "ÖSSZESEN: "));
  r_.Cell("");
  r_.Cell(std::to_string(total));
  r_.EndRow();
  r_.EndTable();
  if (smallGroup) {
    r_.Line(T("Warning! ", "Figyelem! "));
    r_.Line(T("Groups of size less than 2 have been dropped from further statistical analyses.",
              "A 2-nél kisebb elemszámú csoportok kimaradnak a további elemzésekből."));
  }
  if (several && !run_.request.Get(param::kSignificantOnly)) {
    r_.BlankLine();
    r_.Line("Note:");
    r_.Line("  For each group j stochastic dominance indicates the chance that a random ");
    r_.Line("  observation from this group (Xj) will be greater than a random observation");
    r_.Line("  from the whole sample (X) plus half the chance of the equality:");
    r_.Line("  STDj = P(Xj > X) + 0.5P(Xj = X)");
    r_.Line("  Stochastic homogeneity is defined by STD1 = STD2 = STD3 = ... = 0.50");
  }
}

void RankPass::WriteVarianceTests() {
  auto line = [&](std::string_view name, const VarianceTest& t) {
    const std::string df1 = t.welchType ? fmt::format("{:.1f}", t.df1) : fmt::format("{:.0f}", t.df1);
    const std::string_view kind = t.welchType ? T(" (Welch type)", " (Welch-típusú)") : std::string_view();
    r_.Line(fmt::format("    - {}{}: F({}; {:.1f}) = {:.3f}{}", name, kind, df1, t.df2, t.statistic, PText(t.p)));
  };
  r_.BlankLine();
  r_.Line(T("Testing the equality of expected rank variances", "Elméleti rangszórások egyenlőségének tesztelése"));
  if (obrien_.done && obrien_.df2 > 0) line(T("O'Brien test", "O'Brien-próba"), obrien_);
  line(T("Levene test", "Levene-próba"), levene_);
}

void RankPass::WriteSeveralGroups() {
  const bool significantOnly = run_.request.Get(param::kSignificantOnly);
  const int k = static_cast<int>(active_.size());
  r_.BlankLine();
  r_.Line(T("Testing the hypothesis of stochastic homogeneity", "Sztochasztikus homogenitás tesztelése"));
  if (!significantOnly) r_.Line("    CONVENTIONAL TESTS assuming variance homogeneity of ranks:");
  r_.Line(fmt::format("    - Kruskal-Wallis test: H({}) = {:.3f}{}", kw_.df, kw_.H, PText(kw_.p)));
  r_.Line(fmt::format("      Rank eta squared = {:.3f}", kw_.rankEtaSquared));
  r_.Line("    ROBUST TESTS not assuming variance homogeneity of ranks:");
  if (zeroSd_ || welch_.W < -0.5) {
    r_.Line("    - Adjusted rank Welch test: Undefined (the SD of one group is 0)");
  } else {
    r_.Line(fmt::format("    - Adjusted rank Welch test: rW3({}; {:.1f}) = {:.3f}{}", k - 1, welchDf_, welchW_,
                        PText(welchP_)));
  }
  r_.Line(T("    KULLE'S ASYMPTOTICALLY VALID ROBUST TESTS of stochastic homogeneity",
            "    KULLE-féle aszimptotikusan egzakt próbák"));
  WriteKulle("    - Equal population weights:", kulleEqual_);
  WriteKulle("    - Population weights proportional to sample sizes:", kulleProportional_);
  if (anyTrend_) WriteEachAgainstTheRest();
  if (anyTrend_) WriteRankMeanComparisons();
  if (k <= 20) WritePairwise();
  if (run_.request.Get(param::kCompareDistributions)) WriteDistributions();
}

// After a trend in the tests of stochastic homogeneity, the rank means are compared pair by
// pair as the means are: Tukey-Kramer with the error term of the ANOVA on the ranks, then
// Games-Howell. Every assigned group keeps its place, so the pairs carry its index.
void RankPass::WriteRankMeanComparisons() {
  std::vector<PairwiseGroup> groups(kAssigned_);
  for (std::size_t i = 0; i < active_.size(); ++i) {
    const GroupSample& g = ranked_.samples[i];
    groups[active_[i]] = {g.mean, std::sqrt(g.variance), g.n};
  }
  const int k = static_cast<int>(active_.size());
  const int df = static_cast<int>(std::lround(welch_.df2));
  for (PairwiseMethod method : {PairwiseMethod::TukeyKramer, PairwiseMethod::GamesHowell}) {
    WritePairwiseComparisons(r_, PairwiseKind::RankMeans,
                             PairwiseComparisons(method, groups, k, df, welch_.msWithin, run_.tables.studentizedRange));
  }
}

void RankPass::WriteDistributions() {
  DistributionRequest d;
  d.values = activeValues_;
  for (int j : active_) d.indices.push_back(j + 1);
  // The tail left out at each end, as the heading of the run states it.
  const int percent = run_.request.Get(param::kTrimmingPercent);
  d.epsmin = percent < 1 ? 0.025 : percent > 25 ? 0.25 : percent * 0.01;
  d.maxCutpoints = run_.request.Get(param::kMaxCutpoints);
  d.hungarian = run_.T("en", "hu") == "hu";
  if (active_.size() == 2) {
    WriteTwoDistributions(r_, d);
  } else {
    WriteSeveralDistributions(r_, d);
  }
}

// Brunner and Munzel's test of each pair of groups on the values binned into 101 equal cells
// of the common range (the same test on the values unless two of them share a cell), with
// Bonferroni's adjustment for the k(k - 1)/2 pairs.
void RankPass::WritePairwise() {
  double low = activeValues_[0][0], high = low;
  for (const auto& v : activeValues_) {
    for (double x : v) {
      low = std::min(low, x);
      high = std::max(high, x);
    }
  }
  const double width = (high - low) / 100;
  if (width <= 0.0001) return;
  std::vector<std::vector<double>> cells;
  for (const auto& v : activeValues_) {
    std::vector<double> c;
    for (double x : v) c.push_back(std::round((x - low) / width));
    cells.push_back(std::move(c));
  }
  const int k = static_cast<int>(active_.size());
  r_.BlankLine();
  r_.Line(T("Tests of pairwise stochastic equalities", "Páronkénti sztochasztikus egyenlőség tesztelése"));
  for (int a = 0; a < k; ++a) {
    for (int b = a + 1; b < k; ++b) {
      const std::vector<std::vector<double>> pair = {cells[a], cells[b]};
      const RankedGroups ranked = RankGroups(pair);
      const TwoGroupRanks t = CompareTwoGroupRanks(pair, ranked);
      const double n = ranked.total;
      double bm = t.bm.z, df = std::min(t.bm.df, n - 2);
      PValue p = t.bm.p;
      if (t.q1 + t.q2 < kTiny) {
        // No spread of the placements: the groups are apart (or alike) without doubt.
        df = n - 2;
        bm = std::fabs(ranked.samples[0].mean - ranked.samples[1].mean) > kTiny ? 999 : 0;
        if (ranked.samples[0].mean < ranked.samples[1].mean) bm = -bm;
        p = StudentP2(bm, df);
      }
      const PValue adjusted = Marked(std::min(1.0, 0.5 * p.p * k * (k - 1)));
      r_.Line(fmt::format(" A({},{}) = {:.3f}  BM({:.1f}) = {}\t(p = {:.4f})\t Bonferroni signif.:  p = {:.4f}{}",
                          active_[a] + 1, active_[b] + 1, t.aEstimate, df, SignSlot3(bm), p.p, adjusted.p,
                          adjusted.marker));
    }
  }
}

void RankPass::WriteKulle(std::string_view title, const KulleResult& kulle) {
  const int k = static_cast<int>(active_.size());
  const double d = std::min(2 * kulle.f0, static_cast<double>(ranked_.total - k));
  r_.Line(title);
  r_.Line(fmt::format("      Chi2({:.2f}) = {:.3f}{}", kulle.f, kulle.f * kulle.F,
                      PText(FProb(kulle.F, kulle.f, 1000000))));
  r_.Line(fmt::format("    F({:.2f}; {:.1f}) = {:.3f}{}", kulle.f, d, kulle.F, PText(FProb(kulle.F, kulle.f, d))));
}

// Each group against the cases of all the others, by Brunner and Munzel's test with the
// variance terms of the proportional Kulle step, Bonferroni-adjusted for the k tests.
void RankPass::WriteEachAgainstTheRest() {
  const int grouping = run_.index.columns[run_.index.grouping];
  const GroupDefinition definition = GetGroupDefinition(run_.ws, grouping);
  const int k = static_cast<int>(active_.size());
  const double N = ranked_.total;
  r_.BlankLine();
  r_.Line("Comparison of each group with the rest of the total sample based on the Brunner-Munzel test.");
  r_.Line("p values are adjusted by means of the Bonferroni-method.");
  r_.BeginTable();
  r_.FirstCell("Index");
  for (std::string_view head : {"Group       ", "A_estim", "  BM", "df", "p-value", "adjusted p"}) r_.Cell(head);
  r_.EndRow();
  for (int a = 0; a < k; ++a) {
    const GroupSample& g = ranked_.samples[a];
    const double n = g.n, m = N - n;
    const double A = (g.mean - (N + 1) / 2) / m + 0.5;
    const BrunnerMunzelResult bm = BrunnerMunzelZ(n, m, A, kulleProportional_.v1[a] / (m * m) / n,
                                                  kulleProportional_.v2[a] / (n * n) / m);
    const PValue adjusted = Marked(std::min(1.0, k * bm.p.p));
    r_.FirstCellRightAligned(std::to_string(active_[a] + 1), 4);
    r_.Cell(PaddedName(definition.distinctNames[active_[a] + 1]));
    r_.Cell(Fixed(A, 3));
    r_.Cell((bm.z < 0 ? "" : " ") + Fixed(bm.z, 2));
    r_.Cell(Fixed(bm.df, 1));
    r_.Cell(Fixed(bm.p.p, 4));
    r_.Cell(Fixed(adjusted.p, 4) + std::string(adjusted.marker));
    r_.EndRow();
  }
  r_.EndTable();
}

void RankPass::WriteTwoGroups() {
  const bool significantOnly = run_.request.Get(param::kSignificantOnly);
  const TwoGroupRanks& t = two_;
  r_.BlankLine();
  r_.Line(T("Testing the hypothesis of stochastic equality", "Sztochasztikus egyenlőség tesztelése"));
  if (!significantOnly) r_.Line("    CONVENTIONAL TESTS assuming variance homogeneity of ranks:");
  const std::string cohen = fmt::format("      Rank Cohen d = {:.3f}", t.rankCohenD);
  if (exact_) {
    r_.Line(fmt::format("    - Mann-Whitney test (exact): R1 = {:.1f}, R2 = {:.1f}  (p = {:.3f}){}", t.rankSum1,
                        t.rankSum2, exactP_.p, exactP_.marker));
    r_.Line(cohen);
  }
  if (normal_) {
    r_.Line(fmt::format("    - Mann-Whitney test (normal approximation): Z = {:.3f}  (p = {:.3f}){}",
                        normalTest_.z, normalTest_.p.p, normalTest_.p.marker));
    r_.Line(cohen);
  }
  r_.Line("    ROBUST TESTS not assuming variance homogeneity of ranks:");
  if (!t.fpDefined) {
    r_.Line("    - Fligner-Policello test: Undefined (the denominator of the test statistic is zero)");
  } else {
    r_.Line(fmt::format("    - Fligner-Policello test with Welch-like df: FPW({:.1f}) = {:.3f}{}", t.fpDf, t.fp,
                        PText(t.fpP)));
  }
  if (zeroSd_) {
    r_.Line("    - Welch test on ranks: rW = Undefined");
  } else {
    const double sign = ranked_.samples[0].mean < ranked_.samples[1].mean ? -1 : 1;
    r_.Line(fmt::format("    - Welch test on ranks: rW({:.1f}) = {:.3f}{}", welch_.dfWelch,
                        sign * std::sqrt(std::max(0.0, welch_.W)), PText(twoWelchP_)));
  }
  if (!t.bmDefined) {
    r_.Line("    - Brunner-Munzel test: Undefined (the denominator of the test statistic is zero)");
  } else {
    r_.Line(fmt::format("    - Brunner-Munzel test: BM({:.1f}) = {:.3f}{}", t.bm.df, t.bm.z, PText(t.bm.p)));
  }
  r_.BlankLine();
  r_.Line("Estimation of the A measure of stochastic superiority:");
  r_.Line(fmt::format("    A_est = {:.3f}  [ P(Group1 > Group2) = {:.3f}, P(Group1 < Group2) = {:.3f} ]",
                      t.aEstimate, t.pGreater, t.pLess));
  r_.Line(fmt::format("    C(0.95) = ({:.3f}; {:.3f})", t.aLow, t.aHigh));
  r_.Line(fmt::format(
      "Square of Somers' d monotonity measure, as ordinal effect size: d^2 = {:.3f}   (d = 2A_est - 1)",
      t.somersD2));
  if (run_.request.Get(param::kCompareDistributions)) WriteDistributions();
}

RankSummaryRow RankPass::SummaryRow() const {
  RankSummaryRow row;
  row.dependent = dependent_;
  row.k = static_cast<int>(active_.size());
  row.rankMeans.assign(kAssigned_, std::nan(""));
  for (int j = 0; j < kAssigned_; ++j) {
    if (!values_[j].empty()) row.nonEmpty.push_back(j);
    if (values_[j].size() <= 2) row.smallGroup = true;
  }
  for (std::size_t a = 0; a < active_.size(); ++a) row.rankMeans[active_[a]] = ranked_.samples[a].mean;
  row.pLevene = levene_.p;
  if (row.k == 2) {
    row.aEstimate = two_.aEstimate;
    row.somersD2 = two_.somersD2;
    row.pMannWhitney = exact_ ? exactP_ : normalTest_.p;
    row.fpDefined = two_.fpDefined;
    row.fp = two_.fp;
    row.fpDf = two_.fpDf;
    row.fpP = two_.fpP;
    row.bmDefined = two_.bmDefined;
    row.bm = two_.bm.z;
    row.bmDf = two_.bm.df;
    row.bmP = two_.bm.p;
    return row;
  }
  row.H = kw_.H;
  row.hP = kw_.p;
  row.welchDefined = !(zeroSd_ || welch_.W < -0.5);
  row.rW3 = welchW_;
  row.rW3P = welchP_;
  row.kulle = kulleEqual_.F;
  row.kulleP = FProb(kulleEqual_.F, kulleEqual_.f,
                     std::min(2 * kulleEqual_.f0, static_cast<double>(ranked_.total - row.k)));
  row.rankEtaSquared = kw_.rankEtaSquared;
  return row;
}

}  // namespace

DependentWriter ComputeOrdinalDependent(AnalysisRun& run, int dependent) {
  auto pass = std::make_shared<RankPass>(run, dependent);
  const bool read = !OneWayGroupTooSmall(run) && pass->Read();
  if (read) pass->Compute();
  return [&run, pass, read, dependent](OneWayGroupState& state) {
    if (!WriteOneWayHeading(run, state)) return;
    if (!read) {
      if (run.request.Get(param::kSignificantOnly)) return;
      ReportWriter& r = run.report;
      r.BlankLine();
      r.Line(std::string(run.T("DEPENDENT VARIABLE: ", "FÜGGŐ VÁLTOZÓ: ")) + NameWithLong(run.ws, dependent));
      r.Line(run.T("Number of groups of size at least 2 is less than 2.",
                   "A legalább 2 elemű csoportok száma kisebb, mint 2."));
      r.Line(run.T("No analysis can be performed for this dependent variable.",
                   "Erre a függő változóra nem végezhető elemzés."));
      return;
    }
    state.rankSummary.push_back(pass->SummaryRow());
    if (!pass->Kept()) return;
    pass->Write();
  };
}

}  // namespace tarvika
