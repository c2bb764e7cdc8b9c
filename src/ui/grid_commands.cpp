// The Edit, Data and Variables commands of the main window over the data grid: each takes
// the grid's selection, calls the editing core, records the way back and redraws the grid.

#include <QApplication>
#include <QClipboard>
#include <QItemSelectionModel>
#include <QMenu>

#include <algorithm>
#include <array>

#include "editing/find_cells.h"
#include "editing/sort_cases.h"
#include "editing/table_shape.h"
#include "ui/main_window.h"
#include "ui/qt_text.h"
#include "ui/table_models.h"
#include "ui/typed_lists.h"
#include "workspace/session.h"

namespace tarvika {
namespace {

constexpr std::array<std::string_view, 14> kGridCommands = {
    "edit.undo",         "edit.redo",         "edit.cut",          "edit.copy",        "edit.paste",
    "edit.delete",       "edit.find_replace", "data.insert_cases", "data.delete_cases", "data.go_to_case",
    "data.sort_cases",   "variables.insert",  "variables.delete",  "variables.go_to",
};

// "a, b:desc" into sort keys; nullopt (told) for a name that is no variable or a wrong direction.
std::optional<std::vector<SortKey>> ParseSortKeys(Workspace& ws, const std::string& typed) {
  std::vector<SortKey> keys;
  for (const std::string& item : SplitTyped(typed, ',')) {
    std::size_t colon = item.find(':');
    std::string direction = colon == std::string::npos ? "asc" : item.substr(colon + 1);
    int variable = VariableOfName(ws, item.substr(0, colon));
    if (variable == 0 || (direction != "asc" && direction != "desc")) {
      ws.user.Tell(std::string(ws.Text("A key is VARIABLE, VARIABLE:asc or VARIABLE:desc: ",
                                       "Egy kulcs alakja VÁLTOZÓ, VÁLTOZÓ:asc vagy VÁLTOZÓ:desc: ")) +
                   item);
      return std::nullopt;
    }
    keys.push_back({variable, direction == "desc"});
  }
  return keys;
}

}  // namespace

bool MainWindow::RunsGridCommand(std::string_view command) {
  return std::find(kGridCommands.begin(), kGridCommands.end(), command) != kGridCommands.end();
}

QMenu* MainWindow::GridContextMenu() {
  auto* menu = new QMenu(this);
  const std::array<std::array<const char*, 4>, 4> groups = {{
      {"edit.undo", "edit.redo", nullptr, nullptr},
      {"edit.cut", "edit.copy", "edit.paste", "edit.delete"},
      {"data.insert_cases", "data.delete_cases", "variables.insert", "variables.delete"},
      {"data.sort_cases", "edit.find_replace", nullptr, nullptr},
  }};
  for (const auto& group : groups) {
    if (!menu->isEmpty()) menu->addSeparator();
    for (const char* command : group)
      if (QAction* action = command != nullptr ? MenuAction(command) : nullptr) menu->addAction(action);
  }
  return menu;
}

CellRect MainWindow::GridSelection() const {
  QModelIndexList selected = dataView_->selectionModel()->selectedIndexes();
  QModelIndex current = dataView_->currentIndex();
  if (selected.isEmpty() && current.isValid()) selected << current;
  if (selected.isEmpty()) return CellRect{};
  CellRect rect{selected[0].column() + 1, selected[0].row() + 1, selected[0].column() + 1, selected[0].row() + 1};
  for (const QModelIndex& index : selected) {
    rect.col1 = std::min(rect.col1, index.column() + 1);
    rect.col2 = std::max(rect.col2, index.column() + 1);
    rect.row1 = std::min(rect.row1, index.row() + 1);
    rect.row2 = std::max(rect.row2, index.row() + 1);
  }
  return rect;
}

void MainWindow::AfterGridChange(const CellRect& cursor) {
  dataModel_->Reload();
  variableModel_->Reload();
  FitColumns();
  ShowTitle();
  MoveGridCursor(cursor);
}

void MainWindow::MoveGridCursor(const CellRect& cursor) {
  int row = std::clamp(cursor.row1, 1, std::max(1, dataModel_->rowCount())) - 1;
  int col = std::clamp(cursor.col1, 1, std::max(1, dataModel_->columnCount())) - 1;
  dataView_->setCurrentIndex(dataModel_->index(row, col));
}

bool MainWindow::RunGridCommand(const std::string& name) {
  if (!RunsGridCommand(name)) return false;
  Workspace& ws = session_.ws;
  QWidget* focus = QApplication::focusWidget();
  if (name == "edit.copy" && focus != nullptr && focus != dataView_ && !dataView_->isAncestorOf(focus) &&
      focus->metaObject()->indexOfMethod("copy()") >= 0) {
    // Another pane with a copy of its own has the focus (the results' text, a form's field).
    QMetaObject::invokeMethod(focus, "copy");
    return true;
  }
  const CellRect rect = GridSelection();
  const ActiveTable table = ActiveTable::DataTabl;
  auto markChanged = [&ws] {
    ws.dataChanged = true;
    return true;
  };
  bool changed = false;
  CellRect cursor = rect;
  if (name == "edit.undo" || name == "edit.redo") {
    std::optional<JournalCell> cell = name == "edit.undo" ? journals_.data.Undo(ws) : journals_.data.Redo(ws);
    if (cell) cursor = CellRect{cell->col, cell->row, cell->col, cell->row};
    changed = true;  // a step that changed the tables marked them changed itself
  } else if (name == "edit.copy") {
    QApplication::clipboard()->setText(ToQt(CopyCells(ws, table, rect)));
  } else if (name == "edit.cut") {
    changed = journals_.Around(ws, [&] {
      QApplication::clipboard()->setText(ToQt(CutCells(ws, table, rect)));
      return markChanged();
    });
  } else if (name == "edit.delete") {
    changed = journals_.Around(ws, [&] {
      DeleteCells(ws, table, rect);
      return markChanged();
    });
  } else if (name == "edit.paste") {
    std::string text = ToStd(QApplication::clipboard()->text());
    PasteReach reach = MeasurePaste(ws, table, text, rect.col1, rect.row1);
    Overflow overflow = Overflow::Enlarge;
    if (reach.right || reach.down) {
      // Yes enlarges the table, No cuts what reaches beyond it, Cancel pastes nothing.
      Answer answer = ws.user.AskYesNoCancel(OverflowQuestion(ws) +
                                             std::string(ws.Text("\r\nYes: enlarge the table; No: cut what lies outside; Cancel: don't insert.",
                                                                 "\r\nIgen: a táblázat bővül; Nem: a kilógó rész elmarad; Mégse: nincs beillesztés.")));
      overflow = answer == Answer::Yes ? Overflow::Enlarge : answer == Answer::No ? Overflow::Cut : Overflow::DontInsert;
    }
    changed = journals_.Around(ws, [&] { return PasteCells(ws, table, text, rect.col1, rect.row1, overflow) && markChanged(); });
  } else if (name == "data.insert_cases") {
    int count = rect.row2 - rect.row1 + 1;
    changed = journals_.Around(ws, [&] { return InsertCases(ws, count, CasePlace::BeforeActual, rect.row1); });
  } else if (name == "data.delete_cases") {
    changed = journals_.Around(ws, [&] { return DeleteCases(ws, rect.row1, rect.row2); });
  } else if (name == "variables.insert") {
    int count = rect.col2 - rect.col1 + 1;
    changed = journals_.Around(ws, [&] { return InsertVariables(ws, count, VariablePlace::Before, rect.col1); });
  } else if (name == "variables.delete") {
    changed = journals_.Around(ws, [&] { return DeleteVariables(ws, rect.col1, rect.col2); });
  } else if (name == "data.sort_cases") {
    std::string initial(ws.data.GetCell(rect.col1, 0));
    std::optional<std::string> typed =
        ws.user.AskText(ws.Text("Sort the cases by (name, name:desc, ...):", "Esetek rendezése (név, név:desc, ...):"), initial);
    if (!typed) return true;
    std::optional<std::vector<SortKey>> keys = ParseSortKeys(ws, *typed);
    if (!keys) return true;
    changed = journals_.Around(ws, [&] { return SortCases(ws, *keys); });
  } else if (name == "data.go_to_case") {
    std::optional<std::string> typed = ws.user.AskText(ws.Text("Go to case:", "Ugrás az esethez:"), "");
    if (!typed) return true;
    std::optional<int> found = GoToCase(ws, *typed);
    if (!found) return true;
    cursor = CellRect{rect.col1, *found, rect.col1, *found};
  } else if (name == "variables.go_to") {
    std::optional<std::string> typed = ws.user.AskText(ws.Text("Go to variable (abc, abc*, *abc*):", "Ugrás a változóhoz (abc, abc*, *abc*):"), "");
    if (!typed) return true;
    std::vector<VariableHit> hits = GoToVariable(ws, *typed);
    if (hits.empty()) {
      ws.user.Tell(MatchCount(ws, 0));
      return true;
    }
    if (hits.size() > 1) {
      // Several hits: the list, from which a click leads to the variable.
      std::vector<std::string> lines;
      for (const VariableHit& hit : hits) lines.push_back(hit.line);
      ShowErrorList(lines, true);
    }
    cursor = CellRect{hits[0].variable, rect.row1, hits[0].variable, rect.row1};
  } else if (name == "edit.find_replace") {
    std::optional<std::string> text = ws.user.AskText(ws.Text("Find:", "Keresés:"), "");
    if (!text) return true;
    std::vector<CellHit> hits = FindCells(ws, table, *text, FindScope::Table, rect.col1, rect.row1, FindOptions{});
    std::optional<std::string> replacement =
        hits.empty() ? std::nullopt
                     : ws.user.AskText(MatchCount(ws, hits.size()) + std::string(ws.Text(". Replace with (Cancel: only find):",
                                                                              ". Csere erre (Mégse: csak keresés):")),
                                       "");
    if (hits.empty()) ws.user.Tell(MatchCount(ws, 0));
    if (replacement) {
      changed = journals_.Around(ws, [&] { return ReplaceInCells(ws, table, hits, *text, *replacement, FindOptions{}) > 0 && markChanged(); });
    }
    if (!hits.empty()) cursor = CellRect{hits[0].col, hits[0].row, hits[0].col, hits[0].row};
  }
  if (changed) {
    AfterGridChange(cursor);
  } else if (cursor.row1 != rect.row1 || cursor.col1 != rect.col1) {
    MoveGridCursor(cursor);  // the tables are as they were: no reload, the widths stay
  }
  return true;
}

}  // namespace tarvika
