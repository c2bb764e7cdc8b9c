// Moments and the one-sample tests against R (reference/one_sample.R, reference/gayen.R).

#include "stats/one_sample_tests.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "support/reference_csv.h"
#include "numeric/order_stats.h"
#include "numeric/tolerance.h"
#include "stats/moments.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

MomentAccumulator Accumulate(const std::vector<double>& x) {
  MomentAccumulator m;
  for (double v : x) m.Add(v);
  return m;
}

// The rank sums as the analysis gets them: from the table of distinct values.
SignedRanks RankSums(const std::vector<double>& x, const MomentAccumulator& m, double h) {
  ValueTable table;
  table.Reset(m.minimum, m.maximum);
  for (double v : x) table.Add(v);
  return table.SignedRankSums(h, m.count);
}

TEST(OneSample, MomentsAndTestsAgreeWithR) {
  const ReferenceCsv reference("one_sample.csv", "stats");
  ASSERT_EQ(reference.size(), 3u);
  for (size_t i = 0; i < reference.size(); ++i) {
    SCOPED_TRACE(reference.Text(i, "set"));
    auto want = [&](const char* column) { return reference.Number(i, column); };
    const std::vector<double> x = Numbers(reference.Text(i, "values"));
    const double h = want("h");
    const MomentAccumulator m = Accumulate(x);
    EXPECT_EQ(m.count, want("n"));
    EXPECT_NEAR(m.mean, want("mean"), 1e-12);
    EXPECT_NEAR(Variance(m), want("variance"), 1e-12);
    EXPECT_NEAR(StandardDeviation(m), want("sd"), 1e-12);
    EXPECT_NEAR(Skewness(m), want("skewness"), 1e-12);
    EXPECT_NEAR(Kurtosis(m), want("kurtosis"), 1e-12);
    EXPECT_EQ(m.minimum, want("minimum"));
    EXPECT_EQ(m.maximum, want("maximum"));
    EXPECT_FALSE(ZeroVariance(m));

    const TTest t = OneSampleT(m, h);
    EXPECT_NEAR(t.t, want("t"), 1e-12);
    EXPECT_EQ(t.df, want("df"));
    EXPECT_NEAR(t.p.p, want("t_p"), 2e-7);  // the incomplete beta's fraction stops at 3e-7
    EXPECT_EQ(t.p.marker, SignificanceMarker(t.p.p));

    const SignedRanks ranks = RankSums(x, m, h);
    std::vector<double> deviations;
    for (double v : x) {
      if (std::fabs(v - h) > kZeroTolerance) deviations.push_back(std::fabs(v - h));
    }
    const SignedRankTest w = WilcoxonSignedRank(ranks, deviations, static_cast<int>(deviations.size()));
    const double away = static_cast<double>(deviations.size());
    EXPECT_EQ(w.rPlus, want("r_plus"));
    EXPECT_EQ(w.rMinus, away * (away + 1) / 2 - want("r_plus"));
    if (reference.Text(i, "w_z") == "NA") {
      // Up to 20 cases by enumeration: R's exact p.
      EXPECT_FALSE(w.byNormal);
      EXPECT_NEAR(w.p.p, want("w_p"), 1e-12);
    } else {
      // The normal approximation with the tie correction; the normal polynomial's 2e-5.
      EXPECT_TRUE(w.byNormal);
      EXPECT_NEAR(w.z, want("w_z"), 1e-6);
      EXPECT_NEAR(w.p.p, want("w_p"), 2.2e-5);
    }
    EXPECT_EQ(w.p.marker, SignificanceMarker(w.p.p));

    // The trimmed t at 20 %, the factor 1 - 2 * 0.2 applied once.
    ValueTable table;
    table.Reset(m.minimum, m.maximum);
    for (double v : x) table.Add(v);
    const TrimmedStatistics trim = table.TrimmedStats(m.count, 20);
    EXPECT_NEAR(TrimmedMeanSE(trim, 20, m.count), want("trim20_se"), 1e-12);
    const TTest tt = TrimmedT(trim, 20, m.count, h);
    EXPECT_NEAR(tt.t, want("trim20_t"), 1e-9);
    EXPECT_EQ(tt.df, want("trim20_df"));
    EXPECT_NEAR(tt.p.p, want("trim20_p"), 2e-7);

    const SignTest sign = SignTestAround(ranks);
    EXPECT_EQ(sign.below, want("below"));
    EXPECT_EQ(sign.above, want("above"));
    EXPECT_FALSE(sign.byNormal);
    EXPECT_NEAR(sign.p.p, want("sign_p"), 1e-12);
  }
}

// The expansion's terms in the kurtosis and the squared skewness vanish at t = 0 and for a
// normal parent, so it is the t test's p there; it is 1 at t = 0 whatever the shape, and a
// probability for the shapes met in practice. The sample's p is held to [0, 1] even for a
// shape far outside them (the survey's Age: skewness 5.2, kurtosis 34.5).
TEST(OneSample, GayenIsTheTTestForANormalParentAndAProbability) {
  for (int n : {3, 4, 5, 10, 32, 100, 499}) {
    for (double t = 0; t <= 10; t += 0.125) {
      SCOPED_TRACE(testing::Message() << "n = " << n << ", t = " << t);
      EXPECT_NEAR(GayenExpansionP(n, t, 0, 0), StudentP2(t, n - 1).p, 1e-12);
      EXPECT_NEAR(GayenExpansionP(n, -t, 0, 0), StudentP2(t, n - 1).p, 1e-12);
      for (double skewness : {-1.0, -0.5, 0.5, 1.0}) {
        for (double kurtosis : {-1.0, 0.0, 1.0}) {
          const double p = GayenExpansionP(n, t, skewness, kurtosis);
          if (t == 0) {
            EXPECT_NEAR(p, 1, 1e-12);
          }
          if (n >= 10) {
            EXPECT_GE(p, -1e-12);
            EXPECT_LE(p, 1 + 1e-12);
          }
        }
      }
    }
  }
  std::vector<double> skewed(200, 18);
  for (int i = 0; i < 12; ++i) skewed.push_back(30 + 3 * i);
  const MomentAccumulator m = Accumulate(skewed);
  ASSERT_GT(Skewness(m), 4);
  for (double t = -10; t <= 10; t += 0.05) {
    const PValue p = GayenP(m, t);
    EXPECT_GE(p.p, 0);
    EXPECT_LE(p.p, 1);
    EXPECT_EQ(p.marker, SignificanceMarker(p.p));
  }
}

// Against the frequency of |t| > t0 in a million samples from gamma parents, where the t
// test is off by up to 0.018: within 0.002, and, where the t test is off by more than five
// standard errors of the estimate, within a third of the t test's error. And against the
// Edgeworth expansion of the studentized mean for samples, with the sample's shape through
// the accumulator (mtcars mpg against 20 was once 12.55).
TEST(OneSample, GayenAgreesWithMonteCarloAndTheEdgeworthExpansion) {
  const ReferenceCsv simulated("gayen_monte_carlo.csv", "stats");
  ASSERT_EQ(simulated.size(), 18u);
  for (size_t i = 0; i < simulated.size(); ++i) {
    auto want = [&](const char* column) { return simulated.Number(i, column); };
    SCOPED_TRACE(testing::Message() << "n = " << want("n") << ", gamma shape " << want("shape") << ", t = " << want("t"));
    const double p = GayenExpansionP(static_cast<int>(want("n")), want("t"), want("skewness"), want("kurtosis"));
    const double error = std::fabs(p - want("p_mc")), tError = std::fabs(want("p_t") - want("p_mc"));
    EXPECT_LT(error, 0.002);
    if (tError > 5 * want("se_mc")) {
      EXPECT_LT(error, tError / 3);
    }
  }
  const ReferenceCsv samples("gayen_edgeworth.csv", "stats");
  ASSERT_EQ(samples.size(), 3u);
  for (size_t i = 0; i < samples.size(); ++i) {
    SCOPED_TRACE(samples.Text(i, "set"));
    auto want = [&](const char* column) { return samples.Number(i, column); };
    const MomentAccumulator m = Accumulate(Numbers(samples.Text(i, "values")));
    EXPECT_NEAR(Skewness(m), want("skewness"), 1e-12);
    EXPECT_NEAR(Kurtosis(m), want("kurtosis"), 1e-12);
    const TTest t = OneSampleT(m, want("h"));
    EXPECT_NEAR(t.t, want("t"), 1e-12);
    EXPECT_NEAR(GayenP(m, t.t).p, want("p_edgeworth"), 1e-3);
  }
}

// The extremes are the data's, however large; two values have their SD, one has none; the
// zero test of the variance follows the data's size, so small units keep theirs and
// constant data, or data equal but for rounding, have none (and a t of 99).
TEST(OneSample, ExtremesAndZeroVariance) {
  MomentAccumulator above = Accumulate({2e9, 3e9, 2.5e9});
  EXPECT_EQ(above.minimum, 2e9);
  EXPECT_EQ(above.maximum, 3e9);
  MomentAccumulator below = Accumulate({-2e9, -3e9});
  EXPECT_EQ(below.minimum, -3e9);
  EXPECT_EQ(below.maximum, -2e9);

  const MomentAccumulator two = Accumulate({1, 3});
  EXPECT_FALSE(ZeroVariance(two));
  EXPECT_NEAR(StandardDeviation(two), 1.4142135623730951, 1e-15);  // R: sd(c(1, 3))
  EXPECT_EQ(Skewness(two), 0);
  EXPECT_EQ(Kurtosis(two), 0);
  const MomentAccumulator one = Accumulate({7});
  EXPECT_TRUE(ZeroVariance(one));
  EXPECT_EQ(StandardDeviation(one), 0);

  const MomentAccumulator tiny = Accumulate({3e-9, 5e-9, 4e-9});
  EXPECT_FALSE(ZeroVariance(tiny));
  EXPECT_NEAR(StandardDeviation(tiny), 1e-9, 1e-22);
  for (const std::vector<double>& flat : {std::vector<double>{0.1, 0.1, 0.1}, {0.1 + 0.2, 0.3, 0.3},
                                          std::vector<double>(5, 1e9 + 0.5), {0, 0, 0}}) {
    const MomentAccumulator m = Accumulate(flat);
    EXPECT_TRUE(ZeroVariance(m)) << flat[0];
    EXPECT_EQ(StandardDeviation(m), 0);
    EXPECT_EQ(OneSampleT(m, -1).t, 99);
  }
}

}  // namespace
}  // namespace tarvika
