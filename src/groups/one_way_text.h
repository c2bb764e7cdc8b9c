#pragma once
// The small text pieces that the reports of the one-way comparison share.

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "frame/number_text.h"
#include "lang/utf8.h"
#include "numeric/probability.h"

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

}  // namespace tarvika::one_way_text
