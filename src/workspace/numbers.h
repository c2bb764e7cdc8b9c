#pragma once
// Numbers as text: the tables hold numbers in the machine's decimal separator, files and
// reports may use either "." or ",". These helpers parse and print them.

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

// Normalises a typed numeric text: cuts leading blanks and trailing separators, keeps at
// most 11 decimals, and prints the number again in the general format ("007" -> "7").
// Texts of one character are returned as they are. nullopt when the text is no number.
std::optional<std::string> CleanNumber(std::string_view text, char separator);

// True when CleanNumber would print the text back unchanged apart from its decimal
// separator ("." or ","): an optional "-", digits without a leading zero, at most 11
// decimals without a trailing zero, at most 13 significant digits, and no value below
// 0.0001 other than 0. Loaders use it to skip the parse and print of ordinary numbers.
bool IsCleanNumber(std::string_view text);

}  // namespace tarvika
