// The one-way comparison of interval dependents through the headless program, each against
// its report in tests/groups/expected, checked by hand against
// tests/groups/data/oneway_check.txt, oneway_ranks_check.txt and survey_oneway_check.txt (the
// R scripts beside them).

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

#include "support/cli_runner.h"

namespace tarvika {
namespace {

// A case's arguments follow "run PROJECT --command 21".
using OneWayReport = test::ReportCase;

class OneWayCli : public test::ReportCliTest {
 protected:
  OneWayCli() : ReportCliTest("groups") {}
};

TEST_P(OneWayCli, MatchesTheReportCheckedByHand) {
  const OneWayReport& c = GetParam();
  ExpectReport({c.expected, c.project, "--command 21 " + c.args});
}

INSTANTIATE_TEST_SUITE_P(
    Reports, OneWayCli,
    ::testing::Values(
        // Four groups of unequal size and spread, then the same with a constant group:
        // Welch and James undefined, the trimmed test refused.
        OneWayReport{"oneway_en_four.txt", "oneway",
                     "--vars Score,Flat --group Group --set trimmingPercent=20 --lang en"},
        // Two groups: t, Welch, the intervals, Yuen.
        OneWayReport{"oneway_hu_two.txt", "oneway",
                     "--vars Time --group Pair --set trimmingPercent=20 --lang hu"},
        // Equal means: t = 0 with p = 1, the intervals keep their width; one group untrimmed;
        // the tail of the comparison of distributions.
        OneWayReport{
            "oneway_en_equal.txt", "oneway",
            "--vars Same --group Pair --set trimmingPercent=10 --set compareDistributions=Yes --lang en"},
        // A group of one case and an empty group; an ordinal dependent of three groups.
        OneWayReport{"oneway_en_single.txt", "oneway",
                     "--vars Score,Time --group Group5 --set scaleType:Time=ordinal --lang en"},
        // Conditional groups: fewer than two groups of two, a group of two cases (too small
        // for the covariance analysis), too few cases.
        OneWayReport{"oneway_en_conditional.txt", "oneway",
                     "--vars Time --group Pair --cov Cov --cond Group5 --lang en"},
        // The covariance analysis: four groups, a case without the covariate; two groups.
        OneWayReport{"oneway_en_covariate.txt", "oneway", "--vars Score --group Group --cov Cov --lang en"},
        OneWayReport{"oneway_hu_covariate.txt", "oneway", "--vars Time --group Pair --cov Cov --lang hu"},
        // The tables across dependents: two groups without and with a covariate, more groups.
        OneWayReport{"oneway_hu_summary_two.txt", "oneway", "--vars Score,Flat,Time --group Pair --lang hu"},
        OneWayReport{"oneway_en_summary_covariate.txt", "oneway",
                     "--vars Score,Flat,Time --group Pair --cov Cov --lang en"},
        OneWayReport{"oneway_en_summary_more.txt", "oneway", "--vars Score,Flat,Cov --group Group --lang en"},
        // Ordinal dependents of two groups: the exact and the normal Mann-Whitney test without
        // ties, then equal rank means with many ties; four groups; within a conditional
        // group, a group of two cases (the exact test only).
        OneWayReport{"oneway_en_ranks_two.txt", "oneway",
                     "--vars Time,Same --group Pair --set scaleType:Time=ordinal --set scaleType:Same=ordinal "
                     "--lang en"},
        OneWayReport{"oneway_en_ranks_four.txt", "oneway",
                     "--vars Score --group Group --set scaleType:Score=ordinal --set compareDistributions=Yes "
                     "--lang en"},
        // The comparison of distributions: two groups cut by cut (Fisher's tests, five cuts at
        // most), three groups of a few values with the chi-square of each cut.
        OneWayReport{"oneway_en_ranks_distributions.txt", "oneway",
                     "--vars Time,Same --group Pair --set scaleType:Time=ordinal --set scaleType:Same=ordinal "
                     "--set compareDistributions=Yes --set maxCutpoints=5 --lang en"},
        OneWayReport{"survey_oneway_en_smoke_distributions.txt", "survey",
                     "--vars Smoke --group Exer --set scaleType:Smoke=ordinal --set compareDistributions=Yes "
                     "--lang en"},
        OneWayReport{"oneway_hu_ranks_conditional.txt", "oneway",
                     "--vars Time --group Pair --cond Group5 --set scaleType:Time=ordinal --lang hu"},
        // The tables across ordinal dependents: two groups, three groups.
        OneWayReport{"oneway_en_ranks_summary.txt", "oneway",
                     "--vars Time,Same,Score --group Pair --set scaleType:Time=ordinal --set scaleType:Same=ordinal "
                     "--set scaleType:Score=ordinal --lang en"},
        OneWayReport{"survey_oneway_en_ranks_summary.txt", "survey",
                     "--vars Smoke,Pulse,Age --group Exer --set scaleType:Smoke=ordinal --set scaleType:Pulse=ordinal "
                     "--set scaleType:Age=ordinal --lang en"},
        // The corners of the rank tests: every value tied, one group entirely above the
        // other (the exact p 2/924, Fligner-Policello and Brunner-Munzel undefined), groups
        // of one (dropped) and two cases (the exact p 2/55).
        OneWayReport{"ranks_corners_en_pair.txt", "ranks_corners",
                     "--vars Tied,Apart --group Pair --set scaleType:Tied=ordinal --set scaleType:Apart=ordinal "
                     "--set compareDistributions=Yes --lang en"},
        OneWayReport{"ranks_corners_en_small.txt", "ranks_corners",
                     "--vars Apart --group Small --set scaleType:Apart=ordinal --lang en"},
        // A grouping variable without group labels: no analysis.
        OneWayReport{"oneway_hu_no_groups.txt", "oneway", "--vars Time --group Score --lang hu"},
        // Only the variables with a test at 1 %.
        OneWayReport{"oneway_en_significant.txt", "oneway",
                     "--vars Score,Flat,Time --group Pair --set significantOnly=on --set significanceLevel=2 "
                     "--lang en"},
        OneWayReport{
            "survey_oneway_en_exer.txt", "survey",
            "--vars Pulse,Height,Smoke --group Exer --cond Sex --set scaleType:Smoke=ordinal --lang en"},
        // The pairwise comparisons of the means and of the adjusted means, in Hungarian.
        OneWayReport{"survey_oneway_hu_covariate.txt", "survey",
                     "--vars Pulse --group Exer --cov Height --lang hu"},
        OneWayReport{"survey_oneway_hu_sex.html", "survey",
                     "--vars Pulse --group Sex --set trimmingPercent=10 --lang hu --format html"}),
    test::ReportCaseName);

// The dialog's checks come before the command is looked up: built or not, a run of the
// group comparison dialog without its grouping variables is refused and writes no report.
TEST_F(OneWayCli, TheDialogsChecksComeBeforeTheCommand) {
  const std::pair<const char*, const char*> cases[] = {
      {"21", "You must select one grouping variable."},
      {"23", "You must select two grouping variables."},
      {"22", "At least two dependent variables have to be selected."},
      {"25", "Sorry, under construction."}};
  for (const auto& [command, message] : cases) {
    SCOPED_TRACE(command);
    test::CliResult r =
        Cli("run '" + ProjectPath("survey") + "' --command " + command + " --vars Pulse --lang en");
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find(message), std::string::npos) << r.err;
    EXPECT_TRUE(r.out.empty());
  }
}

}  // namespace
}  // namespace tarvika
