#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "lang/language_files.h"
#include "workspace/main_menu.h"
#include "workspace/session.h"

namespace fs = std::filesystem;

namespace tarvika {
namespace {

std::string ReadFile(const fs::path& p) {
  std::ifstream in(p, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

void WriteFile(const fs::path& p, const std::string& text) {
  fs::create_directories(p.parent_path());
  std::ofstream(p, std::ios::binary) << text;
}

// A fresh program folder under the system's temporary folder, removed afterwards.
class ProgramFolder : public ::testing::Test {
 protected:
  void SetUp() override {
    root = fs::temp_directory_path() / ("tarvika-session-" + std::to_string(::getpid()) + "-" +
                                        ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(root);
    fs::create_directories(root / "stattab");
  }
  void TearDown() override { fs::remove_all(root); }
  StartOptions Options() const {
    StartOptions o;
    o.programFolder = root.string();
    o.decimalSeparator = '.';
    return o;
  }
  fs::path root;
};

TEST_F(ProgramFolder, FreshStartMakesFoldersDefaultsAndAFreeProjectName) {
  WriteFile(root / "dat" / "new_1.msw", "x");
  WriteFile(root / "output" / "zuli_akt3.xls", "x");
  WriteFile(root / "output" / "zuli_tot101.xls", "x");
  WriteFile(root / "output" / "zuli_tot102.xls", "x");
  ScriptedChannel user;
  Session s(user);
  ASSERT_EQ(s.StartUp(Options()), StartResult::Ready);
  for (const char* f : {"dat", "output", "agents", "aktualis", "collect", "distribute", "html", "mail", "upload", "undo"})
    EXPECT_TRUE(fs::is_directory(root / f)) << f;
  EXPECT_EQ(ReadFile(root / "default.var"), "num=0_0;\r\n\r\nnincs\r\n");
  EXPECT_FALSE(fs::exists(root / "output" / "zuli_akt3.xls"));
  EXPECT_FALSE(fs::exists(root / "output" / "zuli_tot101.xls"));
  EXPECT_TRUE(fs::exists(root / "output" / "zuli_tot102.xls"));  // beyond the numbers cleaned
  EXPECT_EQ(s.defaultProjectName, "new_2");
  EXPECT_EQ(s.ws.CurrentFileName(), (root / "dat" / "new_2.msw").string());
  EXPECT_EQ(s.ws.language, Language::Hungarian);  // no settings file
  EXPECT_EQ(s.ws.vars.GetCell(kGroupType, 0), "nincs");
  EXPECT_TRUE(s.ws.IsPristine());
  EXPECT_TRUE(user.told.empty());
}

TEST_F(ProgramFolder, MissingTablesStopTheStartInTheLanguageOfTheSettings) {
  fs::remove_all(root / "stattab");
  WriteFile(root / "Tarvika.cfg", "nyelv=angol;\r\n");
  ScriptedChannel user;
  Session s(user);
  EXPECT_EQ(s.StartUp(Options()), StartResult::TablesMissing);
  ASSERT_EQ(user.told.size(), 1u);
  EXPECT_EQ(user.told[0], " The tarvika.exe is not in its natural place!\r\nMove it to the tarvika folder!\r\nThe Tarvika terminates.");
  EXPECT_FALSE(fs::exists(root / "dat"));
}

TEST_F(ProgramFolder, SettingsFilesAreReadAndRewrittenByTheLanguageAndFontCommands) {
  for (auto [text, lang] : {std::pair{"nyelv=magyar;", Language::Hungarian}, std::pair{"nyelv=english;", Language::Hungarian},
                            std::pair{"nyelv=angol;", Language::English}}) {
    WriteFile(root / "Tarvika.cfg", std::string(text) + "\r\nLastModEv=2024;\r\nVerNum=2.0;\r\nother=1;\r\n");
    ScriptedChannel user;
    Session s(user);
    ASSERT_EQ(s.StartUp(Options()), StartResult::Ready);
    EXPECT_EQ(s.ws.language, lang) << text;
  }
  WriteFile(root / "r_path.cfg", "R_prog_path=/usr/lib/R/bin;\nfont_size=12;\n");
  ScriptedChannel user;
  Session s(user);
  ASSERT_EQ(s.StartUp(Options()), StartResult::Ready);
  EXPECT_EQ(s.settings.fontSize, 12);
  s.ChangeLanguage();
  EXPECT_EQ(s.ws.language, Language::Hungarian);
  EXPECT_EQ(s.ws.vars.GetCell(kGroupType, 1), "nincs");
  EXPECT_EQ(ReadFile(root / "Tarvika.cfg"),
            "nyelv=magyar;\r\nLastModEv=2024;\r\nLastModHo=;\r\nLastModNap=;\r\nVerNum=2.0;\r\n");
  EXPECT_EQ(ReadFile(root / "r_path.cfg"), "font_size=12;\r\nR_prog_path=/usr/lib/R/bin;\r\n");

  user.QueueText("0");
  EXPECT_FALSE(s.ChangeFontSize());
  EXPECT_EQ(user.told.back(), "Csak pozitív egész számot írhat be.");
  user.QueueText("14");
  EXPECT_TRUE(s.ChangeFontSize());
  EXPECT_EQ(ReadFile(root / "r_path.cfg"), "font_size=14;\r\nR_prog_path=/usr/lib/R/bin;\r\n");

  user.QueueText(";");
  EXPECT_FALSE(s.ChangeDecimalSeparator());
  EXPECT_EQ(user.told.back(), "A tizedesjel \".\" vagy \",\" lehet.");
  user.QueueText(",");
  EXPECT_TRUE(s.ChangeDecimalSeparator());
  EXPECT_EQ(s.ws.decimalSeparator, ',');

  WriteFile(root / "r_path.cfg", "font_size=big;\r\n");
  ScriptedChannel other;
  Session bad(other);
  EXPECT_EQ(bad.StartUp(Options()), StartResult::BadSettings);
  EXPECT_EQ(other.told.back(), "r_path.cfg: font_size=big is not a positive whole number.");
  {
    // A language change without a font size leaves "font_size=;", which the next start reads
    // as no size given.
    fs::remove(root / "r_path.cfg");
    ScriptedChannel user;
    Session s(user);
    ASSERT_EQ(s.StartUp(Options()), StartResult::Ready);
    s.ChangeLanguage();
    EXPECT_EQ(ReadFile(root / "r_path.cfg"), "font_size=;\r\nR_prog_path=;\r\n");
    Session again(user);
    ASSERT_EQ(again.StartUp(Options()), StartResult::Ready);
    EXPECT_FALSE(again.settings.fontSize);
  }
}

TEST_F(ProgramFolder, OnlyOneDesktopInstanceRuns) {
  StartOptions o = Options();
  o.singleInstance = true;
  ScriptedChannel first, second, cli;
  Session a(first);
  ASSERT_EQ(a.StartUp(o), StartResult::Ready);
  Session b(second);
  EXPECT_EQ(b.StartUp(o), StartResult::AlreadyRunning);
  EXPECT_EQ(second.told.back(), "A Tarvika már fut.");
  Session c(cli);  // the command line may run beside it
  EXPECT_EQ(c.StartUp(Options()), StartResult::Ready);
}

TEST_F(ProgramFolder, EndingAPristineSessionAsksNothingAndRemovesEmptyOutputFolders) {
  ScriptedChannel user;
  Session s(user);
  ASSERT_EQ(s.StartUp(Options()), StartResult::Ready);
  fs::create_directories(root / "output" / "empty" / "nested");
  WriteFile(root / "output" / "full" / "chart.bmp", "x");
  EXPECT_TRUE(s.EndSession());
  EXPECT_TRUE(user.asked.empty());
  EXPECT_FALSE(fs::exists(root / "output" / "empty"));
  EXPECT_TRUE(fs::exists(root / "output" / "full" / "chart.bmp"));

  s.ws.data.SetCell(1, 1, "5");
  user.QueueAnswer(Answer::No);
  EXPECT_FALSE(s.EndSession());
  EXPECT_EQ(user.asked.back(), "Tényleg ki akar lépni a Tarvika-ból?");
  user.QueueAnswer(Answer::Cancel);
  EXPECT_FALSE(s.NewProject());
  EXPECT_EQ(s.ws.data.GetCell(1, 1), "5");
  user.QueueAnswer(Answer::No);
  EXPECT_TRUE(s.NewProject());
  EXPECT_TRUE(s.ws.IsPristine());
}

TEST_F(ProgramFolder, ASaveThatFailsStopsExitNewAndOpenAndKeepsTheWork) {
  ScriptedChannel user;
  Session s(user);
  ASSERT_EQ(s.StartUp(Options()), StartResult::Ready);
  s.ws.language = Language::English;
  const std::string other = (root / "dat" / "other.msw").string();
  WriteFile(other, "<Tarvika_for_windows>=2.0;\r\n<variables>=1;\r\n<cases>=1;\r\n#=1;\r\n<name>=x;\r\n"
                   "$num=0_0;\r\n<datamatrix>=;\r\n7\r\n");
  s.ws.SetCurrentFile((root / "no_such_folder" / "work.msw").string());
  s.ws.data.SetCell(1, 1, "5");
  auto workKept = [&] { return s.ws.data.GetCell(1, 1) == "5" && s.ws.CurrentFileName().ends_with("work.msw"); };

  user.QueueAnswer(Answer::Yes);  // leave
  user.QueueAnswer(Answer::Yes);  // save
  EXPECT_FALSE(s.EndSession());
  EXPECT_TRUE(workKept());
  EXPECT_EQ(user.told.back().rfind("The file cannot be written: ", 0), 0u) << user.told.back();
  user.QueueAnswer(Answer::Yes);
  EXPECT_FALSE(s.NewProject());
  EXPECT_TRUE(workKept());
  user.QueueAnswer(Answer::Yes);
  EXPECT_FALSE(s.OpenProject(other));
  EXPECT_TRUE(workKept());

  // Declining to save still lets each go on.
  user.QueueAnswer(Answer::No);
  EXPECT_TRUE(s.OpenProject(other));
  EXPECT_EQ(s.ws.data.GetCell(1, 1), "7");
}

TEST_F(ProgramFolder, AnUntitledProjectAsksForANameWhenItIsSaved) {
  ScriptedChannel user;
  Session s(user);
  ASSERT_EQ(s.StartUp(Options()), StartResult::Ready);
  s.ws.language = Language::English;
  const std::string damaged = (root / "dat" / "cut.msw").string();
  const std::string bytes = "<Tarvika_for_windows>=2.0;\r\n<variables>=1;\r\n<cases>=3;\r\n#=1;\r\n<name>=x;\r\n"
                            "$num=0_0;\r\n<datamatrix>=;\r\n7\r\n";
  WriteFile(damaged, bytes);
  EXPECT_FALSE(s.OpenProject(damaged));
  EXPECT_EQ(s.ws.CurrentFileName(), "");
  EXPECT_EQ(s.ws.data.GetCell(1, 1), "7");

  // Refusing a name keeps the program open; a name saves there, not over the damaged file.
  user.QueueAnswer(Answer::Yes);
  user.QueueAnswer(Answer::Yes);
  user.QueueText(std::nullopt);
  EXPECT_FALSE(s.EndSession());
  EXPECT_EQ(user.asked.back(), "The project is untitled. Save it as");
  const std::string rescued = (root / "dat" / "rescued").string();
  user.QueueAnswer(Answer::Yes);
  user.QueueAnswer(Answer::Yes);
  user.QueueText(rescued);
  EXPECT_TRUE(s.EndSession());
  EXPECT_TRUE(fs::exists(rescued + ".msw"));
  EXPECT_EQ(ReadFile(damaged), bytes);
}

TEST_F(ProgramFolder, AnImportedFileAsksBeforeOverwritingAProject) {
  ScriptedChannel user;
  Session s(user);
  s.ws.language = Language::English;
  ASSERT_EQ(s.StartUp(Options()), StartResult::Ready);
  s.ws.language = Language::English;
  std::string taken = (root / "dat" / "survey.msw").string();
  WriteFile(taken, "x");
  WriteFile(root / "dat" / "other.msw", "x");
  user.QueueAnswer(Answer::No);
  user.QueueText((root / "dat" / "other").string());  // taken too: asked again
  user.QueueAnswer(Answer::No);
  user.QueueText("");
  EXPECT_EQ(s.ProjectNameForImport(taken), (root / "dat" / "new_1.msw").string());
  EXPECT_EQ(user.asked[0], "The file (" + taken + ") already exists. Do you want to overwrite it?");
  EXPECT_EQ(user.asked[1], "Specify a new filename");
  user.QueueAnswer(Answer::Yes);
  EXPECT_EQ(s.ProjectNameForImport(taken), taken);
}

TEST(MainMenu, EveryEntryHasACaptionInBothLanguageFilesAndAUniqueCommand) {
  auto english = LanguageTexts::Load(TARVIKA_SOURCE_DIR "/data", Language::English);
  auto hungarian = LanguageTexts::Load(TARVIKA_SOURCE_DIR "/data", Language::Hungarian);
  ASSERT_TRUE(english && hungarian);
  std::vector<std::string_view> commands;
  std::function<void(const std::vector<MenuEntry>&)> walk = [&](const std::vector<MenuEntry>& entries) {
    for (const MenuEntry& e : entries) {
      EXPECT_FALSE(english->Caption(e.tag).empty()) << e.tag;
      EXPECT_FALSE(hungarian->Caption(e.tag).empty()) << e.tag;
      EXPECT_NE(e.command.empty(), e.children.empty()) << e.tag;
      if (!e.command.empty()) commands.push_back(e.command);
      walk(e.children);
    }
  };
  walk(MainMenu());
  ASSERT_EQ(MainMenu().size(), 9u);
  EXPECT_EQ(english->Caption(MainMenu()[6].children[0].tag), "Basics (single sample analyses)");
  EXPECT_EQ(hungarian->Caption(MainMenu()[2].children[0].tag), "Visszaállít / &Undo");
  std::sort(commands.begin(), commands.end());
  EXPECT_EQ(std::adjacent_find(commands.begin(), commands.end()), commands.end());
  EXPECT_TRUE(CommandIsBuilt("file.save"));
  EXPECT_TRUE(CommandIsBuilt("transform.recode"));
  EXPECT_TRUE(CommandIsBuilt("data.split"));
  EXPECT_FALSE(CommandIsBuilt("file.print"));
}

}  // namespace
}  // namespace tarvika
