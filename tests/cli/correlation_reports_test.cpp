// The bivariate correlation and correlation matrix reports through the headless program,
// each against its report in tests/relations/expected, checked by hand against
// tests/relations/data/correlation_check.txt and correlation_matrix_check.txt (the R
// commands beside them).

#include <gtest/gtest.h>

#include <string>

#include "support/cli_runner.h"

namespace tarvika {
namespace {

using CorrelationReport = test::ReportCase;

class CorrelationCli : public test::ReportCliTest {
 protected:
  CorrelationCli() : ReportCliTest("relations") {}
};

TEST_P(CorrelationCli, MatchesTheReportCheckedByHand) { ExpectReport(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Reports, CorrelationCli,
    ::testing::Values(
        // Every X with every Y, the basic statistics, p values in the summary, 90% limits
        // and the 10% winsorized r; Pulse's missing code 999 leaves its case out.
        CorrelationReport{"survey_corr_en.txt", "survey",
                          "--command 31 --vars Height,Pulse --y Wr.Hnd,Age --set trimmingPercent=10 "
                          "--set confidence=90 --set basicStatistics=on --set listPValues=on --lang en"},
        // By sex with 99% limits, and the equality of r across the sexes.
        CorrelationReport{"survey_corr_hu_sex.txt", "survey",
                          "--command 31 --vars Height --y Wr.Hnd,Age --cond Sex --set confidence=99 "
                          "--set compareConditionalGroups=on --lang hu"},
        // Groups of 2, 3, 4 and 9 cases: too few, no Rpb below 4, p = 1 for tau below 5,
        // the exact markers of tau with ties, a constant Y, a perfect line.
        CorrelationReport{"correlation_en_corners.txt", "correlation",
                          "--command 31 --vars X --y Y,Const,Twice --cond Grp --set basicStatistics=on --lang en"},
        // Paired lists, a constant X, winsorizing 25%, local lines of the smallest window.
        CorrelationReport{"correlation_hu_pair.txt", "correlation",
                          "--command 31 --vars X,Const --y Y,Twice --set pairing=Pair --set trimmingPercent=25 "
                          "--set localCorrelations=Yes --set bivariatePlot=Yes --lang hu"},
        // Local lines of a window of 62 cases along Height.
        CorrelationReport{"survey_corr_en_local.txt", "survey",
                          "--command 31 --vars Height --y Wr.Hnd --set localCorrelations=Yes --set localRange=2 --lang en"},
        // Three X and two Y variables can't be paired.
        CorrelationReport{"correlation_en_refused.txt", "correlation",
                          "--command 31 --vars Grp,X,Y --y Const,Twice --set pairing=Pair --lang en"},
        // The matrices (checked against tests/relations/data/correlation_matrix_check.txt):
        // Pearson with the basic statistics, the p values, the four largest and Bartlett's test.
        CorrelationReport{"survey_matrix_en.txt", "survey",
                          "--command 32 --vars Wr.Hnd,NW.Hnd,Height,Age --set listPValues=on --set basicStatistics=on "
                          "--set listCorrelations=Yes --set listLength=4 --lang en"},
        // Spearman's partial coefficients with Height held constant.
        CorrelationReport{"survey_matrix_hu_partial.txt", "survey",
                          "--command 32 --vars Wr.Hnd,NW.Hnd,Age --cov Height --set listPValues=on "
                          "--set 'correlationType=Spearman rho' --lang hu"},
        // X by Y, tau-b and tau, listed from the smallest signed value.
        CorrelationReport{"survey_matrix_en_kendall.txt", "survey",
                          "--command 32 --vars Wr.Hnd,NW.Hnd --y Height,Age --set 'correlationType=Kendall tau' "
                          "--set listPValues=on --set listCorrelations=Yes --set listByAbsoluteValue=off "
                          "--set listDescending=off --lang en"},
        // Groups of 2 to 9 cases: N below 3, approximate p values in parentheses, and a
        // variable that is a line of another makes the matrix singular.
        CorrelationReport{"correlation_matrix_en_corners.txt", "correlation",
                          "--command 32 --vars X,Y,Twice --cond Grp --set listPValues=on "
                          "--set 'correlationType=Kendall tau' --set compareConditionalGroups=on --lang en"},
        // The sexes compared: the standardized differences of their r.
        CorrelationReport{"survey_matrix_hu_sex.txt", "survey",
                          "--command 32 --vars Wr.Hnd,NW.Hnd,Height --cond Sex --set compareConditionalGroups=on --lang hu"},
        // Paired lists: only X[i] with Y[i], listed and compared between the sexes.
        CorrelationReport{"survey_matrix_en_pair.txt", "survey",
                          "--command 32 --vars Wr.Hnd,Height --y NW.Hnd,Age --set pairing=Pair --set listPValues=on "
                          "--set listCorrelations=Yes --cond Sex --set compareConditionalGroups=on --lang en"},
        CorrelationReport{"correlation_matrix_en_refused.txt", "correlation", "--command 32 --vars X --lang en"}),
    test::ReportCaseName);

TEST_F(CorrelationCli, HtmlShowsTheScatterPlotOfEachMeasuredPair) {
  const test::CliResult r = Cli("run '" + ProjectPath("correlation") +
                                "' --command 31 --vars X --y Const,Twice --set bivariatePlot=Yes --format html --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  // The constant pair has no plot; the line of X and Twice has its 18 points.
  EXPECT_EQ(r.out.find("<svg"), r.out.rfind("<svg"));
  EXPECT_NE(r.out.find("<svg"), std::string::npos);
  std::size_t points = 0;
  for (std::size_t at = r.out.find("<circle"); at != std::string::npos; at = r.out.find("<circle", at + 1)) ++points;
  EXPECT_EQ(points, 18u);
  EXPECT_NE(r.out.find("No plot is made for this pair of variables."), std::string::npos);
}

TEST_F(CorrelationCli, SavesTheRegressionEstimateOfEachPair) {
  const std::string saved = (folder_ / "saved.msw").string();
  const test::CliResult r = Cli("run '" + ProjectPath("correlation") +
                                "' --command 31 --vars X --y Twice --cond Grp --set saveRegression=Yes "
                                "--set regressionName=Est --save '" + saved + "' --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string project = test::ReadFile(saved);
  EXPECT_NE(project.find("<name>=Est;"), std::string::npos);
  EXPECT_NE(project.find("<longname>=Regression estimate of Twice from X;"), std::string::npos);
  // Twice = 2 X + 1 in every group except the first, whose two cases are too few: its
  // estimate stays empty. The last case of the data (X = 6) gets 13.
  const std::size_t data = project.find("<datamatrix>=;");
  ASSERT_NE(data, std::string::npos);
  EXPECT_NE(project.find("1\t1\t2\t7\t3\t\r\n", data), std::string::npos);
  EXPECT_NE(project.find("4\t6\t\t7\t13\t13\r\n", data), std::string::npos);
}

}  // namespace
}  // namespace tarvika
