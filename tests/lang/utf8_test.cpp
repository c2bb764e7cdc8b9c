#include <gtest/gtest.h>

#include "lang/utf8.h"

namespace tarvika {
namespace {

TEST(Utf8, CountsCutsPadsAndFoldsByCharacter) {
  EXPECT_EQ(Utf8Length("árvíztűrő"), 9u);
  EXPECT_EQ(Utf8Prefix("ŐŰőűabc", 3), "ŐŰő");
  EXPECT_EQ(Utf8Prefix("ab", 5), "ab");
  EXPECT_EQ(PadRight("ő", 3), "ő  ");
  EXPECT_EQ(FoldCase("ÁRVÍZTŰRŐ Tükörfúrógép"), "árvíztűrő tükörfúrógép");
  EXPECT_TRUE(EqualIgnoringCase("Kor", "KOR"));
  EXPECT_FALSE(EqualIgnoringCase("kor", "kör"));
  // A stray byte counts as one character and is kept as it is.
  EXPECT_EQ(Utf8Length("a\xff" "b"), 3u);
  EXPECT_EQ(Utf8Prefix("\xc3", 1), "\xc3");
}

}  // namespace
}  // namespace tarvika
