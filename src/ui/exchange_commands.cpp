// Reading text, spreadsheet and SPSS files into the window, and writing the data for other
// programs: the exchange core behind the Open command and the export entries.

#include <QFileDialog>
#include <QFileInfo>

#include "exchange/export.h"
#include "exchange/import.h"
#include "ui/main_window.h"
#include "ui/qt_text.h"
#include "workspace/session.h"

namespace tarvika {

bool MainWindow::ImportData(const QString& path) {
  Workspace& ws = session_.ws;
  // The same question the open command asks before it replaces the tables.
  if (!ws.IsPristine() &&
      ws.user.AskYesNoCancel(ws.Text("Do you want to save current project?", "El akarja menteni az aktuális projektet?")) ==
          Answer::Yes &&
      !session_.SaveCurrentProject()) {
    return false;
  }
  bool ok = ImportFile(ws, ToStd(path), ImportOptions{});
  EndBusy();
  if (ok) {
    ResetDialogs();
    journals_ = Journals{};
  }
  Refresh();
  return ok;
}

bool MainWindow::ExportData(const QString& command, const QString& path) {
  Workspace& ws = session_.ws;
  bool ok = false;
  if (command == "file.export_tab") {
    ok = ExportTabDelimited(ws, ToStd(path));
  } else if (path.endsWith(".sps", Qt::CaseInsensitive)) {
    QFileInfo syntax(path);
    QString data = syntax.dir().filePath(syntax.completeBaseName() + ".txt");
    ok = ExportToSpss(ws, ToStd(data), ToStd(path));
  } else {
    ok = ExportSav(ws, ToStd(path));
  }
  EndBusy();
  return ok;
}

bool MainWindow::RunsExchangeCommand(std::string_view command) {
  return command == "file.export_spss" || command == "file.export_tab";
}

bool MainWindow::RunExchangeCommand(const std::string& name) {
  if (!RunsExchangeCommand(name)) return false;
  QString filter = name == "file.export_tab" ? "Text (*.txt)" : "SPSS sav (*.sav);;SPSS syntax + data (*.sps)";
  QString chosenFilter;
  QString path = QFileDialog::getSaveFileName(this, QString(), ToQt(session_.ProgramPath("dat")), filter, &chosenFilter);
  if (path.isEmpty()) return true;
  if (QFileInfo(path).suffix().isEmpty()) {
    path += name == "file.export_tab" ? ".txt" : chosenFilter.contains("sps") ? ".sps" : ".sav";
  }
  ExportData(ToQt(name), path);
  return true;
}

}  // namespace tarvika
