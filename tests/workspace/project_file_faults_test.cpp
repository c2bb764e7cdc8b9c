// Project files under faults: impossible counts, files that claim more than they hold,
// saves that were interrupted, two writers of one file, links, and labels with separators.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "project_file_fixture.h"
#include "workspace/project_file.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

std::vector<std::string> FilesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& e : fs::directory_iterator(folder)) names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

TEST_F(ProjectFileTest, CountsNoWorkspaceTakesAreRefusedAndChangeNothing) {
  FillRoundTrip(ws);
  ws.SetCurrentFile("before.msw");
  struct Refusal {
    std::string header;
    std::string message;
  };
  std::string rows;
  for (int r = 0; r < 1001; ++r) rows += "1\r\n";
  const std::vector<Refusal> refusals = {
      {Header(1001, 1), "The project has 1001 variables; a project can hold at most 1000."},
      {Header(1, 1000001), "The project has 1000001 cases; a project can hold at most 1000000."},
      {Header(2, 0), "The project has no case; a project has at least one."},
      {Header(0, 3), "The project has no variable; a project has at least one."},
  };
  for (const Refusal& r : refusals) {
    user.told.clear();
    EXPECT_EQ(LoadProject(ws, Write("limit.msw", r.header + rows)), LoadResult::Refused) << r.message;
    EXPECT_EQ(user.told, std::vector<std::string>{r.message});
    EXPECT_EQ(ws.title, "Tarvika: before.msw");
    EXPECT_EQ(ws.NumberOfVariables(), 4);
    EXPECT_EQ(Cell(4, 1), "Őszi űrlap, árvíztűrő");
    EXPECT_EQ(Decl(kShortName, 3), "jövedel");
  }
  EXPECT_FALSE(fs::exists(dir / "last.mod"));

  ws.SetLanguage(Language::Hungarian);
  user.told.clear();
  EXPECT_EQ(LoadProject(ws, Write("limit.msw", Header(1, 0))), LoadResult::Refused);
  EXPECT_EQ(user.told, std::vector<std::string>{"A projektben nincs eset; egy projektben legalább egy eset van."});

  MergeSource src = ReadMergeSource(ws, Write("limit.msw", Header(1001, 1) + rows), MergeMode::AddVariables);
  EXPECT_EQ(src.result, LoadResult::Refused);
  EXPECT_EQ(user.told.back(), "A projektben 1001 változó van; egy projekt legfeljebb 1000 változót tartalmazhat.");
}

TEST_F(ProjectFileTest, AHeaderClaimingMoreCasesThanTheFileHoldsReservesNoMore) {
  // Ten variables and a million cases claimed, one row given: the tables are never made taller
  // than the file has bytes (80 MB of cells otherwise).
  const std::string claim = Write("claim.msw", Header(10, 1000000) + "1\t2\t3\t4\t5\t6\t7\t8\t9\t10\r\n");
  ASSERT_LT(fs::file_size(claim), 1000u);
  EXPECT_EQ(LoadProject(ws, claim), LoadResult::Damaged);
  EXPECT_LT(ws.data.MemoryBytes(), 200000u);
  EXPECT_LE(ws.NumberOfCases(), 1000);
  EXPECT_EQ(Cell(10, 1), "10");
  ASSERT_EQ(user.told.size(), 1u);
  EXPECT_NE(user.told[0].find("10 of 10 variables and 1 of 1000000 cases"), std::string::npos) << user.told[0];

  // A device or a big file without a line end near its start is no project, and is not read
  // whole looking for a line end.
  for (const std::string& path : {std::string("/dev/zero"), Write("zeros.msw", std::string(1 << 20, '\0'))}) {
    user.told.clear();
    EXPECT_EQ(LoadProject(ws, path), LoadResult::NotAProject) << path;
    EXPECT_EQ(user.told, std::vector<std::string>{
                             "This is an invalid Tarvika file: either the file name or the first line is incorrect."});
  }
}

TEST_F(ProjectFileTest, InterruptedSavesLeaveNothingBehindForLong) {
  FillRoundTrip(ws);
  const std::string target = (dir / "p.msw").string();
  // What interrupted saves left: temporaries of p.msw, one of another file, and one that a
  // running save still holds.
  Write("p.msw.saving-Ab12Cd", "partial");
  Write("p.msw.saving-Ef34Gh", "partial");
  Write("q.msw.saving-Ij56Kl", "another file's");
  Write("p.msw.saving-longer1", "not a temporary's name");
  const std::string held = Write("p.msw.saving-Mn78Op", "being written");
  int holder = ::open(held.c_str(), O_RDONLY);
  ASSERT_GE(holder, 0);
  ASSERT_EQ(::flock(holder, LOCK_EX), 0);

  // While this save writes, its own temporary is there, named after the target, and a
  // clean-up does not take it for a leftover.
  std::vector<std::string> during;
  ws.hooks.progress = [&](std::string_view text, std::string_view) {
    if (!text.empty() && during.empty()) {
      RemoveStaleTemporaries(target);
      during = FilesIn(dir);
    }
  };
  ws.data.SetRowCount(1201);  // progress is shown at each 1000th case
  ASSERT_TRUE(SaveProject(ws, target));
  EXPECT_EQ(std::count(during.begin(), during.end(), "p.msw.saving-Mn78Op"), 1);
  auto ownTemporary = [](const std::string& name) {
    return name.size() == 19 && name.rfind("p.msw.saving-", 0) == 0 && name != "p.msw.saving-Mn78Op";
  };
  EXPECT_EQ(std::count_if(during.begin(), during.end(), ownTemporary), 1);
  EXPECT_EQ(during.size(), 4u);
  EXPECT_EQ(FilesIn(dir), (std::vector<std::string>{"last.mod", "p.msw", "p.msw.saving-Mn78Op", "p.msw.saving-longer1",
                                                    "q.msw.saving-Ij56Kl"}));

  // Once its writer has gone, the next load of the file removes it.
  ::close(holder);
  ASSERT_EQ(LoadProject(ws, target), LoadResult::Loaded);
  EXPECT_EQ(FilesIn(dir),
            (std::vector<std::string>{"last.mod", "p.msw", "p.msw.saving-longer1", "q.msw.saving-Ij56Kl"}));
}

TEST_F(ProjectFileTest, ASaveOverAFileAnotherWriterChangedIsRefused) {
  // Two sessions open the same project; the first saves its change, the second's save would
  // throw that change away and is refused.
  const std::string path = Write("shared.msw", Header(1, 1) + "1\r\n");
  ScriptedChannel user2;
  Workspace other(user2, Language::English, '.');
  other.programFolder = dir.string();
  ASSERT_EQ(LoadProject(ws, path), LoadResult::Loaded);
  ASSERT_EQ(LoadProject(other, path), LoadResult::Loaded);
  ws.data.SetCell(1, 1, "first");
  ASSERT_TRUE(SaveProject(ws, path));
  other.data.SetCell(1, 1, "second");
  user2.told.clear();
  EXPECT_FALSE(SaveProject(other, path));
  ASSERT_EQ(user2.told.size(), 1u);
  EXPECT_EQ(user2.told[0], "The file cannot be written: " + path +
                               "\r\nAnother program has changed it since this project was opened or saved; save "
                               "the project under a new name.");
  EXPECT_NE(ReadBytes(path).find("first"), std::string::npos);
  EXPECT_EQ(FilesIn(dir), (std::vector<std::string>{"last.mod", "shared.msw"}));

  // Under a new name the second session's work is kept; the first goes on saving its file.
  ASSERT_TRUE(SaveProject(other, (dir / "mine.msw").string()));
  ws.data.SetCell(1, 1, "again");
  EXPECT_TRUE(SaveProject(ws, path));
  // A file changed in place (same inode, other size) counts as changed too.
  WriteBytes(path, ReadBytes(path) + "\r\n");
  EXPECT_FALSE(SaveProject(ws, path));
  // One that was removed meanwhile loses nothing when written again.
  fs::remove(path);
  EXPECT_TRUE(SaveProject(ws, path));
}

TEST_F(ProjectFileTest, SavingThroughALinkWritesTheFileItLeadsTo) {
  fs::create_directories(dir / "real");
  fs::create_directories(dir / "links");
  const std::string real = Write("real/p.msw", Header(1, 1) + "1\r\n");
  ::chmod(real.c_str(), 0640);
  const fs::path link = dir / "links" / "p.msw";
  fs::create_symlink("../real/p.msw", link);
  ASSERT_EQ(LoadProject(ws, link.string()), LoadResult::Loaded);
  ws.data.SetCell(1, 1, "42");
  ASSERT_TRUE(SaveProject(ws, link.string()));
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(fs::read_symlink(link), "../real/p.msw");
  EXPECT_NE(ReadBytes(real).find("<datamatrix>=;\r\n42\r\n"), std::string::npos);
  EXPECT_EQ(fs::status(real).permissions() & fs::perms::all,
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  EXPECT_EQ(FilesIn(dir / "links"), std::vector<std::string>{"p.msw"});
  EXPECT_EQ(FilesIn(dir / "real"), std::vector<std::string>{"p.msw"});
  // A link to a file that does not exist yet makes that file.
  fs::create_symlink("../real/new.msw", dir / "links" / "new.msw");
  ASSERT_TRUE(SaveProject(ws, (dir / "links" / "new.msw").string()));
  EXPECT_TRUE(fs::is_symlink(dir / "links" / "new.msw"));
  EXPECT_EQ(ReadBytes(dir / "real" / "new.msw"), ReadBytes(real));
}

TEST_F(ProjectFileTest, LabelsWithSlashesAndLongNumbersSurviveRepeatedSaves) {
  FillRoundTrip(ws);
  ws.vars.SetCell(kGroupLabels, 2, "1=yes/no;/2=n/a;/3=/;/");
  ws.data.SetCell(2, 1, "1234567890123456");
  ws.data.SetCell(2, 2, "-98765432109876543");
  const std::string first = (dir / "first.msw").string(), second = (dir / "second.msw").string();
  ASSERT_TRUE(SaveProject(ws, first));
  EXPECT_NE(ReadBytes(first).find("<labels>=;\r\n1=yes/no;\r\n2=n/a;\r\n3=/;\r\n<help>"), std::string::npos);
  ASSERT_EQ(LoadProject(ws, first), LoadResult::Loaded);
  EXPECT_EQ(Decl(kGroupLabels, 2), "1=yes/no;/2=n/a;/3=/;/");
  // A number of more than 15 digits loses its last digits once, when it is first cleaned,
  // and never again.
  EXPECT_EQ(Cell(2, 1), "1.23456789012346E15");
  EXPECT_EQ(Cell(2, 2), "-9.87654321098765E16");
  ASSERT_TRUE(SaveProject(ws, second));
  const std::string once = ReadBytes(second);
  for (int again = 0; again < 2; ++again) {
    ASSERT_EQ(LoadProject(ws, second), LoadResult::Loaded);
    ASSERT_TRUE(SaveProject(ws, second));
    EXPECT_EQ(ReadBytes(second), once);
  }
}

}  // namespace
}  // namespace tarvika
