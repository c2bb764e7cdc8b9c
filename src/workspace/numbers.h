#pragma once
// Numbers as text: the tables hold numbers in the machine's decimal separator, files and
// reports may use either "." or ",". These helpers parse and print them.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvika {

// The machine's decimal separator, read from the locale's LC_NUMERIC ("." when unknown).
char DecimalSeparatorFromLocale();

// Parses a number written with the given decimal separator: optional blanks around it,
// optional sign, digits with at most one separator, optional exponent. Nothing else.
std::optional<double> ParseLocalNumber(std::string_view text, char separator);

// The first "." becomes ","; when there is none, the first "," becomes ".".
std::string FixSeparator(std::string_view text);

// The common case of a table cell, fast: an optional sign and at most 15 digits with at
// most one separator, nothing else (no blanks, no exponent); nullopt for any other text,
// which ParseLocalNumber then reads. The digits make an exact integer and the power of ten
// is exact, so the one division rounds correctly, as the general path does.
inline std::optional<double> ParsePlainDecimal(std::string_view text, char separator) {
  static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  std::size_t i = 0;
  bool negative = false;
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
    negative = text[0] == '-';
    ++i;
  }
  std::uint64_t mantissa = 0;
  int digits = 0;
  int decimals = -1;  // -1 until the separator is seen
  for (; i < text.size(); ++i) {
    char c = text[i];
    if (c >= '0' && c <= '9') {
      if (++digits > 15) return std::nullopt;
      mantissa = mantissa * 10 + static_cast<unsigned>(c - '0');
      if (decimals >= 0) ++decimals;
    } else if (c == separator && decimals < 0) {
      decimals = 0;
    } else {
      return std::nullopt;
    }
  }
  if (digits == 0) return std::nullopt;
  double value = static_cast<double>(mantissa);
  if (decimals > 0) value /= kPowers[decimals];
  return negative ? -value : value;
}

// Parses with the local separator and, when that fails, once more after FixSeparator.
std::optional<double> ParseEitherSeparator(std::string_view text, char separator);

// A value held to four decimals, as the declarations keep their codes.
double RoundToFourDecimals(double value);

// ParseEitherSeparator, then held to four decimals.
std::optional<double> ParseFourDecimals(std::string_view text, char separator);

// Whole number with optional sign and surrounding blanks.
std::optional<long long> ParseWholeNumber(std::string_view text);

// The general number format: up to 15 significant digits, no trailing zeros, the given
// separator; exponent form ("1.5E-5", "1E20") below 1e-4 and from 1e15 on.
std::string FormatGeneral(double value, char separator);

// The value with exactly `decimals` decimals and a dot. An exact tie (a value whose decimal
// expansion ends in 5 just past the last printed place) rounds away from zero, as reports
// always have; the standard library would round it to the even digit.
std::string FormatFixed(double value, int decimals);

// Normalises a typed numeric text: cuts leading blanks and trailing separators, keeps at
// most 11 decimals, and prints the number again in the general format ("007" -> "7").
// Texts of one character are returned as they are. nullopt when the text is no number.
std::optional<std::string> CleanNumber(std::string_view text, char separator);

// A numeric field as the tables hold it: cleaned, and its first "." (or else its first ",")
// in the local separator. A text that is no number is kept as it is.
void CleanNumericField(std::string& field, char separator);

// CleanNumber's result for a plain decimal, straight from its text: an optional "-",
// digits, and at most one "." or "," with digits after it ("48.90", "-0.570", "007",
// "3,250"). Leading zeros go, decimals beyond the 11th are cut, trailing zeros go, "-0"
// becomes "0", and the local separator is put in. False (and `out` unspecified) for any
// other text, and where the general path must decide: more than 13 significant digits, or
// a value below 0.0001 other than 0, which prints in exponent form. A load cleans every
// numeric cell it reads, and most cells as other programs write them take this path.
bool CleanPlainDecimal(std::string_view text, char separator, std::string& out);

// True when CleanNumber would print the text back unchanged apart from its decimal
// separator ("." or ","): an optional "-", digits without a leading zero, at most 11
// decimals without a trailing zero, at most 13 significant digits, and no value below
// 0.0001 other than 0. Loaders use it to skip the parse and print of ordinary numbers.
// Inline, as a load asks it of every numeric cell.
[[gnu::always_inline]] inline bool IsCleanNumber(std::string_view s) {
  constexpr std::size_t kMaxDigits = 13;  // well inside what a double prints back exactly
  auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  std::size_t i = 0, n = s.size();
  if (i < n && s[i] == '-') ++i;
  std::size_t intBegin = i;
  while (i < n && isDigit(s[i])) ++i;
  std::size_t intDigits = i - intBegin;
  if (intDigits == 0) return false;
  bool zeroInt = s[intBegin] == '0';
  if (zeroInt && intDigits > 1) return false;
  if (i == n) return !(zeroInt && intBegin == 1) && intDigits <= kMaxDigits;  // "-0" prints as "0"
  if (s[i] != '.' && s[i] != ',') return false;
  std::size_t fracBegin = ++i;
  while (i < n && isDigit(s[i])) ++i;
  std::size_t fracDigits = i - fracBegin;
  if (i != n || fracDigits == 0 || fracDigits > 11 || s[n - 1] == '0') return false;
  if (!zeroInt) return intDigits + fracDigits <= kMaxDigits;
  std::size_t zeros = 0;
  while (s[fracBegin + zeros] == '0') ++zeros;
  return zeros <= 3;
}

// The length of the start of a number's text that is already its cleaned form, apart
// from the decimal separator: the whole text when IsCleanNumber holds, and without its
// trailing decimal zeros (and a separator left bare) when what remains is clean ("48.90"
// -> 4, "100.000" -> 3); npos when cleaning must write a new text. Lets a load keep a
// number as other programs write it without copying it.
std::size_t CleanLengthWithoutTrailingZeros(std::string_view s);
[[gnu::always_inline]] inline std::size_t CleanPrefixLength(std::string_view s) {
  return IsCleanNumber(s) ? s.size() : CleanLengthWithoutTrailingZeros(s);
}

}  // namespace tarvika
