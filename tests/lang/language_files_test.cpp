#include <gtest/gtest.h>

#include "lang/help_files.h"
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

TEST(HelpFiles, EveryOfferedSingleSampleCommandHasItsExplanationInBothLanguages) {
  for (Language lang : {Language::English, Language::Hungarian}) {
    std::map<int, std::string> hints = LoadCommandHints(TARVIKA_SOURCE_DIR "/data", lang);
    for (int code : {11, 12, 13, 14, 15}) EXPECT_FALSE(hints[code].empty()) << code;
  }
  EXPECT_EQ(LoadCommandHints(TARVIKA_SOURCE_DIR "/data", Language::English)[11].substr(0, 24), "Number of valid cases, m");
  EXPECT_TRUE(LoadCommandHints("/nonexistent", Language::English).empty());
}

}  // namespace
}  // namespace tarvika
