// The value formatter and the pattern marks of the tables of means.

#include <gtest/gtest.h>

#include "pattern/pattern_text.h"

namespace tarvika {
namespace {

TEST(PatternText, ValuesSnapAndTakeDecimalsBySize) {
  const Language en = Language::English;
  EXPECT_EQ(PatternValueText(2.000001, 10, 8, en), "2.000");  // snapped, form 8 keeps decimals
  EXPECT_EQ(PatternValueText(2.000001, 10, 0, en), "2");
  EXPECT_EQ(PatternValueText(0.0926, 10, 8, en), "0.0926");
  EXPECT_EQ(PatternValueText(1234.56, 10, 8, en), "1234.6");
  EXPECT_EQ(PatternValueText(1e-9, 10, 8, en), "0.0000");  // the size rule alone
  EXPECT_EQ(PatternValueText(1e-9, 10, 0, en), "0");
  EXPECT_EQ(PatternValueText(5.5, 10, 2, en), "5.50");
  EXPECT_EQ(PatternValueText(2e5, 5, 8, Language::Hungarian), "TúlNagy");
}

TEST(PatternText, MarksFollowTheBounds) {
  const Language en = Language::English;
  EXPECT_EQ(PatternMark(0.435, en), ".");
  EXPECT_EQ(PatternMark(0.5, en), "(H)");
  EXPECT_EQ(PatternMark(-0.674, Language::Hungarian), "(A)");
  EXPECT_EQ(PatternMark(0.8, en), "H");
  EXPECT_EQ(PatternMark(-1.2, en), "L+");
  EXPECT_EQ(PatternMark(1.5, Language::Hungarian), "M++");
  EXPECT_EQ(PatternMark(1.7, en), "H+++");
  EXPECT_EQ(PatternMark(-2.5, en), "L++++");
  EXPECT_EQ(PatternMark(150, en), ".");
  EXPECT_EQ(HeadingName("LONGNAME"), "Longname");
  EXPECT_EQ(HeadingName("ABCDE"), "ABCDE");
}

}  // namespace
}  // namespace tarvika
