#include "workspace/numbers.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <charconv>

#include <fmt/format.h>
#include <cstdint>

namespace tarvika {

char DecimalSeparatorFromLocale() {
  char sep = '.';
  locale_t loc = newlocale(LC_NUMERIC_MASK, "", static_cast<locale_t>(nullptr));
  if (loc != static_cast<locale_t>(nullptr)) {
    const char* radix = nl_langinfo_l(RADIXCHAR, loc);
    if (radix != nullptr && (radix[0] == ',' || radix[0] == '.')) sep = radix[0];
    freelocale(loc);
  }
  return sep;
}


std::optional<double> ParseLocalNumber(std::string_view text, char separator) {
  std::size_t b = 0, e = text.size();
  while (b < e && (text[b] == ' ' || text[b] == '\t')) ++b;
  while (e > b && (text[e - 1] == ' ' || text[e - 1] == '\t')) --e;
  if (b == e) return std::nullopt;
  if (auto v = ParsePlainDecimal(text.substr(b, e - b), separator)) return v;
  // Copy into a small buffer with "." as separator, checking the shape on the way.
  char buf[64];
  std::size_t n = 0;
  std::size_t i = b;
  if (text[i] == '+' || text[i] == '-') {
    if (text[i] == '-') buf[n++] = '-';
    ++i;
  }
  int digits = 0;
  bool seenSeparator = false;
  for (; i < e; ++i) {
    char c = text[i];
    if (c >= '0' && c <= '9') {
      ++digits;
    } else if (c == separator && !seenSeparator) {
      seenSeparator = true;
      c = '.';
    } else {
      break;
    }
    if (n >= sizeof(buf) - 8) return std::nullopt;
    buf[n++] = c;
  }
  if (digits == 0) return std::nullopt;
  if (i < e && (text[i] == 'e' || text[i] == 'E')) {
    buf[n++] = 'e';
    ++i;
    if (i < e && (text[i] == '+' || text[i] == '-')) buf[n++] = text[i++];
    int expDigits = 0;
    for (; i < e && text[i] >= '0' && text[i] <= '9'; ++i) {
      if (n >= sizeof(buf) - 1) return std::nullopt;
      buf[n++] = text[i];
      ++expDigits;
    }
    if (expDigits == 0) return std::nullopt;
  }
  if (i != e) return std::nullopt;
  double value = 0;
  auto [ptr, ec] = std::from_chars(buf, buf + n, value);
  if (ec != std::errc() || ptr != buf + n || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::string FixSeparator(std::string_view text) {
  std::string s(text);
  std::size_t dot = s.find('.');
  if (dot != std::string::npos) {
    s[dot] = ',';
  } else {
    std::size_t comma = s.find(',');
    if (comma != std::string::npos) s[comma] = '.';
  }
  return s;
}

std::optional<double> ParseEitherSeparator(std::string_view text, char separator) {
  if (auto v = ParseLocalNumber(text, separator)) return v;
  return ParseLocalNumber(FixSeparator(text), separator);
}

double RoundToFourDecimals(double value) { return std::round(value * 10000.0) / 10000.0; }

std::optional<double> ParseFourDecimals(std::string_view text, char separator) {
  auto v = ParseEitherSeparator(text, separator);
  if (!v) return std::nullopt;
  return RoundToFourDecimals(*v);
}

std::optional<long long> ParseWholeNumber(std::string_view text) {
  std::size_t b = 0, e = text.size();
  while (b < e && text[b] == ' ') ++b;
  while (e > b && text[e - 1] == ' ') --e;
  if (b < e && text[b] == '+') ++b;
  long long value = 0;
  auto [ptr, ec] = std::from_chars(text.data() + b, text.data() + e, value);
  if (b == e || ec != std::errc() || ptr != text.data() + e) return std::nullopt;
  return value;
}

std::string FormatGeneral(double value, char separator) {
  if (value == 0) return "0";
  char buf[64];
  double a = std::fabs(value);
  std::string s;
  if (a < 1e-4 || a >= 1e15) {
    std::snprintf(buf, sizeof buf, "%.14E", value);
    s = buf;
    std::size_t epos = s.find('E');
    std::string mantissa = s.substr(0, epos);
    int exponent = std::stoi(s.substr(epos + 1));
    if (mantissa.find('.') != std::string::npos) {
      while (mantissa.back() == '0') mantissa.pop_back();
      if (mantissa.back() == '.') mantissa.pop_back();
    }
    s = mantissa + "E" + std::to_string(exponent);
  } else {
    int intDigits = a >= 1 ? static_cast<int>(std::floor(std::log10(a))) + 1 : 0;
    int decimals = 15 - intDigits;
    if (a < 1) decimals = 15 - static_cast<int>(std::floor(std::log10(a))) - 1;
    if (decimals < 0) decimals = 0;
    std::snprintf(buf, sizeof buf, "%.*f", decimals, value);
    s = buf;
    if (s.find('.') != std::string::npos) {
      while (s.back() == '0') s.pop_back();
      if (s.back() == '.') s.pop_back();
    }
  }
  if (separator != '.') {
    std::size_t dot = s.find('.');
    if (dot != std::string::npos) s[dot] = separator;
  }
  return s;
}

std::string FormatFixed(double value, int decimals) {
  std::string rounded = fmt::format("{:.{}f}", value, decimals);
  if (!std::isfinite(value)) return rounded;
  // 40 more places show the whole expansion of any double that could be a tie here.
  std::string exact = fmt::format("{:.{}f}", value, decimals + 40);
  std::size_t cut = exact.size() - 40;
  if (exact[cut] != '5' || exact.find_first_not_of('0', cut + 1) != std::string::npos) return rounded;
  // Away from zero: the truncated digits plus one unit in the last place.
  std::string digits = exact.substr(0, cut);
  if (decimals == 0) digits.pop_back();  // the point
  int i = static_cast<int>(digits.size()) - 1;
  for (; i >= 0; --i) {
    if (digits[i] == '.' ) continue;
    if (digits[i] == '-') break;
    if (digits[i] != '9') {
      ++digits[i];
      return digits;
    }
    digits[i] = '0';
  }
  digits.insert(i + 1, "1");
  return digits;
}

namespace {

// The text is in exponent form and is what FormatGeneral prints for its value, with either
// separator.
bool IsPrintedExponentForm(const std::string& s, char separator) {
  if (s.find('E') == std::string::npos) return false;
  auto value = ParseEitherSeparator(s, separator);
  if (!value) return false;
  std::string printed = FormatGeneral(*value, '.');
  std::string dotted = s;
  std::replace(dotted.begin(), dotted.end(), ',', '.');
  return printed == dotted;
}

}  // namespace

std::size_t CleanLengthWithoutTrailingZeros(std::string_view s) {
  std::size_t sep = s.find_first_of(".,");
  if (sep == std::string_view::npos) return std::string_view::npos;
  std::size_t end = s.size();
  while (end > sep + 1 && s[end - 1] == '0') --end;
  if (end == sep + 1) end = sep;
  if (end == s.size() || !IsCleanNumber(s.substr(0, end))) return std::string_view::npos;
  return end;
}

bool CleanPlainDecimal(std::string_view s, char separator, std::string& out) {
  constexpr std::size_t kMaxDigits = 13;  // as IsCleanNumber: well inside a double's 15
  constexpr std::size_t kMaxDecimals = 11;
  auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const std::size_t n = s.size();
  std::size_t i = 0;
  const bool negative = n > 0 && s[0] == '-';
  if (negative) ++i;
  const std::size_t intBegin = i;
  while (i < n && isDigit(s[i])) ++i;
  if (i == intBegin) return false;
  std::size_t intEnd = i;
  std::size_t fracBegin = i, fracEnd = i;
  if (i < n) {
    if (s[i] != '.' && s[i] != ',') return false;
    fracBegin = ++i;
    while (i < n && isDigit(s[i])) ++i;
    if (i != n) return false;
    fracEnd = std::min(i, fracBegin + kMaxDecimals);
  }
  std::size_t intStart = intBegin;
  while (intStart < intEnd && s[intStart] == '0') ++intStart;
  while (fracEnd > fracBegin && s[fracEnd - 1] == '0') --fracEnd;
  const std::size_t intDigits = intEnd - intStart, fracDigits = fracEnd - fracBegin;
  if (intDigits == 0 && fracDigits == 0) {
    out.assign("0");
    return true;
  }
  if (intDigits > 0) {
    if (intDigits + fracDigits > kMaxDigits) return false;
  } else {
    std::size_t zeros = 0;
    while (s[fracBegin + zeros] == '0') ++zeros;
    if (zeros > 3 || fracDigits - zeros > kMaxDigits) return false;
  }
  out.clear();
  if (negative) out.push_back('-');
  if (intDigits == 0) {
    out.push_back('0');
  } else {
    out.append(s.substr(intStart, intDigits));
  }
  if (fracDigits > 0) {
    out.push_back(separator);
    out.append(s.substr(fracBegin, fracDigits));
  }
  return true;
}

std::optional<std::string> CleanNumber(std::string_view text, char separator) {
  std::size_t b = 0;
  while (b < text.size() && text[b] == ' ') ++b;
  std::string s(text.substr(b));
  if (s.empty()) return s;
  auto hasSeparator = [&s] { return s.find_first_of(".,") != std::string::npos; };
  if (hasSeparator()) {
    while (!s.empty() && (s.back() == '.' || s.back() == ',')) s.pop_back();
    if (s.empty()) return s;
  }
  if (hasSeparator()) {
    std::size_t dot = s.find('.'), comma = s.find(',');
    std::size_t p = dot == std::string::npos ? comma : comma == std::string::npos ? dot : std::max(dot, comma);
    // A number in exponent form as this function prints it ("1.23456789012346E15", from
    // 1234567890123456) is left whole: the digits after its separator are the mantissa's,
    // not decimals, and cleaning a cleaned number must not cut them a second time.
    if (s.size() - p - 1 > 11 && !IsPrintedExponentForm(s, separator)) {
      // Cut the digits beyond the 11th after the separator, keep an exponent part if any.
      std::size_t k = p + 1, kept = 0;
      std::string out = s.substr(0, p + 1);
      for (; k < s.size() && s[k] >= '0' && s[k] <= '9'; ++k) {
        if (kept < 11) out.push_back(s[k]);
        ++kept;
      }
      out.append(s.substr(k));
      s = out;
    }
  }
  if (s.size() < 2) return s;
  auto value = ParseEitherSeparator(s, separator);
  if (!value) return std::nullopt;
  return FormatGeneral(*value, separator);
}

void CleanNumericField(std::string& field, char separator) {
  if (!IsCleanNumber(field)) {
    thread_local std::string plain;
    if (CleanPlainDecimal(field, separator, plain)) {
      field.assign(plain);  // already in the local separator
      return;
    }
    if (auto cleaned = CleanNumber(field, separator)) field = std::move(*cleaned);
  }
  std::size_t p = field.find('.');
  if (p == std::string::npos) p = field.find(',');
  if (p != std::string::npos) field[p] = separator;
}

}  // namespace tarvika
