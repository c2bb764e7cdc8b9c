#include "editing/cell_journal.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "workspace/project_file.h"

namespace tarvika {

std::string CellJournal::FormatEntry(int col, int row, std::string_view text) {
  return fmt::format("[{};{}]{}", col, row, text);
}

std::optional<JournalCell> CellJournal::ParseEntry(std::string_view entry) {
  std::size_t close = entry.find(']');
  std::size_t semi = entry.find(';');
  if (entry.empty() || entry[0] != '[' || close == std::string_view::npos || semi > close) return std::nullopt;
  auto col = ParseStrictInt(entry.substr(1, semi - 1));
  auto row = ParseStrictInt(entry.substr(semi + 1, close - semi - 1));
  if (!col || !row) return std::nullopt;
  return JournalCell{*col, *row, std::string(entry.substr(close + 1))};
}

void CellJournal::Record(int col, int row, std::string_view text) {
  std::string entry = FormatEntry(col, row, text);
  if (entries_[position_].text == entry && !entries_[position_].snapshot) return;
  entries_.insert(entries_.begin() + position_ + 1, Entry{std::move(entry), nullptr});
  ++position_;
}

void CellJournal::RecordSnapshot(std::shared_ptr<const TableSnapshot> snapshot) {
  if (entries_[position_].snapshot == snapshot) return;
  entries_.insert(entries_.begin() + position_ + 1, Entry{std::string(), std::move(snapshot)});
  ++position_;
}

std::optional<JournalCell> CellJournal::Undo(Workspace& ws) { return Step(ws, -1); }

std::optional<JournalCell> CellJournal::Redo(Workspace& ws) { return Step(ws, +1); }

std::optional<JournalCell> CellJournal::Step(Workspace& ws, int direction) {
  while (direction < 0 ? CanUndo() : CanRedo()) {
    position_ += direction;
    Applied applied = Apply(ws, entries_[position_]);
    if (applied.changed) return applied.cell;
  }
  return std::nullopt;
}

CellJournal::Applied CellJournal::Apply(Workspace& ws, const Entry& entry) const {
  if (entry.snapshot) {
    if (SameCells(ws.data, entry.snapshot->data) && SameCells(ws.vars, entry.snapshot->vars)) return {};
    ws.data = entry.snapshot->data;
    ws.vars = entry.snapshot->vars;
    ws.dataChanged = true;
    return {true, std::nullopt};
  }
  auto cell = ParseEntry(entry.text);
  if (!cell) return {};
  StringTable& t = TableOf(ws, table_);
  if (cell->col < 0 || cell->row < 0 || cell->col >= t.ColCount() || cell->row >= t.RowCount()) return {};
  if (t.GetCell(cell->col, cell->row) == cell->text) return {};
  t.SetCell(cell->col, cell->row, cell->text);
  if (table_ == ActiveTable::VarTabl && cell->col == kShortName && cell->row >= 1) {
    ws.data.SetCell(cell->row, 0, cell->text);
  }
  ws.dataChanged = true;
  return {true, std::move(cell)};
}

std::shared_ptr<const TableSnapshot> Journals::SnapshotOfPresentTables(const Workspace& ws) const {
  for (const CellJournal* j : {&data, &vars}) {
    const auto& here = j->SnapshotHere();
    if (here && SameCells(here->data, ws.data) && SameCells(here->vars, ws.vars)) return here;
  }
  return nullptr;
}

std::filesystem::path UndoFolder(const Workspace& ws) { return std::filesystem::path(ws.programFolder) / "undo"; }

namespace {

std::filesystem::path UndoCopyPath(const Workspace& ws, std::string_view name) {
  std::filesystem::path file(std::string{name});
  file.replace_extension(".und");
  return UndoFolder(ws) / file.filename();
}

}  // namespace

std::vector<std::string> UndoCopies(const Workspace& ws) {
  std::vector<std::string> names;
  std::error_code ec;
  for (const auto& e : std::filesystem::directory_iterator(UndoFolder(ws), ec)) {
    if (e.path().extension() == ".und") names.push_back(e.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool UndoCopyExists(const Workspace& ws, std::string_view name) {
  std::error_code ec;
  return std::filesystem::exists(UndoCopyPath(ws, name), ec);
}

std::string UndoCopyExistsWarning(const Workspace& ws) {
  return std::string(ws.Text("the file exsists . . .\r\n. . . overwrite it ?", "a fájl létezik . . .\r\n. . . felülírja ?"));
}

bool SaveUndoCopy(Workspace& ws, std::string_view name) {
  std::error_code ec;
  std::filesystem::create_directories(UndoFolder(ws), ec);
  // A copy is not the project: its title, known file, changed state and the list of recent
  // files stay.
  const std::string title = ws.title;
  const std::string known = ws.knownFile;
  const auto identity = ws.knownFileIdentity;
  const bool changed = ws.dataChanged;
  const std::vector<std::string> recent = LoadRecentFiles(ws);
  bool saved = SaveProject(ws, UndoCopyPath(ws, name).string());
  StoreRecentFiles(ws, recent);
  ws.title = title;
  ws.knownFile = known;
  ws.knownFileIdentity = identity;
  ws.dataChanged = changed;
  return saved;
}

bool RestoreUndoCopy(Workspace& ws, std::string_view name) {
  const std::string path = UndoCopyPath(ws, name).string();
  if (!UndoCopyExists(ws, name)) {
    ws.user.Tell(ws.Text("The file not found!", "A fájl nem található!"));
    return false;
  }
  LoadResult result = LoadProject(ws, path);
  if (result != LoadResult::Loaded) return false;
  ws.title = "Tarvika: ";
  ws.knownFile.clear();
  ws.knownFileIdentity.reset();
  ws.dataChanged = true;
  return true;
}

}  // namespace tarvika
