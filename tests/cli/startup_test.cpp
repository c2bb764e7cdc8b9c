// The start every command of the headless program goes through: the language of --lang
// (before or after the command) or of the settings file, the statistical tables, and the
// person's messages and questions on standard error.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/cli_runner.h"

namespace tarvika {
namespace {

namespace fs = std::filesystem;

using CliStart = test::CliTest;
using test::CliResult;

std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t n = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
  return n;
}

TEST_F(CliStart, LangBeforeOrAfterTheCommandOverridesTheSettingsFile) {
  std::ofstream(folder_ / "Tarvika.cfg") << "nyelv=angol;\r\n";
  const std::string run = "run " + Survey() + " --command 12 --vars Pulse,Age --set trimmingPercent=10 --set confidenceIndex=2";
  CliResult before = Cli("--lang hu " + run);
  CliResult after = Cli(run + " --lang hu");
  ASSERT_EQ(before.status, 0) << before.err;
  ASSERT_EQ(after.status, 0) << after.err;
  EXPECT_EQ(WithoutProjectPath(before.out), Expected("survey_m12_hu_trim.txt"));
  EXPECT_EQ(after.out, before.out);

  // info and resave speak the language of the settings file, or of --lang.
  EXPECT_TRUE(Cli("info " + Survey()).out.starts_with("Variables: 9\nCases: 237\n"));
  std::ofstream(folder_ / "Tarvika.cfg") << "nyelv=magyar;\r\n";
  EXPECT_TRUE(Cli("info " + Survey()).out.starts_with("Változók: 9\nEsetek: 237\n"));
  EXPECT_TRUE(Cli("info " + Survey() + " --lang en").out.starts_with("Variables: 9\nCases: 237\n"));
  std::ofstream(folder_ / "bad.msw") << "hello\r\n";
  const std::string resave = "resave '" + (folder_ / "bad.msw").string() + "' '" + (folder_ / "out.msw").string() + "'";
  CliResult hu = Cli(resave);
  EXPECT_EQ(hu.status, 2);
  EXPECT_NE(hu.err.find("Ez nem egy szabályos Tarvika fájl"), std::string::npos) << hu.err;
  CliResult en = Cli("--lang en " + resave);
  EXPECT_NE(en.err.find("This is an invalid Tarvika file"), std::string::npos) << en.err;
  EXPECT_FALSE(fs::exists(folder_ / "out.msw"));
}

TEST_F(CliStart, MissingTablesStopTheRunWithStatusOneBeforeAnythingIsWritten) {
  const std::string run = "run " + Survey() + " --command 11 --vars Pulse --lang en";
  // A table file the command itself doesn't read: the folder is incomplete all the same.
  fs::create_directories(folder_ / "output");
  std::ofstream(folder_ / "output" / "zuli_akt.txt") << "the last report";
  fs::remove(folder_ / "stattab" / "tstab.txt");
  CliResult r = Cli(run);
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("File tstab.txt is missing. Program stops."), std::string::npos) << r.err;
  EXPECT_TRUE(r.out.empty());
  EXPECT_EQ(test::ReadFile(folder_ / "output" / "zuli_akt.txt"), "the last report");

  // No table folder: no command starts, and nothing is made in the program folder.
  fs::remove_all(folder_);
  fs::create_directories(folder_);
  for (const std::string& args : {run, "info " + Survey() + " --lang en", std::string("--lang en settings")}) {
    r = Cli(args);
    EXPECT_EQ(r.status, 1) << args;
    EXPECT_NE(r.err.find("The folder of the statistical tables is missing: " + (folder_ / "stattab").string()),
              std::string::npos)
        << r.err;
    EXPECT_TRUE(r.out.empty()) << args;
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);  // stderr.txt
}

TEST_F(CliStart, QuestionsArePrintedWithTheAnswerTakenAndEachMessageOnce) {
  CliResult r = Cli("default-variable --group-type none --labels '1=a;/' --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "Default variable has redundant value labels.\nDo you want to delete it?\n  Answer taken: Cancel\n");
  EXPECT_NE(r.out.find("group labels: 1=a;/"), std::string::npos) << r.out;  // cancelled: kept
  r = Cli("--lang hu default-variable --group-type none --labels '1=a;/'");
  EXPECT_NE(r.err.find("Törli őket?\n  A válasz: Mégse\n"), std::string::npos) << r.err;

  // Two short names that differ only in case: the load, the validation and the dialog each
  // find them; the person reads it once.
  std::string project = test::ReadFile(Survey());
  project.replace(project.find("<name>=Wr.Hnd;"), 14, "<name>=SEX;");
  std::ofstream(folder_ / "twice.msw", std::ios::binary) << project;
  r = Cli("run '" + (folder_ / "twice.msw").string() + "' --command 11 --vars Pulse --lang en");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(Count(r.err, "Error: identical variable names!"), 1u) << r.err;
}

}  // namespace
}  // namespace tarvika
