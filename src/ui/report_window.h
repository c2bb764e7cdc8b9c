#pragma once
// The report viewer's window: the two pages of the core's ReportViewer ("Output of last
// analysis", "Complete output file") and its commands as buttons and menus.

#include <QDialog>
#include <QPointer>

#include "frame/report_viewer.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QAction;
class QWidget;

namespace tarvika {

class LanguageTexts;
class Workspace;

class ReportWindow : public QDialog {
  Q_OBJECT
 public:
  ReportWindow(Workspace& ws, QWidget* parent = nullptr);

  // Loads both pages from their files and shows the window; it keeps the rest of the
  // program waiting until it is closed.
  void OpenReport();
  void ApplyLanguage(const LanguageTexts* texts);

  // The commands of the window.
  void AppendToComplete();
  void SaveAndExit();
  void ExitWithoutSaving();
  void RefreshPages();
  void FindNext();
  void Replace();
  void ReplaceAll();
  void ShowAsHtml();

  ReportViewer& Viewer() { return viewer_; }
  QTabWidget* Pages() const { return pages_; }
  QPlainTextEdit* PageEdit(ReportViewer::Page page) const { return edits_[page]; }
  QLineEdit* FindEdit() const { return findText_; }
  QLineEdit* ReplaceEdit() const { return replaceText_; }
  QCheckBox* CaseSensitive() const { return caseSensitive_; }
  QWidget* SearchPanel() const { return searchPanel_; }
  // The window that shows html where the system has no handler for it (null until used).
  QWidget* HtmlBrowser() const { return htmlBrowser_; }

 private:
  // Typed changes of the shown page go to the viewer before a command works on it.
  void TakeEdits();
  void ShowPages();
  void ShowSelection();
  void OpenHtml(const std::string& path);

  Workspace& ws_;
  ReportViewer viewer_;
  QMenuBar* menu_;
  QAction* refreshAction_;
  QAction* searchAction_;
  QAction* htmlAction_;
  QTabWidget* pages_;
  QPlainTextEdit* edits_[2];
  QWidget* searchPanel_;
  QLabel* findLabel_;
  QLineEdit* findText_;
  QLabel* replaceLabel_;
  QLineEdit* replaceText_;
  QCheckBox* caseSensitive_;
  QPushButton* findButton_;
  QPushButton* replaceButton_;
  QPushButton* replaceAllButton_;
  QPushButton* appendButton_;
  QPushButton* saveButton_;
  QPushButton* discardButton_;
  QPushButton* closeButton_;
  // Cleared by Qt when the browser goes, also while this window is being destroyed.
  QPointer<QWidget> htmlBrowser_;
};

}  // namespace tarvika
