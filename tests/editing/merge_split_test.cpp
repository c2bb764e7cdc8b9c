#include <gtest/gtest.h>

#include <filesystem>

#include "editing/merge_files.h"
#include "editing/split_file.h"
#include "editing_fixture.h"
#include "workspace/project_file.h"

namespace tarvika {
namespace {

using testing::DataColumn;
using testing::ReferenceProject;
using testing::ReferenceRows;
using Strings = std::vector<std::string>;

const std::vector<std::string> kWorkingTypes{"num=0_0;", "num=0_100;", "string=8;"};
const std::vector<std::string> kAddedTypes{"num=0_0;", "num=0_0;", "string=8;"};

MergeSource SourceOf(const Workspace& ws) {
  MergeSource source;
  source.result = LoadResult::Loaded;
  source.data = ws.data;
  source.vars = ws.vars;
  return source;
}

// The merged table against a CSV of R: the header names the columns, the rows the cases.
void ExpectTable(const TableSnapshot& merged, const std::string& reference) {
  const auto rows = ReferenceRows(reference);
  ASSERT_EQ(merged.data.ColCount(), static_cast<int>(rows[0].size()) + 1);
  ASSERT_EQ(merged.data.RowCount(), static_cast<int>(rows.size()));
  for (std::size_t c = 0; c < rows[0].size(); ++c) {
    EXPECT_EQ(merged.data.GetCell(c + 1, 0), rows[0][c]);
    EXPECT_EQ(merged.vars.GetCell(kShortName, c + 1), rows[0][c]);
    for (std::size_t r = 1; r < rows.size(); ++r) EXPECT_EQ(merged.data.GetCell(c + 1, r), rows[r][c]) << rows[0][c] << " " << r;
  }
}

TEST(Merge, AddingVariablesByAKeyWithDuplicateAndMissingKeysAgreesWithRsMatch) {
  auto working = ReferenceProject("merge_working.csv", kWorkingTypes);
  auto added = ReferenceProject("merge_added.csv", kAddedTypes);
  MergeSource source = SourceOf(added.ws);
  auto plan = StartMergePlan(working.ws, source, MergeMode::AddVariables, {"KEY"});
  ASSERT_TRUE(plan);
  plan->indicator = "matched";
  auto merged = MergeTables(working.ws, source, *plan, "added.msw");
  ASSERT_TRUE(merged);
  TableSnapshot withoutIndicator = *merged;
  withoutIndicator.data.SetColCount(6);
  ExpectTable(withoutIndicator, "merge_by_key.csv");
  // The declarations come with their columns; the indicator marks the cases that found one.
  EXPECT_EQ(merged->vars.GetCell(kType, 2), "num=0_100;");
  EXPECT_EQ(merged->vars.GetCell(kType, 5), "string=8;");
  Strings indicator;
  for (int r = 1; r <= 8; ++r) indicator.emplace_back(merged->data.GetCell(6, r));
  EXPECT_EQ(indicator, (Strings{"1", "1", "1", "1", "0", "0", "0", "1"}));
  EXPECT_EQ(merged->vars.GetCell(kGroupLabels, 6), "0=survey;/1=added;/");
  EXPECT_EQ(merged->vars.GetCell(kLongName, 6), "Indicates the case source");
}

TEST(Merge, AddingCasesStacksPairedColumnsAsRbindDoes) {
  auto working = ReferenceProject("merge_working.csv", kWorkingTypes);
  auto added = ReferenceProject("merge_added.csv", kAddedTypes);
  MergeSource source = SourceOf(added.ws);
  auto plan = StartMergePlan(working.ws, source, MergeMode::AddCases, {});
  ASSERT_TRUE(plan);
  EXPECT_EQ(plan->united[0].Entry(working.ws, source), "key&key");
  EXPECT_EQ(plan->united[3].Entry(working.ws, source), "extra=2;");
  EXPECT_EQ(MergeVariableInfo(working.ws, working.ws.vars, 2), "score: numeric, from 0 to 100");
  EXPECT_EQ(MergeVariableInfo(working.ws, source.vars, 3), "name: text, maximal length=8");
  plan->indicator = "x";
  auto merged = MergeTables(working.ws, source, *plan, "added.msw");
  ASSERT_TRUE(merged);
  TableSnapshot stacked = *merged;
  stacked.data.SetColCount(5);
  ExpectTable(stacked, "merge_cases.csv");
  EXPECT_EQ(merged->data.GetCell(5, 8), "0");
  EXPECT_EQ(merged->data.GetCell(5, 9), "1");
  EXPECT_EQ(merged->data.GetCell(0, 15), "15");
  // A column of the added file alone takes its declarations from there.
  EXPECT_EQ(merged->vars.GetCell(kType, 4), "num=0_0;");
}

TEST(Merge, PairingRenamingAndTheKeyChecks) {
  auto working = ReferenceProject("merge_working.csv", kWorkingTypes);
  auto added = ReferenceProject("merge_added.csv", kAddedTypes);
  MergeSource source = SourceOf(added.ws);
  EXPECT_FALSE(StartMergePlan(working.ws, source, MergeMode::AddVariables, {"key", "name"}));
  EXPECT_EQ(working.user.told.back(), "You can select one variable as key variable.");
  EXPECT_FALSE(StartMergePlan(working.ws, source, MergeMode::AddVariables, {"score"}));
  EXPECT_EQ(working.user.told.back(), "Key variables must be with same short name\r\nin working data file and added data file.");

  auto plan = StartMergePlan(working.ws, source, MergeMode::AddCases, {});
  ASSERT_TRUE(plan);
  // score (working only) and extra (added only) into one column named score.
  ASSERT_TRUE(PairVariables(working.ws, *plan, 1, 3));
  EXPECT_EQ(plan->united.size(), 3u);
  EXPECT_FALSE(RenameUnited(working.ws, *plan, 1, "NAME"));
  EXPECT_EQ(working.user.told.back(), "The new variable name duplicates an existing variable name.\r\nChange the new name: NAME.");
  ASSERT_TRUE(RenameUnited(working.ws, *plan, 1, "points"));
  auto merged = MergeTables(working.ws, source, *plan, "added.msw");
  ASSERT_TRUE(merged);
  EXPECT_EQ(merged->data.Row(0), (Strings{"", "key", "points", "name"}));
  EXPECT_EQ(merged->data.GetCell(2, 8), "70");
  EXPECT_EQ(merged->data.GetCell(2, 9), "200");
  // An indicator named like a column is refused before anything is built.
  plan->indicator = "key";
  EXPECT_FALSE(MergeTables(working.ws, source, *plan, "added.msw"));

  // Without a key the cases are joined by position; the last working case has no partner.
  auto byPosition = StartMergePlan(working.ws, source, MergeMode::AddVariables, {});
  ASSERT_TRUE(byPosition);
  auto joined = MergeTables(working.ws, source, *byPosition, "added.msw");
  ASSERT_TRUE(joined);
  EXPECT_EQ(joined->data.Row(0), (Strings{"", "key", "score", "name", "key0", "extra", "name0"}));
  EXPECT_EQ(joined->data.Row(2), (Strings{"2", "2", "20", "b", "3", "300", "C"}));
  EXPECT_EQ(joined->data.Row(8), (Strings{"8", "7", "70", "g", "", "", ""}));
  UseMergedTables(working.ws, *joined);
  EXPECT_EQ(working.ws.NumberOfVariables(), 6);
  EXPECT_TRUE(working.ws.dataChanged);
}

TEST(Split, WritesChosenVariablesAndCasesWithTheirMissingCodes) {
  auto p = testing::SmallProject();
  const auto a = p.programFolder / "a.msw";
  const auto b = p.programFolder / "b.msw";
  ASSERT_TRUE(SplitFile(p.ws, {a.string(), {3, 1}, 2, 3}, SplitPart{b.string(), {}, 4, 4}));
  testing::MemoryWorkspace loaded({testing::Declared("v")}, {{""}}, Language::English, '.', "editing_loaded");
  ASSERT_EQ(LoadProject(loaded.ws, a.string()), LoadResult::Loaded);
  EXPECT_EQ(loaded.ws.data.Row(0), (Strings{"", "grp", "age"}));
  EXPECT_EQ(loaded.ws.data.Row(1), (Strings{"1", "2", "45"}));
  EXPECT_EQ(loaded.ws.data.Row(2), (Strings{"2", "1", ""}));
  EXPECT_EQ(loaded.ws.vars.GetCell(kMissing, 2), "99");
  EXPECT_EQ(loaded.ws.vars.GetCell(kGroupLabels, 1), "1=low;/2=high;/");
  ASSERT_EQ(LoadProject(loaded.ws, b.string()), LoadResult::Loaded);
  EXPECT_EQ(loaded.ws.data.Row(1), (Strings{"1", "27", "Dani", ""}));
  EXPECT_EQ(loaded.ws.vars.GetCell(kMissing, 1), "99");
  // The workspace is not changed.
  EXPECT_EQ(p.ws.NumberOfCases(), 4);
  EXPECT_EQ(p.ws.CurrentFileName(), "/data/survey.msw");

  const auto c = p.programFolder / "c.msw";
  EXPECT_FALSE(SplitFile(p.ws, {c.string(), {}, 3, 9}));
  EXPECT_EQ(p.user.told.back(),
            "You can write integer (whole number) from 1 to 4!\r\nYou have 4 rows (cases) in your current data table!");
  EXPECT_FALSE(SplitFile(p.ws, {c.string(), {}, 0, 0}, SplitPart{"", {}, 0, 0}));
  EXPECT_EQ(p.user.told.back(), "You must select a target file name!");
  EXPECT_FALSE(std::filesystem::exists(c));
}

}  // namespace
}  // namespace tarvika
