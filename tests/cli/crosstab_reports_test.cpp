// The crosstab reports through the headless program, each against its report in
// tests/relations/expected, checked by hand against tests/relations/data/crosstab_check.txt
// (the R commands beside it).

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/cli_runner.h"

namespace tarvika {
namespace {

using CrosstabReport = test::ReportCase;

class CrosstabCli : public test::ReportCliTest {
 protected:
  CrosstabCli() : ReportCliTest("relations") {}
};

TEST_P(CrosstabCli, MatchesTheReportCheckedByHand) { ExpectReport(GetParam()); }

const std::string kAllSections =
    " --set expectedFrequencies=Yes --set rowPercents=Yes --set columnPercents=Yes --set totalPercents=Yes"
    " --set monotonicityMeasures=Yes --set predictionMeasures=Yes --set compareColumns=Yes --set cohenKappa=Yes";

INSTANTIATE_TEST_SUITE_P(
    Reports, CrosstabCli,
    ::testing::Values(
        // A 2 by 2 table with a zero cell, every section; kappa refused for unlike codes; a
        // single column; the Jaccard matrix leaves the variable of one value out.
        CrosstabReport{"crosstab_en_2x2.txt", "crosstab",
                       "--command 34 --vars A --y B,Const" + kAllSections + " --set jaccardMatrix=Yes --lang en"},
        CrosstabReport{"crosstab_hu_kappa.txt", "crosstab",
                       "--command 34 --vars Rater1 --y Rater2 --set cohenKappa=Yes --set monotonicityMeasures=Yes "
                       "--set predictionMeasures=Yes --set expectedFrequencies=Yes --set compareColumns=Yes --lang hu"},
        // More than 100 columns, then a single row: each pair says why and the next follows.
        CrosstabReport{"crosstab_en_refused.txt", "crosstab", "--command 34 --vars Const --y Many,B --lang en"},
        CrosstabReport{"crosstab_hu_refused.txt", "crosstab", "--command 34 --vars Const --y Many,B --lang hu"},
        // Labelled codes, two codes sharing one label.
        CrosstabReport{"survey_crosstab_en_exer.txt", "survey",
                       "--command 34 --vars Exer --y Smoke --set expectedFrequencies=Yes --set columnPercents=Yes "
                       "--set totalPercents=Yes --set monotonicityMeasures=Yes --set predictionMeasures=Yes "
                       "--set compareColumns=Yes --lang en"},
        // Interval groups.
        CrosstabReport{"survey_crosstab_hu_age.txt", "survey",
                       "--command 34 --vars Age --y Exer --set rowPercents=Yes --set monotonicityMeasures=Yes "
                       "--set predictionMeasures=Yes --set compareColumns=Yes --lang hu"},
        CrosstabReport{"survey_crosstab_en_smoke.html", "survey",
                       "--command 34 --vars Sex --y W.Hnd --cond Smoke --set monotonicityMeasures=Yes --lang en "
                       "--format html"},
        // The one-way comparison writes the crosstab of a nominal dependent.
        CrosstabReport{"survey_m21_en.txt", "survey",
                       "--command 21 --vars Smoke --group Sex --set scaleType:Smoke=nominal --lang en"},
        CrosstabReport{"survey_m21_hu.txt", "survey",
                       "--command 21 --vars Smoke --group Sex --set scaleType:Smoke=nominal --lang hu"}),
    test::ReportCaseName);

TEST_F(CrosstabCli, HundredCategoriesAreAccepted) {
  // 100 values against one: the table is built (and found incomplete), not refused.
  test::CliResult r = Run("crosstab", "--command 34 --vars Hundred --y Const --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("The two-way frequency table is incomplete."), std::string::npos);
  EXPECT_EQ(r.out.find("more than 100"), std::string::npos);
}

}  // namespace
}  // namespace tarvika
