#pragma once
// The ways back: a journal of cell states per table that undo and redo walk, whole-table
// states around the commands that change the shape of the tables, and project copies
// (".und" files in the folder "undo" of the program folder).

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editing/editing_tables.h"
#include "workspace/workspace.h"

namespace tarvika {

// Both tables as they were at one moment.
struct TableSnapshot {
  DataMatrix data;
  VariableTable vars;
};

struct JournalCell {
  int col = 0;
  int row = 0;
  std::string text;
};

// An ordered list of entries with a current position; entry 0 is the head, so the journal
// is walked from 1 on. A cell entry reads "[" col ";" row "]" text, the cell's exact text at
// that moment. The coordinates end at the first "]", which no number holds, so a text with
// "[", "]" or ";" in it reads back as it was written.
class CellJournal {
 public:
  explicit CellJournal(ActiveTable table) : table_(table) { entries_.emplace_back(); }

  // The cell editor opened on a cell, or its text changed: the cell's text now. Inserted
  // after the current position unless it equals the entry there; later entries (the redo
  // history) stay beyond it.
  void Record(int col, int row, std::string_view text);
  // A whole-table state, recorded before and after a command that changes the tables' shape;
  // not again when it is the very entry at the current position.
  void RecordSnapshot(std::shared_ptr<const TableSnapshot> snapshot);
  // The whole-table state at the current position, if the entry there is one.
  const std::shared_ptr<const TableSnapshot>& SnapshotHere() const { return entries_[position_].snapshot; }

  // Step back (undo) or on (redo) to the nearest entry that changes the tables, and apply
  // it. Entries that would leave the tables as they are, are passed over: the tables after
  // one command are also those before the next, and the text a cell editor opened on is the
  // cell's text after the last step; so one step takes back, or does again, one command or
  // one keystroke. An entry that points outside the present table changes nothing. The cell
  // to put the cursor in; nullopt when nothing changed or the entry was a whole-table state.
  std::optional<JournalCell> Undo(Workspace& ws);
  std::optional<JournalCell> Redo(Workspace& ws);
  bool CanUndo() const { return position_ > 1; }
  bool CanRedo() const { return position_ + 1 < static_cast<int>(entries_.size()); }

  int Position() const { return position_; }
  int Count() const { return static_cast<int>(entries_.size()); }
  // The written form of entry i (empty for the head and for whole-table states).
  const std::string& EntryText(int i) const { return entries_[i].text; }

  static std::string FormatEntry(int col, int row, std::string_view text);
  static std::optional<JournalCell> ParseEntry(std::string_view entry);

 private:
  struct Entry {
    std::string text;
    std::shared_ptr<const TableSnapshot> snapshot;
  };
  struct Applied {
    bool changed = false;
    std::optional<JournalCell> cell;
  };
  Applied Apply(Workspace& ws, const Entry& entry) const;
  std::optional<JournalCell> Step(Workspace& ws, int direction);

  ActiveTable table_;
  std::vector<Entry> entries_;
  int position_ = 0;
};

// The two journals of the session.
struct Journals {
  CellJournal data{ActiveTable::DataTabl};
  CellJournal vars{ActiveTable::VarTabl};
  CellJournal& Of(ActiveTable table) { return table == ActiveTable::VarTabl ? vars : data; }

  // Runs a command that may change the tables' shape or many cells (insert, delete, paste,
  // sort, replace, merge) so that undo returns to the tables before it and redo to those
  // after it. The command's result is returned; a refused command leaves no entry.
  template <class Command>
  bool Around(Workspace& ws, Command&& command) {
    // Right after another command the tables are those of its "after" entry: shared, not copied.
    std::shared_ptr<const TableSnapshot> before = SnapshotOfPresentTables(ws);
    if (!before) before = std::make_shared<const TableSnapshot>(TableSnapshot{ws.data, ws.vars});
    if (!command()) return false;
    auto after = std::make_shared<const TableSnapshot>(TableSnapshot{ws.data, ws.vars});
    for (CellJournal* j : {&data, &vars}) {
      j->RecordSnapshot(before);
      j->RecordSnapshot(after);
    }
    return true;
  }

 private:
  // The whole-table state at either journal's position when it holds the present tables.
  std::shared_ptr<const TableSnapshot> SnapshotOfPresentTables(const Workspace& ws) const;
};

// The folder "undo" of the program folder: project copies and the cells a paste replaced.
std::filesystem::path UndoFolder(const Workspace& ws);

// Project copies: the ".und" files of the folder "undo" under the program folder, by name.
std::vector<std::string> UndoCopies(const Workspace& ws);
bool UndoCopyExists(const Workspace& ws, std::string_view name);
// The warning the dialog blinks while the chosen name exists.
std::string UndoCopyExistsWarning(const Workspace& ws);
// Saves the workspace as the named copy; the project keeps its own file name.
bool SaveUndoCopy(Workspace& ws, std::string_view name);
// Loads the named copy like a project; the workspace stays untitled so that a save asks.
bool RestoreUndoCopy(Workspace& ws, std::string_view name);

}  // namespace tarvika
