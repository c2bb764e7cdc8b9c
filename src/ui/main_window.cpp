#include "ui/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QMenuBar>
#include <QStatusBar>
#include <QStyledItemDelegate>

#include "frame/command_info.h"
#include "ui/default_variable_form.h"
#include "ui/qt_text.h"
#include "ui/recent_files_window.h"
#include "ui/report_window.h"
#include "ui/single_sample_form.h"
#include "ui/table_models.h"
#include "workspace/main_menu.h"
#include "workspace/project_file.h"
#include "workspace/session.h"

namespace tarvika {
namespace {

// The group type cell is chosen from a list of the words of the session's language.
class GroupTypeDelegate : public QStyledItemDelegate {
 public:
  GroupTypeDelegate(const Workspace& ws, QObject* parent) : QStyledItemDelegate(parent), ws_(ws) {}
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const override {
    return new QComboBox(parent);
  }
  void setEditorData(QWidget* editor, const QModelIndex& index) const override {
    FillGroupTypeBox(static_cast<QComboBox*>(editor), ws_.language, ToStd(index.data(Qt::EditRole).toString()));
  }
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
    model->setData(index, static_cast<QComboBox*>(editor)->currentText(), Qt::EditRole);
  }

 private:
  const Workspace& ws_;
};

const char* kOpenFilter =
    "Tarvika (*.msw);;Text file (*.txt);;Text file (*.csv);;SPSS sav (*.sav);;SPSS portable (*.por);;"
    "EXCEL (*.xls, *.xlsx) (*.xls*);;(*.*) (*)";

}  // namespace

MainWindow::MainWindow(Session& session, QWidget* parent) : QMainWindow(parent), session_(session) {
  Workspace& ws = session_.ws;
  pages_ = new QTabWidget(this);
  dataModel_ = new DataMatrixModel(ws, this);
  variableModel_ = new VariableTableModel(ws, this);
  dataView_ = new QTableView(pages_);
  dataView_->setModel(dataModel_);
  variableView_ = new QTableView(pages_);
  variableView_->setModel(variableModel_);
  variableView_->setItemDelegateForColumn(kGroupType, new GroupTypeDelegate(ws, this));
  for (QTableView* view : {dataView_, variableView_}) {
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  }
  pages_->addTab(dataView_, "");
  pages_->addTab(variableView_, "");
  setCentralWidget(pages_);
  status_ = new QLabel(this);
  statusBar()->addWidget(status_, 1);
  connect(variableModel_, &VariableTableModel::NamesChanged, dataModel_, &DataMatrixModel::Reload);

  ws.hooks.progress = [this](std::string_view text, std::string_view) { ShowStatus(text); };
  ws.hooks.showReport = [this](const std::string& path) { ShowReportFile(path); };
  Refresh();
}

MainWindow::~MainWindow() {
  session_.ws.hooks.progress = nullptr;
  session_.ws.hooks.showReport = nullptr;
}

TKijelolForm* MainWindow::SingleSampleForm() {
  if (singleForm_ == nullptr) {
    singleForm_ = new TKijelolForm(session_.ws, this);
    singleForm_->setWindowFlag(Qt::Window);
    singleForm_->ApplyLanguage(Texts());
  }
  return singleForm_;
}

ReportWindow* MainWindow::Reports() {
  if (reportWindow_ == nullptr) {
    reportWindow_ = new ReportWindow(session_.ws, this);
    reportWindow_->ApplyLanguage(Texts());
  }
  return reportWindow_;
}

RecentFilesWindow* MainWindow::RecentFiles() {
  if (recentWindow_ == nullptr) {
    recentWindow_ = new RecentFilesWindow(this);
    recentWindow_->ApplyLanguage(Texts());
    connect(recentWindow_, &RecentFilesWindow::Chosen, this, [this](const QString& path) { OpenFile(path); });
  }
  return recentWindow_;
}

void MainWindow::ShowReportFile(const std::string& path) {
  // A text report opens in the viewer; an html one in the system's handler.
  if (path.ends_with(".html")) {
    if (Reports()->Viewer().openExternal) Reports()->Viewer().openExternal(path);
    return;
  }
  Reports()->OpenReport();
}

void MainWindow::ResetDialogs() {
  if (singleForm_ != nullptr) singleForm_->Reset();
}

void MainWindow::ShowStatus(std::string_view text) {
  // Each message flips the colour so a running loop is seen to be alive.
  statusGreen_ = !text.empty() && !statusGreen_;
  status_->setStyleSheet(statusGreen_ ? "background-color: #00ff00;" : "");
  status_->setText(ToQt(text));
  QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void MainWindow::Refresh() {
  Workspace& ws = session_.ws;
  texts_ = LanguageTexts::Load(session_.ws.programFolder, ws.language);
  setWindowTitle(ToQt(ws.title));
  pages_->setTabText(0, ToQt(ws.Text("Data matrix", "Adattáblázat")));
  pages_->setTabText(1, ToQt(ws.Text("Variables", "Változók deklarációi")));
  dataModel_->Reload();
  variableModel_->Reload();
  const int widths[] = {50, 100, 150, 100, 100, 100, 100};
  for (int c = 0; c < VariableTableModel::kVisibleColumns; ++c) variableView_->setColumnWidth(c, widths[c]);
  // Data columns: the widest of the header, the first ten and the last ten rows, plus 4 pixels.
  QFontMetrics fm = dataView_->fontMetrics();
  int cases = ws.NumberOfCases();
  for (int c = 1; c <= ws.NumberOfVariables() && c <= 1000; ++c) {
    int w = fm.horizontalAdvance(ToQt(ws.data.GetCell(c, 0)));
    for (int r = 1; r <= cases; r = (r == 10 && cases > 20) ? cases - 9 : r + 1)
      w = std::max(w, fm.horizontalAdvance(ToQt(ws.data.GetCell(c, r))));
    dataView_->setColumnWidth(c - 1, std::max(w + 4 + 12, 40));
  }
  ApplyFontSize();
  BuildMenus();
  if (singleForm_ != nullptr) singleForm_->ApplyLanguage(Texts());
  if (reportWindow_ != nullptr) reportWindow_->ApplyLanguage(Texts());
  if (recentWindow_ != nullptr) recentWindow_->ApplyLanguage(Texts());
}

void MainWindow::ApplyFontSize() {
  if (!session_.settings.fontSize) return;
  QFont font = dataView_->font();
  font.setPointSize(*session_.settings.fontSize);
  for (QTableView* view : {dataView_, variableView_}) {
    view->setFont(font);
    view->verticalHeader()->setDefaultSectionSize(QFontMetrics(font).height() + 6);
  }
}

void MainWindow::BuildMenus() {
  menuBar()->clear();
  std::function<void(QMenu*, const std::vector<MenuEntry>&)> fill = [&](QMenu* menu, const std::vector<MenuEntry>& entries) {
    for (const MenuEntry& e : entries) {
      QString caption = texts_ ? ToQt(texts_->Caption(e.tag)).trimmed() : ToQt(e.command);
      if (e.command.empty()) {
        fill(menu->addMenu(caption), e.children);
        continue;
      }
      QAction* action = menu->addAction(caption);
      QString command = ToQt(e.command);
      action->setData(command);
      if (texts_) {
        if (const Hint* hint = texts_->HintOf(e.tag)) action->setStatusTip(ToQt(hint->shortHint));
      }
      connect(action, &QAction::triggered, this, [this, command] { RunCommand(command); });
    }
  };
  for (const MenuEntry& top : MainMenu()) {
    QString caption = texts_ ? ToQt(texts_->Caption(top.tag)).trimmed() : QString();
    fill(menuBar()->addMenu(caption), top.children);
  }
}

bool MainWindow::OpenFile(const QString& path) {
  bool ok = session_.OpenProject(path.toStdString());
  if (ok) ResetDialogs();  // after a load every dialog starts empty
  Refresh();
  return ok;
}

bool MainWindow::SaveAs() {
  QString path = QFileDialog::getSaveFileName(this, QString(), ToQt(session_.ProgramPath("dat")), "Tarvika (*.msw)");
  if (path.isEmpty()) return false;
  if (!path.endsWith(".msw", Qt::CaseInsensitive)) path += ".msw";
  bool ok = SaveProject(session_.ws, path.toStdString());
  Refresh();
  return ok;
}

void MainWindow::RunCommand(const QString& command) {
  Workspace& ws = session_.ws;
  std::string name = command.toStdString();
  if (name == "file.new") {
    if (session_.NewProject()) ResetDialogs();
    Refresh();
  } else if (name == "file.open") {
    QString path = QFileDialog::getOpenFileName(this, QString(), ToQt(session_.ProgramPath("dat")), kOpenFilter);
    if (!path.isEmpty()) OpenFile(path);
  } else if (name == "file.save") {
    if (ws.CurrentFileName().empty()) {
      SaveAs();  // an untitled project (after a damaged file) gets a name first
      return;
    }
    SaveProject(ws, ws.CurrentFileName());
    Refresh();
  } else if (name == "file.save_as") {
    SaveAs();
  } else if (name == "file.recent") {
    RecentFiles()->Fill(RecentFilesToShow(ws));
    RecentFiles()->show();
    RecentFiles()->raise();
  } else if (name == "view.output") {
    Reports()->OpenReport();
  } else if (name == "variables.default") {
    DefaultVariableForm(ws, Texts(), this).exec();
  } else if (name == Dialog(DialogKind::SingleSample).menuCommand) {
    SingleSampleForm()->Open();
  } else if (name == "file.exit") {
    close();
  } else if (name == "settings.language") {
    session_.ChangeLanguage();
    Refresh();
  } else if (name == "settings.decimal_separator") {
    session_.ChangeDecimalSeparator();
  } else if (name == "settings.font") {
    if (session_.ChangeFontSize()) ApplyFontSize();
  } else if (name == "edit.type_control_on") {
    ws.typeControl = true;
  } else if (name == "edit.type_control_off") {
    ws.typeControl = false;
  } else {
    ws.user.Tell(UnderConstruction(ws.language));
  }
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (session_.EndSession()) {
    event->accept();
  } else {
    event->ignore();
  }
}

}  // namespace tarvika
