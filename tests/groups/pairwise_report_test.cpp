// The printed tables of the pairwise comparisons, from hand-made results, against text
// written out by hand.

#include "groups/pairwise_report.h"

#include <gtest/gtest.h>

#include "frame/report_writer.h"
#include "support/memory_workspace.h"

namespace tarvika {
namespace {

using testing::CrLfLines;
using testing::MemoryWorkspace;

constexpr size_t kBannerLines = 9;  // banner, input file, title and blank line of OpenReport

// The lines that `write` adds to a fresh text report.
template <typename Write>
std::vector<std::string> Written(Language lang, Write write) {
  MemoryWorkspace m({{"y"}}, {{"1"}}, lang);
  ReportWriter report(m.ws);
  EXPECT_TRUE(report.OpenReport("Post hoc"));
  write(report);
  EXPECT_TRUE(report.CloseReport());
  std::vector<std::string> lines = CrLfLines(m.Output("zuli_akt.txt"));
  lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(kBannerLines));
  return lines;
}

TEST(PairwiseReport, TukeyCellsFiveToALine) {
  PairwiseResult result{PairwiseMethod::TukeyKramer, 4, 20, 4,
                        {{1, 2, 3.456, 20, "+ "}, {1, 3, 0.5, 20, "  "}, {1, 4, 12.3, 20, "**"},
                         {2, 3, 99, 20, "**"}, {2, 4, 4.2, 20, "* "}, {3, 4, 1, 20, "  "}}};
  EXPECT_EQ(Written(Language::English, [&](ReportWriter& r) { WritePairwiseComparisons(r, PairwiseKind::Means, result); }),
            (std::vector<std::string>{
                "",
                "Tukey-Kramer pairwise comparison of means (k = 4, df = 20):",
                "    T12= 3.46+ \t    T13= 0.50  \t   T14= 12.30**\t   T23= 99.00**\t    T24= 4.20* ",
                "    T34= 1.00  ",
                "",
            }));
  // Nothing at all without pairs.
  result.pairs.clear();
  EXPECT_TRUE(
      Written(Language::English, [&](ReportWriter& r) { WritePairwiseComparisons(r, PairwiseKind::Means, result); })
          .empty());
}

TEST(PairwiseReport, GamesHowellCellsWithTheirDfFourToALine) {
  PairwiseResult result{PairwiseMethod::GamesHowell, 5, 40, 5,
                        {{1, 2, 5, 8, "* "}, {1, 3, 2.1, 12, "  "}, {1, 4, 10.5, 120, "**"},
                         {1, 5, 3, 9, "+ "}, {2, 3, 0.25, 7, "  "}}};
  EXPECT_EQ(
      Written(Language::English, [&](ReportWriter& r) { WritePairwiseComparisons(r, PairwiseKind::Means, result); }),
      (std::vector<std::string>{
          "",
          "Games-Howell pairwise comparison of means (population variances may differ, df's are in parentheses):",
          "  T12(5; 8)= 5.00* \t T13(5; 12)= 2.10  \t T14(5; 120)= 10.50**\t  T15(5; 9)= 3.00+ ",
          "  T23(5; 7)= 0.25  ",
          "",
      }));
  // With ten or more groups in the table the numbers of a pair are parted by "_".
  PairwiseResult wide{PairwiseMethod::GamesHowell, 3, 30, 12, {{3, 12, 2.5, 17, "  "}, {1, 2, 5, 8, "* "}}};
  EXPECT_EQ(Written(Language::Hungarian,
                    [&](ReportWriter& r) { WritePairwiseComparisons(r, PairwiseKind::TrimmedMeans, wide); }),
            (std::vector<std::string>{
                "",
                "Trimmelt átlagok Games-Howell-féle páronkénti összehasonlítása (elméleti szórások különbözhetnek, "
                "zárójelben a szabadságfokok):",
                " T3_12(3; 17)= 2.50  \t T1_2(3; 8)= 5.00* ",
                "",
            }));
}

TEST(PairwiseReport, LevelHeadingOfGamesHowellHasTheVarianceNoteOnItsOwnLine) {
  EXPECT_EQ(LevelsPairwiseHeading(Language::Hungarian, PairwiseMethod::GamesHowell, false, "B", 3, 40),
            (std::vector<std::string>{"B: szintátlagok Games-Howell-féle páronkénti összehasonlítása",
                                      "(elméleti szórások különbözhetnek, zárójelben a szabadságfokok):"}));
}

TEST(PairwiseReport, EachLevelAgainstTheRest) {
  ScheffeToRestResult result{3, 30,
                             {{1, -1.234, 2.5, {0.0912, "+"}, 0.2}, {2, 0.5, 0.125, {0.8831, ""}, 1},
                              {3, 0.734, 6.25, {0.0054, "**"}, 0.01}}};
  const std::vector<std::string> names = {"Low", "Middle", "Highest"};
  EXPECT_EQ(Written(Language::English, [&](ReportWriter& r) { WriteScheffeToRest(r, false, "AGE", names, result); }),
            (std::vector<std::string>{
                "",
                "Scheffé-type comparison of each group mean to the rest for factor: AGE",
                "Index\tGroup name   \tEffect\tF(2; 30)\tp-value",
                "1\tLow                   \t-1.23\t2.500\t        0.0912+",
                "2\tMiddle          \t0.50\t0.125\t        0.8831",
                "3\tHighest       \t0.73\t6.250\t        0.0054**",
                "",
            }));
  const std::vector<std::string> hungarian =
      Written(Language::Hungarian, [&](ReportWriter& r) { WriteScheffeToRest(r, true, "KOR", names, result); });
  ASSERT_EQ(hungarian.size(), 7u);
  EXPECT_EQ(hungarian[1],
            "KOR: trimmelt szintátlagok egyenkénti Scheffé-féle összehasonlítása a trimmelt összátlaggal");
  EXPECT_EQ(hungarian[2], "Index\tCsoportnév   \tHatás\tF(2; 30)\tp-érték");
}

}  // namespace
}  // namespace tarvika
