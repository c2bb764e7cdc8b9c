// Moments and the one-sample tests against R (reference/one_sample.R).

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
  ASSERT_EQ(reference.size(), 2u);
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

    const SignTest sign = SignTestAround(ranks);
    EXPECT_EQ(sign.below, want("below"));
    EXPECT_EQ(sign.above, want("above"));
    EXPECT_FALSE(sign.byNormal);
    EXPECT_NEAR(sign.p.p, want("sign_p"), 1e-12);
  }
}

}  // namespace
}  // namespace tarvika
