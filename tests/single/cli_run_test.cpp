#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

struct Result {
  int status = -1;
  std::string out;
  std::string err;
};

// Runs tarvika-cli with the arguments in a program folder of its own.
class CliRun : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() /
              ("tarvika_cli_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  Result Cli(const std::string& args) {
    std::string errFile = (folder_ / "stderr.txt").string();
    std::string command = std::string(TARVIKA_PROGRAM_DIR) + "/tarvika-cli --program-dir '" + folder_.string() +
                          "' " + args + " 2>'" + errFile + "'";
    Result r;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> buffer;
    for (std::size_t n; (n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) r.out.append(buffer.data(), n);
    int status = pclose(pipe);
    r.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.err = Read(errFile);
    return r;
  }
  static std::string Read(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
  }
  static std::string Survey() { return std::string(TARVIKA_SOURCE_DIR) + "/data/dat/survey.msw"; }
  static std::string Expected(const std::string& name) {
    std::string text = Read(std::string(TARVIKA_TEST_DATA) + "/single/expected/" + name);
    std::string crlf;
    for (char c : text) {
      if (c == '\n') crlf.push_back('\r');
      crlf.push_back(c);
    }
    return crlf;
  }
  // The report with the path of the project in it, which differs between machines, made fixed.
  static std::string WithoutProjectPath(std::string report) {
    std::size_t at = report.find(Survey());
    if (at != std::string::npos) report.replace(at, Survey().size(), "survey.msw");
    return report;
  }
  bool ReportWritten() const { return fs::exists(folder_ / "output" / "zuli_akt.txt"); }

  fs::path folder_;
};

TEST_F(CliRun, SurveyReportsMatchTheReportsCheckedByHand) {
  Result en = Cli("run " + Survey() + " --command 11 --vars Wr.Hnd,NW.Hnd,Pulse,Height,Age --cond Smoke --lang en");
  ASSERT_EQ(en.status, 0) << en.err;
  EXPECT_EQ(WithoutProjectPath(en.out), Expected("survey_en_smoke.txt"));
  EXPECT_EQ(WithoutProjectPath(Read(folder_ / "output" / "zuli_akt.txt")), Expected("survey_en_smoke.txt"));

  Result hu = Cli("run " + Survey() + " --command 11 --vars Age,Height,Pulse --cond Age --lang hu --format html");
  ASSERT_EQ(hu.status, 0) << hu.err;
  EXPECT_EQ(hu.out, Expected("survey_hu_age.html"));

  // Without --lang the language of Tarvika.cfg applies; --out copies the report file.
  std::ofstream(folder_ / "Tarvika.cfg") << "nyelv=angol;\r\n";
  std::string copy = (folder_ / "copy.txt").string();
  Result plain = Cli("run " + Survey() + " --command 11 --vars Pulse,Sex --out '" + copy + "'");
  ASSERT_EQ(plain.status, 0) << plain.err;
  EXPECT_TRUE(plain.out.empty());
  EXPECT_EQ(WithoutProjectPath(Read(copy)), Expected("survey_en.txt"));
}

// Modes 12 to 15 on the survey, each report checked by hand against
// data/survey_modes_check.txt (the R commands beside it).
TEST_F(CliRun, SurveyReportsOfTheOtherModesMatchTheReportsCheckedByHand) {
  fs::copy(fs::path(TARVIKA_PROGRAM_DIR) / "stattab", folder_ / "stattab");
  struct Run {
    std::string args, expected;
  };
  const std::string h = " --set hypotheticalValue:Pulse=72 --set hypotheticalValue:Height=170";
  const std::vector<Run> runs = {
      {"--command 12 --vars Sex,Wr.Hnd,NW.Hnd,Pulse,Height,Age --lang en", "survey_m12_en.txt"},
      {"--command 12 --vars Pulse,Age --set trimmingPercent=10 --set confidenceIndex=2 --lang hu", "survey_m12_hu_trim.txt"},
      {"--command 13 --vars Pulse,Exer,Smoke --set scaleType:Exer=discrete --set scaleType:Smoke=group.def. "
       "--set testEqualFrequencies=on --lang en --format html",
       "survey_m13_en.html"},
      {"--command 13 --vars Exer,Age,Height --set scaleType:Exer=discrete --set scaleType:Age=group.def. "
       "--set binarize=on --set classMultiplier=2 --cond Sex --lang hu",
       "survey_m13_hu_sex.txt"},
      {"--command 14 --vars Pulse,Height,Exer" + h + " --set trimmingPercent=10 --lang en", "survey_m14_en.txt"},
      {"--command 14 --vars Pulse,Height" + h + " --lang hu", "survey_m14_hu.txt"},
      {"--command 15 --vars Pulse,Height,Wr.Hnd --cond Sex --lang en", "survey_m15_en_sex.txt"},
      {"--command 15 --vars Pulse,Height --set saveStandardized=yes --set standardizedKind=2 --lang hu",
       "survey_m15_hu.txt"},
  };
  for (const Run& run : runs) {
    Result r = Cli("run " + Survey() + " " + run.args);
    ASSERT_EQ(r.status, 0) << run.args << "\n" << r.err;
    EXPECT_EQ(WithoutProjectPath(r.out), Expected(run.expected)) << run.expected;
  }
}

TEST_F(CliRun, SaveKeepsTheNewVariablesAndMissingTablesStopTheRun) {
  fs::copy(fs::path(TARVIKA_PROGRAM_DIR) / "stattab", folder_ / "stattab");
  const std::string saved = (folder_ / "saved.msw").string();
  const std::string binarize = " --command 13 --vars Exer --set scaleType:Exer=discrete --set binarize=on --set percentile=on";
  Result r = Cli("run " + Survey() + binarize + " --lang en --save '" + saved + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  std::string project = Read(saved);
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
  project = Read(saved);
  EXPECT_NE(project.find("<variables>=14;"), std::string::npos);
  EXPECT_NE(project.find("<name>=ExerP0;"), std::string::npos);

  fs::remove(folder_ / "stattab" / "FTAB.TXT");
  r = Cli("run " + Survey() + " --command 12 --vars Pulse --lang en");
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("File FTAB.TXT is missing. Program stops."), std::string::npos) << r.err;
}

TEST_F(CliRun, InputErrorsExitWithStatusTwoAndWriteNothing) {
  struct Bad {
    std::string args;
    std::string message;
  };
  std::ofstream(folder_ / "bad.msw") << "hello\r\n";
  {
    // Two short names that differ only in case: the dialog closes on opening.
    std::string project = Read(Survey());
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
      {"run " + Survey() + " --command 21 --vars Pulse --group Smoke --lang en", "Sorry, under construction."},
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
      {"run " + (folder_ / "none.msw").string() + " --command 11 --vars Pulse --lang en", ""},
      {"run " + (folder_ / "bad.msw").string() + " --command 11 --vars Pulse --lang en",
       "This is an invalid Tarvika file"},
      {"run " + (folder_ / "twice.msw").string() + " --command 11 --vars Pulse --lang en",
       "Error: identical variable names!"},
      {"run " + Survey() + " --command 11 --vars Pulse --lang de", "--lang"},
      {"run " + Survey() + " --vars Pulse", "--command"},
  };
  for (const Bad& c : cases) {
    Result r = Cli(c.args);
    EXPECT_EQ(r.status, 2) << c.args;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << c.args << "\n" << r.err;
    EXPECT_FALSE(r.err.empty()) << c.args;
    EXPECT_TRUE(r.out.empty()) << c.args;
    EXPECT_FALSE(ReportWritten()) << c.args;
  }
}

}  // namespace

namespace {

TEST_F(CliRun, ProjectsThatCannotBeUsedAreRefusedAndAnUnsavedRunSaysSo) {
  std::ofstream(folder_ / "empty.msw", std::ios::binary)
      << "<Tarvika_for_windows>=2.0;\r\n<variables>=1;\r\n<cases>=0;\r\n#=1;\r\n<name>=x;\r\n$num=0_0;\r\n"
         "<datamatrix>=;\r\n";
  Result r = Cli("info '" + (folder_ / "empty.msw").string() + "'");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.err, "The project has no case; a project has at least one.\n");
  EXPECT_EQ(r.out, "");
  r = Cli("info /dev/zero");
  EXPECT_EQ(r.status, 2);
  EXPECT_EQ(r.err, "This is an invalid Tarvika file: either the file name or the first line is incorrect.\n");

  // One long name of 100,000 characters is printed once, and pads no other row.
  std::string project = Read(Survey());
  project.replace(project.find("<longname>=Sex of the student;"), 30, "<longname>=" + std::string(100000, 'x') + ";");
  std::ofstream(folder_ / "long.msw", std::ios::binary) << project;
  r = Cli("info '" + (folder_ / "long.msw").string() + "'");
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
  Result r = Cli("--progress info " + Survey());
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.err.find(". . . loading (237 case)\n"), std::string::npos) << r.err;
  EXPECT_EQ(Cli("info " + Survey()).err, "");  // not a terminal: quiet unless asked
}

TEST_F(CliRun, SettingsAndTheDefaultVariableAreChangedAsTheMenusChangeThem) {
  fs::create_directories(folder_ / "stattab");
  Result r = Cli("settings --language en --font-size 12");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("language: en\nfont size: 12\n"), std::string::npos) << r.out;
  EXPECT_EQ(Read(folder_ / "Tarvika.cfg").substr(0, 14), "nyelv=angol;\r\n");
  EXPECT_EQ(Read(folder_ / "r_path.cfg"), "font_size=12;\r\nR_prog_path=;\r\n");
  EXPECT_EQ(Cli("settings --font-size -3").status, 2);

  r = Cli("default-variable --min 1 --max 7 --group-type codes --labels '1=low;/7=high;/'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "type: num=1_7;\ngroup type: codes\ngroup labels: 1=low;/7=high;/\n");
  EXPECT_EQ(Read(folder_ / "default.var"), "num=1_7;\r\n1=low;/7=high;/\r\ncodes\r\n");
  r = Cli("default-variable --min 5 --max 1");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("Maximal value must be greater then minimal value."), std::string::npos);
  EXPECT_EQ(Read(folder_ / "default.var"), "num=1_7;\r\n1=low;/7=high;/\r\ncodes\r\n");  // unchanged
  r = Cli("default-variable --group-type none --labels ''");  // the type stays
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(Read(folder_ / "default.var"), "num=1_7;\r\n\r\nnone\r\n");
}

}  // namespace
