// The one-way comparison of independent groups against R (reference/one_way.R): the ANOVA,
// Welch's test, the tests of equal variances, Brown and Forsythe's F*, the two-group t
// tests with their intervals, and the trimmed tests.

#include "stats/one_way.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/reference_csv.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

struct Groups {
  std::vector<std::vector<double>> values;
  std::vector<GroupSample> samples;
};

Groups Split(const std::vector<double>& y, const std::vector<double>& g) {
  Groups r;
  const int k = static_cast<int>(*std::max_element(g.begin(), g.end()));
  r.values.resize(k);
  for (size_t i = 0; i < y.size(); ++i) r.values[static_cast<int>(g[i]) - 1].push_back(y[i]);
  for (const auto& v : r.values) r.samples.push_back(SummarizeGroup(v));
  return r;
}

TEST(OneWay, TestsOfMeansAndVariancesAgreeWithR) {
  const ReferenceCsv reference("one_way.csv", "stats");
  ASSERT_EQ(reference.size(), 3u);
  for (size_t i = 0; i < reference.size(); ++i) {
    SCOPED_TRACE(reference.Text(i, "set"));
    auto want = [&](const char* column) { return reference.Number(i, column); };
    const Groups g = Split(Numbers(reference.Text(i, "values")), Numbers(reference.Text(i, "groups")));
    const int k = static_cast<int>(want("k"));
    const bool equalSizes = reference.Text(i, "set") == "k3_equal";

    const AnovaFamilyResult a = AnovaFamily(g.samples);
    ASSERT_EQ(a.k, k);
    EXPECT_NEAR(a.F, want("anova_F"), 1e-9);
    EXPECT_EQ(a.df2, want("anova_df2"));
    EXPECT_NEAR(FProb(a.F, a.df1, a.df2).p, want("anova_p"), 5e-5);
    const AnovaEffects e = Effects(a);
    EXPECT_NEAR(e.etaSquared, want("eta2"), 1e-9);
    EXPECT_NEAR(e.omegaSquared, std::max(0.0, want("omega2")), 1e-9);
    EXPECT_NEAR(a.BF, want("bf_F"), 1e-9);
    // The df of F* is rounded to a whole number.
    EXPECT_EQ(a.dfBF, std::round(want("bf_df2")));

    const VarianceTest levene = LeveneTest(g.values, g.samples);
    const VarianceTest obrien = OBrienTest(g.values, g.samples);
    ASSERT_TRUE(obrien.done);
    EXPECT_EQ(levene.welchType, !equalSizes);
    if (equalSizes) {
      EXPECT_NEAR(levene.statistic, want("levene_F"), 1e-9);
      EXPECT_NEAR(levene.p.p, want("levene_p"), 5e-5);
      EXPECT_NEAR(obrien.statistic, want("obrien_F"), 1e-9);
      EXPECT_NEAR(obrien.p.p, want("obrien_p"), 5e-5);
    } else {
      EXPECT_NEAR(levene.statistic, want("levene_W"), 1e-9);
      EXPECT_NEAR(levene.df2, want("levene_W_df2"), 1e-9);
      EXPECT_NEAR(levene.p.p, want("levene_W_p"), 5e-5);
      EXPECT_NEAR(obrien.statistic, want("obrien_W"), 1e-9);
      EXPECT_NEAR(obrien.df2, want("obrien_W_df2"), 1e-9);
      EXPECT_NEAR(obrien.p.p, want("obrien_W_p"), 5e-5);
    }

    std::vector<TrimmedGroup> trimmed;
    for (auto v : g.values) {
      std::sort(v.begin(), v.end());
      trimmed.push_back(TrimGroup(v, 20));
    }
    if (k == 2) {
      // W is the square of Welch's t; the intervals with the exact critical F are R's.
      EXPECT_NEAR(std::sqrt(a.F), std::fabs(want("t")), 1e-9);
      EXPECT_NEAR(StudentP2(std::sqrt(a.F), a.df2).p, want("t_p"), 5e-5);
      EXPECT_NEAR(std::sqrt(a.W), std::fabs(want("welch_t")), 1e-9);
      EXPECT_NEAR(a.dfWelch, want("welch_t_df"), 1e-9);
      EXPECT_NEAR(StudentP2(std::sqrt(a.W), a.dfWelch).p, want("welch_t_p"), 5e-5);
      EXPECT_NEAR(CriticalF95(a.df2), want("qf_t"), 1e-5);
      EXPECT_NEAR(CriticalF95(a.dfWelch), want("qf_welch"), 1e-5);
      const double d = g.samples[0].mean - g.samples[1].mean;
      const GroupSample& g1 = g.samples[0];
      const GroupSample& g2 = g.samples[1];
      const DifferenceInterval ci =
          IntervalFromSE(d, std::sqrt(a.msWithin * (1.0 / g1.n + 1.0 / g2.n)), want("qf_t"));
      EXPECT_NEAR(ci.low, want("t_low"), 1e-9);
      EXPECT_NEAR(ci.high, want("t_high"), 1e-9);
      const DifferenceInterval wi =
          IntervalFromSE(d, std::sqrt(g1.variance / g1.n + g2.variance / g2.n), want("qf_welch"));
      EXPECT_NEAR(wi.low, want("welch_low"), 1e-9);
      EXPECT_NEAR(wi.high, want("welch_high"), 1e-9);
      const TrimmedTest y = YuenTest(trimmed[0], trimmed[1]);
      EXPECT_NEAR(y.statistic, want("yuen_t"), 1e-9);
      EXPECT_NEAR(y.df2, want("yuen_df"), 1e-9);
      EXPECT_NEAR(y.p.p, want("yuen_p"), 5e-5);
    } else {
      EXPECT_NEAR(a.W, want("welch_W"), 1e-9);
      EXPECT_NEAR(a.dfWelch, want("welch_df2"), 1e-9);
      EXPECT_NEAR(FProb(a.W, a.df1, a.dfWelch).p, want("welch_p"), 5e-5);
      const TrimmedTest t = TrimmedWelch(trimmed);
      EXPECT_NEAR(t.statistic, want("trimmed_F"), 1e-9);
      EXPECT_NEAR(t.df2, want("trimmed_df2"), 1e-9);
      EXPECT_NEAR(t.p.p, want("trimmed_p"), 5e-5);
    }
  }
}

TEST(OneWay, JamesCriticalValuesApproachTheChiSquareQuantilesForLargeGroups) {
  const ReferenceCsv reference("chi_square_quantiles.csv", "stats");
  // Four groups of a million cases: every second-order term is of order 1/n.
  const std::vector<GroupSample> large = {{1000000, 0, 1}, {1000000, 1, 4}, {1000000, 2, 2}, {1000000, 3, 9}};
  // Small groups raise the critical value above the quantile.
  const std::vector<GroupSample> small = {{6, 0, 1}, {9, 1, 4}, {11, 2, 2}, {5, 3, 9}};
  for (size_t i = 0; i < reference.size(); ++i) {
    const double quantile = reference.Number(i, "quantile");
    EXPECT_NEAR(ChiSquareQuantileByBisection(reference.Number(i, "alpha"), 3), quantile, 1e-4);
    EXPECT_NEAR(JamesCritical(large, static_cast<int>(i) + 1), quantile, 1e-3);
    EXPECT_GT(JamesCritical(small, static_cast<int>(i) + 1), quantile);
  }
}

TEST(OneWay, AConstantGroupLeavesTheFTestsOfVariancesAsR) {
  const ReferenceCsv reference("constant_group.csv", "stats");
  const Groups g = Split(Numbers(reference.Text(0, "values")), Numbers(reference.Text(0, "groups")));
  const VarianceTest levene = LeveneTest(g.values, g.samples);
  const VarianceTest obrien = OBrienTest(g.values, g.samples);
  EXPECT_FALSE(levene.welchType);
  EXPECT_NEAR(levene.statistic, reference.Number(0, "levene_F"), 1e-9);
  EXPECT_NEAR(levene.p.p, reference.Number(0, "levene_p"), 5e-5);
  EXPECT_NEAR(obrien.statistic, reference.Number(0, "obrien_F"), 1e-9);
  EXPECT_NEAR(obrien.p.p, reference.Number(0, "obrien_p"), 5e-5);
}

TEST(OneWay, ZeroVarianceAndSmallGroups) {
  // A constant group: F stays, Welch and James are undefined; a group of one case takes no part.
  const std::vector<std::vector<double>> values = {{1, 2, 3, 4}, {5, 5, 5}, {7}, {2, 4, 6, 9, 1}};
  std::vector<GroupSample> samples;
  for (const auto& v : values) samples.push_back(SummarizeGroup(v));
  const AnovaFamilyResult a = AnovaFamily(samples);
  EXPECT_EQ(a.k, 3);
  EXPECT_EQ(a.total, 12);
  EXPECT_GT(a.F, 0);
  EXPECT_LT(a.F, 999999);
  EXPECT_EQ(a.W, -1);
  EXPECT_EQ(a.U, -1);
  // O'Brien's test needs every group above two cases.
  EXPECT_FALSE(OBrienTest(values, samples).done);

  // Groups of two cases have equal absolute deviations: in Welch's form their score SD is a
  // third of the smallest other one, and the test stays finite.
  const std::vector<std::vector<double>> pairs = {{1, 3}, {2, 6}, {1, 2, 4, 8, 3}};
  std::vector<GroupSample> pairSamples;
  for (const auto& v : pairs) pairSamples.push_back(SummarizeGroup(v));
  const VarianceTest levene = LeveneTest(pairs, pairSamples);
  EXPECT_TRUE(levene.welchType);
  EXPECT_GT(levene.statistic, 0);
  EXPECT_LT(levene.statistic, 999);

  // Two groups, one constant: Welch's t is still defined.
  const std::vector<GroupSample> two = {samples[0], samples[1]};
  const AnovaFamilyResult t = AnovaFamily(two);
  EXPECT_NEAR(t.W, std::pow(2.5 - 5, 2) / (samples[0].variance / 4), 1e-12);
  EXPECT_NEAR(t.dfWelch, 3, 1e-12);

  // Trimmed groups without winsorized spread: Yuen's t is the sentinel 99 on h1 + h2 - 2 df.
  const TrimmedGroup ta = TrimGroup(std::vector<double>{1, 5, 5, 5, 9}, 20);
  const TrimmedGroup tb = TrimGroup(std::vector<double>{2, 7, 7, 7, 7, 7, 11}, 20);
  EXPECT_EQ(ta.kept, 3);
  EXPECT_EQ(tb.kept, 5);
  const TrimmedTest y = YuenTest(ta, tb);
  EXPECT_EQ(y.statistic, 99);
  EXPECT_EQ(y.df2, 6);

  // All groups constant: nothing but the df.
  const std::vector<GroupSample> flat = {{3, 1, 0}, {4, 2, 0}};
  const AnovaFamilyResult f = AnovaFamily(flat);
  EXPECT_EQ(f.F, 0);
  EXPECT_EQ(f.W, 0);
  EXPECT_EQ(f.df2, 5);
}

}  // namespace
}  // namespace tarvika
