#pragma once
// "lambda.txt" of the table folder: 72 rows of skewness, kurtosis and the four lambdas of
// the standardized Ramberg-Schmeiser generalized lambda distribution that has them.

#include <array>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace tarvika {

inline constexpr std::string_view kLambdaTableFile = "lambda.txt";
inline constexpr int kLambdaTableRows = 72;

struct LambdaRow {
  double skewness = 0;
  double kurtosis = 0;
  std::array<double, 4> lambda{};  // lambda1 to lambda4
};

// Throws MissingTableFile("Lambda.TXT") when the file is not there; nullopt when it does not
// hold 72 rows of six numbers.
std::optional<std::vector<LambdaRow>> LoadLambdaTable(const std::filesystem::path& tableFolder);

// The row for a skewness (not negative) and a kurtosis: the nearest skewness, and among
// rows of that skewness (within 1e-8) the nearest kurtosis. The search starts at row 0 with
// both distances 10, so a skewness farther than 10 from every row keeps row 0.
const LambdaRow& NearestLambdaRow(const std::vector<LambdaRow>& table, double skewness, double kurtosis);

// The generalized lambda quantile at u: (u^lambda3 - (1-u)^lambda4)/lambda2 + lambda1, a
// power of a base below 1e-9 taken as 0.
double LambdaQuantile(const LambdaRow& row, double u);

}  // namespace tarvika
