#pragma once
// The small text pieces that the reports of the one-way comparison share.

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "frame/number_text.h"
#include "frame/report_writer.h"
#include "lang/utf8.h"
#include "numeric/probability.h"
#include "stats/one_way.h"

namespace tarvika::one_way_text {

// A name followed by 24 minus twice its length blanks, as the group tables pad their names.
inline std::string PaddedName(std::string_view name) {
  const int length = static_cast<int>(Utf8Length(name));
  return std::string(name) + std::string(std::max(0, 24 - 2 * length), ' ');
}

// Skewness and kurtosis with a blank in place of the plus sign, 3 decimals (2 from 1000).
inline std::string SignSlot(double x) {
  const std::string text = Fixed(x, std::fabs(x) >= 1000 ? 2 : 3);
  return x < 0 ? text : " " + text;
}

// A correlation with a blank in place of the plus sign, 3 decimals.
inline std::string SignSlot3(double x) {
  return x < 0 ? Fixed(x, 3) : " " + Fixed(x, 3);
}

// "  (p = 0.1234)" and the marker.
inline std::string PText(const PValue& p) {
  return fmt::format("  (p = {:.4f}){}", p.p, p.marker);
}

// A number with its decimals by its size, as the intervals print them.
inline std::string BySize(double x) {
  return Fixed(x, IntervalDecimals(x, x));
}

// A p with four decimals and its marker, as the summary tables print it.
inline std::string PCell(const PValue& p) {
  return fmt::format("{:.4f}{}", p.p, p.marker);
}

// A statistic, its df and p; " ..." three times when there is no df.
inline void WriteTriple(ReportWriter& r, double statistic, double df, const PValue& p, bool defined = true) {
  if (!defined || df < 0.01) {
    for (int i = 0; i < 3; ++i) r.NumberCell(" ...");
    return;
  }
  r.NumberCell(Fixed(statistic, 3));
  r.NumberCell(Fixed(df, df == std::floor(df) ? 0 : 1));
  r.NumberCell(PCell(p));
}

}  // namespace tarvika::one_way_text
