#include <gtest/gtest.h>

#include "lang/language_files.h"

namespace tarvika {
namespace {

TEST(LanguageFiles, HintsRoundTripThroughTheStarForm) {
  EXPECT_EQ(HintToFileForm("first line\r\nsecond\nline"), "first line*secondline");
  EXPECT_EQ(HintFromFileForm("first line*second"), "first line\r\nsecond");
  LanguageTexts texts = LanguageTexts::FromLines({"", "Open", ""}, {"", "Opens a project|Reads a*project file"});
  EXPECT_EQ(texts.Caption(1), "Open");
  EXPECT_EQ(texts.Caption(0), "");   // tag 0 keeps its designed caption
  EXPECT_EQ(texts.Caption(99), "");  // beyond the file too
  ASSERT_NE(texts.HintOf(1), nullptr);
  EXPECT_EQ(texts.HintOf(1)->shortHint, "Opens a project");
  EXPECT_EQ(texts.HintOf(1)->longHint, "Reads a\r\nproject file");
  EXPECT_EQ(texts.HintOf(2), nullptr);
  EXPECT_FALSE(LanguageTexts::Load("/nonexistent", Language::English));
}

}  // namespace
}  // namespace tarvika
