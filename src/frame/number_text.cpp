#include "frame/number_text.h"

#include <cmath>

#include "numeric/tolerance.h"
#include "workspace/numbers.h"

namespace tarvika {

int Decimals(double x) {
  double a = std::fabs(x);
  return a < 0.09995 ? 4 : a < 0.9995 ? 3 : a < 99.995 ? 2 : a < 999999.95 ? 1 : 0;
}

int DecimalsOrWhole(double x) {
  double a = std::fabs(x);
  return a - std::floor(a) < kZeroTolerance ? 0 : Decimals(x);
}

std::string Fixed(double x, int d) {
  std::string s = FormatFixed(x, d);
  if (s.front() == '-' && s.find_first_not_of("-0.") == std::string::npos) s.erase(0, 1);
  return s;
}

std::string Trimmed4(double x) {
  std::string s = Fixed(x, 4);
  while (s.back() == '0') s.pop_back();
  if (s.back() == '.') s.pop_back();
  return s;
}

std::string DataCell(double x, char separator) {
  std::string s;
  for (int d = 4; d >= 0; --d) {
    s = Trimmed4(std::stod(Fixed(x, d)));
    if (s.size() <= 8) break;
  }
  if (separator != '.') {
    for (char& ch : s) {
      if (ch == '.') ch = separator;
    }
  }
  return s;
}

}  // namespace tarvika
