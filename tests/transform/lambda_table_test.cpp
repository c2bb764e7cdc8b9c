// "lambda.txt": the shipped file is what the generator tool writes, each row's lambdas give
// the row's skewness and kurtosis with mean 0 and variance 1, the row choice with its
// crossed limits, and values drawn from a row have its shape.

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <cmath>
#include <sstream>

#include "lambda/lambda_system.h"
#include "numeric/stat_tables.h"
#include "support/cli_runner.h"
#include "support/temp_folder.h"
#include "transform/random_generators.h"

namespace tarvika {
namespace {

const std::filesystem::path kShipped = std::filesystem::path(TARVIKA_SOURCE_DIR) / "data" / "stattab";

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// The whole file takes the tool some seconds; the rows checked here are the first, rows of
// both signs of lambda and the last. The test of the label "slow" compares all of them.
TEST(LambdaTable, ShippedRowsAreWhatTheToolWrites) {
  const std::vector<std::string> lines = Lines(test::ReadFile(kShipped / "lambda.txt"));
  ASSERT_EQ(lines.size(), 72u);
  // The shape of each row is the file's own; which shapes the rows have, the slow test checks.
  for (std::size_t row : {0u, 4u, 20u, 39u, 71u}) {
    std::istringstream fields(lines[row]);
    lambda::Shape shape;
    fields >> shape.skewness >> shape.kurtosis;
    EXPECT_EQ(lines[row] + '\n', lambda::LambdaTableLine(shape)) << "row " << row + 1 << " differs: run `make stattab`";
  }
}

// Independent of the solver: the moments of Q(u) = l1 + (u^l3 - (1-u)^l4)/l2 by numerical
// integration over u.
TEST(LambdaTable, EveryRowHasItsShape) {
  const std::vector<LambdaRow> table = LoadLambdaTable(kShipped).value();
  for (const LambdaRow& row : table) {
    // Midpoint rule on a grid dense near both ends, where the quantile may grow without bound.
    double m1 = 0, m2 = 0, m3 = 0, m4 = 0;
    const int steps = 40000;
    for (int i = 0; i < steps; ++i) {
      const double t = (i + 0.5) / steps;
      const double u = t * t * (3 - 2 * t);  // smooth step: du = 6 t (1 - t) dt
      const double w = 6 * t * (1 - t) / steps;
      const double q = LambdaQuantile(row, u);
      m1 += w * q;
      m2 += w * q * q;
      m3 += w * q * q * q;
      m4 += w * q * q * q * q;
    }
    const double variance = m2 - m1 * m1;
    const double skewness = (m3 - 3 * m1 * m2 + 2 * m1 * m1 * m1) / std::pow(variance, 1.5);
    const double kurtosis = (m4 - 4 * m1 * m3 + 6 * m1 * m1 * m2 - 3 * m1 * m1 * m1 * m1) / (variance * variance);
    const std::string what = fmt::format("row {} {}", row.skewness, row.kurtosis);
    EXPECT_NEAR(m1, 0, 1e-3) << what;
    EXPECT_NEAR(variance, 1, 2e-3) << what;
    EXPECT_NEAR(skewness, row.skewness, 0.02 + 0.01 * row.kurtosis) << what;
    EXPECT_NEAR(kurtosis, row.kurtosis, 0.05 * row.kurtosis) << what;
  }
}

TEST(LambdaTable, RowChoiceAndItsCrossedLimits) {
  const std::vector<LambdaRow> table = LoadLambdaTable(kShipped).value();
  auto chosen = [&](double s, double k) { return ChooseLambdaRow(table, s, k); };
  EXPECT_EQ(chosen(0, 3).row, &table[2]);  // skewness 0, kurtosis 2.94
  EXPECT_EQ(chosen(-1, 5).sign, -1);
  EXPECT_EQ(chosen(-1, 5).row, &table[35]);  // skewness 1, kurtosis 5.19
  EXPECT_EQ(chosen(3, 12).row->skewness, 2);  // |skewness| at most 2
  // Kurtosis 20 keeps 20 and sets the skewness to 15.8, farther than 10 from every row:
  // the first row stays chosen. Kurtosis 1 sets it to 1.75: the rows of 1.75.
  EXPECT_EQ(chosen(0, 20).row, &table[0]);
  EXPECT_EQ(chosen(0, 1).row, &table[56]);
  test::TempFolder empty;
  try {
    LoadLambdaTable(empty.path());
    FAIL() << "no error for a missing file";
  } catch (const MissingTableFile& e) {
    EXPECT_EQ(e.name(), "Lambda.TXT");
  }
}

TEST(LambdaTable, DrawnValuesHaveTheRowsShape) {
  const std::vector<LambdaRow> table = LoadLambdaTable(kShipped).value();
  RandomSource source(99);
  const GeneratorInfo& info = *FindGenerator("lambda");
  const auto made = Generate(info, {-1, 5.2}, 200000, source, &table, Language::English, '.');
  EXPECT_EQ(made.longNames[0], "Random Lambda variable with Skewness = -1 and Kurtosis = 5.19");
  double m1 = 0, m2 = 0, m3 = 0;
  for (double x : made.columns[0]) {
    m1 += x;
    m2 += x * x;
    m3 += x * x * x;
  }
  const double n = static_cast<double>(made.columns[0].size());
  m1 /= n;
  m2 /= n;
  m3 /= n;
  EXPECT_NEAR(m1, 0, 0.01);
  EXPECT_NEAR(m2 - m1 * m1, 1, 0.02);
  EXPECT_NEAR((m3 - 3 * m1 * m2 + 2 * m1 * m1 * m1) / std::pow(m2 - m1 * m1, 1.5), -1, 0.1);
}

}  // namespace
}  // namespace tarvika
