// The entries of the window that open a dialog over the editing core: merge and split of
// files, data verification and its error list, cell control, and the project copies of the
// folder "undo". What changes the tables runs inside the journals, so undo takes it back.

#include <QFileDialog>

#include <algorithm>
#include <array>

#include "editing/verify_data.h"
#include "ui/main_window.h"
#include "ui/merge_dialog.h"
#include "ui/qt_text.h"
#include "ui/split_dialog.h"
#include "ui/table_models.h"
#include "ui/undo_copy_dialog.h"
#include "ui/verification_windows.h"
#include "workspace/session.h"

namespace tarvika {
namespace {

constexpr std::array<std::string_view, 8> kEditingDialogCommands = {
    "data.merge_cases", "data.merge_variables", "data.split", "data.verification", "view.error_list",
    "settings.cell_control", "edit.make_undo_file", "edit.restore_undo_file",
};

// A dialog over the window's tables: nothing else is touched while it is open.
template <class Dialog>
Dialog* ShowModal(Dialog* dialog) {
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowModality(Qt::WindowModal);
  dialog->show();
  return dialog;
}

}  // namespace

bool MainWindow::RunsEditingDialogCommand(std::string_view command) {
  return std::find(kEditingDialogCommands.begin(), kEditingDialogCommands.end(), command) != kEditingDialogCommands.end();
}

MergeDialog* MainWindow::OpenMerge(const QString& command, const QString& path) {
  Workspace& ws = session_.ws;
  const MergeMode mode = command == "data.merge_cases" ? MergeMode::AddCases : MergeMode::AddVariables;
  MergeSource source = ReadMergeSource(ws, ToStd(path), mode);
  EndBusy();
  if (source.result != LoadResult::Loaded) return nullptr;
  auto use = [this](TableSnapshot merged) {
    Workspace& ws = session_.ws;
    journals_.Around(ws, [&] {
      UseMergedTables(ws, std::move(merged));
      return true;
    });
    AfterGridChange(GridSelection());
  };
  return ShowModal(new MergeDialog(ws, mode, std::move(source), ToStd(path), use, this));
}

SplitDialog* MainWindow::OpenSplit() { return ShowModal(new SplitDialog(session_.ws, this)); }

UndoCopyDialog* MainWindow::OpenUndoCopies(bool restore) {
  auto load = [this](const std::string& name) {
    // A copy comes back like a project, but undo can return to the tables before it.
    Workspace& ws = session_.ws;
    bool restored = journals_.Around(ws, [&] { return RestoreUndoCopy(ws, name); });
    EndBusy();
    if (restored) ResetDialogs();
    Refresh();
    if (restored) OfferRenameOfDuplicates();
    return restored;
  };
  return ShowModal(new UndoCopyDialog(session_.ws, restore ? UndoCopyDialog::Mode::Restore : UndoCopyDialog::Mode::Make,
                                      load, this));
}

ErrorListWindow* MainWindow::ErrorList() {
  if (errorList_ == nullptr) {
    errorList_ = new ErrorListWindow(session_.ws, this);
    connect(errorList_, &ErrorListWindow::CellChosen, this, [this](int row, int col) {
      pages_->setCurrentIndex(0);
      MoveGridCursor(CellRect{col, row, col, row});
    });
    connect(errorList_, &ErrorListWindow::VariableChosen, this, [this](int variable) {
      pages_->setCurrentIndex(0);
      const int row = GridSelection().row1;
      MoveGridCursor(CellRect{variable, row, variable, row});
    });
  }
  return errorList_;
}

void MainWindow::ShowErrorList(const std::vector<std::string>& lines, bool variableHits) {
  ErrorList()->Fill(lines, variableHits);
  pages_->setCurrentIndex(0);
  ErrorList()->show();
  ErrorList()->raise();
}

void MainWindow::OfferEntryChoices(int col, int row) {
  auto change = [this, col, row](const std::function<bool()>& command) {
    bool changed = journals_.Around(session_.ws, command);
    if (changed) AfterGridChange(CellRect{col, row, col, row});
    return changed;
  };
  ShowModal(new DataEntryCheckDialog(session_.ws, col, row, change, this));
}

void MainWindow::OfferRenameOfDuplicates() {
  if (DuplicatedVariables(session_.ws).empty()) return;
  auto change = [this](const std::function<bool()>& command) {
    bool changed = journals_.Around(session_.ws, command);
    if (changed) AfterGridChange(GridSelection());
    return changed;
  };
  ShowModal(new ResolveDuplicatesDialog(session_.ws, change, this));
}

bool MainWindow::RunEditingDialogCommand(const std::string& name) {
  if (!RunsEditingDialogCommand(name)) return false;
  Workspace& ws = session_.ws;
  if (name == "data.merge_cases" || name == "data.merge_variables") {
    QString path = QFileDialog::getOpenFileName(this, QString(), ToQt(session_.ProgramPath("dat")), "Tarvika (*.msw)");
    if (!path.isEmpty()) OpenMerge(ToQt(name), path);
  } else if (name == "data.split") {
    OpenSplit();
  } else if (name == "data.verification") {
    // The verification stores cleaned numbers back: a change undo can take back.
    std::vector<VerifyFinding> findings;
    const DataMatrix before = ws.data;
    journals_.Around(ws, [&] {
      findings = VerifyData(ws);
      return !SameCells(before, ws.data);
    });
    AfterGridChange(GridSelection());
    std::vector<std::string> lines;
    for (const VerifyFinding& f : findings) lines.push_back(f.line);
    ShowErrorList(lines, false);
  } else if (name == "view.error_list") {
    ErrorList()->show();
    ErrorList()->raise();
  } else if (name == "settings.cell_control") {
    ShowModal(new CellControlDialog(ws, this));
  } else {
    OpenUndoCopies(name == "edit.restore_undo_file");
  }
  return true;
}

}  // namespace tarvika
