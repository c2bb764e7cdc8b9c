#pragma once
// The main window: the two table pages, the menu bar built from the core's menu, the
// status line, and the commands of the menu.

#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>
#include <QTableView>

#include <optional>

#include "lang/language_files.h"

namespace tarvika {

class Session;
class DataMatrixModel;
class VariableTableModel;
class TKijelolForm;
class ReportWindow;
class RecentFilesWindow;

class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  explicit MainWindow(Session& session, QWidget* parent = nullptr);
  ~MainWindow() override;

  // Runs a menu command by its name ("file.open", "settings.language", ...).
  void RunCommand(const QString& command);
  // Opens a project as the Open command does, without the file dialog.
  bool OpenFile(const QString& path);
  // Everything shown changed (load, new, language): rebuild views, menus and title.
  void Refresh();

  QTabWidget* Pages() const { return pages_; }
  QTableView* DataView() const { return dataView_; }
  QTableView* VariableView() const { return variableView_; }
  const LanguageTexts* Texts() const { return texts_ ? &*texts_ : nullptr; }
  // The forms of the window, made when first needed.
  TKijelolForm* SingleSampleForm();
  ReportWindow* Reports();
  RecentFilesWindow* RecentFiles();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildMenus();
  void ApplyFontSize();
  void ShowStatus(std::string_view text);
  bool SaveAs();
  void ShowReportFile(const std::string& path);
  void ResetDialogs();

  Session& session_;
  std::optional<LanguageTexts> texts_;
  QTabWidget* pages_ = nullptr;
  QTableView* dataView_ = nullptr;
  QTableView* variableView_ = nullptr;
  DataMatrixModel* dataModel_ = nullptr;
  VariableTableModel* variableModel_ = nullptr;
  QLabel* status_ = nullptr;
  TKijelolForm* singleForm_ = nullptr;
  ReportWindow* reportWindow_ = nullptr;
  RecentFilesWindow* recentWindow_ = nullptr;
  bool statusGreen_ = false;
};

}  // namespace tarvika
