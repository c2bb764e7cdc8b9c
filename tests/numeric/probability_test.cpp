// The probability functions against Boost.Math. Their methods are deliberately the old,
// low-precision ones, so each check states the agreement the method reaches in its region.

#include "numeric/probability.h"

#include <gtest/gtest.h>

#include <boost/math/distributions/binomial.hpp>
#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <boost/math/special_functions/beta.hpp>
#include <cmath>
#include <string>

namespace tarvika {
namespace {

namespace bm = boost::math;

// The largest absolute difference seen and where it was, for a readable failure.
struct Worst {
  double difference = 0;
  std::string where;
  void Add(double got, double want, const std::string& at) {
    if (!(std::fabs(got - want) <= difference)) difference = std::fabs(got - want), where = at;
  }
};

std::string At(double a, double b, double c = 0) {
  return std::to_string(a) + ", " + std::to_string(b) + ", " + std::to_string(c);
}

TEST(Probability, LnGammaAndIncompleteBeta) {
  Worst lnGamma, betai;
  for (double x = 0.1; x < 200; x *= 1.07) lnGamma.Add(LnGamma(x), std::lgamma(x), At(x, 0));
  for (double a : {0.5, 1.0, 2.5, 7.0, 30.0, 150.0}) {
    for (double b : {0.5, 1.0, 3.0, 12.0, 80.0}) {
      for (double x = 0.01; x < 1; x += 0.02) betai.Add(BETAI(a, b, x), bm::ibeta(a, b, x), At(a, b, x));
    }
  }
  EXPECT_LT(lnGamma.difference, 1e-9) << lnGamma.where;  // the Lanczos series: about 2e-10
  EXPECT_LT(betai.difference, 2e-7) << betai.where;      // the fraction stops at 3e-7 relative
}

TEST(Probability, NumericalComplaintsGoToTheHookAndTheValueStands) {
  std::string heard;
  SetDiagnosticHook([&](std::string_view message) { heard += std::string(message) + "|"; });
  // So large a and b that 100 rounds do not converge; the last value stands (true: 0.5).
  EXPECT_NEAR(BETAI(1e6, 1e6, 0.5), 0.44, 0.01);
  EXPECT_EQ(heard, "Pause in BETACF - a or b too large, or itmax too small.|");
  heard.clear();
  BETAI(2, 3, 1.5);
  EXPECT_EQ(heard.substr(0, 55), " x = 1.50\nPause in routine BETAI - invalid x argument.|");
  SetDiagnosticHook({});
  BETAI(2, 3, -0.5);  // no hook: nothing happens
}

TEST(Probability, NormalPolynomialReachesAbout1e5) {
  Worst lower, p2;
  for (double z = -7; z <= 7; z += 0.01) {
    const double upper = cdf(complement(bm::normal_distribution<double>(), z));
    lower.Add(NormalCdf(z), 1 - upper, At(z, 0));
    p2.Add(NormalP2(-z).p, 2 * std::min(upper, 1 - upper), At(z, 0));
  }
  // The six-digit constant 0.356538 (textbook 0.3565638) costs about 1e-5 near z = 0.
  EXPECT_LT(lower.difference, 1.1e-5) << lower.where;
  EXPECT_GT(lower.difference, 0.9e-5) << "the kept constants are no longer in use";
  EXPECT_LT(p2.difference, 2.2e-5) << p2.where;
  EXPECT_EQ(NormalCdf(0), 1 - NormalCdf(1e-300));  // z = 0 takes the lower branch
}

TEST(Probability, StudentAndCorrelation) {
  Worst student;
  for (double df : {1.0, 2.0, 3.5, 7.0, 15.0, 40.0, 120.0, 999.0, 50000.0}) {
    for (double t = -8; t <= 8; t += 0.1) {
      const double exact = 2 * cdf(complement(bm::students_t_distribution<double>(df), std::fabs(t)));
      student.Add(StudentP2(t, df).p, exact, At(df, t));
    }
  }
  EXPECT_LT(student.difference, 2e-7) << student.where;
  EXPECT_EQ(StudentP2(2.5, 100000).p, NormalP2(2.5).p);
  EXPECT_EQ(StudentP2(5, 0.5).p, 1);
  EXPECT_EQ(StudentP2(5, 0.5).marker, "");
  EXPECT_DOUBLE_EQ(CorrelationP2(0.6, 20).p, StudentP2(std::sqrt(20 * 0.36 / 0.64), 20).p);
  EXPECT_EQ(CorrelationP2(-1, 10).p, StudentP2(100, 10).p);
  EXPECT_EQ(CorrelationP2(-1, 10).marker, "***");
  EXPECT_EQ(CorrelationP2(0.5, 0).p, 1);
  EXPECT_EQ(CorrelationP2(0.5, 0).marker, "");
}

TEST(Probability, FProbRoutes) {
  EXPECT_EQ(FProb(0, 3, 10).p, 1);
  EXPECT_EQ(FProb(0, 3, 10).marker, "");
  EXPECT_EQ(FProb(13, 20, 20).p, 0);
  EXPECT_EQ(FProb(13, 20, 20).marker, "***");
  // Beta route for small df, Peizer-Pratt once both df are 6 and more and one reaches 2000.
  EXPECT_EQ(FProb(2.1, 5, 3000).p, FProbBeta(2.1, 5, 3000));
  EXPECT_EQ(FProb(2.1, 6, 1999).p, FProbBeta(2.1, 6, 1999));
  EXPECT_NE(FProb(2.1, 6, 2000).p, FProbBeta(2.1, 6, 2000));

  Worst beta, peizerPratt;
  for (double df1 : {1.0, 2.0, 5.0, 8.0, 19.0, 30.0, 200.0}) {
    for (double df2 : {3.0, 10.0, 19.0, 60.0, 500.0, 3000.0}) {
      const bool byBeta = std::min(df1, df2) < 6 || (std::min(df1, df2) < 20 && std::max(df1, df2) < 2000);
      for (double f = 0.05; f < 12; f *= 1.15) {
        const double exact = cdf(complement(bm::fisher_f_distribution<double>(df1, df2), f));
        (byBeta ? beta : peizerPratt).Add(FProb(f, df1, df2).p, exact, At(df1, df2, f));
      }
    }
  }
  EXPECT_LT(beta.difference, 2e-7) << beta.where;
  // The normal approximation reaches about 1e-4 (worst near df 8 and 3000, F = 1.24).
  EXPECT_LT(peizerPratt.difference, 1.2e-4) << peizerPratt.where;
}

TEST(Probability, ChiSquareRoutesAndCriticalValues) {
  auto exact = [](double x, int df) { return cdf(complement(bm::chi_squared_distribution<double>(df), x)); };
  EXPECT_EQ(ChiSquareP(0, 3).p, 1);
  EXPECT_EQ(ChiSquareP(0, 3).marker, "");
  EXPECT_EQ(ChiSquareP(200, 1).p, 0);  // beyond df + 100 sqrt(df) = 101
  EXPECT_EQ(ChiSquareP(200, 1).marker, "***");
  EXPECT_GT(ChiSquareP(50, 1).p, 0);
  EXPECT_DOUBLE_EQ(ChiSquareP(3.2, 1).p, NormalP2(std::sqrt(3.2)).p);
  EXPECT_DOUBLE_EQ(ChiSquareP(100, 101).p, 1 - NormalCdf(101.24 / (3 * 101 * std::sqrt(200.0))));

  Worst even, odd, large;
  for (int df = 2; df <= 100; ++df) {
    for (double x = 0.1; x < 3 * df + 30; x *= 1.2) {
      (df % 2 == 0 ? even : odd).Add(ChiSquareP(x, df).p, exact(x, df), At(df, x));
    }
  }
  // Above 100 df a normal approximation in chi-square units (without the factor 2 that the
  // same form carries in gamma units).
  for (int df : {101, 150, 400, 1000}) {
    for (double x = 0.7 * df; x < 1.5 * df; x += 0.01 * df)
      large.Add(ChiSquareP(x, df).p, exact(x, df), At(df, x));
  }
  EXPECT_LT(even.difference, 1e-12) << even.where;  // exact series
  EXPECT_LT(odd.difference, 2.2e-5) << odd.where;   // its normal part is the polynomial's
  EXPECT_LT(large.difference, 1e-3) << large.where;

  const double alpha[] = {0.1, 0.05, 0.01, 0.001};
  for (int df : {1, 2, 3, 4, 7, 10, 30, 31}) {
    for (int index = 1; index <= 4; ++index) {
      const double want = quantile(complement(bm::chi_squared_distribution<double>(df), alpha[index - 1]));
      // Odd df: p is off by up to 2e-5, which moves x by that over the density.
      EXPECT_NEAR(ChiSquareCritical(index, df) / want, 1, df % 2 == 0 ? 1e-6 : 2e-3) << df << " " << index;
    }
  }
}

TEST(Probability, MarkersAtTheirBounds) {
  EXPECT_EQ(SignificanceMarker(0.001), "***");
  EXPECT_EQ(SignificanceMarker(0.01), "**");
  EXPECT_EQ(SignificanceMarker(0.05), "*");
  EXPECT_EQ(SignificanceMarker(0.0500001), "+");
  EXPECT_EQ(SignificanceMarker(0.1), "+");
  EXPECT_EQ(SignificanceMarker(0.1000001), "");
}

TEST(Probability, BinomialTermsAndTail) {
  Worst term, tail;
  for (int n = 1; n <= 60; ++n) {
    const bm::binomial_distribution<double> binomial(n, 0.3);
    for (int k = 0; k <= n; ++k) {
      term.Add(BinomialTerm(k, n, 0.3, 0.7) / pdf(binomial, k), 1, At(k, n));  // relative
      const double exactTail = k < 0.3 * n ? cdf(binomial, k) : cdf(complement(binomial, k - 1));
      tail.Add(BinomialTail(k, n, 0.3, 0.3 * n), exactTail, At(k, n));
    }
  }
  EXPECT_LT(term.difference, 1e-12) << term.where;
  // The tail stops after the first term below 0.0001; the rest it drops is of that size.
  EXPECT_LT(tail.difference, 1e-4) << tail.where;
}

}  // namespace
}  // namespace tarvika
