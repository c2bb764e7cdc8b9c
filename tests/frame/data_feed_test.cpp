#include <gtest/gtest.h>

#include "frame/data_feed.h"
#include "frame/report_writer.h"
#include "support/memory_workspace.h"

namespace tarvika {
namespace {

using testing::CrLfLines;
using testing::Declared;
using testing::MemoryWorkspace;

struct Read {
  double value;
  bool missing;
};

// Reads each cell of column 1 both ways.
void ReadColumn(const MemoryWorkspace& m, std::vector<Read>& byRow, std::vector<Read>& byValue) {
  std::vector<MissingCodes> codes = ParseMissing(const_cast<Workspace&>(m.ws));
  DataFeed feed(m.ws, codes, {0, 1});
  std::vector<double> values(2);
  std::vector<std::uint8_t> missings(2);
  for (int r = 1; r <= m.ws.NumberOfCases(); ++r) {
    feed.ReadRow(r, 1, values, missings);
    byRow.push_back({values[1], missings[1] != 0});
    Read one{};
    feed.ReadValue(r, 1, one.value, one.missing);
    byValue.push_back(one);
  }
}

TEST(DataFeed, TheTwoReadersDifferOnForeignTextOnly) {
  // On a machine with "," as separator: "3.5" fails the parser first.
  MemoryWorkspace m({{"x", "", "", "none", "9"}}, {{""}, {"abc"}, {"3,5"}, {"3.5"}, {"9"}, {"-1e2"}},
                    Language::English, ',');
  std::vector<Read> row, value;
  ReadColumn(m, row, value);
  // ReadRow: empty and foreign text missing, either separator read, the code 9 missing.
  EXPECT_TRUE(row[0].missing);
  EXPECT_TRUE(row[1].missing);
  EXPECT_EQ(row[1].value, 0);
  EXPECT_FALSE(row[2].missing);
  EXPECT_EQ(row[2].value, 3.5);
  EXPECT_FALSE(row[3].missing);
  EXPECT_EQ(row[3].value, 3.5);
  EXPECT_TRUE(row[4].missing);
  EXPECT_EQ(row[5].value, -100);
  // ReadValue: empty still missing, but text that fails the first parse is the valid 0.
  EXPECT_TRUE(value[0].missing);
  EXPECT_FALSE(value[1].missing);
  EXPECT_EQ(value[1].value, 0);
  EXPECT_EQ(value[2].value, 3.5);
  EXPECT_FALSE(value[3].missing);
  EXPECT_EQ(value[3].value, 0);
  EXPECT_TRUE(value[4].missing);
}

TEST(DataFeed, ColumnsConvertedWholeReadAsCellByCell) {
  // Enough rows for the conversion to be shared by two threads: every kind of cell at
  // both ends of each half, read in any order, gives what the cell itself says.
  const int m = 70001;
  std::vector<std::vector<std::string>> rows;
  std::vector<Read> expected;
  for (int r = 1; r <= m; ++r) {
    switch (r % 5) {
      case 0: rows.push_back({""}); expected.push_back({0, true}); break;
      case 1: rows.push_back({"abc"}); expected.push_back({0, true}); break;
      case 2: rows.push_back({"9"}); expected.push_back({9, true}); break;  // the missing code
      case 3: rows.push_back({std::to_string(r) + ",25"}); expected.push_back({r + 0.25, false}); break;
      default: rows.push_back({"-" + std::to_string(r)}); expected.push_back({-1.0 * r, false}); break;
    }
  }
  MemoryWorkspace w({{"x", "", "", "none", "9"}}, rows, Language::English, ',');
  std::vector<MissingCodes> codes = ParseMissing(w.ws);
  DataFeed feed(w.ws, codes, {0, 1});
  for (int r : {m, 1, m / 2, m / 2 + 1, 2, m - 1, 35000}) {
    double value;
    const bool missing = feed.ReadPosition(r, 1, value);
    EXPECT_EQ(missing, expected[r - 1].missing) << r;
    EXPECT_EQ(value, expected[r - 1].value) << r;
  }
  int wrong = 0;
  for (int r = 1; r <= m; ++r) {
    double value;
    wrong += feed.ReadPosition(r, 1, value) != expected[r - 1].missing || value != expected[r - 1].value;
  }
  EXPECT_EQ(wrong, 0);
}

TEST(DataFeed, MissingCodesUseTheToleranceAndRanges) {
  MemoryWorkspace m({{"a", "", "", "none", "9/99"}, {"b", "", "", "none", "90_99/-1"}, {"c", "", "", "none", "1/2/3"}},
                    {});
  std::vector<MissingCodes> codes = ParseMissing(m.ws);
  DataFeed feed(m.ws, codes, {0, 1, 2, 3});
  EXPECT_TRUE(feed.IsMissingCode(1, 9));
  EXPECT_TRUE(feed.IsMissingCode(1, 99));
  EXPECT_TRUE(feed.IsMissingCode(1, 9.000000009));
  EXPECT_FALSE(feed.IsMissingCode(1, 9.00000001));
  EXPECT_FALSE(feed.IsMissingCode(1, 0));
  EXPECT_TRUE(feed.IsMissingCode(2, 95));
  EXPECT_TRUE(feed.IsMissingCode(2, 90));
  EXPECT_TRUE(feed.IsMissingCode(2, 99));
  EXPECT_TRUE(feed.IsMissingCode(2, -1));
  EXPECT_FALSE(feed.IsMissingCode(2, 89.9));
  EXPECT_FALSE(feed.IsMissingCode(2, 99.1));
  EXPECT_TRUE(feed.IsMissingCode(3, 3));
  EXPECT_FALSE(feed.IsMissingCode(3, 4));
}

TEST(GroupDefinition, IntervalBoundsAreWidenedOutsideAndTouchingPairsKept) {
  MemoryWorkspace m({{"g", "", "0_10=a;/10_20=b;/25_30=c;/", "intervals"}}, {});
  GroupDefinition d = GetGroupDefinition(m.ws, 1);
  ASSERT_EQ(d.kind, 2);
  ASSERT_EQ(d.count, 3);
  EXPECT_EQ(FindGroup(d, 0), 1);  // the widened low end
  EXPECT_EQ(FindGroup(d, 10), 1);
  EXPECT_EQ(FindGroup(d, 10.000001), 2);
  EXPECT_EQ(FindGroup(d, 20), 2);
  EXPECT_EQ(FindGroup(d, 22), 0);
  EXPECT_EQ(FindGroup(d, 25), 3);   // a gap widens the low end of the next interval
  EXPECT_EQ(FindGroup(d, 30), 3);
  EXPECT_EQ(FindGroup(d, 30.1), 0);
  EXPECT_EQ(FindGroup(d, -0.01), 0);
}

TEST(GroupDefinition, EqualLabelsMergeAndNamesAreCut) {
  MemoryWorkspace m({{"g", "", "1=x;/2=x;/3=y;/4=a very long label;/", "codes"},
                     {"h", "", "1=x;/", "none"},
                     {"k", "", "", "kódokkal"}},
                    {});
  GroupDefinition d = GetGroupDefinition(m.ws, 1);
  ASSERT_EQ(d.kind, 1);
  EXPECT_EQ(d.count, 4);
  EXPECT_EQ(d.distinct, 3);
  EXPECT_EQ(d.distinctNames, (std::vector<std::string>{"", "x", "y", "a very lon"}));
  EXPECT_EQ(FindMergedGroup(d, 1), 1);
  EXPECT_EQ(FindMergedGroup(d, 2), 1);
  EXPECT_EQ(FindMergedGroup(d, 3), 2);
  EXPECT_EQ(FindMergedGroup(d, 2.5), 0);
  EXPECT_EQ(GetGroupDefinition(m.ws, 2).kind, 0);
  EXPECT_EQ(GetGroupDefinition(m.ws, 3).kind, 0);  // codes without labels
}

TEST(ConditionalGroups, CountsMergedGroupsAndWritesTheBlock) {
  // Code 0 collects the foreign text; 9 is declared missing; 5 is in no group.
  MemoryWorkspace m({{"Smoke", "", "0=NEVER SMOKED;/1=Occas;/2=Heavy;/3=Heavy;/", "codes", "9"}},
                    {{"0"}, {"1"}, {"2"}, {"3"}, {"3"}, {"abc"}, {""}, {"9"}, {"5"}});
  ReportWriter report(m.ws);
  ASSERT_TRUE(report.OpenReport("t"));
  DataFeed feed(m.ws, report.Missing(), {0, 1});
  GroupDefinition d = GetGroupDefinition(m.ws, 1);
  std::vector<int> sizes = CountConditionalGroups(report, feed, d, 1, true);
  report.CloseReport();
  EXPECT_EQ(sizes, (std::vector<int>{0, 2, 1, 3}));
  std::vector<std::string> lines = CrLfLines(m.Output("zuli_akt.txt"));
  std::vector<std::string> block(lines.end() - 8, lines.end());
  std::vector<std::string> expected = {"Conditional grouping variable: Smoke",
                                       "Feltételes csoportosító változó: Smoke",
                                       "",
                                       "Frequencies of conditional groups",
                                       "Index\tGroup name   \tFrequency",
                                       "   1\tNever smok\t2",
                                       "          2\tOccas\t1",
                                       "          3\tHeavy\t3"};
  EXPECT_EQ(block, expected);
  EXPECT_EQ(LowerTail("ÁRVÍZTŰRŐ"), "Árvíztűrő");
}

}  // namespace
}  // namespace tarvika
