#include "ui/main_window.h"

#include <algorithm>
#include <array>

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLibraryInfo>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QStatusBar>
#include <QStyledItemDelegate>

#include "analyses/command_table.h"
#include "exchange/import.h"
#include "frame/command_info.h"
#include "ui/analysis_form.h"
#include "ui/declaration_dialogs.h"
#include "ui/default_variable_form.h"
#include "ui/qt_text.h"
#include "ui/recent_files_window.h"
#include "ui/report_window.h"
#include "ui/results_pane.h"
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

// The data grid's cells: Enter writes the cell and goes down a row, as in a spreadsheet.
class DataCellDelegate : public QStyledItemDelegate {
 public:
  DataCellDelegate(QTableView* view) : QStyledItemDelegate(view), view_(view) {}

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    auto* editor = qobject_cast<QWidget*>(object);
    if (editor != nullptr && event->type() == QEvent::KeyPress) {
      int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        emit commitData(editor);
        emit closeEditor(editor, QAbstractItemDelegate::NoHint);
        MoveDown(view_);
        return true;
      }
    }
    return QStyledItemDelegate::eventFilter(object, event);
  }

 public:
  static void MoveDown(QTableView* view) {
    QModelIndex current = view->currentIndex();
    if (!current.isValid() || current.row() + 1 >= view->model()->rowCount()) return;
    view->setCurrentIndex(view->model()->index(current.row() + 1, current.column()));
  }

 private:
  QTableView* view_;
};

// Enter on a cell that isn't being edited goes down a row too.
class EnterMovesDown : public QObject {
 public:
  EnterMovesDown(QTableView* view) : QObject(view), view_(view) {}
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;  // an open editor has the keys itself
    DataCellDelegate::MoveDown(view_);
    return true;
  }

 private:
  QTableView* view_;
};

// While long work runs, the events of the person reach only the Cancel button (and Escape
// presses it); painting and timers go on, so the window stays alive.
class BusyFilter : public QObject {
 public:
  BusyFilter(QPushButton* cancel) : QObject(cancel), cancel_(cancel) {}
  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && cancel_->isEnabled()) cancel_->click();
        return true;
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
        return watched != cancel_;
      case QEvent::KeyRelease:
      case QEvent::Wheel:
      case QEvent::Shortcut:
      case QEvent::ShortcutOverride:
      case QEvent::Close:
        return true;
      default:
        return false;
    }
  }

 private:
  QPushButton* cancel_;
};

// The standard keys of the entries; an entry whose command is not built yet keeps its key
// for the day it is.
QKeySequence ShortcutOf(std::string_view command) {
  static const std::map<std::string_view, QKeySequence> keys = {
      {"file.new", QKeySequence::New},       {"file.open", QKeySequence::Open},
      {"file.save", QKeySequence::Save},     {"file.exit", QKeySequence::Quit},
      {"edit.undo", QKeySequence(Qt::CTRL | Qt::Key_Z)}, {"edit.redo", QKeySequence(Qt::CTRL | Qt::Key_Y)},
      {"edit.cut", QKeySequence::Cut},       {"edit.copy", QKeySequence::Copy},
      {"edit.paste", QKeySequence::Paste},   {"edit.find_replace", QKeySequence::Find},
      {"help.manual", QKeySequence::HelpContents}, {"file.print", QKeySequence::Print},
  };
  auto it = keys.find(command);
  return it == keys.end() ? QKeySequence() : it->second;
}

// A caption with a mnemonic: the first letter not yet taken in its menu gets the "&".
QString WithMnemonic(const QString& caption, QSet<QChar>& taken) {
  for (int i = 0; i < caption.size(); ++i) {
    QChar c = caption[i].toLower();
    if (!c.isLetterOrNumber() || taken.contains(c)) continue;
    taken.insert(c);
    QString marked = caption;
    marked.replace("&", "&&");
    int shift = static_cast<int>(caption.left(i).count('&'));
    return marked.insert(i + shift, '&');
  }
  return QString(caption).replace("&", "&&");
}

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
  dataView_->setItemDelegate(new DataCellDelegate(dataView_));
  connect(variableView_, &QTableView::activated, this, [this](const QModelIndex& index) { EditDeclaration(index.row() + 1, index.column()); });
  dataView_->installEventFilter(new EnterMovesDown(dataView_));
  dataView_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(dataView_, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
    QMenu* menu = GridContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(dataView_->viewport()->mapToGlobal(at));
  });
  for (QTableView* view : {dataView_, variableView_}) {
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  }
  pages_->addTab(dataView_, "");
  pages_->addTab(variableView_, "");
  setCentralWidget(pages_);
  status_ = new QLabel(this);
  statusBar()->addWidget(status_, 1);
  progress_ = new QProgressBar(this);
  progress_->setRange(0, 0);  // busy: the messages say how far it is
  progress_->setMaximumWidth(160);
  cancel_ = new QPushButton(this);
  cancel_->setObjectName("cancel");
  statusBar()->addPermanentWidget(progress_);
  statusBar()->addPermanentWidget(cancel_);
  progress_->hide();
  cancel_->hide();
  busyFilter_ = new BusyFilter(cancel_);
  connect(cancel_, &QPushButton::clicked, this, [this] { cancelAsked_ = true; });
  connect(dataModel_, &DataMatrixModel::CellEdited, this, [this](int col, int row, const QString& before, const QString& after) {
    journals_.data.Record(col, row, ToStd(before));
    journals_.data.Record(col, row, ToStd(after));
  });
  connect(variableModel_, &VariableTableModel::NamesChanged, dataModel_, &DataMatrixModel::Reload);
  // The choices open once the grid's editor has closed on the cell.
  connect(dataModel_, &DataMatrixModel::EnteredOutOfRange, this, &MainWindow::OfferEntryChoices, Qt::QueuedConnection);
  for (QAbstractItemModel* model : {static_cast<QAbstractItemModel*>(dataModel_), static_cast<QAbstractItemModel*>(variableModel_)}) {
    connect(model, &QAbstractItemModel::dataChanged, this, &MainWindow::ShowTitle);
  }

  results_ = new ResultsPane(this);
  resultsDock_ = new QDockWidget(this);
  resultsDock_->setObjectName("results");
  resultsDock_->setWidget(results_);
  resultsDock_->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
  addDockWidget(Qt::RightDockWidgetArea, resultsDock_);
  resultsDock_->hide();

  ws.hooks.progress = [this](std::string_view text, std::string_view window) { ShowStatus(text, window); };
  ws.hooks.cancelAsked = [this] { return cancelAsked_; };
  ws.hooks.showReport = [this](const std::string& path) { ShowReportFile(path); };
  Refresh();
}

MainWindow::~MainWindow() {
  session_.ws.hooks.progress = nullptr;
  session_.ws.hooks.cancelAsked = nullptr;
  if (busy_) qApp->removeEventFilter(busyFilter_);
  session_.ws.hooks.showReport = nullptr;
}

AnalysisForm* MainWindow::Form(DialogKind kind) {
  AnalysisForm*& form = forms_[kind];
  if (form == nullptr) {
    form = new AnalysisForm(session_.ws, kind, this);
    form->setWindowFlag(Qt::Window);
    form->ApplyLanguage(Texts());
    form->SetReportFormat(htmlReports_ ? ReportFormat::Html : ReportFormat::Text);
    connect(form, &AnalysisForm::Finished, this, &MainWindow::EndBusy);
    connect(form, &AnalysisForm::AboutToRun, this, [this](const QString& title, const QString& variables) {
      pendingTitle_ = title;
      pendingVariables_ = variables;
    });
  }
  return form;
}

QAction* MainWindow::MenuAction(const QString& command) const {
  auto it = actions_.find(command);
  return it == actions_.end() ? nullptr : it->second;
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
  // Every report joins the results pane beside the data; the viewer of the files is the
  // Output entry of the View menu.
  results_->AddReportFile(pendingTitle_, pendingVariables_, path);
  pendingTitle_.clear();
  pendingVariables_.clear();
  if (resultsDock_->isHidden()) {
    resultsDock_->show();
    // Half the window for the reports, beside the data.
    resizeDocks({resultsDock_}, {std::max(width() / 2, 420)}, Qt::Horizontal);
  }
  resultsDock_->raise();
}

void MainWindow::ResetDialogs() {
  for (auto& [kind, form] : forms_) form->Reset();
}

bool MainWindow::EditDeclaration(int variable, int column) {
  Workspace& ws = session_.ws;
  std::string cell(ws.vars.GetCell(column, variable));
  std::optional<std::string> result;
  if (column == kType) {
    TypeDialog dialog(ws, cell, this);
    if (dialog.exec() == QDialog::Accepted) result = dialog.Result();
  } else if (column == kMissing) {
    MissingDialog dialog(ws, cell, this);
    if (dialog.exec() == QDialog::Accepted) result = dialog.Result();
  } else if (column == kGroupLabels) {
    LabelDialog dialog(ws, GroupKindOf(ws.vars.GetCell(kGroupType, variable)) == GroupKind::Intervals, cell, this);
    if (dialog.exec() == QDialog::Accepted) result = dialog.Result();
  } else {
    return false;
  }
  if (!result || *result == cell) return false;
  return variableModel_->setData(variableModel_->index(variable - 1, column), ToQt(*result), Qt::EditRole);
}

void MainWindow::ShowTitle() {
  // The unsaved-changes marker, as desktop programs show it.
  setWindowTitle(ToQt(session_.ws.title) + (session_.ws.dataChanged ? " *" : ""));
}

void MainWindow::ApplyQtTranslations() {
  // Qt's own dialogs (file dialogs, standard buttons) speak the session's language.
  if (qtTranslated_) QCoreApplication::removeTranslator(&qtTranslator_);
  qtTranslated_ = false;
  if (session_.ws.language != Language::Hungarian) return;
  if (qtTranslator_.load(QLocale(QLocale::Hungarian), "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    qtTranslated_ = QCoreApplication::installTranslator(&qtTranslator_);
  }
}

void MainWindow::FillRecentMenu() {
  if (recentMenu_ == nullptr) return;
  recentMenu_->clear();
  int n = 0;
  for (const std::string& path : RecentFilesToShow(session_.ws)) {
    if (++n > 9) break;
    QString file = ToQt(path);
    QAction* action = recentMenu_->addAction(QString("&%1 %2").arg(n).arg(file));
    connect(action, &QAction::triggered, this, [this, file] { OpenFile(file); });
  }
  recentMenu_->setEnabled(n > 0);
}

void MainWindow::ExportResults(bool html) {
  Workspace& ws = session_.ws;
  QString filter = html ? "HTML (*.html)" : "Text (*.txt)";
  QString path = QFileDialog::getSaveFileName(this, QString(), ToQt(session_.ProgramPath("output")), filter);
  if (path.isEmpty()) return;
  std::string error;
  bool ok = html ? results_->ExportHtml(path.toStdString(), &error) : results_->ExportText(path.toStdString(), &error);
  if (!ok) ws.user.TellAs(MessageKind::Error, std::string(ws.Text("The output could not be written: ", "A kimenet nem írható: ")) + error);
}

void MainWindow::ShowStatus(std::string_view text, std::string_view window) {
  // Each message flips the colour so a running loop is seen to be alive.
  statusGreen_ = !text.empty() && !statusGreen_;
  status_->setStyleSheet(statusGreen_ ? "background-color: #00ff00;" : "");
  status_->setText(ToQt(text));
  if (!text.empty() && !busy_) {
    // Long work begins: the bar, and Cancel for an analysis (a load or a save runs to its end).
    busy_ = true;
    cancelAsked_ = false;
    cancel_->setEnabled(window != "MainForm");
    progress_->show();
    cancel_->show();
    qApp->installEventFilter(busyFilter_);
  } else if (text.empty()) {
    EndBusy();
  }
  QApplication::processEvents();
}

void MainWindow::EndBusy() {
  // Also after every command and run, so no path that forgets its last message leaves the
  // window deaf.
  if (!busy_) return;
  busy_ = false;
  qApp->removeEventFilter(busyFilter_);
  progress_->hide();
  cancel_->hide();
}

void MainWindow::Refresh() {
  Workspace& ws = session_.ws;
  texts_ = LanguageTexts::Load(session_.ws.programFolder, ws.language);
  ApplyQtTranslations();
  ShowTitle();
  resultsDock_->setWindowTitle(ToQt(ws.Text("Results", "Eredmények")));
  cancel_->setText(ToQt(ws.Text("Cancel", "Mégse")));
  results_->SetCopyWord(ToQt(ws.Text("Copy table", "Táblázat másolása")));
  pages_->setTabText(0, ToQt(ws.Text("Data matrix", "Adattáblázat")));
  pages_->setTabText(1, ToQt(ws.Text("Variables", "Változók deklarációi")));
  dataModel_->Reload();
  variableModel_->Reload();
  ApplyFontSize();
  BuildMenus();
  for (auto& [kind, form] : forms_) form->ApplyLanguage(Texts());
  if (reportWindow_ != nullptr) reportWindow_->ApplyLanguage(Texts());
  if (recentWindow_ != nullptr) recentWindow_->ApplyLanguage(Texts());
}

void MainWindow::ApplyFontSize() {
  if (session_.settings.fontSize) {
    QFont font = dataView_->font();
    font.setPointSize(*session_.settings.fontSize);
    for (QTableView* view : {dataView_, variableView_}) {
      view->setFont(font);
      view->horizontalHeader()->setFont(font);
      view->verticalHeader()->setFont(font);
      view->verticalHeader()->setDefaultSectionSize(QFontMetrics(font).height() + 6);
    }
  }
  FitColumns();  // the columns follow the font, so no header is cut
}

void MainWindow::FitColumns() {
  Workspace& ws = session_.ws;
  QFontMetrics fm = variableView_->fontMetrics();
  const int widths[] = {50, 100, 150, 100, 100, 100, 100};
  for (int c = 0; c < VariableTableModel::kVisibleColumns; ++c) {
    int header = fm.horizontalAdvance(variableModel_->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString()) + 16;
    variableView_->setColumnWidth(c, std::max(widths[c] * fm.height() / 16, header));
  }
  // Data columns: the widest of the header, the first ten and the last ten rows, plus margins.
  fm = dataView_->fontMetrics();
  int cases = ws.NumberOfCases();
  for (int c = 1; c <= ws.NumberOfVariables() && c <= 1000; ++c) {
    int w = fm.horizontalAdvance(ToQt(ws.data.GetCell(c, 0)));
    for (int r = 1; r <= cases; r = (r == 10 && cases > 20) ? cases - 9 : r + 1)
      w = std::max(w, fm.horizontalAdvance(ToQt(ws.data.GetCell(c, r))));
    dataView_->setColumnWidth(c - 1, std::max(w + 4 + 12, 40));
  }
}

void MainWindow::BuildMenus() {
  Workspace& ws = session_.ws;
  // The old menus go once their last signal is done (a language change comes from one).
  for (QMenu* old : menuBar()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) old->deleteLater();
  menuBar()->clear();
  for (QAction* old : dataView_->actions()) dataView_->removeAction(old);  // their menus are going
  actions_.clear();
  recentMenu_ = nullptr;
  const QString notBuilt = ToQt(UnderConstruction(ws.language));
  std::function<void(QMenu*, const std::vector<MenuEntry>&)> fill = [&](QMenu* menu, const std::vector<MenuEntry>& entries) {
    QSet<QChar> taken;
    menu->setToolTipsVisible(true);
    for (const MenuEntry& e : entries) {
      QString caption = WithMnemonic(texts_ ? ToQt(texts_->Caption(e.tag)).trimmed() : ToQt(e.command), taken);
      if (e.command.empty()) {
        fill(menu->addMenu(caption), e.children);
        continue;
      }
      QAction* action = menu->addAction(caption);
      QString command = ToQt(e.command);
      action->setData(command);
      action->setShortcut(ShortcutOf(e.command));
      if (texts_) {
        if (const Hint* hint = texts_->HintOf(e.tag)) action->setStatusTip(ToQt(hint->shortHint));
      }
      // An entry whose work isn't built is greyed out and says so; it lights up once it is.
      if (!MenuEntryIsBuilt(e.command)) {
        action->setEnabled(false);
        action->setToolTip(notBuilt);
      }
      if (e.command == "edit.cut" || e.command == "edit.copy" || e.command == "edit.paste" || e.command == "edit.delete") {
        // The clipboard keys act on the grid only while it has the focus, so the results
        // pane's own Ctrl+C (a table's copy) is never taken from it.
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        dataView_->addAction(action);
      }
      actions_[command] = action;
      connect(action, &QAction::triggered, this, [this, command] { RunCommand(command); });
      if (e.command == "edit.redo") {
        // The project copies of the folder "undo" belong with the ways back.
        for (bool restore : {false, true}) {
          QString text = ToQt(restore ? ws.Text("Restore \"undo\" file . . .", "\"Undo\" fájl visszatöltése . . .")
                                      : ws.Text("Make \"undo\" file . . .", "\"Undo\" fájl készítése . . ."));
          QString copyCommand = restore ? "edit.restore_undo_file" : "edit.make_undo_file";
          QAction* copy = menu->addAction(WithMnemonic(text, taken));
          connect(copy, &QAction::triggered, this, [this, copyCommand] { RunCommand(copyCommand); });
          actions_[copyCommand] = copy;
        }
      }
      if (e.command == "file.recent") {
        recentMenu_ = menu->addMenu(WithMnemonic(ToQt(ws.Text("Recent files", "Legutóbbi fájlok")), taken));
        recentMenu_->setObjectName("recent");
      }
      if (e.command == "view.output") {
        QAction* pane = resultsDock_->toggleViewAction();
        pane->setText(WithMnemonic(ToQt(ws.Text("Results pane", "Eredmények panel")), taken));
        menu->addAction(pane);
        QAction* labels = menu->addAction(WithMnemonic(ToQt(ws.Text("Value labels in the grid", "Értékcímkék a táblázatban")), taken));
        labels->setObjectName("valueLabels");
        labels->setCheckable(true);
        labels->setChecked(dataModel_->LabelsShown());
        connect(labels, &QAction::toggled, dataModel_, &DataMatrixModel::ShowLabels);
        actions_["view.value_labels"] = labels;
        QAction* figures = menu->addAction(WithMnemonic(ToQt(ws.Text("Reports with figures (html)", "Jelentések ábrákkal (html)")), taken));
        figures->setCheckable(true);
        figures->setChecked(htmlReports_);
        connect(figures, &QAction::toggled, this, [this](bool on) {
          htmlReports_ = on;
          for (auto& [kind, form] : forms_) form->SetReportFormat(on ? ReportFormat::Html : ReportFormat::Text);
        });
        actions_["view.html_reports"] = figures;
        for (bool html : {true, false}) {
          QString text = ToQt(html ? ws.Text("Export results as HTML...", "Eredmények exportálása HTML-be...")
                                   : ws.Text("Export results as text...", "Eredmények exportálása szövegként..."));
          QAction* exportAction = menu->addAction(WithMnemonic(text, taken));
          connect(exportAction, &QAction::triggered, this, [this, html] { ExportResults(html); });
        }
      }
    }
  };
  QSet<QChar> topTaken;
  for (const MenuEntry& top : MainMenu()) {
    QString caption = texts_ ? ToQt(texts_->Caption(top.tag)).trimmed() : QString();
    fill(menuBar()->addMenu(WithMnemonic(caption, topTaken)), top.children);
  }
  FillRecentMenu();
}

bool MainWindow::OpenFile(const QString& path) {
  if (!path.endsWith(".msw", Qt::CaseInsensitive) && IsImportable(ToStd(path))) return ImportData(path);
  bool ok = session_.OpenProject(path.toStdString());
  EndBusy();
  if (ok) {
    ResetDialogs();  // after a load every dialog starts empty
    journals_ = Journals{};
  }
  Refresh();
  if (ok) OfferRenameOfDuplicates();
  return ok;
}

bool MainWindow::SaveAs() {
  QString path = QFileDialog::getSaveFileName(this, QString(), ToQt(session_.ProgramPath("dat")), "Tarvika (*.msw)");
  if (path.isEmpty()) return false;
  if (!path.endsWith(".msw", Qt::CaseInsensitive)) path += ".msw";
  bool ok = SaveProject(session_.ws, path.toStdString());
  ShowTitle();
  FillRecentMenu();
  return ok;
}

static std::optional<DialogKind> DialogOfMenu(std::string_view command) {
  // The dialogs the command table names, so a new dialog kind opens with no code here.
  for (const CommandInfo& row : AllCommands().Rows()) {
    if (Dialog(row.dialog).menuCommand == command) return row.dialog;
  }
  return std::nullopt;
}

bool MainWindow::Runs(std::string_view command) {
  // The entries RunCommand answers in its own branches.
  static constexpr std::array<std::string_view, 13> own = {
      "file.new",          "file.open",         "file.save",          "file.save_as",
      "file.recent",       "file.exit",         "view.output",        "variables.default",
      "settings.language", "settings.font",     "settings.decimal_separator",
      "edit.type_control_on", "edit.type_control_off",
  };
  return std::find(own.begin(), own.end(), command) != own.end() || DialogOfMenu(command).has_value() ||
         RunsGridCommand(command) || RunsExchangeCommand(command) || RunsTransformCommand(command) ||
         RunsEditingDialogCommand(command);
}

void MainWindow::RunCommand(const QString& command) {
  struct EndsBusy {
    MainWindow* w;
    ~EndsBusy() { w->EndBusy(); }
  } endsBusy{this};
  Workspace& ws = session_.ws;
  std::string name = command.toStdString();
  if (name == "file.new") {
    if (session_.NewProject()) {
      ResetDialogs();
      journals_ = Journals{};
    }
    Refresh();
  } else if (name == "file.open") {
    QString path = QFileDialog::getOpenFileName(this, QString(), ToQt(session_.ProgramPath("dat")), kOpenFilter);
    if (!path.isEmpty()) OpenFile(path);
  } else if (name == "file.save") {
    if (ws.CurrentFileName().empty()) {
      SaveAs();  // an untitled project (after a damaged file) gets a name first
      return;
    }
    // The grid keeps its place: a save changes no cell, only the title and the recent files.
    SaveProject(ws, ws.CurrentFileName());
    ShowTitle();
    FillRecentMenu();
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
  } else if (std::optional<DialogKind> kind = DialogOfMenu(name)) {
    Form(*kind)->Open();
  } else if (RunGridCommand(name) || RunExchangeCommand(name) || RunTransformCommand(name) || RunEditingDialogCommand(name)) {
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
    ws.user.TellAs(MessageKind::Information, UnderConstruction(ws.language));
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
