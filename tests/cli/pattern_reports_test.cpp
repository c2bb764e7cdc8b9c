// The clustering reports through the headless program, each against its report in
// tests/pattern/expected, checked by hand against tests/pattern/data/cluster_check.txt
// (the R commands beside it): merge order, ESSplus, EESS%, the ANOVA of the clusters, the
// point-biserial index, cluster means and SDs, and the relocation's sums of squares.

#include <gtest/gtest.h>

#include <string>

#include "support/cli_runner.h"

namespace tarvika {
namespace {

using PatternReport = test::ReportCase;

class PatternCli : public test::ReportCliTest {
 protected:
  PatternCli() : ReportCliTest("pattern") {}
};

TEST_P(PatternCli, MatchesTheReportCheckedByHand) { ExpectReport(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Reports, PatternCli,
    ::testing::Values(
        // Ward on 11 complete cases (case 9 misses X2), cases 1 and 3 tied, an exact tie of
        // distances at the fourth step.
        PatternReport{"cluster_en_ward.txt", "clusters",
                      "--command 54 --vars X1,X2,X3 --set reportFrom=2 --set reportTo=3 --lang en"},
        // Unstandardized with a constant variable (weight 0), relocation from 3 clusters.
        PatternReport{"cluster_hu_relocation.txt", "clusters",
                      "--command 54 --vars X1,X2,X3,Const --set reportFrom=3 --set reportTo=3 --set relocation=on "
                      "--set standardize=No --lang hu"},
        // By school: average linkage in each conditional group.
        PatternReport{"cluster_en_groups.txt", "clusters",
                      "--command 54 --vars X1,X3 --cond Grp --set method=Average --set reportFrom=2 --set reportTo=2 "
                      "--lang en"},
        // Relocation from the teacher's grouping, and from a Ward solution of 2 clusters.
        PatternReport{"relocate_en_start.txt", "clusters", "--command 55 --vars X1,X2,X3 --group Start --lang en"},
        PatternReport{"relocate_hu_ward.txt", "clusters", "--command 55 --vars X1,X2,X3 --set clusters=2 --lang hu"},
        // Three new pupils (code 0) placed by their nearest classified case: two within the
        // threshold at ASED 0.1893 (1/2.793^2 + 1/1.912^2 + 1/2.453^2) / 3, one beyond it.
        PatternReport{"relocate_en_newcomers.txt", "clusters",
                      "--command 55 --vars X1,X2,X3 --group Newcomer --set saveKMeans=on --set savingThreshold=0.3 --lang en"}),
    test::ReportCaseName);

TEST_F(PatternCli, RefusalsAndTheSavedClusterCode) {
  test::CliResult r = Run("clusters", "--command 54 --vars X1 --set reportFrom=3 --set reportTo=2 --lang en");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("Error: the starting index is larger then the ending one."), std::string::npos);
  r = Run("clusters", "--command 54 --set reportFrom=2 --lang hu");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("Legalább egy változót ki kell választania!"), std::string::npos);
  r = Run("clusters", "--command 56 --vars X1 --lang en");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("Sorry, under construction."), std::string::npos);
  // Only the constant: no weight is left.
  r = Run("clusters", "--command 54 --vars Const,Grp --lang en");
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("Number of different complete cases = 2"), std::string::npos);
  EXPECT_NE(r.out.find("Suggested analysis: Configuration frequency analysis (CFA)"), std::string::npos);

  // Weights of 0 leave nothing to compare.
  r = Run("clusters", "--command 54 --vars X1,X2 --set weight:X1=0 --set weight:X2=0 --lang en");
  EXPECT_EQ(r.status, 0);
  EXPECT_NE(r.out.find("Each variable has zero variance. No analysis is performed."), std::string::npos);
  // The html form draws the fusions: 9 for 10 patterns, the top at Ward's last height 23.296 / 3.
  r = Run("clusters", "--command 54 --vars X1,X2,X3 --format html --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  std::size_t paths = 0;
  for (std::size_t at = r.out.find("<path "); at != std::string::npos; at = r.out.find("<path ", at + 1)) ++paths;
  EXPECT_EQ(paths, 9u);
  EXPECT_NE(r.out.find(">7.765</text>"), std::string::npos);

  // Ward at 2 clusters saved twice: the second name is made free; the missing case stays blank.
  const std::string saved = (folder_ / "saved.msw").string();
  r = Run("clusters", "--command 54 --vars X1,X2,X3 --set reportFrom=2 --set saveCluster=on --save '" + saved + "' --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  r = Cli("run '" + saved + "' --command 54 --vars X1,X2,X3 --set reportFrom=2 --set saveCluster=on --save-in-place --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string project = test::ReadFile(saved);
  EXPECT_NE(project.find("<name>=Clus;"), std::string::npos);
  EXPECT_NE(project.find("<name>=Clus1;"), std::string::npos);
  EXPECT_NE(project.find("<longname>=Hierarchical_Cluster_2;"), std::string::npos);
  // R's cutree at 2: cases 1-3, 7, 8, 11 in the first cluster, the others in the second.
  EXPECT_NE(project.find("\r\n2\t5\t1\t4\t1\t1\t1\t1\t1\r\n"), std::string::npos);
  EXPECT_NE(project.find("\r\n8\t1\t6\t4\t2\t2\t2\t2\t2\r\n"), std::string::npos);
  EXPECT_NE(project.find("\r\n5\t\t3\t4\t2\t3\t3\t\t\r\n"), std::string::npos);

  // The new pupils within the threshold take their neighbour's code, the third stays blank.
  r = Run("clusters", "--command 55 --vars X1,X2,X3 --group Newcomer --set saveKMeans=on --set savingThreshold=0.3 "
                      "--save '" + saved + "' --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string classified = test::ReadFile(saved);
  EXPECT_NE(classified.find("<name>=KClus;"), std::string::npos);
  EXPECT_NE(classified.find("\r\n5\t5\t5\t4\t2\t3\t0\t1\r\n"), std::string::npos);
  EXPECT_NE(classified.find("\r\n1\t6\t2\t4\t1\t1\t0\t1\r\n"), std::string::npos);
  EXPECT_NE(classified.find("\r\n6\t3\t6\t4\t2\t2\t0\t\r\n"), std::string::npos);
}

}  // namespace
}  // namespace tarvika
