#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>

#include "workspace/numbers.h"

namespace tarvika {
namespace {

TEST(Numbers, LocalParserAcceptsOnlyTheGivenSeparator) {
  EXPECT_EQ(ParseLocalNumber("3,5", ','), 3.5);
  EXPECT_EQ(ParseLocalNumber("3.5", ','), std::nullopt);
  EXPECT_EQ(ParseLocalNumber(" -1.5e3 ", '.'), -1500);
  EXPECT_EQ(ParseLocalNumber("+.5", '.'), 0.5);
  EXPECT_EQ(ParseLocalNumber("5.", '.'), 5);
  for (const char* bad : {"", " ", ".", "1.2.3", "1e", "abc", "1 2", "--1", "1e400", "0x10"})
    EXPECT_EQ(ParseLocalNumber(bad, '.'), std::nullopt) << bad;
  EXPECT_EQ(ParseEitherSeparator("3.5", ','), 3.5);
  EXPECT_EQ(FixSeparator("1.2.3"), "1,2.3");
  EXPECT_EQ(FixSeparator("1,2"), "1.2");
}

TEST(Numbers, GeneralFormatPrintsShortestUpToFifteenDigits) {
  EXPECT_EQ(FormatGeneral(7, '.'), "7");
  EXPECT_EQ(FormatGeneral(-2.5, ','), "-2,5");
  EXPECT_EQ(FormatGeneral(0.1 + 0.2, '.'), "0.3");
  EXPECT_EQ(FormatGeneral(1.0 / 3, '.'), "0.333333333333333");
  EXPECT_EQ(FormatGeneral(123456789012.25, '.'), "123456789012.25");
  EXPECT_EQ(FormatGeneral(0.00015, '.'), "0.00015");
  EXPECT_EQ(FormatGeneral(0.000015, '.'), "1.5E-5");
  EXPECT_EQ(FormatGeneral(1e20, '.'), "1E20");
}

TEST(Numbers, FixedDecimalsRoundExactTiesAwayFromZero) {
  EXPECT_EQ(FormatFixed(17.625, 2), "17.63");
  EXPECT_EQ(FormatFixed(-17.625, 2), "-17.63");
  EXPECT_EQ(FormatFixed(2.5, 0), "3");
  EXPECT_EQ(FormatFixed(9.995, 2), "9.99");    // below the tie in binary
  EXPECT_EQ(FormatFixed(99.5, 0), "100");
  EXPECT_EQ(FormatFixed(-0.125, 2), "-0.13");
  EXPECT_EQ(FormatFixed(0.0625, 3), "0.063");
  EXPECT_EQ(FormatFixed(12.345, 2), "12.35");  // above the tie in binary
  EXPECT_EQ(FormatFixed(1.0 / 3, 4), "0.3333");
}

TEST(Numbers, CleanNumberNormalisesTypedText) {
  EXPECT_EQ(CleanNumber(" 12.", '.'), "12");
  EXPECT_EQ(CleanNumber("007", '.'), "7");
  EXPECT_EQ(CleanNumber("1.234567890123456", '.'), "1.23456789012");
  EXPECT_EQ(CleanNumber("1,5", '.'), "1.5");
  EXPECT_EQ(CleanNumber("1.50", ','), "1,5");
  EXPECT_EQ(CleanNumber("...", '.'), "");
  EXPECT_EQ(CleanNumber("   ", '.'), "");
  EXPECT_EQ(CleanNumber("x", '.'), "x");  // one character is left alone
  EXPECT_EQ(CleanNumber("abc", '.'), std::nullopt);
}

TEST(Numbers, CleaningACleanedNumberChangesNothing) {
  // More than 15 digits are lost once, to the general format; the exponent form that gives
  // must not then lose the mantissa's digits beyond the 11th as if they were decimals.
  EXPECT_EQ(CleanNumber("1234567890123456", '.'), "1.23456789012346E15");
  EXPECT_EQ(CleanNumber("1.23456789012346E15", '.'), "1.23456789012346E15");
  EXPECT_EQ(CleanNumber("1,23456789012346E15", ','), "1,23456789012346E15");
  // Typed decimals are still cut after the 11th, exponent or not.
  EXPECT_EQ(CleanNumber("1.234567890123456E3", '.'), "1234.56789012");
  const char* texts[] = {"1234567890123456", "-98765432109876543", "123456789012345678901234567890",
                         "0.0000123456789012345", "1.5E-20", "-1.2345678901234567E-7", "9.99999999999999999E14",
                         "0.1234567890123456789", "12345678.123456789", "1e300", "007.50", " 1,25"};
  for (const char* text : texts) {
    for (char sep : {'.', ','}) {
      auto once = CleanNumber(text, sep);
      ASSERT_TRUE(once) << text;
      EXPECT_EQ(CleanNumber(*once, sep), once) << text << " -> " << *once;
    }
  }
}

TEST(Numbers, PlainDecimalsCleanAsTheGeneralPathDoes) {
  // A table of forms around the edges of the short path: signs, leading and trailing zeros,
  // either separator, 0 to 16 digits before and after it, values near 0.0001.
  const char* ints[] = {"", "0", "00", "7", "007", "10", "1234567890", "123456789012", "1234567890123",
                        "12345678901234", "1234567890123456"};
  const char* fracs[] = {"", "0", "00", "5", "50", "05", "0001", "00010", "00009", "000099", "123456789",
                         "12345678901", "123456789010", "1234567890123", "10000000000001", "0000000000001"};
  int taken = 0, total = 0;
  std::string fast;
  for (const char* sign : {"", "-"}) {
    for (const char* i : ints) {
      for (const char* f : fracs) {
        for (const char* point : {"", ".", ","}) {
          if (*point == '\0' && *f != '\0') continue;
          const std::string text = std::string(sign) + i + point + f;
          for (char sep : {'.', ','}) {
            ++total;
            // A load keeps the start of the text where that is the cleaned form already.
            if (std::size_t keep = CleanPrefixLength(text); keep != std::string::npos && (*point == '\0' || *point == sep)) {
              EXPECT_EQ(CleanNumber(text, sep), text.substr(0, keep)) << text << " kept with " << sep;
            }
            if (!CleanPlainDecimal(text, sep, fast)) continue;
            ++taken;
            EXPECT_EQ(CleanNumber(text, sep), fast) << text << " with " << sep;
          }
        }
      }
    }
  }
  EXPECT_GT(taken, total / 2);  // the short path is not a rare one
  // The forms other programs write take it.
  for (const char* text : {"48.90", "-0.57", "3,250", "007", "-0", "12.", "0.0001", "100.000"}) {
    EXPECT_TRUE(CleanPlainDecimal(text, '.', fast)) << text;
    EXPECT_EQ(CleanNumber(text, '.'), fast) << text;
  }
  // And what is no plain decimal does not.
  for (const char* text : {"", "-", ".5", "+1", " 1", "1e5", "1.2.3", "1,2.3", "0.00009", "12345678901234", "x"}) {
    EXPECT_FALSE(CleanPlainDecimal(text, '.', fast)) << text;
  }
}

TEST(Numbers, PlainDecimalsReadExactlyAsTheGeneralParser) {
  // Cells of up to 15 digits take a shorter path; it must give the correctly rounded double.
  std::uint64_t state = 7;
  for (int k = 0; k < 20000; ++k) {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    std::string digits = std::to_string(state >> 14).substr(0, 1 + (state >> 3) % 15);
    std::size_t point = (state >> 7) % (digits.size() + 1);
    std::string text = ((state >> 11) % 2 ? "-" : "") + digits.substr(0, point) + "," + digits.substr(point);
    std::string dotted = text;
    dotted[dotted.find(',')] = '.';
    ASSERT_EQ(ParseLocalNumber(text, ','), std::strtod(dotted.c_str(), nullptr)) << text;
  }
  EXPECT_EQ(ParseLocalNumber("1234567890123456,5", ','), 1234567890123456.5);  // 16 digits: general path
  EXPECT_EQ(ParseLocalNumber("+7", '.'), 7);
  EXPECT_EQ(ParseLocalNumber("7.", '.'), 7);
  EXPECT_EQ(ParseLocalNumber("1.5.", '.'), std::nullopt);
  EXPECT_EQ(ParseLocalNumber("-", '.'), std::nullopt);
}

}  // namespace
}  // namespace tarvika
