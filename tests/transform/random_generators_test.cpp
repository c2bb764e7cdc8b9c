// The random generators: the source's sequence, runs that repeat with their seed, and each
// generator's values against its target distribution (Kolmogorov-Smirnov for the continuous
// ones, chi-square for the counts) at fixed seeds, so that the checks cannot flake. The
// thresholds are the 0.1% critical values.

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/math/distributions/binomial.hpp>
#include <boost/math/distributions/cauchy.hpp>
#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/poisson.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>

#include "stats/moments.h"
#include "support/memory_workspace.h"
#include "transform/random_generators.h"

namespace tarvika {
namespace {

using testing::MemoryWorkspace;
namespace bm = boost::math;

constexpr int kDraws = 20000;

std::vector<std::vector<double>> Draw(std::string_view word, const std::map<std::string, double>& set, int cases = kDraws,
                                      std::uint32_t seed = 20261124, const std::vector<LambdaRow>* lambda = nullptr) {
  const GeneratorInfo& info = *FindGenerator(word);
  std::vector<double> values;
  for (const GeneratorParameter& p : info.parameters) {
    auto it = set.find(std::string(p.key));
    values.push_back(it == set.end() ? p.initial : it->second);
  }
  EXPECT_EQ(CheckGeneratorValues(info, values, Language::English), "") << word;
  RandomSource source(seed);
  return Generate(info, values, cases, source, lambda, Language::English, '.').columns;
}

// The Kolmogorov-Smirnov distance of the values from a distribution function, within its
// 0.1% critical value.
void ExpectFits(std::vector<double> x, const std::function<double(double)>& cdf, const std::string& what) {
  std::sort(x.begin(), x.end());
  const double n = static_cast<double>(x.size());
  double d = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double f = cdf(x[i]);
    d = std::max({d, (i + 1) / n - f, f - i / n});
  }
  EXPECT_LT(d, 1.949 / std::sqrt(n)) << what;
}

// Pearson's chi-square of the counts against a discrete distribution, the tails pooled into
// cells of expectation at least 5, within its 0.1% critical value.
void ExpectCounts(const std::vector<double>& x, const std::function<double(int)>& pmf, int lo, int hi,
                  const std::string& what) {
  std::map<int, double> observed;
  for (double v : x) observed[static_cast<int>(std::lround(v))] += 1;
  const double n = static_cast<double>(x.size());
  double chi = 0, cellExpected = 0, cellObserved = 0, used = 0;
  int cells = 0;
  for (int k = lo; k <= hi; ++k) {
    cellExpected += n * pmf(k);
    cellObserved += observed[k];
    if (cellExpected >= 5 || k == hi) {
      used += cellObserved;
      chi += (cellObserved - cellExpected) * (cellObserved - cellExpected) / std::max(cellExpected, 1e-12);
      ++cells;
      cellExpected = cellObserved = 0;
    }
  }
  EXPECT_EQ(used, n) << what << ": values outside " << lo << " to " << hi;
  EXPECT_LT(chi, bm::quantile(bm::complement(bm::chi_squared_distribution<double>(cells - 1), 0.001))) << what;
}

TEST(RandomSource, SequenceAndNormalPair) {
  RandomSource s(1);
  EXPECT_EQ(s.Uniform(), 134775814.0 / 4294967296.0);
  EXPECT_EQ(s.Seed(), 134775814u);
    // 134775814 * 134775813 + 1 modulo 2^32 is 3698175007; times 10 over 2^32 is 8.6.
  EXPECT_EQ(s.Integer(10), 8u);
  EXPECT_EQ(s.Seed(), 3698175007u);
  RandomSource last(4294967295u);  // 4294967295 * 134775813 + 1 = 4160191484 modulo 2^32
  EXPECT_EQ(last.Uniform(), 4160191484.0 / 4294967296.0);
  RandomSource a(7), b(7);
  EXPECT_EQ(a.NormalPair(), b.NormalPair());
}

TEST(RandomGenerators, SameSeedSameValuesOtherSeedOthers) {
  EXPECT_EQ(Draw("mixed-normal", {}, 100, 5), Draw("mixed-normal", {}, 100, 5));
  EXPECT_NE(Draw("mixed-normal", {}, 100, 5), Draw("mixed-normal", {}, 100, 6));
  const auto uniform = Draw("uniform", {}, 1000)[0];
  for (double x : uniform) EXPECT_EQ(x, std::round(x * 10000) / 10000);  // four decimals
}

TEST(RandomGenerators, ContinuousDistributions) {
  ExpectFits(Draw("normal", {{"Mean", 100}, {"SD", 15}})[0],
             [](double x) { return cdf(bm::normal_distribution<double>(100, 15), x); }, "normal");
  ExpectFits(Draw("uniform", {{"Minimum", -2}, {"Maximum", 3}})[0], [](double x) { return (x + 2) / 5; }, "uniform");
  ExpectFits(Draw("t", {{"df", 10}})[0], [](double x) { return cdf(bm::students_t_distribution<double>(10), x); }, "t 10");
  ExpectFits(Draw("t", {{"df", 1}})[0], [](double x) { return cdf(bm::cauchy_distribution<double>(), x); }, "t 1");
  ExpectFits(Draw("t", {{"df", 200}})[0], [](double x) { return cdf(bm::normal_distribution<double>(), x); }, "t 200");
  ExpectFits(Draw("chi-square", {{"df", 3}})[0],
             [](double x) { return cdf(bm::chi_squared_distribution<double>(3), x); }, "chi-square 3");
  ExpectFits(Draw("chi-square", {{"df", 8}})[0],
             [](double x) { return cdf(bm::chi_squared_distribution<double>(8), x); }, "chi-square 8");
  ExpectFits(Draw("f", {{"df_1", 3}, {"df_2", 12}})[0],
             [](double x) { return cdf(bm::fisher_f_distribution<double>(3, 12), x); }, "F 3 12");
  ExpectFits(Draw("mixed-normal", {{"Mean_1", 0}, {"SD_1", 1}, {"Mean_2", 5}, {"SD_2", 3}, {"Probability_1", 0.7}})[0],
             [](double x) {
               return 0.7 * cdf(bm::normal_distribution<double>(0, 1), x) +
                      0.3 * cdf(bm::normal_distribution<double>(5, 3), x);
             },
             "mixed normal");
  // Above 60 df the chi-square is Fisher's approximation (z + sqrt(2 df - 1))^2 / 2: its
  // mean and variance are within a few percent of df and 2 df.
  MomentAccumulator m(false);
  const auto chi = Draw("chi-square", {{"df", 100}})[0];
  for (double x : chi) m.Add(x);
  EXPECT_NEAR(m.mean, 100, 0.5);
  EXPECT_NEAR(Variance(m), 200, 10);
}

TEST(RandomGenerators, BivariateNormalAndCorrelations) {
  const auto xy = Draw("bivariate-normal", {{"Mean_1", 10}, {"SD_1", 2}, {"Mean_2", -5}, {"SD_2", 4}, {"Correl", -0.6}});
  ExpectFits(xy[0], [](double x) { return cdf(bm::normal_distribution<double>(10, 2), x); }, "first");
  ExpectFits(xy[1], [](double x) { return cdf(bm::normal_distribution<double>(-5, 4), x); }, "second");
  // Their difference scaled is normal too only with the right correlation: sd of x/2 + y/4
  // is sqrt(2 - 2 * 0.6).
  std::vector<double> sum;
  for (int i = 0; i < kDraws; ++i) sum.push_back((xy[0][i] - 10) / 2 + (xy[1][i] + 5) / 4);
  ExpectFits(sum, [](double x) { return cdf(bm::normal_distribution<double>(0, std::sqrt(0.8)), x); }, "sum");
  // Correl 1: the root is not taken, the second column is the first moved and scaled.
  const auto same = Draw("bivariate-normal", {{"Correl", 1}}, 200);
  EXPECT_EQ(same[0], same[1]);
  // Fisher's Z of r from n = 20 pairs of rho 0.5 is near normal, mean atanh(0.5) + 0.5/38,
  // SD 1/sqrt(17).
  const auto rz = Draw("correlation", {{"Sample_size", 20}, {"Correlation", 0.5}}, 5000);
  ExpectFits(rz[1],
             [](double z) { return cdf(bm::normal_distribution<double>(std::atanh(0.5) + 0.5 / 38, 1 / std::sqrt(17.0)), z); },
             "Z(r)");
  for (std::size_t i = 0; i < rz[0].size(); ++i) EXPECT_NEAR(rz[1][i], std::atanh(rz[0][i]), 2e-3);
  const auto perfect = Draw("correlation", {{"Correlation", -1}}, 3);
  EXPECT_EQ(perfect[0], std::vector<double>(3, -1));
  EXPECT_EQ(perfect[1], std::vector<double>(3, -999999));
}

TEST(RandomGenerators, CountDistributions) {
  ExpectCounts(Draw("uniform-discrete", {{"Minimum", 1}, {"Maximum", 6}})[0], [](int) { return 1.0 / 6; }, 1, 6, "die");
  ExpectCounts(Draw("binomial", {{"Binom_n", 10}, {"Binom_p", 0.3}})[0],
               [](int k) { return pdf(bm::binomial_distribution<double>(10, 0.3), k); }, 0, 10, "binomial 10 0.3");
  ExpectCounts(Draw("binomial", {{"Binom_n", 40}, {"Binom_p", 0.85}})[0],
               [](int k) { return pdf(bm::binomial_distribution<double>(40, 0.85), k); }, 0, 40, "binomial 40 0.85");
  ExpectCounts(Draw("poisson", {{"Lambda", 3.5}})[0], [](int k) { return pdf(bm::poisson_distribution<double>(3.5), k); },
               0, 40, "poisson 3.5");
  // Beyond 500 the mean is split into equal parts whose draws add up.
  ExpectCounts(Draw("poisson", {{"Lambda", 1200}})[0],
               [](int k) { return pdf(bm::poisson_distribution<double>(1200), k); }, 900, 1500, "poisson 1200");
  const auto none = Draw("poisson", {{"Lambda", 0}}, 50)[0];
  for (double x : none) EXPECT_EQ(x, 0);
  // n 10000: the normal approximation, never below 0 or above n.
  MomentAccumulator m(false);
  const auto large = Draw("binomial", {{"Binom_n", 10000}, {"Binom_p", 0.5}})[0];
  for (double x : large) m.Add(x);
  EXPECT_NEAR(m.mean, 5000, 1);
  EXPECT_NEAR(std::sqrt(Variance(m)), 50, 1.5);
  const auto edge = Draw("binomial", {{"Binom_n", 101}, {"Binom_p", 0.1}})[0];
  for (double x : edge) EXPECT_TRUE(x >= 0 && x <= 101);
}

TEST(RandomGenerators, ChecksOfTheParameters) {
  auto check = [](std::string_view word, std::vector<double> values) {
    return CheckGeneratorValues(*FindGenerator(word), values, Language::English);
  };
  EXPECT_EQ(check("normal", {0, -1}), "SD must not be negative.");
  EXPECT_EQ(check("bivariate-normal", {0, 1, 0, 1, 1.2}), "Correl must lie from -1 to 1.");
  EXPECT_EQ(check("binomial", {10.5, 0.5}), "Binom_n must be a whole number from 0 to 1000000000.");
  EXPECT_EQ(check("t", {0}), "df must be a whole number from 1 on.");
  EXPECT_EQ(check("uniform-discrete", {1.2, 1.8}), "The range from Minimum to Maximum holds no value to draw.");
  EXPECT_EQ(check("uniform-discrete", {1.2, 2}), "");
  EXPECT_EQ(check("correlation", {1, 0.5}), "Sample_size must be a whole number from 2 to 10000.");
  EXPECT_EQ(check("mixed-normal", {0, 0, 1, 1, 1.5}), "Probability_1 must lie from 0 to 1.");
}

TEST(RandomGenerators, VariablesNamesLabelsAndTypes) {
  MemoryWorkspace m({{"RanNorm"}, {"ranunD"}}, std::vector<std::vector<std::string>>(5, {"1", "2"}), Language::Hungarian);
  RandomSource s(42);
  const GeneratorInfo& normal = *FindGenerator("normal");
  ASSERT_TRUE(GenerateColumn(m.ws, normal, {100, 15}, {}, s));
  EXPECT_EQ(m.ws.vars.GetCell(kShortName, 3), "RanNorm1");
  EXPECT_EQ(m.ws.vars.GetCell(kLongName, 3), "Random normális, átlag: 100; szórás: 15");
  EXPECT_EQ(m.user.told.back(), "A random változót sikeresen létrehoztuk.");
  ASSERT_TRUE(GenerateColumn(m.ws, *FindGenerator("uniform-discrete"), {0.5, 3}, {}, s));
  EXPECT_EQ(m.ws.vars.GetCell(kShortName, 4), "RanUnD1");
  EXPECT_EQ(m.ws.vars.GetCell(kGroupLabels, 4), "1=Kód1;/2=Kód2;/3=Kód3;/");
  EXPECT_EQ(m.ws.vars.GetCell(kGroupType, 4), "kódokkal");
  EXPECT_EQ(m.ws.vars.GetCell(kType, 4), "num=1_3;");
  ASSERT_TRUE(GenerateColumn(m.ws, *FindGenerator("correlation"), {10, 0.8}, {"r"}, s));
  EXPECT_EQ(m.ws.data.Row(0).back(), "RanZ(r)");
  EXPECT_EQ(m.ws.vars.GetCell(kShortName, 5), "r");
  EXPECT_EQ(m.ws.vars.GetCell(kType, 5), "num=-1_1;");
  EXPECT_EQ(m.user.told.back(), "A két random változót sikeresen létrehoztuk.");
  // A name taken, a wrong parameter: refused, nothing added.
  EXPECT_FALSE(GenerateColumn(m.ws, normal, {100, 15}, {"r"}, s));
  EXPECT_FALSE(GenerateColumn(m.ws, normal, {100, -15}, {}, s));
  // A damaged lambda table: told, nothing added, no exception.
  std::filesystem::create_directories(m.programFolder / "stattab");
  std::ofstream(m.programFolder / "stattab" / "lambda.txt") << "0 1.8 0 1 1 1\n";
  EXPECT_FALSE(GenerateColumn(m.ws, *FindGenerator("lambda"), {0, 3}, {}, s));
  EXPECT_EQ(m.user.told.back(),
            "A Lambda.TXT fájl nem 72, egyenként hat számból álló sort tartalmaz.\nInstallálja újra a Tarvikaot!");
  EXPECT_EQ(m.ws.NumberOfVariables(), 6);
  // Large Cauchy-like values are written in full.
  RandomSource t1(3);
  MemoryWorkspace big({{"a"}}, std::vector<std::vector<std::string>>(2000, {"1"}));
  ASSERT_TRUE(GenerateColumn(big.ws, *FindGenerator("t"), {1}, {}, t1));
  double largest = 0;
  for (int r = 1; r <= 2000; ++r) largest = std::max(largest, std::fabs(std::stod(std::string(big.ws.data.GetCell(2, r)))));
  EXPECT_GT(largest, 100);
}

}  // namespace
}  // namespace tarvika
