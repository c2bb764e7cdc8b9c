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
    const EnumeratedP exact = WilcoxonExactP(n, t, ranks);
    EXPECT_NEAR(exact.p.p, reference.Number(i, "p"), 1e-12) << "n = " << n << ", t = " << t;
    EXPECT_EQ(exact.p.marker, SignificanceMarker(exact.p.p));
    EXPECT_EQ(exact.patterns, std::round(reference.Number(i, "count"))) << "n = " << n << ", t = " << t;
  }
  // The tolerance of 1e-8 takes a sum a hair above t; a clear miss counts nothing.
  const std::vector<double> ranks = {1, 2, 3, 4, 5};
  EXPECT_EQ(WilcoxonExactP(5, 3 - 1e-9, ranks).p.p, WilcoxonExactP(5, 3, ranks).p.p);
  EXPECT_EQ(WilcoxonExactP(2, -1, ranks).p.p, 0);
  EXPECT_EQ(WilcoxonExactP(2, -1, ranks).patterns, 0);
  EXPECT_EQ(WilcoxonExactP(21, 3, ranks).p.p, 1);  // outside the enumerated sizes
}

TEST(ExactTests, SignTest) {
  const ReferenceCsv reference("sign_test.csv");
  for (size_t i = 0; i < reference.size(); ++i) {
    const int k = static_cast<int>(reference.Number(i, "k"));
    const int n = static_cast<int>(reference.Number(i, "n"));
    const auto [z, pValue] = SignTestP(k, n);
    const double p = pValue.p;
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
    EXPECT_EQ(pValue.marker, SignificanceMarker(p));
    EXPECT_EQ(z < 0, 2 * k < n) << k << " of " << n;
  }
  const SignTestP2 none = SignTestP(1, 1);  // no test below 2 cases
  EXPECT_EQ(none.z, 0);
  EXPECT_EQ(none.p.p, 1);
  EXPECT_EQ(none.p.marker, "");
  EXPECT_DOUBLE_EQ(SignTestP(9, 10).z, 7 / std::sqrt(10.0));  // z = (2*9 - 10 - 1) / sqrt(10)
  EXPECT_EQ(SignTestP(5, 10).z, 0);
  EXPECT_EQ(SignTestP(5, 10).p.p, 1);
}

TEST(ExactTests, FisherTwoByTwo) {
  const ReferenceCsv reference("fisher_exact.csv");
  ASSERT_GT(reference.size(), 200u);
  for (size_t i = 0; i < reference.size(); ++i) {
    const int a = static_cast<int>(reference.Number(i, "a")), b = static_cast<int>(reference.Number(i, "b"));
    const int c = static_cast<int>(reference.Number(i, "c")), d = static_cast<int>(reference.Number(i, "d"));
    const FisherResult result = FisherExactP2(a, b, c, d);
    const std::string table =
        std::to_string(a) + " " + std::to_string(b) + " / " + std::to_string(c) + " " + std::to_string(d);
    const double pTable = reference.Number(i, "ptable"), p = reference.Number(i, "p");
    EXPECT_NEAR(result.pTable, pTable, 1e-10 * pTable + 1e-300) << table;
    // Every table no more probable than the observed one, on both sides of the most
    // probable table: the tables past it, e.g. (1 1 / 1 100) at 0.0386, are not 1.
    EXPECT_NEAR(result.p2, p, 1e-9 * p + 1e-300) << table;
  }
  // The same table turned or mirrored has the same p.
  EXPECT_EQ(FisherExactP2(1, 1, 1, 100).p2, FisherExactP2(100, 1, 1, 1).p2);
  EXPECT_NEAR(FisherExactP2(12, 7, 8, 0).p2, FisherExactP2(7, 12, 0, 8).p2, 1e-15);
  EXPECT_EQ(FisherExactP2(-1, 2, 3, 4).p2, 1);  // not a table
}

TEST(ExactTests, KolmogorovTail) {
  const ReferenceCsv reference("kolmogorov.csv");
  for (size_t i = 0; i < reference.size(); ++i) {
    const double d = reference.Number(i, "d");
    // Three terms of each series reach 1e-5; below 0.37 p is taken as 1, which the true
    // tail (above 0.999 there) misses by up to 1e-3.
    EXPECT_NEAR(KolmogorovP(d).p, reference.Number(i, "p"), d < 0.37 ? 1e-3 : 1e-5) << d;
  }
}

}  // namespace
}  // namespace tarvika
