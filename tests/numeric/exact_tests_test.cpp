// The exact tests and the Kolmogorov tail against R (reference/exact_tests.R).

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "numeric/probability.h"
#include "support/reference_csv.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

TEST(ExactTests, WilcoxonSignedRankCountsEveryPattern) {
  const ReferenceCsv reference("wilcoxon_exact.csv");
  ASSERT_GT(reference.size(), 100u);
  for (size_t i = 0; i < reference.size(); ++i) {
    const std::vector<double> ranks = Numbers(reference.Text(i, "ranks"));
    const int n = static_cast<int>(reference.Number(i, "n"));
    const double t = reference.Number(i, "t");
    const double p = WilcoxonExactP(n, t, ranks);
    EXPECT_NEAR(p, reference.Number(i, "p"), 1e-12) << "n = " << n << ", t = " << t;
    EXPECT_EQ(LastEnumerationCount(), std::round(reference.Number(i, "count")))
        << "n = " << n << ", t = " << t;
  }
  // The tolerance of 1e-8 takes a sum a hair above t; a clear miss counts nothing.
  const std::vector<double> ranks = {1, 2, 3, 4, 5};
  EXPECT_EQ(WilcoxonExactP(5, 3 - 1e-9, ranks), WilcoxonExactP(5, 3, ranks));
  EXPECT_EQ(WilcoxonExactP(2, -1, ranks), 0);
  EXPECT_EQ(LastEnumerationCount(), 0);
  EXPECT_EQ(WilcoxonExactP(21, 3, ranks), 1);  // outside the enumerated sizes
}

TEST(ExactTests, SignTest) {
  const ReferenceCsv reference("sign_test.csv");
  for (size_t i = 0; i < reference.size(); ++i) {
    const int k = static_cast<int>(reference.Number(i, "k"));
    const int n = static_cast<int>(reference.Number(i, "n"));
    double z = 0, p = 0;
    std::string marker;
    SignTestP(k, n, z, p, marker);
    // Exact binomial sums up to 50 cases; beyond, the normal approximation with continuity
    // correction, within 1e-3 of the binomial p. Only a difference 2k - n of 1 is not
    // corrected, and there p is below the binomial 1 by 0.11 at n = 51.
    if (n <= 50) {
      EXPECT_NEAR(p, reference.Number(i, "p"), 1e-12) << k << " of " << n;
    } else if (std::abs(2 * k - n) == 1) {
      EXPECT_NEAR(reference.Number(i, "p") - p, 0.11, 0.01) << k << " of " << n;
    } else {
      EXPECT_NEAR(p, reference.Number(i, "p"), 1e-3) << k << " of " << n;
    }
    EXPECT_EQ(marker, SignificanceMarker(p));
    EXPECT_EQ(z < 0, 2 * k < n) << k << " of " << n;
  }
  double z = 7, p = 8;
  std::string marker = "*";
  SignTestP(1, 1, z, p, marker);
  EXPECT_EQ(z, 7);
  EXPECT_EQ(p, 8);
  EXPECT_EQ(marker, "");
  SignTestP(9, 10, z, p, marker);  // z = (2*9 - 10 - 1) / sqrt(10)
  EXPECT_DOUBLE_EQ(z, 7 / std::sqrt(10.0));
  SignTestP(5, 10, z, p, marker);
  EXPECT_EQ(z, 0);
  EXPECT_EQ(p, 1);
}

TEST(ExactTests, FisherTwoByTwo) {
  const ReferenceCsv reference("fisher_exact.csv");
  int agreeing = 0, crossing = 0;
  for (size_t i = 0; i < reference.size(); ++i) {
    const int a = static_cast<int>(reference.Number(i, "a")), b = static_cast<int>(reference.Number(i, "b"));
    const int c = static_cast<int>(reference.Number(i, "c")), d = static_cast<int>(reference.Number(i, "d"));
    const FisherResult result = FisherExactP2(a, b, c, d);
    const std::string table =
        std::to_string(a) + " " + std::to_string(b) + " / " + std::to_string(c) + " " + std::to_string(d);
    EXPECT_NEAR(result.pTable / reference.Number(i, "ptable"), 1, 1e-10) << table;
    // The walk from the observed table toward a = 0 adds every table on its way. When the
    // exchanges of cells leave the observed table below the mode in a, that is the exact
    // tail, and p agrees with R up to the cut of the walk at 1e-5. Otherwise the walk
    // crosses the mode, takes nearly all tables, and p comes out as 1: the difference is
    // all of 1 - p(R), e.g. 0.956 for (7 9 / 1 12).
    const double exact = reference.Number(i, "p");
    if (std::fabs(result.p2 - exact) <= 2e-5) {
      ++agreeing;
    } else {
      EXPECT_GT(result.p2, 1 - 2e-5) << table << ": neither the exact p nor 1";
      ++crossing;
    }
  }
  EXPECT_EQ(agreeing, 183);
  EXPECT_EQ(crossing, 16);
  EXPECT_EQ(FisherExactP2(7, 9, 1, 12).p2, 1);
  // The mirror image of a symmetric table is as probable as the table itself and counts.
  EXPECT_NEAR(FisherExactP2(7, 5, 1, 3).p2, 0.5692307692, 1e-9);
}

TEST(ExactTests, KolmogorovTail) {
  const ReferenceCsv reference("kolmogorov.csv");
  for (size_t i = 0; i < reference.size(); ++i) {
    const double d = reference.Number(i, "d");
    // Three terms of each series reach 1e-5; below 0.37 p is taken as 1, which the true
    // tail (above 0.999 there) misses by up to 1e-3.
    EXPECT_NEAR(KolmogorovP(d), reference.Number(i, "p"), d < 0.37 ? 1e-3 : 1e-5) << d;
  }
}

}  // namespace
}  // namespace tarvika
