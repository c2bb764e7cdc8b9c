#include "transform/lambda_table.h"

#include <cmath>
#include <fstream>

#include "numeric/stat_tables.h"

namespace tarvika {
namespace {

double Power(double base, double exponent) { return base < 1e-9 ? 0.0 : std::pow(base, exponent); }

}  // namespace

std::optional<std::vector<LambdaRow>> LoadLambdaTable(const std::filesystem::path& tableFolder) {
  std::filesystem::path path;
  try {
    path = RequireTableFile(tableFolder, kLambdaTableFile);
  } catch (const MissingTableFile&) {
    throw MissingTableFile("Lambda.TXT");
  }
  std::ifstream in(path);
  std::vector<LambdaRow> table(kLambdaTableRows);
  for (LambdaRow& row : table) {
    in >> row.skewness >> row.kurtosis >> row.lambda[0] >> row.lambda[1] >> row.lambda[2] >> row.lambda[3];
  }
  if (!in) return std::nullopt;
  return table;
}

const LambdaRow& NearestLambdaRow(const std::vector<LambdaRow>& table, double skewness, double kurtosis) {
  std::size_t best = 0;
  double bestSkewness = 10, bestKurtosis = 10;
  for (std::size_t i = 0; i < table.size(); ++i) {
    const double ds = std::fabs(table[i].skewness - skewness);
    const double dk = std::fabs(table[i].kurtosis - kurtosis);
    const bool tie = std::fabs(ds - bestSkewness) < 1e-8;
    if ((!tie && ds < bestSkewness) || (tie && dk < bestKurtosis)) {
      best = i;
      bestSkewness = ds;
      bestKurtosis = dk;
    }
  }
  return table[best];
}

double LambdaQuantile(const LambdaRow& row, double u) {
  const auto& l = row.lambda;
  return (Power(u, l[2]) - Power(1 - u, l[3])) / l[1] + l[0];
}

}  // namespace tarvika
