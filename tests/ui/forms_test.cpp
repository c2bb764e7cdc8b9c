// The forms of the desktop program over the example project: the grids, the single-sample
// dialog run by its buttons (its report must be the command line's), the viewer's
// commands, the recent files and the language switch.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTableWidget>
#include <QTextBrowser>
#include <QtTest>

#include <array>
#include <cstdio>
#include <filesystem>

#include "frame/report_writer.h"
#include "ui/main_window.h"
#include "ui/recent_files_window.h"
#include "ui/report_window.h"
#include "ui/analysis_form.h"
#include "ui/declaration_dialogs.h"
#include "ui/results_pane.h"
#include "ui_test_support.h"
#include "workspace/session.h"

namespace fs = std::filesystem;
using namespace tarvika;
using tarvika::test::MoveNames;

namespace {

QString Cell(QAbstractItemModel* model, int row, int column) { return model->data(model->index(row, column)).toString(); }

void Click(QWidget* parent, const char* name) {
  auto* button = parent->findChild<QPushButton*>(name);
  QVERIFY2(button != nullptr, name);
  QTest::mouseClick(button, Qt::LeftButton);
}

QStringList Items(QListWidget* list) {
  QStringList items;
  for (int i = 0; i < list->count(); ++i) items << list->item(i)->text();
  return items;
}

// The report the command line prints, with no last line end, as the viewer holds it.
QString CliReport(const std::string& arguments) { return tarvika::test::CliReport(arguments).chopped(1); }

}  // namespace

class FormsTest : public QObject {
  Q_OBJECT
 private slots:
  void init() {
    root_ = fs::temp_directory_path() / ("tarvika-forms-" + std::to_string(QCoreApplication::applicationPid()));
    fs::remove_all(root_);
    fs::create_directories(root_ / "dat");
    fs::copy(TARVIKA_SOURCE_DIR "/data/language", root_ / "language");
    fs::copy(TARVIKA_SOURCE_DIR "/data/stattab", root_ / "stattab");
    fs::copy_file(TARVIKA_SOURCE_DIR "/data/dat/survey.msw", root_ / "dat" / "survey.msw");
    project_ = QString::fromStdString((root_ / "dat" / "survey.msw").string());
  }
  void cleanup() { fs::remove_all(root_); }

  void dialogRunShowsTheCommandLinesReport() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    std::unique_ptr<MainWindow> window = Start(session);
    QVERIFY(window != nullptr);
    window->RunCommand("settings.language");
    QCOMPARE(session.ws.language, Language::English);
    QVERIFY(window->OpenFile(project_));

    // The grids show the cells of the project.
    QAbstractItemModel* data = window->DataView()->model();
    QCOMPARE(data->rowCount(), 237);
    QCOMPARE(data->columnCount(), 9);
    QCOMPARE(data->headerData(1, Qt::Horizontal).toString(), QString("Wr.Hnd"));
    QCOMPARE(Cell(data, 0, 1), QString("18.5"));
    QCOMPARE(Cell(data, 2, 7), QString());  // a missing height stays empty
    QCOMPARE(Cell(data, 236, 0), QString("1"));
    QAbstractItemModel* vars = window->VariableView()->model();
    QCOMPARE(Cell(vars, 8, kGroupLabels), QString::fromUtf8("16–20 = up to 20, 20–25 = 20 to 25, 25–80 = over 25"));
    QCOMPARE(vars->data(vars->index(8, kGroupLabels), Qt::EditRole).toString(),
             QString("16_20=up to 20;/20_25=20 to 25;/25_80=over 25;/"));
    QCOMPARE(Cell(vars, 8, kGroupType), QString("intervals"));

    // The grid: numbers right-aligned, a declared missing code marked, value labels on request.
    auto alignment = [&](int row, int column) {
      return Qt::Alignment(data->data(data->index(row, column), Qt::TextAlignmentRole).toInt());
    };
    QVERIFY(alignment(0, 1) & Qt::AlignRight);
    QCOMPARE(Cell(data, 3, 4), QString("999"));  // Pulse declares 999 missing
    QVERIFY(data->data(data->index(3, 4), Qt::BackgroundRole).isValid());
    QCOMPARE(data->data(data->index(3, 4), Qt::ToolTipRole).toString(), QString("Declared missing code"));
    QVERIFY(!data->data(data->index(0, 4), Qt::BackgroundRole).isValid());
    window->MenuAction("view.value_labels")->trigger();
    QCOMPARE(Cell(data, 0, 0), QString("Female"));
    QCOMPARE(Cell(data, 0, 8), QString("up to 20"));  // 18.25 in the interval 16_20
    QCOMPARE(Cell(data, 0, 1), QString("18.5"));       // no labels: the value
    QCOMPARE(data->data(data->index(0, 8), Qt::EditRole).toString(), QString("18.25"));
    window->MenuAction("view.value_labels")->trigger();
    QCOMPARE(Cell(data, 0, 0), QString("1"));

    // Enter goes down a row, after writing the cell being edited too (W.Hnd, not in the run below).
    QTableView* grid = window->DataView();
    grid->setCurrentIndex(data->index(0, 3));
    QTest::keyClick(grid, Qt::Key_Return);
    QCOMPARE(grid->currentIndex(), data->index(1, 3));
    grid->edit(grid->currentIndex());
    auto* editor = grid->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    QCOMPARE(editor->text(), QString("1"));
    editor->setText("2");
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(Cell(data, 1, 3), QString("2"));
    QCOMPARE(grid->currentIndex(), data->index(2, 3));

    window->RunCommand("analysis.single");
    AnalysisForm* form = window->Form(DialogKind::SingleSample);
    QVERIFY(form->isVisible());
    QCOMPARE(form->CommandList()->currentText(), QString("Basic descriptive statistics"));
    QCOMPARE(Items(form->SourceListWidget()).join(","), QString("Sex,Wr.Hnd,NW.Hnd,W.Hnd,Pulse,Exer,Smoke,Height,Age"));
    MoveNames(form, {"Wr.Hnd", "NW.Hnd", "Pulse", "Height", "Age"}, "toSelected");
    MoveNames(form, {"Smoke"}, "toConditional");
    QCOMPARE(Items(form->SourceListWidget()).join(","), QString("Sex,W.Hnd,Exer"));
    QCOMPARE(form->SelectedTable()->rowCount(), 5);
    QCOMPARE(Items(form->findChild<QListWidget*>("conditional")), QStringList{"Smoke"});
    // A second conditional variable takes the place of the first, which goes back.
    MoveNames(form, {"Exer"}, "toConditional");
    QCOMPARE(Items(form->SourceListWidget()).join(","), QString("Sex,W.Hnd,Smoke"));
    MoveNames(form, {"Smoke"}, "toConditional");
    QCOMPARE(form->Dialog().conditional, std::string("Smoke"));

    Click(form, "run");
    // The report joins the results pane beside the data; the viewer shows the files.
    QVERIFY(window->ResultsDock()->isVisible());
    QCOMPARE(window->Results()->RunCount(), 1);
    window->RunCommand("view.output");
    ReportWindow* viewer = window->Reports();
    QVERIFY(viewer->isVisible());
    QCOMPARE(viewer->windowTitle(), QString::fromStdString(LastReportPath(root_.string())));
    QString shown = viewer->PageEdit(ReportViewer::kLast)->toPlainText();
    fs::create_directories(root_ / "cli");
    fs::copy(TARVIKA_SOURCE_DIR "/data/stattab", root_ / "cli" / "stattab");
    QString expected = CliReport("--program-dir '" + (root_ / "cli").string() + "' run '" + project_.toStdString() +
                                 "' --command 11 --vars Wr.Hnd,NW.Hnd,Pulse,Height,Age --cond Smoke --lang en");
    QVERIFY(expected.startsWith("|| Tarvika 2.0\n"));
    QCOMPARE(shown, expected);
    QCOMPARE(window->Results()->RunReport(0).replace("\r\n", "\n").chopped(1), expected);

    // The viewer: find, replace all, append, save; an edit by hand is part of the page.
    QPlainTextEdit* last = viewer->PageEdit(ReportViewer::kLast);
    last->setPlainText(QString::fromUtf8("Árvíztűrő Pulse, pulse\n") + shown);
    last->document()->setModified(true);
    viewer->FindEdit()->setText("pulse");
    Click(viewer, "findNext");
    QCOMPARE(last->textCursor().selectedText(), QString("Pulse"));
    QCOMPARE(last->textCursor().selectionStart(), 10);
    viewer->CaseSensitive()->setChecked(true);
    Click(viewer, "findNext");
    QCOMPARE(last->textCursor().selectionStart(), 17);
    viewer->ReplaceEdit()->setText("pulzus");
    Click(viewer, "replaceAll");
    // One replacement, told as one less than the rounds made: the find after it failed.
    QCOMPARE(QString::fromStdString(user.told.back()), QString("Replaced: 0"));
    QVERIFY(last->toPlainText().startsWith(QString::fromUtf8("Árvíztűrő Pulse, pulzus\n")));
    Click(viewer, "append");
    QCOMPARE(viewer->Pages()->currentIndex(), 1);
    QCOMPARE(viewer->PageEdit(ReportViewer::kComplete)->toPlainText(), last->toPlainText());
    Click(viewer, "saveAndExit");
    QVERIFY(!viewer->isVisible());
    QVERIFY(fs::exists(root_ / "output" / "zuli_tot.txt"));

    // Show as HTML, without a screen, in a browser of the program's own.
    window->RunCommand("view.output");
    QVERIFY(viewer->isVisible());
    viewer->ShowAsHtml();
    auto* browser = qobject_cast<QTextBrowser*>(viewer->HtmlBrowser());
    QVERIFY(browser != nullptr);
    QVERIFY(browser->toPlainText().contains("Basic descriptive statistics"));
    QVERIFY(fs::exists(root_ / "output" / "zuli_akt.html"));
    Click(viewer, "exitWithoutSaving");
    QVERIFY(!fs::exists(root_ / "output" / "zuli_tot.txt"));
  }

  void declarationsInWordsAndTheirDialogs() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    std::unique_ptr<MainWindow> window = Start(session);
    window->RunCommand("settings.language");
    QVERIFY(window->OpenFile(project_));
    Workspace& ws = session.ws;
    QAbstractItemModel* vars = window->VariableView()->model();
    QCOMPARE(Cell(vars, 0, kType), QString("number"));
    QCOMPARE(Cell(vars, 0, kGroupLabels), QString("1 = Female, 2 = Male"));
    QCOMPARE(Cell(vars, 4, kMissing), QString("999"));
    QVERIFY(!(vars->flags(vars->index(0, kType)) & Qt::ItemIsEditable));  // its dialog edits it

    // The type: the core's checks and messages.
    TypeDialog type(ws, "num=0_0;");
    type.Minimum()->setText("5");
    type.Maximum()->setText("1");
    QVERIFY(!type.Result());
    QCOMPARE(QString::fromStdString(user.told.back()), QString("Maximal value must be greater then minimal value."));
    type.Maximum()->setText("9");
    QCOMPARE(type.Result(), std::optional<std::string>("num=5_9;"));
    type.Kind()->setCurrentText("string");
    type.Length()->setText("12");
    QCOMPARE(type.Result(), std::optional<std::string>("string=12;"));
    QCOMPARE(TypeInWords(ws, "string=12;"), QString("text of 12 characters"));
    QCOMPARE(TypeInWords(ws, "num=5_9;"), QString("number from 5 to 9"));

    // Missing codes: a range and one value, shown in words and marked in the grid.
    MissingDialog missing(ws, "999");
    QCOMPARE(missing.Value(0)->text(), QString("999"));
    missing.Mode()->setCurrentIndex(2);
    missing.Low()->setText("100");
    missing.High()->setText("200");
    missing.Value(2)->setText("35");
    std::optional<std::string> codes = missing.Result();
    QVERIFY(codes.has_value());
    QVERIFY(vars->setData(vars->index(4, kMissing), QString::fromStdString(*codes)));
    QCOMPARE(Cell(vars, 4, kMissing), QString("100 to 200 and 35"));
    QAbstractItemModel* data = window->DataView()->model();
    QCOMPARE(Cell(data, 4, 4), QString("35"));
    QVERIFY(data->data(data->index(4, 4), Qt::BackgroundRole).isValid());
    QVERIFY(!data->data(data->index(3, 4), Qt::BackgroundRole).isValid());  // 999 is no longer a code

    // Group labels: added through the core's editor; a second label for a code is refused.
    LabelDialog labels(ws, false, "1=Female;/2=Male;/");
    QCOMPARE(labels.Entries()->count(), 2);
    labels.Low()->setText("3");
    labels.Label()->setText("Other");
    QVERIFY(labels.Add());
    QCOMPARE(labels.Result(), std::string("1=Female;/2=Male;/3=Other;/"));
    std::size_t told = user.told.size();
    labels.Low()->setText("1");
    labels.Label()->setText("Again");
    QVERIFY(!labels.Add());
    QCOMPARE(user.told.size(), told + 1);
    QCOMPARE(labels.Result(), std::string("1=Female;/2=Male;/3=Other;/"));
  }

  void parametersLanguageRecentFilesAndReset() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    std::unique_ptr<MainWindow> window = Start(session);
    QVERIFY(window != nullptr);
    QVERIFY(window->OpenFile(project_));
    window->RunCommand("analysis.single");
    AnalysisForm* form = window->Form(DialogKind::SingleSample);
    QCOMPARE(form->windowTitle(), QString::fromUtf8("Egymintás elemzések"));
    MoveNames(form, {"Pulse", "Age"}, "toSelected");

    // Frequencies: a scale type per variable, the multiplier within its bounds.
    form->CommandList()->setCurrentIndex(2);
    QCOMPARE(form->Dialog().commandCode, 13);
    QTableWidget* selected = form->SelectedTable();
    QVERIFY(!selected->isColumnHidden(1));
    auto* scale = qobject_cast<QComboBox*>(selected->cellWidget(1, 1));
    QVERIFY(scale != nullptr);
    QCOMPARE(scale->currentText(), QString("folytonos"));
    scale->setCurrentIndex(2);
    QCOMPARE(form->Dialog().ValueFor("scaleType", "Age"), std::string("group.def."));
    QVERIFY(form->ParameterControl("classMultiplier")->isVisibleTo(form));
    QVERIFY(!form->ParameterControl("trimmingPercent")->isVisibleTo(form));
    QVERIFY(!form->SetParameter("classMultiplier", "7"));
    QCOMPARE(qobject_cast<QSpinBox*>(form->ParameterControl("classMultiplier"))->value(), 1);

    // Tests on the mean: hypothetical values per variable; a bad one is refused and shown back.
    form->CommandList()->setCurrentIndex(3);
    QCOMPARE(selected->item(0, 1)->text(), QString("1"));
    selected->item(0, 1)->setText("72,5");
    QCOMPARE(form->Dialog().ValueFor("hypotheticalValue", "Pulse"), std::string("72.5"));
    selected->item(1, 1)->setText("abc");
    QCOMPARE(QString::fromStdString(user.told.back()), QString::fromUtf8("hypotheticalValue értéke szám legyen."));
    QCOMPARE(selected->item(1, 1)->text(), QString("1"));

    // Confidence steps through 90, 95, 99; the toggle shows its state in its colour.
    form->CommandList()->setCurrentIndex(1);
    auto* confidence = qobject_cast<QSpinBox*>(form->ParameterControl("confidenceIndex"));
    QCOMPARE(confidence->text(), QString("95"));
    confidence->stepUp();
    QCOMPARE(confidence->text(), QString("99"));
    QCOMPARE(form->Dialog().Value("confidenceIndex"), std::string("2"));
    form->CommandList()->setCurrentIndex(4);
    auto* toggle = qobject_cast<QPushButton*>(form->ParameterControl("saveStandardized"));
    QCOMPARE(toggle->text(), QString(" No "));
    QVERIFY(toggle->styleSheet().contains("#ff8000"));
    QVERIFY(!form->ParameterControl("standardizedKind")->isEnabled());
    QTest::mouseClick(toggle, Qt::LeftButton);
    QCOMPARE(toggle->text(), QString(" Yes "));
    QVERIFY(toggle->styleSheet().contains("#00ff00"));
    QCOMPARE(form->Dialog().Value("saveStandardized"), std::string(" Yes "));
    QVERIFY(form->ParameterControl("standardizedKind")->isEnabled());  // asked while saving is on

    // The language switch relabels every form at once and keeps the chosen command.
    QCOMPARE(MenuEntry(*window, "Válts angolra").isEmpty(), false);
    window->RunCommand("settings.language");
    QCOMPARE(form->windowTitle(), QString("Single sample analyses"));
    QCOMPARE(form->CommandList()->currentText(), QString("Test of normality"));
    QCOMPARE(qobject_cast<QPushButton*>(form->findChild<QPushButton*>("run"))->text(), QString("&Run"));
    QCOMPARE(window->Reports()->Pages()->tabText(1), QString("Complete output file"));
    QCOMPARE(MenuEntry(*window, "Change to hungarian").isEmpty(), false);
    form->CommandList()->setCurrentIndex(1);
    QCOMPARE(form->ParameterCaption("trimmingPercent"), QString("Trimming %"));

    // The recent files, newest first; choosing one opens it, and a load resets the dialog.
    fs::copy_file(root_ / "dat" / "survey.msw", root_ / "dat" / "second.msw");
    QVERIFY(window->OpenFile(QString::fromStdString((root_ / "dat" / "second.msw").string())));
    QCOMPARE(form->SelectedTable()->rowCount(), 0);
    window->RunCommand("file.recent");
    QListWidget* recent = window->RecentFiles()->List();
    QCOMPARE(recent->count(), 2);
    QCOMPARE(recent->item(1)->text(), project_);
    QCOMPARE(window->RecentFiles()->windowTitle(), QString("Last edited files"));
    recent->setCurrentRow(1);
    window->RecentFiles()->OpenChosen();
    QCOMPARE(window->windowTitle(), "Tarvika: " + project_);
  }

 private:
  // The window goes before the session it shows.
  std::unique_ptr<MainWindow> Start(Session& session) {
    StartOptions options;
    options.programFolder = root_.string();
    options.decimalSeparator = '.';
    if (session.StartUp(options) != StartResult::Ready) return nullptr;
    auto window = std::make_unique<MainWindow>(session);
    window->show();
    return window;
  }
  static QString MenuEntry(QMainWindow& w, const QString& text) {
    for (QAction* top : w.menuBar()->actions()) {
      if (top->menu() == nullptr) continue;
      for (QAction* a : top->menu()->actions()) {
        if (QString(a->text()).remove('&') == text) return a->text();
      }
    }
    return {};
  }

  fs::path root_;
  QString project_;
};

QTEST_MAIN(FormsTest)
#include "forms_test.moc"
