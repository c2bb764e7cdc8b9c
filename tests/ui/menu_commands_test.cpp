// The menu entries of the window over the data grid: each runs the editing core on the
// grid's selection, redraws the grid, and undo and redo walk back and forth over it.

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QTableWidget>
#include <QItemSelectionModel>
#include <QtTest>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "ui/main_window.h"
#include "ui/results_pane.h"
#include "ui_test_support.h"
#include "workspace/project_file.h"
#include "workspace/session.h"

namespace fs = std::filesystem;
using namespace tarvika;

using tarvika::test::Bytes;
using tarvika::test::Column;

namespace {

QString Cell(QTableView* view, int row, int column) {
  return view->model()->data(view->model()->index(row, column), Qt::EditRole).toString();
}

void Select(QTableView* view, int row1, int col1, int row2, int col2) {
  QItemSelection range(view->model()->index(row1, col1), view->model()->index(row2, col2));
  view->setCurrentIndex(view->model()->index(row1, col1));
  view->selectionModel()->select(range, QItemSelectionModel::ClearAndSelect);
}

}  // namespace

class MenuCommandsTest : public QObject {
  Q_OBJECT
 private slots:
  void init() { root_ = tarvika::test::MakeProgramFolder("tarvika-menus-"); }
  void cleanup() { fs::remove_all(root_); }

  void editCommandsChangeTheGridAndUndoRestores() {
    ScriptedChannel user(Answer::Yes);
    Session session(user);
    QVERIFY(tarvika::test::StartIn(session, root_));
    MainWindow window(session);
    window.show();
    QVERIFY(window.OpenFile(QString::fromStdString((root_ / "dat" / "people.msw").string())));
    QTableView* data = window.DataView();
    // The wired entries are lit; an entry with no work behind it stays grey.
    for (const char* command : {"edit.undo", "edit.copy", "edit.paste", "data.sort_cases", "variables.insert"})
      QVERIFY2(window.MenuAction(command)->isEnabled(), command);
    QVERIFY(!window.MenuAction("file.print")->isEnabled());
    // The grid's context menu holds the same actions.
    std::unique_ptr<QMenu> context(window.GridContextMenu());
    QVERIFY(context->actions().contains(window.MenuAction("edit.paste")));
    QVERIFY(context->actions().contains(window.MenuAction("data.delete_cases")));

    // Sort by a key, descending: empty cells last; undo gives the old order, redo the sorted one.
    user.QueueText("kor:desc");
    window.RunCommand("data.sort_cases");
    QCOMPARE(Column(data, 0), QStringList({"71", "34", ""}));
    QCOMPARE(Column(data, 1), QStringList({"", "1", "2"}));  // whole cases move
    window.RunCommand("edit.undo");
    QCOMPARE(Column(data, 0), QStringList({"34", "", "71"}));
    window.RunCommand("edit.redo");
    QCOMPARE(Column(data, 0), QStringList({"71", "34", ""}));
    // A key that is no variable is told and changes nothing.
    user.QueueText("nosuch");
    window.RunCommand("data.sort_cases");
    QCOMPARE(Column(data, 0), QStringList({"71", "34", ""}));

    // A cell typed in the grid is undone and redone.
    QVERIFY(data->model()->setData(data->model()->index(0, 1), "2"));
    window.RunCommand("edit.undo");
    QCOMPARE(Cell(data, 0, 1), QString(""));
    window.RunCommand("edit.redo");
    QCOMPARE(Cell(data, 0, 1), QString("2"));

    // Copy two cells of a case, paste them over another case; delete empties a cell.
    Select(data, 1, 0, 1, 1);
    window.RunCommand("edit.copy");
    QCOMPARE(QApplication::clipboard()->text(), QString("34\t1\r\n"));
    Select(data, 2, 0, 2, 0);
    window.RunCommand("edit.paste");
    QCOMPARE(Cell(data, 2, 0), QString("34"));
    QCOMPARE(Cell(data, 2, 1), QString("1"));
    Select(data, 0, 0, 0, 0);
    window.RunCommand("edit.cut");
    QCOMPARE(Cell(data, 0, 0), QString(""));
    QCOMPARE(QApplication::clipboard()->text(), QString("71\r\n"));
    window.RunCommand("edit.undo");
    QCOMPARE(Cell(data, 0, 0), QString("71"));

    // Insert two cases before the selected ones, delete them again (confirmed).
    Select(data, 1, 0, 2, 0);
    window.RunCommand("data.insert_cases");
    QCOMPARE(data->model()->rowCount(), 5);
    QCOMPARE(Column(data, 0), QStringList({"71", "", "", "34", "34"}));
    Select(data, 1, 0, 2, 0);
    window.RunCommand("data.delete_cases");
    QCOMPARE(Column(data, 0), QStringList({"71", "34", "34"}));
    // Variables: one inserted before the second, then deleted; undo brings it back.
    Select(data, 0, 1, 0, 1);
    window.RunCommand("variables.insert");
    QCOMPARE(data->model()->columnCount(), 5);
    QCOMPARE(Cell(data, 0, 2), QString("2"));
    window.RunCommand("variables.delete");
    QCOMPARE(data->model()->columnCount(), 4);
    window.RunCommand("edit.undo");
    QCOMPARE(data->model()->columnCount(), 5);

    // Ctrl+C copies what has the focus: a results table, or the grid's cells.
    window.Results()->AddRun("Run", "kor", "n\tmean\n3\t52.5\n");
    window.ResultsDock()->show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto tables = window.Results()->findChildren<QTableWidget*>();
    QCOMPARE(tables.size(), 1);
    tables.front()->setFocus();
    QTest::keyClick(tables.front(), Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QApplication::clipboard()->text().startsWith("n\tmean"));
    data->setFocus();
    Select(data, 0, 0, 0, 0);
    QTest::keyClick(data, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QString("71\r\n"));

    // Find and replace over the table; go to a case moves the cursor.
    user.QueueText("34");
    user.QueueText("35");
    window.RunCommand("edit.find_replace");
    QCOMPARE(Column(data, 0), QStringList({"71", "35", "35"}));
    user.QueueText("3");
    window.RunCommand("data.go_to_case");
    QCOMPARE(data->currentIndex().row(), 2);

    // A paste that reaches beyond the last variable asks; Yes enlarges the table.
    const int columns = data->model()->columnCount();
    QApplication::clipboard()->setText("7\t8\r\n");
    Select(data, 0, columns - 1, 0, columns - 1);
    window.RunCommand("edit.paste");
    QCOMPARE(data->model()->columnCount(), columns + 1);
    QCOMPARE(Cell(data, 0, columns), QString("8"));
    QVERIFY(QString::fromStdString(user.asked.back()).contains("Igen: a táblázat bővül"));
  }

  void importsAndExportsAsTheCommandLineDoes() {
    {
      std::ofstream csv(root_ / "dat" / "scores.csv", std::ios::binary);
      csv << "name,score,group\nAnna,3.5,1\nBela,5,2\nCili,,1\n";
    }
    ScriptedChannel user(Answer::No);
    Session session(user);
    QVERIFY(tarvika::test::StartIn(session, root_));
    MainWindow window(session);
    QVERIFY(window.MenuAction("file.export_spss")->isEnabled());
    QVERIFY(window.MenuAction("file.export_tab")->isEnabled());

    // Open reads a text file through the importer: an untitled project of its cells.
    QVERIFY(window.OpenFile(QString::fromStdString((root_ / "dat" / "scores.csv").string())));
    QTableView* data = window.DataView();
    QCOMPARE(data->model()->columnCount(), 3);
    QCOMPARE(Column(data, 0), QStringList({"Anna", "Bela", "Cili"}));
    QCOMPARE(Column(data, 1), QStringList({"3.5", "5", ""}));
    QVERIFY(session.ws.CurrentFileName().empty());

    // The window's exports equal the command line's import followed by its export.
    const fs::path project = root_ / "cli.msw";
    tarvika::test::CliReport("--program-dir '" + root_.string() + "' import '" + (root_ / "dat" / "scores.csv").string() +
                             "' '" + project.string() + "'");
    QVERIFY(fs::exists(project));
    auto viaCli = [&](const std::string& out, const std::string& extra) {
      tarvika::test::CliReport("--program-dir '" + root_.string() + "' export '" + project.string() + "' '" +
                               (root_ / out).string() + "'" + extra);
    };
    viaCli("cli.txt", "");
    QVERIFY(window.ExportData("file.export_tab", QString::fromStdString((root_ / "ui.txt").string())));
    QVERIFY(!Bytes(root_ / "cli.txt").empty());
    QCOMPARE(Bytes(root_ / "ui.txt"), Bytes(root_ / "cli.txt"));

    viaCli("cli_fixed.txt", " --syntax '" + (root_ / "cli_fixed.sps").string() + "'");
    QVERIFY(window.ExportData("file.export_spss", QString::fromStdString((root_ / "ui_fixed.sps").string())));
    QCOMPARE(Bytes(root_ / "ui_fixed.txt"), Bytes(root_ / "cli_fixed.txt"));
    QVERIFY(Bytes(root_ / "ui_fixed.sps").find("ui_fixed.txt") != std::string::npos);

    QVERIFY(window.ExportData("file.export_spss", QString::fromStdString((root_ / "ui.sav").string())));
    QVERIFY(fs::file_size(root_ / "ui.sav") > 100);

    // A damaged file is refused: the tables stay as they were.
    {
      std::ofstream bad(root_ / "dat" / "bad.xlsx", std::ios::binary);
      bad << "not a zip";
    }
    QVERIFY(!window.OpenFile(QString::fromStdString((root_ / "dat" / "bad.xlsx").string())));
    QCOMPARE(Column(data, 0), QStringList({"Anna", "Bela", "Cili"}));
  }

  void recodesAndCountsAsTheCommandLineDoes() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    QVERIFY(tarvika::test::StartIn(session, root_));
    MainWindow window(session);
    const std::string people = (root_ / "dat" / "people.msw").string();
    QVERIFY(window.OpenFile(QString::fromStdString(people)));
    QVERIFY(window.MenuAction("transform.recode")->isEnabled());
    QVERIFY(window.MenuAction("transform.statistical")->isEnabled());
    QVERIFY(!window.MenuAction("transform.bivariate_operation")->isEnabled());
    QTableView* data = window.DataView();

    // A rule line that is no rule is told and changes nothing.
    for (const char* text : {"nem", "(c) 1 .. 2 -> 1"}) user.QueueText(text);
    window.RunCommand("transform.recode");
    QVERIFY(QString::fromStdString(user.told.back()).contains("(c) 1 .. 2 -> 1"));
    QCOMPARE(Column(data, 1), QStringList({"1", "2", ""}));

    // In place, then into a count; both equal the command line's projects.
    for (const char* text : {"nem", "(a) 1 -> 5 | (f) Else -> same", ""}) user.QueueText(text);
    window.RunCommand("transform.recode");
    QCOMPARE(Column(data, 1), QStringList({"5", "2", ""}));
    for (const char* text : {"kor, nem", "(a) 2 | (b) Missing", "Hits"}) user.QueueText(text);
    window.RunCommand("transform.count");
    QCOMPARE(data->model()->columnCount(), 5);
    // A formula variable and a statistical function of each case.
    for (const char* text : {"add", "kor", "2", "kor2"}) user.QueueText(text);
    window.RunCommand("transform.univariate");
    QCOMPARE(Column(data, 5), QStringList({"36", "", "73"}));
    for (const char* text : {"mean", "kor, nem", "m"}) user.QueueText(text);
    window.RunCommand("transform.statistical");
    QCOMPARE(data->model()->columnCount(), 7);
    for (const char* text : {"nosuch"}) user.QueueText(text);
    window.RunCommand("transform.bivariate");
    QCOMPARE(data->model()->columnCount(), 7);
    // The Y of x+y is one variable: none or two are told, and nothing changes.
    for (const char* text : {"x+y", "kor", "", "s"}) user.QueueText(text);
    window.RunCommand("transform.bivariate");
    QCOMPARE(QString::fromStdString(user.told.back()), QString::fromUtf8("Válasszon Y változót!"));
    for (const char* text : {"x+y", "kor", "kor, nem"}) user.QueueText(text);
    window.RunCommand("transform.bivariate");
    QCOMPARE(QString::fromStdString(user.told.back()), QString::fromUtf8("Egy Y változót adjon meg."));
    QCOMPARE(data->model()->columnCount(), 7);
    QVERIFY(SaveProject(session.ws, (root_ / "ui.msw").string()));

    const std::string dir = "--program-dir '" + root_.string() + "' ";
    const std::string cliProject = (root_ / "cli.msw").string();
    tarvika::test::CliReport(dir + "recode '" + people + "' --vars nem --rule \"(a) 1 -> 5\" --rule \"(f) Else -> same\" --out '" +
                             cliProject + "'");
    tarvika::test::CliReport(dir + "count '" + cliProject + "' --vars kor,nem --rule \"(a) 2\" --rule \"(b) Missing\" --name Hits --in-place");
    tarvika::test::CliReport(dir + "transform '" + cliProject + "' --function add --vars kor --c 2 --name kor2 --in-place");
    tarvika::test::CliReport(dir + "transform '" + cliProject + "' --function mean --vars kor,nem --name m --in-place");
    QVERIFY(!Bytes(root_ / "cli.msw").empty());
    QCOMPARE(Bytes(root_ / "ui.msw"), Bytes(root_ / "cli.msw"));

    // Undo takes the commands back one by one.
    window.RunCommand("edit.undo");
    window.RunCommand("edit.undo");
    QCOMPARE(data->model()->columnCount(), 5);
    window.RunCommand("edit.undo");
    QCOMPARE(data->model()->columnCount(), 4);
    window.RunCommand("edit.undo");
    QCOMPARE(Column(data, 1), QStringList({"1", "2", ""}));
  }

  void randomVariablesAndWeightedSumsAsTheCommandLineDoes() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    QVERIFY(tarvika::test::StartIn(session, root_));
    MainWindow window(session);
    const std::string people = (root_ / "dat" / "people.msw").string();
    QVERIFY(window.OpenFile(QString::fromStdString(people)));
    session.ws.language = Language::English;
    QTableView* data = window.DataView();
    const int columns = data->model()->columnCount();

    // Refusals are told and change nothing: an unknown generator, a bad seed, too few weights.
    user.QueueText("gamma");
    window.RunCommand("transform.random");
    for (const char* text : {"normal", "100", "15", "", "-1"}) user.QueueText(text);
    window.RunCommand("transform.random");
    QVERIFY(QString::fromStdString(user.told.back()).contains("The seed is a whole number"));
    for (const char* text : {"kor, nem", "2", "W"}) user.QueueText(text);
    window.RunCommand("transform.weighted_sum");
    QVERIFY(QString::fromStdString(user.told.back()).contains("Give one weight for each variable"));
    QCOMPARE(data->model()->columnCount(), columns);

    // The bivariate normal by its number with the names offered and a seed; then a normal
    // by its entry with the clock's seed, which the end message tells; then a weighted sum.
    for (const char* text : {"2", "50", "15", "100", "15", "0.3", "", "777"}) user.QueueText(text);
    window.RunCommand("transform.random");
    QVERIFY(QString::fromStdString(user.asked[user.asked.size() - 8]).contains("12  Mixed normal"));
    QCOMPARE(user.told.back(), std::string("Two new random variables have been successfully created. Seed: 777"));
    for (const char* text : {"univariate normal", "100", "15", "R", ""}) user.QueueText(text);
    window.RunCommand("transform.random");
    const std::string told = user.told.back();
    QVERIFY2(told.starts_with("The new random variable has been successfully created. Seed: "), told.c_str());
    const std::string seed = told.substr(told.rfind(' ') + 1);
    for (const char* text : {"kor, nem", "2; -1", "W"}) user.QueueText(text);
    window.RunCommand("transform.weighted_sum");
    QCOMPARE(Column(data, columns + 3), QStringList({"67", "", ""}));
    QVERIFY(SaveProject(session.ws, (root_ / "ui.msw").string()));

    const std::string dir = "--lang en --program-dir '" + root_.string() + "' ";
    const std::string cliProject = (root_ / "cli.msw").string();
    tarvika::test::CliReport(dir + "random '" + people + "' --generator bivariate-normal --set Mean_1=50 --set Correl=0.3 " +
                             "--seed 777 --out '" + cliProject + "'");
    tarvika::test::CliReport(dir + "random '" + cliProject + "' --generator normal --name R --seed " + seed + " --in-place");
    tarvika::test::CliReport(dir + "transform '" + cliProject + "' --function weighted-sum --vars kor,nem --weights=2,-1 " +
                             "--name W --in-place");
    QVERIFY(!Bytes(root_ / "cli.msw").empty());
    QCOMPARE(Bytes(root_ / "ui.msw"), Bytes(root_ / "cli.msw"));
    window.RunCommand("edit.undo");
    QCOMPARE(data->model()->columnCount(), columns + 3);
  }

 private:
  fs::path root_;
};

QTEST_MAIN(MenuCommandsTest)
#include "menu_commands_test.moc"
