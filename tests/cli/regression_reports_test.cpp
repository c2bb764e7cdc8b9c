// The multiple regression and item analysis reports through the headless program, each
// against its report in tests/relations/expected, checked by hand against
// tests/relations/data/regression_check.txt (the R commands beside it), and the variables
// they save, read back from the saved project.

#include <gtest/gtest.h>

#include <string>

#include "support/cli_runner.h"

namespace tarvika {
namespace {

using RegressionReport = test::ReportCase;

class RegressionCli : public test::ReportCliTest {
 protected:
  RegressionCli() : ReportCliTest("relations") {}
};

TEST_P(RegressionCli, MatchesTheReportCheckedByHand) { ExpectReport(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Reports, RegressionCli,
    ::testing::Values(
        // Stepwise: Wr.Hnd enters, none of the others passes F = 3.84 after it.
        RegressionReport{"survey_regression_en.txt", "survey",
                         "--command 33 --vars Wr.Hnd,NW.Hnd,Pulse,Age --y Height --lang en"},
        // All four entered, with the basic statistics of the complete cases.
        RegressionReport{"survey_regression_hu_forced.txt", "survey",
                         "--command 33 --vars Wr.Hnd,NW.Hnd,Pulse,Age --y Height --set forced=on "
                         "--set basicStatistics=on --lang hu"},
        // A constant independent dropped, AB = A + B left out for its tolerance, a case
        // with B missing left out.
        RegressionReport{"items_regression_en_corners.txt", "items",
                         "--command 33 --vars A,B,AB,Const,D --y C --set forced=on --lang en"},
        // By class: 5 cases for 3 independents (one residual df), and 9 cases.
        RegressionReport{"items_regression_hu_class.txt", "items",
                         "--command 33 --vars A,B,D --y C --cond Grp --set forced=on --lang hu"},
        RegressionReport{"items_regression_en_refused.txt", "items", "--command 33 --y C --lang en"},
        // Three positive items and a negative one, saved and turned around.
        RegressionReport{"items_en.txt", "items",
                         "--command 35 --vars A,B,C --y D --set saveScale=Yes --set convertNegativeItems=on --lang en"},
        // A constant item; items up to 5 where 4 is declared: no conversion.
        RegressionReport{"items_hu_limits.txt", "items",
                         "--command 35 --vars A,Const --y D --set itemMax=4 --set convertNegativeItems=on "
                         "--set scaleName=Mood --lang hu"},
        // By class; no conversion with a conditional variable.
        RegressionReport{"items_en_class.txt", "items",
                         "--command 35 --vars A,B --y D --cond Grp --set convertNegativeItems=on --lang en"},
        RegressionReport{"items_en_refused.txt", "items", "--command 35 --vars A --lang en"}),
    test::ReportCaseName);

TEST_F(RegressionCli, SavedVariablesRoundTripThroughTheProjectFile) {
  const std::string saved = (folder_ / "saved.msw").string();
  test::CliResult r = Cli("run '" + ProjectPath("items") +
                          "' --command 33 --vars A,B,D --y C --set forced=on --set saveRegression=Yes "
                          "--set regressionName=Fit --save '" + saved + "' --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  // The first case: fitted 1.2986 + 0.9392*4 - 0.2925*4 - 0.1172*2 = 3.651 (lm's fitted
  // value 3.6509), its residual -0.6509 over SE 0.6647 is -0.9794; the case with B missing stays empty.
  r = Cli("run '" + saved + "' --command 33 --vars Fit --y C --set forced=on --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("R square = 0.7593"), std::string::npos);  // C on its own estimate
  std::string project = test::ReadFile(saved);
  EXPECT_NE(project.find("<name>=Fit;"), std::string::npos);
  EXPECT_NE(project.find("<name>=StRErr;"), std::string::npos);
  const std::size_t data = project.find("<datamatrix>=;");
  ASSERT_NE(data, std::string::npos);
  EXPECT_NE(project.find("\r\n4\t4\t3\t2\t3\t8\t1\t3.651\t-0.9794\r\n", data), std::string::npos);
  EXPECT_NE(project.find("\r\n4\t\t3\t2\t3\t\t2\t\t\r\n", data), std::string::npos);

  // The sociometric branch is one line, and changes nothing.
  r = Cli("run '" + ProjectPath("items") + "' --command 35 --vars A,B --set sociometric=on --set saveScale=Yes "
          "--save '" + saved + "' --lang hu");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("Elnézést, ez a rész még készül."), std::string::npos);
  EXPECT_EQ(r.out.find("Cronbach"), std::string::npos);

  // The scale keeps its formula as help text; the negative item is turned around.
  r = Cli("run '" + ProjectPath("items") + "' --command 35 --vars A,B,C --y D --set saveScale=Yes "
          "--set convertNegativeItems=on --set scaleName=Joy --save '" + saved + "' --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  project = test::ReadFile(saved);
  EXPECT_NE(project.find("<name>=Joy;"), std::string::npos);
  EXPECT_NE(project.find("<help>=6 + A + B + C - D;"), std::string::npos);
  EXPECT_NE(project.find("$num=5_19;"), std::string::npos);
  // The first case: A 4, B 4, C 3, D 2 turned to 4, scale 15; B missing leaves it empty.
  EXPECT_NE(project.find("\r\n4\t4\t3\t4\t3\t8\t1\t15\r\n"), std::string::npos);
  EXPECT_NE(project.find("\r\n4\t\t3\t4\t3\t\t2\t\r\n"), std::string::npos);
}

}  // namespace
}  // namespace tarvika
