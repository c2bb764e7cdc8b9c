#pragma once
// The main window: the two table pages, the menu bar built from the core's menu, the
// status line, and the commands of the menu.

#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QTranslator>
#include <QTabWidget>
#include <QTableView>

#include <map>
#include <optional>

#include "editing/cell_journal.h"
#include "editing/clipboard.h"
#include "frame/dialog_parameters.h"
#include "lang/language_files.h"

namespace tarvika {

class Session;
class DataMatrixModel;
class VariableTableModel;
class AnalysisForm;
class ResultsPane;
class ReportWindow;
class RecentFilesWindow;
class MergeDialog;
class SplitDialog;
class UndoCopyDialog;
class ErrorListWindow;

class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  explicit MainWindow(Session& session, QWidget* parent = nullptr);
  ~MainWindow() override;

  // Runs a menu command by its name ("file.open", "settings.language", ...).
  void RunCommand(const QString& command);
  // Opens a project as the Open command does, without the file dialog; a text, spreadsheet
  // or SPSS file is imported into an untitled project.
  bool OpenFile(const QString& path);
  // Writes the data as the export entry does, without the file dialog: "file.export_spss"
  // writes a .sav file, or for a .sps path the syntax with its fixed-column data file
  // (the same name, .txt); "file.export_tab" the tab-delimited data table.
  bool ExportData(const QString& command, const QString& path);
  // Everything shown changed (load, new, language): rebuild views, menus and title.
  void Refresh();

  QTabWidget* Pages() const { return pages_; }
  QTableView* DataView() const { return dataView_; }
  QTableView* VariableView() const { return variableView_; }
  const LanguageTexts* Texts() const { return texts_ ? &*texts_ : nullptr; }
  // The forms of the window, made when first needed: one analysis form per dialog kind.
  AnalysisForm* Form(DialogKind kind);
  ReportWindow* Reports();
  // The results pane beside the data (a dock), with every run of the session.
  ResultsPane* Results() const { return results_; }
  QDockWidget* ResultsDock() const { return resultsDock_; }
  // The menu action of a command, or nullptr.
  QAction* MenuAction(const QString& command) const;
  QMenu* RecentMenu() const { return recentMenu_; }
  // The status bar's progress of long work, and its Cancel (analyses stop at their next message).
  QProgressBar* Progress() const { return progress_; }
  QPushButton* CancelButton() const { return cancel_; }
  // The dialog of a declaration cell (type, group labels, missing codes) of a variable;
  // true when the cell changed.
  bool EditDeclaration(int variable, int column);
  RecentFilesWindow* RecentFiles();
  // Whether RunCommand does the work of a menu entry (else it answers "Sorry, under
  // construction."): its own entries, the analysis dialogs and those below.
  static bool Runs(std::string_view command);
  // The commands of the Edit, Data and Variables menus the window runs over the data grid.
  static bool RunsGridCommand(std::string_view command);
  // File ▸ Export.
  static bool RunsExchangeCommand(std::string_view command);
  // The grid's context menu: the menu bar's actions of those commands (the caller owns it).
  QMenu* GridContextMenu();
  // The Transformations entries the window runs.
  static bool RunsTransformCommand(std::string_view command);
  // The entries of the window that open a dialog over the editing core: merge, split,
  // verification and its error list, cell control, the project copies of the folder "undo".
  static bool RunsEditingDialogCommand(std::string_view command);

  // The dialogs of those entries, shown (window-modal, gone when closed). The merge with the
  // file to add, without the file dialog ("data.merge_cases" or "data.merge_variables";
  // nullptr when the file could not be read, told).
  MergeDialog* OpenMerge(const QString& command, const QString& path);
  SplitDialog* OpenSplit();
  UndoCopyDialog* OpenUndoCopies(bool restore);
  // The error list ("Hibalista"): the last verification's lines, or the hits of a search
  // for variables.
  ErrorListWindow* ErrorList();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildMenus();
  void ApplyFontSize();
  // The columns' widths from the font and the cells (a reload forgets them).
  void FitColumns();
  void ShowStatus(std::string_view text, std::string_view window = "MainForm");
  bool SaveAs();
  void ShowReportFile(const std::string& path);
  void ResetDialogs();
  void ShowTitle();
  void EndBusy();
  void FillRecentMenu();
  void ExportResults(bool html);
  void ApplyQtTranslations();
  // The grid commands (grid_commands.cpp); false when the name is none of them.
  bool RunGridCommand(const std::string& name);
  // Import through the open command, and the export entries (exchange_commands.cpp).
  bool ImportData(const QString& path);
  bool RunExchangeCommand(const std::string& name);
  // Recode and count (transform_commands.cpp).
  bool RunTransformCommand(const std::string& name);
  // Merge, split, verification, cell control, project copies (editing_dialog_commands.cpp).
  bool RunEditingDialogCommand(const std::string& name);
  // Shows the error list with the lines and puts the cursor where a chosen line leads.
  void ShowErrorList(const std::vector<std::string>& lines, bool variableHits);
  // "Checking of the data enter" for a typed number outside its variable's limits.
  void OfferEntryChoices(int col, int row);
  // "Rename duplicated variables" when two short names are the same (after a load).
  void OfferRenameOfDuplicates();
  // The selected cells of the data grid (the cursor's cell when none is selected).
  CellRect GridSelection() const;
  // After a command changed cells or the tables' shape: the views read the tables again,
  // and the cursor goes to the cell.
  void AfterGridChange(const CellRect& cursor);
  // Puts the grid's cursor in the cell (clamped to the table) when nothing else changed.
  void MoveGridCursor(const CellRect& cursor);

  Session& session_;
  std::optional<LanguageTexts> texts_;
  QTabWidget* pages_ = nullptr;
  QTableView* dataView_ = nullptr;
  QTableView* variableView_ = nullptr;
  DataMatrixModel* dataModel_ = nullptr;
  VariableTableModel* variableModel_ = nullptr;
  QLabel* status_ = nullptr;
  std::map<DialogKind, AnalysisForm*> forms_;
  ResultsPane* results_ = nullptr;
  QDockWidget* resultsDock_ = nullptr;
  QString pendingTitle_, pendingVariables_;  // of the run under way, for the results' outline
  QMenu* recentMenu_ = nullptr;
  std::map<QString, QAction*> actions_;
  QTranslator qtTranslator_;
  bool qtTranslated_ = false;
  ReportWindow* reportWindow_ = nullptr;
  RecentFilesWindow* recentWindow_ = nullptr;
  ErrorListWindow* errorList_ = nullptr;
  bool statusGreen_ = false;
  QProgressBar* progress_ = nullptr;
  QPushButton* cancel_ = nullptr;
  QObject* busyFilter_ = nullptr;  // holds back other input while long work runs
  bool busy_ = false;
  bool cancelAsked_ = false;
  bool htmlReports_ = false;  // the forms write html reports, with figures
  Journals journals_;         // undo and redo of the data grid
};

}  // namespace tarvika
