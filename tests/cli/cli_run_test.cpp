// The headless run's input errors, its saving of new variables, its progress lines and the
// settings commands.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/cli_runner.h"

namespace tarvika {
namespace {

namespace fs = std::filesystem;

using CliRun = test::CliTest;
using test::CliResult;
using test::ReadFile;

TEST_F(CliRun, SaveKeepsTheNewVariables) {
  const std::string saved = (folder_ / "saved.msw").string();
  const std::string binarize = " --command 13 --vars Exer --set scaleType:Exer=discrete --set binarize=on --set percentile=on";
  CliResult r = Cli("run " + Survey() + binarize + " --lang en --save '" + saved + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  std::string project = ReadFile(saved);
  EXPECT_NE(project.find("<variables>=13;"), std::string::npos);
  for (const char* name : {"<name>=Exer_1;", "<name>=Exer_2;", "<name>=Exer_3;", "<name>=ExerP;"}) {
    EXPECT_NE(project.find(name), std::string::npos) << name;
  }
  // The first case exercises some (code 2): its binary variables and its percentile, 89.8
  // (115 + 98 of 237 cases up to code 2, cut to one decimal).
  EXPECT_NE(project.find("1\t18.5\t18\t2\t92\t2\t1\t173\t18.25\t0\t1\t0\t89.8\r\n"), std::string::npos);
  // Once more, in place: binary variables whose names are all taken are not made again; the
  // percentile variable gets a name of its own.
  r = Cli("run '" + saved + "'" + binarize + " --lang en --save-in-place");
  ASSERT_EQ(r.status, 0) << r.err;
  project = ReadFile(saved);
  EXPECT_NE(project.find("<variables>=14;"), std::string::npos);
  EXPECT_NE(project.find("<name>=ExerP0;"), std::string::npos);
}

TEST_F(CliRun, InputErrorsExitWithStatusTwoAndWriteNothing) {
  struct Bad {
    std::string args;
    std::string message;
  };
  std::ofstream(folder_ / "bad.msw") << "hello\r\n";
  {
    // Two short names that differ only in case: the dialog closes on opening.
    std::string project = ReadFile(Survey());
    project.replace(project.find("<name>=Wr.Hnd;"), 14, "<name>=SEX;");
    std::ofstream(folder_ / "twice.msw", std::ios::binary) << project;
  }
  std::vector<Bad> cases = {
      {"run " + Survey() + " --command 11 --lang en", "At least one variable has to be selected."},
      {"run " + Survey() + " --command 11 --vars Pulse,Weight --lang en", "Unknown variable: Weight"},
      {"run " + Survey() + " --command 11 --vars Pulse --cond Colour --lang hu", "Ismeretlen változó: Colour"},
      {"run " + Survey() + " --command 99 --vars Pulse --lang en", "Unknown command: 99"},
      {"run " + Survey() + " --command 16 --vars Pulse --lang en", "Command 16 (Distribution fitting) is not offered"},
      {"run " + Survey() + " --command 13 --vars Pulse --save a.msw --save-in-place --lang en", "--save-in-place"},
      {"run " + Survey() + " --command 25 --vars Pulse --group Smoke --lang en", "Sorry, under construction."},
      {"run " + Survey() + " --command 11 --vars Pulse --set trimmingPercent=30 --lang en",
       "trimmingPercent does not apply to command 11"},
      {"run " + Survey() + " --command 12 --vars Pulse --set colour=red --lang en",
       "Unknown parameter of this dialog: colour"},
      {"run " + Survey() + " --command 12 --vars Pulse --set trimmingPercent=30 --lang en",
       "trimmingPercent must be a whole number from 0 to 25."},
      {"run " + Survey() + " --command 13 --vars Pulse --set scaleType:Pulse=ordinal --lang hu",
       "scaleType értéke ezek egyike legyen: continuous, discrete, group.def."},
      {"run " + Survey() + " --command 11 --vars Pulse --set nonsense --lang en",
       "A setting is NAME=VALUE or NAME:VARIABLE=VALUE: nonsense"},
      {"run " + (folder_ / "none.msw").string() + " --command 11 --vars Pulse --lang en",
       "The file cannot be opened: " + (folder_ / "none.msw").string() + "\nNo such file or directory"},
      // A file that opens but is no regular file is not read in search of a project.
      {"info /proc/self/mem --lang en", "This is an invalid Tarvika file"},
      {"run " + (folder_ / "bad.msw").string() + " --command 11 --vars Pulse --lang en",
       "This is an invalid Tarvika file"},
      {"run " + (folder_ / "twice.msw").string() + " --command 11 --vars Pulse --lang en",
       "Error: identical variable names!"},
      {"run " + Survey() + " --command 11 --vars Pulse --lang de", "--lang"},
      {"run " + Survey() + " --vars Pulse", "--command"},
  };
  for (const Bad& c : cases) {
    CliResult r = Cli(c.args);
    EXPECT_EQ(r.status, 2) << c.args;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << c.args << "\n" << r.err;
    EXPECT_FALSE(r.err.empty()) << c.args;
    EXPECT_TRUE(r.out.empty()) << c.args;
    EXPECT_FALSE(ReportWritten()) << c.args;
  }
}

TEST_F(CliRun, AReportTheDiskRefusesIsStatusOneWithAMessage) {
  fs::create_directories(folder_ / "output");
  fs::create_symlink("/dev/full", folder_ / "output" / "zuli_akt.txt");
  CliResult r = Cli("run " + Survey() + " --command 13 --vars Pulse,Age --lang en");
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("The report can't be written: "), std::string::npos) << r.err;
  EXPECT_EQ(r.err.find("The report can't be written: ", r.err.find("written: ") + 1), std::string::npos)
      << "told once: " << r.err;
  EXPECT_TRUE(r.out.empty());
}

TEST_F(CliRun, ProjectsThatCannotBeUsedAreRefusedAndAnUnsavedRunSaysSo) {
  std::ofstream(folder_ / "empty.msw", std::ios::binary)
      << "<Tarvika_for_windows>=2.0;\r\n<variables>=1;\r\n<cases>=0;\r\n#=1;\r\n<name>=x;\r\n$num=0_0;\r\n"
         "<datamatrix>=;\r\n";
  CliResult r = Cli("info '" + (folder_ / "empty.msw").string() + "' --lang en");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.err, "The project has no case; a project has at least one.\n");
  EXPECT_EQ(r.out, "");
  r = Cli("info /dev/zero --lang en");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.err, "This is an invalid Tarvika file: either the file name or the first line is incorrect.\n");

  // One long name of 100,000 characters is printed once, and pads no other row.
  std::string project = ReadFile(Survey());
  project.replace(project.find("<longname>=Sex of the student;"), 30, "<longname>=" + std::string(100000, 'x') + ";");
  std::ofstream(folder_ / "long.msw", std::ios::binary) << project;
  r = Cli("info '" + (folder_ / "long.msw").string() + "' --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_LT(r.out.size(), 103000u);
  EXPECT_NE(r.out.find(std::string(100000, 'x') + "  "), std::string::npos);

  // A run that makes no variable writes no project, and says so.
  const std::string target = (folder_ / "saved.msw").string();
  r = Cli("run " + Survey() + " --command 11 --vars Pulse --lang en --save '" + target + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.err, "The run created no variable; the project is not saved: " + target + "\n");
  EXPECT_FALSE(fs::exists(target));
}

TEST_F(CliRun, LongWorkShowsItsProgressOnStandardError) {
  CliResult r = Cli("--progress --lang en info " + Survey());
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.err.find(". . . loading (237 case)\n"), std::string::npos) << r.err;
  EXPECT_EQ(Cli("info " + Survey()).err, "");  // not a terminal: quiet unless asked
}

TEST_F(CliRun, SettingsAndTheDefaultVariableAreChangedAsTheMenusChangeThem) {
  CliResult r = Cli("settings --language en --font-size 12");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("language: en\nfont size: 12\n"), std::string::npos) << r.out;
  EXPECT_EQ(ReadFile(folder_ / "Tarvika.cfg").substr(0, 14), "nyelv=angol;\r\n");
  EXPECT_EQ(ReadFile(folder_ / "r_path.cfg"), "font_size=12;\r\nR_prog_path=;\r\n");
  EXPECT_EQ(Cli("settings --font-size -3").status, 2);

  r = Cli("default-variable --min 1 --max 7 --group-type codes --labels '1=low;/7=high;/'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "type: num=1_7;\ngroup type: codes\ngroup labels: 1=low;/7=high;/\n");
  EXPECT_EQ(ReadFile(folder_ / "default.var"), "num=1_7;\r\n1=low;/7=high;/\r\ncodes\r\n");
  r = Cli("default-variable --min 5 --max 1");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("Maximal value must be greater then minimal value."), std::string::npos);
  EXPECT_EQ(ReadFile(folder_ / "default.var"), "num=1_7;\r\n1=low;/7=high;/\r\ncodes\r\n");  // unchanged
  r = Cli("default-variable --group-type none --labels ''");  // the type stays
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(ReadFile(folder_ / "default.var"), "num=1_7;\r\n\r\nnone\r\n");
}

}  // namespace
}  // namespace tarvika
