#pragma once
// The results pane: every report of the session in the order of the runs, beside the
// data. Each report is shown read-only as blocks: its plain lines as text, its lines of
// tab-separated cells as a real table (numbers right-aligned). An outline lists the runs
// (time, title, variables); a table can be copied as tab-separated text; the session's
// output can be exported to html or to text.

#include <QDateTime>
#include <QWidget>

#include <string>
#include <vector>

class QScrollArea;
class QTableWidget;
class QTreeWidget;
class QVBoxLayout;

namespace tarvika {

class ResultsPane : public QWidget {
  Q_OBJECT
 public:
  explicit ResultsPane(QWidget* parent = nullptr);

  // Adds a run: its report as the analysis wrote it (text, or html with svg figures).
  void AddRun(const QString& title, const QString& variables, const QString& report, bool html = false);
  // Adds the report a file holds (".html": tables and figures of the html form).
  bool AddReportFile(const QString& title, const QString& variables, const std::string& path);

  int RunCount() const { return static_cast<int>(runs_.size()); }
  QString RunTitle(int run) const { return runs_[run].title; }
  QString RunReport(int run) const { return runs_[run].report; }
  QTreeWidget* Outline() const { return outline_; }
  // The tables of a run, in the order of the report.
  std::vector<QTableWidget*> Tables(int run) const { return runs_[run].tables; }
  std::vector<QWidget*> Figures(int run) const { return runs_[run].figures; }
  // Brings a run into view, as choosing it in the outline does.
  void ShowRun(int run);

  // A table's cells as lines of tab-separated text; Copy puts them on the clipboard.
  static QString TableText(const QTableWidget* table);
  void CopyTable(const QTableWidget* table) const;
  // The whole session's output: html with real tables, or the reports' text one after another.
  QString SessionHtml() const;
  QString SessionText() const;
  bool ExportHtml(const std::string& path, std::string* error) const;
  bool ExportText(const std::string& path, std::string* error) const;
  // The caption of the tables' copy entry, in the session's language.
  void SetCopyWord(const QString& word) { copyWord_ = word; }

 private:
  struct Run {
    QString title, variables, report;
    bool html = false;
    QDateTime time;
    QWidget* section = nullptr;
    std::vector<QTableWidget*> tables;
    std::vector<QWidget*> figures;
  };
  QTableWidget* MakeTable(const std::vector<QStringList>& rows, QWidget* parent);

  std::vector<Run> runs_;
  QTreeWidget* outline_;
  QScrollArea* scroll_;
  QWidget* content_;
  QVBoxLayout* contentLayout_;
  QString copyWord_ = "Copy table";
};

// True when a report cell is a number (with a sign, decimals, an exponent, a trailing
// percent sign or significance stars), so it is right-aligned.
bool LooksNumeric(const QString& cell);

}  // namespace tarvika
