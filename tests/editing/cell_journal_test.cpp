#include <gtest/gtest.h>

#include "editing/cell_journal.h"
#include "editing/clipboard.h"
#include "editing/table_shape.h"
#include "editing_fixture.h"
#include "workspace/project_file.h"

namespace tarvika {
namespace {

using testing::Dump;
using testing::SmallProject;

// What the grid does when a person types text into a cell: the editor opens on the cell's
// present text, then each keystroke changes it.
void Type(Workspace& ws, CellJournal& journal, ActiveTable table, int c, int r, const std::string& text) {
  StringTable& t = TableOf(ws, table);
  journal.Record(c, r, t.GetCell(c, r));
  for (std::size_t n = 1; n <= text.size(); ++n) {
    t.SetCell(c, r, text.substr(0, n));
    journal.Record(c, r, text.substr(0, n));
  }
}

TEST(CellJournal, TypingLeavesEveryStateAndUndoWalksBack) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  CellJournal journal(ActiveTable::DataTabl);
  EXPECT_FALSE(journal.Undo(ws));  // a fresh session has nothing to undo
  Type(ws, journal, ActiveTable::DataTabl, 1, 3, "12");
  EXPECT_EQ(journal.Count(), 4);
  EXPECT_EQ(journal.EntryText(1), "[1;3]");
  EXPECT_EQ(journal.EntryText(3), "[1;3]12");
  auto cell = journal.Undo(ws);
  ASSERT_TRUE(cell);
  EXPECT_EQ(cell->row, 3);
  EXPECT_EQ(ws.data.GetCell(1, 3), "1");
  journal.Undo(ws);
  EXPECT_EQ(ws.data.GetCell(1, 3), "");
  EXPECT_FALSE(journal.Undo(ws));
  journal.Redo(ws);
  EXPECT_EQ(ws.data.GetCell(1, 3), "1");
  // New text after an undo goes in after the position; the old redo entries stay beyond it.
  Type(ws, journal, ActiveTable::DataTabl, 2, 1, "X");
  EXPECT_EQ(journal.EntryText(journal.Position()), "[2;1]X");
  EXPECT_EQ(journal.EntryText(journal.Count() - 1), "[1;3]12");
  journal.Redo(ws);
  journal.Redo(ws);
  EXPECT_EQ(ws.data.GetCell(1, 3), "12");
  EXPECT_FALSE(journal.CanRedo());
}

TEST(CellJournal, TextsWithBracketsAndSemicolonsReadBackWhole) {
  for (const std::string text : {"a]b", "[3;4]x", ";;", "]", "x[1;2]"}) {
    auto cell = CellJournal::ParseEntry(CellJournal::FormatEntry(12, 345, text));
    ASSERT_TRUE(cell) << text;
    EXPECT_EQ(cell->col, 12);
    EXPECT_EQ(cell->row, 345);
    EXPECT_EQ(cell->text, text);
  }
  EXPECT_FALSE(CellJournal::ParseEntry("3;4]x"));
  EXPECT_FALSE(CellJournal::ParseEntry("[3]x;"));

  auto p = SmallProject();
  CellJournal journal(ActiveTable::DataTabl);
  Type(p.ws, journal, ActiveTable::DataTabl, 2, 2, "[a;b]");
  journal.Undo(p.ws);
  EXPECT_EQ(p.ws.data.GetCell(2, 2), "[a;b");
  journal.Redo(p.ws);
  EXPECT_EQ(p.ws.data.GetCell(2, 2), "[a;b]");
}

TEST(CellJournal, AnEntryPastTheTableChangesNothing) {
  auto p = SmallProject();
  CellJournal journal(ActiveTable::DataTabl);
  journal.Record(3, 4, "old");
  journal.Record(3, 4, "new");
  p.ws.data.SetRowCount(3);  // a smaller project was loaded since
  const std::string before = Dump(p.ws);
  EXPECT_FALSE(journal.Undo(p.ws));
  EXPECT_EQ(Dump(p.ws), before);
}

// Edits, insertions, deletions and pastes in both tables, undone to the start and redone to
// the end in interleaved steps: each way ends on the very same tables.
TEST(CellJournal, InterleavedUndoAndRedoReturnTheTablesExactly) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  Journals j;
  std::vector<std::string> states{Dump(ws)};
  auto done = [&] { states.push_back(Dump(ws)); };

  Type(ws, j.data, ActiveTable::DataTabl, 1, 2, "46");
  done();
  ASSERT_TRUE(j.Around(ws, [&] { return InsertCases(ws, 2, CasePlace::BeforeActual, 2); }));
  done();
  Type(ws, j.data, ActiveTable::DataTabl, 2, 3, "Éva");
  done();
  ASSERT_TRUE(j.Around(ws, [&] { return InsertVariables(ws, 1, VariablePlace::First); }));
  done();
  Type(ws, j.vars, ActiveTable::VarTabl, kShortName, 1, "id");
  done();
  p.user.QueueAnswer(Answer::Yes);
  ASSERT_TRUE(j.Around(ws, [&] { return DeleteCases(ws, 1, 1); }));
  done();
  ASSERT_TRUE(j.Around(ws, [&] { return PasteCells(ws, ActiveTable::DataTabl, "1\t2\r\n3\t4\r\n", 3, 4, Overflow::Enlarge); }));
  done();
  p.user.QueueAnswer(Answer::Yes);
  ASSERT_TRUE(j.Around(ws, [&] { return DeleteVariables(ws, 2, 2); }));
  done();
  Type(ws, j.data, ActiveTable::DataTabl, 3, 1, "z");
  done();
  const std::string last = Dump(ws);

  // Back and forth in uneven steps, then all the way back.
  for (int i = 0; i < 5; ++i) j.data.Undo(ws);
  for (int i = 0; i < 2; ++i) j.data.Redo(ws);
  for (int i = 0; i < 3; ++i) j.data.Undo(ws);
  while (j.data.CanRedo()) j.data.Redo(ws);
  EXPECT_EQ(Dump(ws), last);
  // The declarations' journal undoes the rename of the header; the data journal then walks
  // back past every command.
  j.vars.Undo(ws);
  while (j.data.CanUndo()) j.data.Undo(ws);
  EXPECT_EQ(Dump(ws), states.front());
  while (j.data.CanRedo()) j.data.Redo(ws);
  EXPECT_EQ(Dump(ws), last);
}

// Commands and a typed cell in turn: each undo takes back exactly one of them and each redo
// does it again, through the journal alone; a new command after undos keeps the redo entries.
TEST(CellJournal, OneStepIsOneCommandOrKeystroke) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  Journals j;
  std::vector<std::string> states{Dump(ws)};
  ASSERT_TRUE(j.Around(ws, [&] { return InsertCases(ws, 1, CasePlace::BeforeActual, 1); }));
  states.push_back(Dump(ws));
  ASSERT_TRUE(j.Around(ws, [&] { return InsertVariables(ws, 1, VariablePlace::First); }));
  states.push_back(Dump(ws));
  // The second command's tables before it are the first one's after it: one entry, shared.
  EXPECT_EQ(j.data.Count(), 4);
  Type(ws, j.data, ActiveTable::DataTabl, 1, 1, "7");
  states.push_back(Dump(ws));
  p.user.QueueAnswer(Answer::Yes);
  ASSERT_TRUE(j.Around(ws, [&] { return DeleteCases(ws, 3, 3); }));
  states.push_back(Dump(ws));

  for (int i = static_cast<int>(states.size()) - 2; i >= 0; --i) {
    j.data.Undo(ws);
    EXPECT_EQ(Dump(ws), states[i]) << "undo to " << i;
  }
  EXPECT_FALSE(j.data.CanUndo());
  for (std::size_t i = 1; i < states.size(); ++i) {
    j.data.Redo(ws);
    EXPECT_EQ(Dump(ws), states[i]) << "redo to " << i;
  }
  j.data.Undo(ws);
  j.data.Undo(ws);
  ASSERT_EQ(Dump(ws), states[2]);
  ASSERT_TRUE(j.Around(ws, [&] { return InsertCases(ws, 2, CasePlace::BeforeActual, 1); }));
  j.data.Undo(ws);
  EXPECT_EQ(Dump(ws), states[2]);
  while (j.data.CanRedo()) j.data.Redo(ws);
  EXPECT_EQ(Dump(ws), states.back());
}

TEST(UndoCopies, SavedAndRestoredUnderTheProgramFolder) {
  auto p = SmallProject();
  Workspace& ws = p.ws;
  ws.dataChanged = true;
  const std::string before = Dump(ws);
  EXPECT_FALSE(UndoCopyExists(ws, "before-recode"));
  ASSERT_TRUE(SaveUndoCopy(ws, "before-recode"));
  EXPECT_EQ(ws.CurrentFileName(), "/data/survey.msw");
  EXPECT_TRUE(ws.dataChanged);
  EXPECT_TRUE(UndoCopyExists(ws, "before-recode"));
  EXPECT_EQ(UndoCopies(ws), std::vector<std::string>{"before-recode"});
  EXPECT_TRUE(LoadRecentFiles(ws).empty());  // a copy is no file the person worked on
  ws.data.SetCell(1, 1, "changed");
  ASSERT_TRUE(RestoreUndoCopy(ws, "before-recode"));
  EXPECT_EQ(ws.data.GetCell(1, 1), "31");
  EXPECT_EQ(ws.CurrentFileName(), "");
  EXPECT_FALSE(RestoreUndoCopy(ws, "nothing"));
  EXPECT_EQ(p.user.told.back(), "The file not found!");
}

}  // namespace
}  // namespace tarvika
