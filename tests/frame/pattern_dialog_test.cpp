// The pattern dialog as a parameter set: the names of saved variables made free, the page
// check of the report range before the selection, the roles and weights it writes.

#include <gtest/gtest.h>

#include "analyses/command_table.h"
#include "frame/analysis_dialogs.h"
#include "support/memory_workspace.h"

namespace tarvika {
namespace {

using testing::MemoryWorkspace;

MemoryWorkspace Project(Language lang = Language::English) {
  return MemoryWorkspace({{"x1"}, {"x2"}, {"Clus"}, {"clus1"}, {"Clus3"}, {"KClus22"}, {"start"}, {"g", "", "1=x;/2=y;/", "codes"}},
                         {{"1", "2", "1", "1", "1", "1", "1", "1"}}, lang);
}

TEST(PatternDialog, SaveNamesAreMadeFree) {
  MemoryWorkspace m = Project();
  EXPECT_EQ(UniqueSaveName(m.ws, "Wsum"), "Wsum");
  EXPECT_EQ(UniqueSaveName(m.ws, "clus"), "clus2");       // Clus and clus1 are taken, ignoring case
  EXPECT_EQ(UniqueSaveName(m.ws, "Clus3"), "Clus2");      // trailing digits go first
  EXPECT_EQ(UniqueSaveName(m.ws, "KClus22"), "KClus1");
  EXPECT_EQ(UniqueSaveName(m.ws, "Clusterx"), "Clusterx");
  EXPECT_EQ(UniqueSaveName(m.ws, "X1"), "X11");           // a stem of 4 characters or fewer keeps its digits
}

TEST(PatternDialog, RangeCheckComesFirstThenRolesAndWeights) {
  MemoryWorkspace m = Project(Language::Hungarian);
  AnalysisDialog d(AllCommands(), DialogKind::Pattern);
  EXPECT_EQ(d.commandCode, 51);
  d.commandCode = 54;
  std::string error;
  ASSERT_TRUE(d.Set("reportFrom", "3", Language::English, &error)) << error;
  // No variable either, but the page's check speaks first.
  EXPECT_EQ(PrepareRun(m.ws, d).error, "Hiba: A kezdő index nem lehet nagyobb, mind a záró!");
  ASSERT_TRUE(d.Set("reportFrom", "0", Language::English, &error));  // 0 reads as "to"
  EXPECT_EQ(PrepareRun(m.ws, d).error, "Legalább egy változót ki kell választania!");

  d.selected = {"x1", "x2"};
  d.grouping = {"start", "x2"};  // the first entry only
  d.conditional = "g";
  ASSERT_TRUE(d.SetFor("weight", "x1", "-2,5", Language::English, &error)) << error;
  ASSERT_TRUE(d.Set("saveCluster", "on", Language::English, &error));
  PreparedRun run = PrepareRun(m.ws, d);
  ASSERT_TRUE(run.ok()) << run.error;
  EXPECT_EQ(std::string(run.request.role.begin() + 1, run.request.role.end()), "XX    GN");
  EXPECT_EQ(m.ws.vars.GetCell(kParameter, 1), "-2.5");  // its size is the weight
  EXPECT_EQ(m.ws.vars.GetCell(kParameter, 2), "1");
  ASSERT_TRUE(d.SetFor("weight", "x2", "", Language::English, &error)) << error;  // blank: 1 when read
  EXPECT_FALSE(d.SetFor("weight", "x2", "heavy", Language::English, &error));
  EXPECT_EQ(run.request.parameters.at("clusterName"), "Clus2");
}

}  // namespace
}  // namespace tarvika
