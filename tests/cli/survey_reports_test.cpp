// The reports of the single-sample commands on the survey, through the headless program,
// each against its report in tests/single/expected, checked by hand against
// tests/single/data/survey_check.txt and survey_modes_check.txt (the R commands beside them).

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "support/cli_runner.h"

namespace tarvika {
namespace {

struct SurveyReport {
  const char* expected;  // the file of tests/single/expected; also names the test
  std::string args;      // after "run survey.msw"
  bool copied = false;   // the report goes to a file by --out, standard output stays empty
};

void PrintTo(const SurveyReport& report, std::ostream* out) { *out << report.expected; }

class CliReport : public test::CliTest, public ::testing::WithParamInterface<SurveyReport> {};

TEST_P(CliReport, MatchesTheReportCheckedByHand) {
  const SurveyReport& c = GetParam();
  // The language of the settings file applies where --lang is not given.
  std::ofstream(folder_ / "Tarvika.cfg") << "nyelv=angol;\r\n";
  const std::string copy = (folder_ / "copy").string();
  test::CliResult r = Cli("run " + Survey() + " " + c.args + (c.copied ? " --out '" + copy + "'" : ""));
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string expected = Expected(c.expected);
  if (c.copied) {
    EXPECT_TRUE(r.out.empty());
    EXPECT_EQ(WithoutProjectPath(test::ReadFile(copy)), expected);
  } else {
    EXPECT_EQ(WithoutProjectPath(r.out), expected);
  }
  // The report file of the program folder holds the same text, in the code page of the
  // project files: the same bytes where the text is plain ASCII.
  const bool ascii = std::all_of(expected.begin(), expected.end(), [](char ch) { return (ch & 0x80) == 0; });
  const std::string file = std::string(c.expected).ends_with(".html") ? "zuli_akt.html" : "zuli_akt.txt";
  if (ascii) {
    EXPECT_EQ(WithoutProjectPath(test::ReadFile(folder_ / "output" / file)), expected);
  }
}

const std::string kHypothetical = " --set hypotheticalValue:Pulse=72 --set hypotheticalValue:Height=170";

INSTANTIATE_TEST_SUITE_P(
    Survey, CliReport,
    ::testing::Values(
        SurveyReport{"survey_en_smoke.txt", "--command 11 --vars Wr.Hnd,NW.Hnd,Pulse,Height,Age --cond Smoke --lang en"},
        SurveyReport{"survey_hu_age.html", "--command 11 --vars Age,Height,Pulse --cond Age --lang hu --format html"},
        SurveyReport{"survey_en.txt", "--command 11 --vars Pulse,Sex", true},
        SurveyReport{"survey_m12_en.txt", "--command 12 --vars Sex,Wr.Hnd,NW.Hnd,Pulse,Height,Age --lang en"},
        SurveyReport{"survey_m12_hu_trim.txt",
                     "--command 12 --vars Pulse,Age --set trimmingPercent=10 --set confidenceIndex=2 --lang hu"},
        SurveyReport{"survey_m13_en.html",
                     "--command 13 --vars Pulse,Exer,Smoke --set scaleType:Exer=discrete "
                     "--set scaleType:Smoke=group.def. --set testEqualFrequencies=on --lang en --format html"},
        SurveyReport{"survey_m13_hu_sex.txt",
                     "--command 13 --vars Exer,Age,Height --set scaleType:Exer=discrete --set scaleType:Age=group.def. "
                     "--set binarize=on --set classMultiplier=2 --cond Sex --lang hu"},
        SurveyReport{"survey_m14_en.txt",
                     "--command 14 --vars Pulse,Height,Exer" + kHypothetical + " --set trimmingPercent=10 --lang en"},
        SurveyReport{"survey_m14_hu.txt", "--command 14 --vars Pulse,Height" + kHypothetical + " --lang hu"},
        SurveyReport{"survey_m15_en_sex.txt", "--command 15 --vars Pulse,Height,Wr.Hnd --cond Sex --lang en"},
        SurveyReport{"survey_m15_hu.txt",
                     "--command 15 --vars Pulse,Height --set saveStandardized=yes --set standardizedKind=2 --lang hu"}),
    [](const ::testing::TestParamInfo<SurveyReport>& info) {
      std::string name = info.param.expected;
      std::replace(name.begin(), name.end(), '.', '_');
      return name;
    });

}  // namespace
}  // namespace tarvika
