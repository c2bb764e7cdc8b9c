// Every analysis dialog through its one form: each built command run by the form's buttons
// gives the report the command line gives for the same selection; the lists, captions and
// refusals follow the command; the results pane keeps the runs in order with their tables
// as real columns, copies a table and exports the session.

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>

#include <array>
#include <cstdio>
#include <filesystem>

#include "analyses/command_table.h"
#include "ui/analysis_form.h"
#include "ui/main_window.h"
#include "ui/qt_text.h"
#include "ui/results_pane.h"
#include "ui_test_support.h"
#include "workspace/session.h"

namespace fs = std::filesystem;
using namespace tarvika;
using tarvika::test::CliReport;
using tarvika::test::MoveNames;

namespace {

// One run as a person makes it in a dialog, and as the command line is told it.
struct Selection {
  int code;
  QString project;  // a file of the program folder's dat/
  QStringList selected, y, grouping, covariates;
  QString conditional;
  std::vector<std::pair<std::string, std::string>> settings;  // "name" or "name:variable", value
};

QString Join(const QStringList& names) { return names.join(','); }

}  // namespace

class AnalysisFormsTest : public QObject {
  Q_OBJECT
 private slots:
  void init() {
    root_ = fs::temp_directory_path() / ("tarvika-dialogs-" + std::to_string(QCoreApplication::applicationPid()));
    fs::remove_all(root_);
    for (const fs::path& folder : {root_ / "gui", root_ / "cli"}) {
      fs::create_directories(folder / "dat");
      fs::copy(TARVIKA_SOURCE_DIR "/data/language", folder / "language");
      fs::copy(TARVIKA_SOURCE_DIR "/data/stattab", folder / "stattab");
    }
    fs::copy_file(TARVIKA_SOURCE_DIR "/data/dat/survey.msw", root_ / "gui" / "dat" / "survey.msw");
    fs::copy_file(TARVIKA_SOURCE_DIR "/tests/relations/data/items.msw", root_ / "gui" / "dat" / "items.msw");
  }
  void cleanup() { fs::remove_all(root_); }

  void everyBuiltCommandGivesTheCommandLinesReport() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    std::unique_ptr<MainWindow> window = Start(session);
    QVERIFY(window != nullptr);
    const std::vector<Selection> runs = {
        {11, "survey", {"Wr.Hnd", "NW.Hnd", "Pulse"}, {}, {}, {}, "Smoke", {}},
        {12, "survey", {"Pulse", "Height"}, {}, {}, {}, "", {{"trimmingPercent", "10"}}},
        {13, "survey", {"Exer", "Age"}, {}, {}, {}, "", {{"scaleType:Exer", "discrete"}}},
        {14, "survey", {"Pulse", "Height"}, {}, {}, {}, "Sex", {{"hypotheticalValue:Pulse", "72"}}},
        {15, "survey", {"Height", "Age"}, {}, {}, {}, "", {}},
        {21, "survey", {"Pulse", "Height"}, {}, {"Exer"}, {}, "", {{"trimmingPercent", "20"}}},
        {31, "survey", {"Height", "Pulse"}, {"Wr.Hnd", "Age"}, {}, {}, "Sex", {{"pairing", "Pair"}}},
        {32, "survey", {"Wr.Hnd", "NW.Hnd", "Age"}, {}, {}, {"Height"}, "", {{"correlationType", "Spearman rho"}}},
        {33, "survey", {"Wr.Hnd", "NW.Hnd", "Pulse", "Age"}, {"Height"}, {}, {}, "", {}},
        {34, "survey", {"Exer", "Sex"}, {"Smoke"}, {}, {}, "", {{"rowPercents", "Yes"}}},
        {35, "items", {"A", "B", "C"}, {"D"}, {}, {}, "", {{"itemMin", "1"}, {"itemMax", "5"}}},
    };
    QString opened;
    int ran = 0;
    for (const Selection& s : runs) {
      const CommandInfo* command = AllCommands().Find(s.code);
      QVERIFY(command != nullptr && command->Built());
      QString project = QString::fromStdString((root_ / "gui" / "dat" / (s.project.toStdString() + ".msw")).string());
      if (project != opened) {
        QVERIFY(window->OpenFile(project));
        opened = project;
      }
      window->RunCommand(ToQt(Dialog(command->dialog).menuCommand));
      AnalysisForm* form = window->Form(command->dialog);
      QVERIFY(form->isVisible());
      form->Reset();
      std::vector<const CommandInfo*> list = AllCommands().ListOf(command->dialog);
      int index = static_cast<int>(std::find(list.begin(), list.end(), command) - list.begin());
      form->CommandList()->setCurrentIndex(index);
      QCOMPARE(form->Dialog().commandCode, s.code);
      QVERIFY(!form->RunButton()->isEnabled());  // nothing chosen yet: the refusal is shown
      QVERIFY(!form->Refusal().isEmpty());
      MoveNames(form, s.selected, "toSelected");
      if (!s.y.isEmpty()) MoveNames(form, s.y, "toY");
      if (!s.grouping.isEmpty()) MoveNames(form, s.grouping, "toGrouping");
      if (!s.covariates.isEmpty()) MoveNames(form, s.covariates, "toCovariate");
      if (!s.conditional.isEmpty()) MoveNames(form, {s.conditional}, "toConditional");
      QString arguments = QString(" run '%1' --command %2 --vars %3 --lang en")
                              .arg(QString::fromStdString((root_ / "gui" / "dat").string()) + "/" + s.project + ".msw")
                              .arg(s.code)
                              .arg(Join(s.selected));
      if (!s.y.isEmpty()) arguments += " --y " + Join(s.y);
      if (!s.grouping.isEmpty()) arguments += " --group " + Join(s.grouping);
      if (!s.covariates.isEmpty()) arguments += " --cov " + Join(s.covariates);
      if (!s.conditional.isEmpty()) arguments += " --cond " + s.conditional;
      for (const auto& [name, value] : s.settings) {
        std::size_t colon = name.find(':');
        QVERIFY(colon == std::string::npos ? form->SetParameter(name, value)
                                           : form->SetForVariable(name.substr(0, colon), name.substr(colon + 1), value));
      }
      // The dialog keeps its values from command to command: the command line is given
      // every one the command reads.
      for (const auto& [name, value] : form->Dialog().values) {
        if (command->Uses(name)) arguments += QString(" --set '%1=%2'").arg(QString::fromStdString(name), QString::fromStdString(value));
      }
      for (const auto& [name, byVariable] : form->Dialog().perVariable) {
        if (!command->Uses(name)) continue;
        for (const auto& [variable, value] : byVariable) {
          arguments += QString(" --set '%1:%2=%3'").arg(QString::fromStdString(name), QString::fromStdString(variable), QString::fromStdString(value));
        }
      }
      QVERIFY2(form->Refusal().isEmpty(), qPrintable(form->Refusal()));
      QVERIFY(form->RunButton()->isEnabled());
      QTest::mouseClick(form->RunButton(), Qt::LeftButton);
      ++ran;
      QCOMPARE(window->Results()->RunCount(), ran);
      QString expected = CliReport("--program-dir '" + (root_ / "cli").string() + "'" + arguments.toStdString());
      QVERIFY2(expected.startsWith("|| Tarvika 2.0\n"), qPrintable(QString::number(s.code)));
      QString shown = window->Results()->RunReport(ran - 1).replace("\r\n", "\n");
      QCOMPARE(shown, expected);
      QCOMPARE(window->Results()->RunTitle(ran - 1), ToQt(command->Entry(Language::English)));
      if (s.code == kCorrelationRegression) {
        QVERIFY(window->Results()->Outline()->topLevelItem(ran - 1)->text(0).endsWith("(Height, Pulse; Y: Wr.Hnd, Age | Sex)"));
      }
      form->close();
    }
    QCOMPARE(window->Results()->Outline()->topLevelItemCount(), ran);
  }

  void listsCaptionsRefusalsAndKeys() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    std::unique_ptr<MainWindow> window = Start(session);
    QVERIFY(window->OpenFile(QString::fromStdString((root_ / "gui" / "dat" / "survey.msw").string())));
    window->RunCommand("analysis.groups");
    AnalysisForm* form = window->Form(DialogKind::Groups);
    QCOMPARE(form->windowTitle(), QString("Comparison of groups and repeated measures"));
    QCOMPARE(form->TargetCaption(ListRole::Selected)->text(), QString("Dependent variables"));
    QVERIFY(form->TargetShown(ListRole::Grouping));
    QVERIFY(!form->TargetShown(ListRole::Covariate));

    // Enter in the source list moves the current name; in the selected list it moves it back.
    form->SourceListWidget()->setCurrentRow(4);  // Pulse
    QTest::keyClick(form->SourceListWidget(), Qt::Key_Return);
    QCOMPARE(form->Dialog().selected, std::vector<std::string>{"Pulse"});
    QCOMPARE(form->Refusal(), QString("You must select one grouping variable."));
    QVERIFY(!form->RunButton()->isEnabled());
    QCOMPARE(window->Results()->RunCount(), 0);  // Enter never ran anything

    // Command 21 takes one grouping variable; the two-way ones two; a second goes nowhere.
    MoveNames(form, {"Sex", "Smoke"}, "toGrouping");
    QCOMPARE(form->Dialog().grouping, std::vector<std::string>{"Sex"});
    QVERIFY(form->Refusal().isEmpty());
    QVERIFY(form->RunButton()->isEnabled());
    // A command that isn't built keeps Run off and says why.
    form->SetCommand(kTwoWayIndependent);
    QCOMPARE(form->Refusal(), QString("You must select two grouping variables."));
    MoveNames(form, {"Smoke"}, "toGrouping");
    QVERIFY(form->Refusal().isEmpty());
    QVERIFY(!form->RunButton()->isEnabled());
    QCOMPARE(form->RunButton()->toolTip(), QString("Sorry, under construction."));
    // The inter-rater command asks for a case code in its own list.
    form->SetCommand(kInterRater);
    QVERIFY(form->TargetShown(ListRole::Covariate));
    QVERIFY(!form->TargetShown(ListRole::Grouping));
    QCOMPARE(form->TargetCaption(ListRole::Covariate)->text(), QString("Case code variable"));
    QCOMPARE(form->Refusal(), QString("You must select a case code variable."));

    // The relationship dialog: parameters of the chosen command only, with bounds and switches.
    window->RunCommand("analysis.relations");
    AnalysisForm* relations = window->Form(DialogKind::Relations);
    relations->SetCommand(kCorrelationMatrix);
    QVERIFY(relations->TargetShown(ListRole::Covariate));
    QVERIFY(relations->ParameterControl("correlationType")->isVisibleTo(relations));
    QVERIFY(!relations->ParameterControl("rowPercents")->isVisibleTo(relations));
    QVERIFY(!relations->ParameterControl("listLength")->isEnabled());  // asked once listing is on
    QVERIFY(relations->SetParameter("listCorrelations", "Yes"));
    QVERIFY(relations->ParameterControl("listLength")->isEnabled());
    QVERIFY(!relations->SetParameter("listLength", "2"));  // below its bound of 3
    QCOMPARE(relations->Dialog().Value("listLength"), std::string("100"));
    relations->SetCommand(kMultipleRegression);
    QCOMPARE(relations->TargetCaption(ListRole::Y)->text(), QString("Dependent variable (Y)"));
    QVERIFY(!relations->TargetShown(ListRole::Covariate));
    QVERIFY(relations->ParameterControl("enterF")->isVisibleTo(relations));
  }

  void resultsPaneKeepsRunsInOrderWithAlignedColumns() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    std::unique_ptr<MainWindow> window = Start(session);
    QVERIFY(window->OpenFile(QString::fromStdString((root_ / "gui" / "dat" / "survey.msw").string())));
    window->RunCommand("analysis.single");
    AnalysisForm* form = window->Form(DialogKind::SingleSample);
    MoveNames(form, {"Pulse", "Height"}, "toSelected");
    for (int code : {kBasicStatistics, kDetailedStatistics, kNormalityTests}) {
      form->SetCommand(code);
      QCOMPARE(form->Run(), RunResult::Ran);
    }
    ResultsPane* pane = window->Results();
    QCOMPARE(pane->RunCount(), 3);
    QCOMPARE(pane->RunTitle(0), QString("Basic descriptive statistics"));
    QCOMPARE(pane->RunTitle(1), QString("Detailed statistics"));
    QCOMPARE(pane->RunTitle(2), QString("Test of normality"));
    QVERIFY(pane->Outline()->topLevelItem(2)->text(0).contains("Test of normality  (Pulse, Height)"));

    // The first table of the first run: the head and one row per variable, each cell in its
    // own column; numbers right-aligned, names left; every cell within its column.
    QTableWidget* table = pane->Tables(0).front();
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(table->item(0, 1)->text(), QString("Variable"));
    QCOMPARE(table->item(1, 1)->text(), QString("Pulse"));
    QCOMPARE(table->item(1, 3)->text(), QString("74.15"));
    QCOMPARE(table->item(2, 3)->text(), QString("172.38"));
    QVERIFY(table->item(1, 3)->textAlignment() & Qt::AlignRight);
    QVERIFY(table->item(1, 1)->textAlignment() & Qt::AlignLeft);
    for (int c = 0; c < table->columnCount(); ++c) {
      QRect head = table->visualItemRect(table->item(0, c));
      for (int r = 1; r < table->rowCount(); ++r) {
        QRect cell = table->visualItemRect(table->item(r, c));
        QCOMPARE(cell.left(), head.left());
        QCOMPARE(cell.width(), head.width());
        QVERIFY(cell.top() > table->visualItemRect(table->item(r - 1, c)).top());
        QVERIFY(table->fontMetrics().horizontalAdvance(table->item(r, c)->text()) <= cell.width());
      }
      if (c > 0) QVERIFY(head.left() >= table->visualItemRect(table->item(0, c - 1)).right());
    }

    // Copy gives the table's lines as tab-separated text, cells as the report has them trimmed.
    pane->CopyTable(table);
    QString copied = QApplication::clipboard()->text();
    QVERIFY(copied.startsWith("Index\tVariable\tCases\tMean\tSD\tRel.SD\tX_min\tX_max\tz_min\tz_max\tLong variable name\n"));
    QVERIFY(copied.contains("5.\tPulse\t192\t74.15\t11.69\t0.158\t35\t104\t-3.35\t2.55\tPulse rate (beats per minute)\n"));

    // The session's output: every run in order, as html tables and as text.
    std::string error;
    QVERIFY(pane->ExportHtml((root_ / "session.html").string(), &error));
    QVERIFY(pane->ExportText((root_ / "session.txt").string(), &error));
    const std::string page = tarvika::test::Bytes(root_ / "session.html");
    std::size_t first = page.find("<h2>Basic descriptive statistics</h2>"), last = page.find("<h2>Test of normality</h2>");
    QVERIFY(first != std::string::npos && last != std::string::npos && first < last);
    QVERIFY(page.find("<td class=\"n\">74.15</td>") != std::string::npos);
    QCOMPARE(QString::fromStdString(tarvika::test::Bytes(root_ / "session.txt")), pane->RunReport(0) + "\n\n" + pane->RunReport(1) + "\n\n" + pane->RunReport(2));

    // Html reports: their tables as tables, their figures drawn beside them.
    window->MenuAction("view.html_reports")->trigger();
    form->SetCommand(kFrequencies);
    QCOMPARE(form->Run(), RunResult::Ran);
    QCOMPARE(pane->RunCount(), 4);
    QCOMPARE(pane->Figures(3).size(), std::size_t(2));  // a histogram per variable
    QVERIFY(pane->Figures(3).front()->width() > 50);
    QTableWidget* frequencies = pane->Tables(3).front();
    QCOMPARE(frequencies->item(0, 0)->text(), QString("Midpoint"));  // classes of a continuous variable
    QCOMPARE(frequencies->item(0, 1)->text(), QString("Freq."));
    QVERIFY(frequencies->item(1, 1)->textAlignment() & Qt::AlignRight);
    // Every table shows whole, above the figure that follows it.
    QApplication::processEvents();
    for (QTableWidget* t : pane->Tables(3)) QVERIFY(t->height() > t->rowCount() * t->rowHeight(0));
    QVERIFY(pane->Tables(3)[0]->geometry().bottom() < pane->Figures(3)[0]->geometry().top());
    window->MenuAction("view.html_reports")->trigger();

    // A Hungarian report reads back with its accented letters.
    window->RunCommand("settings.language");
    QCOMPARE(form->Run(), RunResult::Ran);
    QVERIFY(pane->RunReport(4).contains(QString::fromUtf8("Az input fájl neve: ")));
  }

  void cancelEndsARunAndKeepsWhatItWrote() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    std::unique_ptr<MainWindow> window = Start(session);
    QVERIFY(window->OpenFile(QString::fromStdString((root_ / "gui" / "dat" / "survey.msw").string())));
    // 30,000 cases (the example's repeated): the run reports its progress every 10,000.
    Workspace& ws = session.ws;
    const int cases = 30000, original = ws.NumberOfCases(), columns = ws.NumberOfVariables();
    ws.data.Resize(columns + 1, cases + 1);
    for (int r = original + 1; r <= cases; ++r) {
      for (int c = 0; c <= columns; ++c) ws.data.SetCell(c, r, std::string(ws.data.GetCell(c, (r - 1) % original + 1)));
    }
    window->RunCommand("analysis.single");
    AnalysisForm* form = window->Form(DialogKind::SingleSample);
    MoveNames(form, {"Pulse"}, "toSelected");
    MoveNames(form, {"Smoke"}, "toConditional");
    QPushButton* cancel = window->CancelButton();
    bool shownEnabled = false;
    QTimer::singleShot(0, cancel, [&] {  // the first time the run lets events through
      shownEnabled = cancel->isVisible() && cancel->isEnabled() && window->Progress()->isVisible();
      cancel->click();
    });
    QCOMPARE(form->Run(), RunResult::Ran);
    QVERIFY(shownEnabled);
    QCOMPARE(QString::fromStdString(user.told.back()), QString("The analysis was cancelled."));
    QVERIFY(window->Results()->RunReport(0).trimmed().endsWith("The analysis was cancelled."));
    QVERIFY(!window->Results()->RunReport(0).contains("Pulse rate"));  // stopped before its table
    QVERIFY(!cancel->isVisible());
    QVERIFY(!window->Progress()->isVisible());
    // Without Cancel the same run goes to its end.
    QCOMPARE(form->Run(), RunResult::Ran);
    QVERIFY(window->Results()->RunReport(1).contains("Pulse rate"));
    QVERIFY(!window->Results()->RunReport(1).contains("The analysis was cancelled."));
  }

 private:
  std::unique_ptr<MainWindow> Start(Session& session) {
    if (!tarvika::test::StartIn(session, root_ / "gui")) return nullptr;
    auto window = std::make_unique<MainWindow>(session);
    window->show();
    window->RunCommand("settings.language");  // no settings file: Hungarian; the runs are English
    return window;
  }

  fs::path root_;
};

QTEST_MAIN(AnalysisFormsTest)
#include "analysis_forms_test.moc"
