#include "stattab/table_writer.h"

#include <fmt/format.h>

#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <cmath>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "numeric/real48.h"
#include "numeric/stat_tables.h"
#include "stattab/exact_nulls.h"
#include "stattab/studentized_range.h"

namespace tarvika::stattab {

namespace {

// The three levels of the F, Wilcoxon, sign and Tukey tables, and the four of CTABW.MST.
constexpr double kLevels[] = {0.10, 0.05, 0.01};
constexpr double kChiSquareLevels[] = {0.10, 0.05, 0.01, 0.001};

double CriticalF(double alpha, int df1, int df2) {
  return quantile(complement(boost::math::fisher_f_distribution<double>(df1, df2), alpha));
}

double CriticalChiSquare(double alpha, int df) {
  return quantile(complement(boost::math::chi_squared_distribution<double>(df), alpha));
}

int Hundredths(double value) {
  return static_cast<int>(std::lround(100 * value));
}

void WriteFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << content;
  if (!out) throw std::runtime_error("cannot write " + path.string());
}

void AppendReal(std::string& bytes, double value) {
  for (std::uint8_t byte : EncodeReal48(value)) bytes.push_back(static_cast<char>(byte));
}

// One line per row: denominator df, then the critical F of numerator df 1 at 0.10, 0.05,
// 0.01, times 100.
std::string FTableText() {
  std::string text;
  for (int df : kFTableRowDf) {
    text += fmt::format("{:3d}", df);
    for (double alpha : kLevels) text += fmt::format(" {:6d}", Hundredths(CriticalF(alpha, 1, df)));
    text += '\n';
  }
  return text;
}

// Row by row (denominator df), column by column (numerator df): the 5% critical F.
std::string FMatrixBytes() {
  std::string bytes;
  for (int df2 : kFTableRowDf) {
    for (int df1 : kFMatrixColumnDf) AppendReal(bytes, CriticalF(0.05, df1, df2));
  }
  return bytes;
}

// df 1 to 10, each with the chi-square critical values at 0.10, 0.05, 0.01, 0.001.
std::string CriticalTableBytes() {
  std::string bytes;
  for (int df = 1; df <= kCriticalTableSize / 4; ++df) {
    for (double alpha : kChiSquareLevels) AppendReal(bytes, CriticalChiSquare(alpha, df));
  }
  return bytes;
}

template <typename Counts>
std::string CountTableBytes(int firstN, int lastN, Counts counts) {
  std::string bytes;
  for (int n = firstN; n <= lastN; ++n) {
    for (std::uint8_t value : TwoSidedCriticalValues(counts(n), n)) bytes.push_back(static_cast<char>(value));
  }
  return bytes;
}

// One line per row (StudentizedRangeLine).
std::string StudentizedRangeText() {
  std::string text;
  for (int df : kStudentizedRangeDf) text += StudentizedRangeLine(df);
  return text;
}

}  // namespace

std::string StudentizedRangeLine(int df) {
  std::string line = fmt::format("{:3d}", df);
  for (double alpha : kLevels) {
    for (int k = 2; k <= kStudentizedRangeMaxK; ++k) {
      line += fmt::format(" {:4d}", Hundredths(StudentizedRangeQuantile(alpha, k, df)));
    }
  }
  return line + '\n';
}

std::string TableFileBytes(std::string_view name) {
  if (name == kFTableFile) return FTableText();
  if (name == kFMatrixFile) return FMatrixBytes();
  if (name == kCriticalTableFile) return CriticalTableBytes();
  if (name == kWilcoxonTableFile) return CountTableBytes(kWilcoxonFirstN, kWilcoxonLastN, SignedRankCounts);
  if (name == kSignTableFile) return CountTableBytes(kSignFirstN, kSignLastN, SignCounts);
  if (name == kStudentizedRangeFile) return StudentizedRangeText();
  throw std::invalid_argument("no table file " + std::string(name));
}

void WriteStatTables(const std::filesystem::path& folder) {
  for (std::string_view name : kTableFiles) WriteFile(folder / std::string(name), TableFileBytes(name));
}

}  // namespace tarvika::stattab
