// The menu entries of the window over the data grid: each runs the editing core on the
// grid's selection, redraws the grid, and undo and redo walk back and forth over it.

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QItemSelectionModel>
#include <QtTest>

#include <filesystem>

#include "ui/main_window.h"
#include "workspace/session.h"

namespace fs = std::filesystem;
using namespace tarvika;

namespace {

QString Cell(QTableView* view, int row, int column) {
  return view->model()->data(view->model()->index(row, column), Qt::EditRole).toString();
}

QStringList Column(QTableView* view, int column) {
  QStringList cells;
  for (int r = 0; r < view->model()->rowCount(); ++r) cells << Cell(view, r, column);
  return cells;
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
  void init() {
    root_ = fs::temp_directory_path() / ("tarvika-menus-" + std::to_string(QCoreApplication::applicationPid()));
    fs::remove_all(root_);
    fs::create_directories(root_ / "stattab");
    fs::copy(TARVIKA_SOURCE_DIR "/data/language", root_ / "language");
    fs::create_directories(root_ / "dat");
    fs::copy_file(TARVIKA_TEST_DATA "/workspace/data/roundtrip.msw", root_ / "dat" / "people.msw");
  }
  void cleanup() { fs::remove_all(root_); }

  void editCommandsChangeTheGridAndUndoRestores() {
    ScriptedChannel user(Answer::Yes);
    Session session(user);
    StartOptions options;
    options.programFolder = root_.string();
    options.decimalSeparator = '.';
    QCOMPARE(session.StartUp(options), StartResult::Ready);
    MainWindow window(session);
    window.show();
    QVERIFY(window.OpenFile(QString::fromStdString((root_ / "dat" / "people.msw").string())));
    QTableView* data = window.DataView();
    // The wired entries are lit; an entry with no work behind it stays grey.
    for (const char* command : {"edit.undo", "edit.copy", "edit.paste", "data.sort_cases", "variables.insert"})
      QVERIFY2(window.MenuAction(command)->isEnabled(), command);
    QVERIFY(!window.MenuAction("file.print")->isEnabled());

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

    // Find and replace over the table; go to a case moves the cursor.
    user.QueueText("34");
    user.QueueText("35");
    window.RunCommand("edit.find_replace");
    QCOMPARE(Column(data, 0), QStringList({"71", "35", "35"}));
    user.QueueText("3");
    window.RunCommand("data.go_to_case");
    QCOMPARE(data->currentIndex().row(), 2);
  }

 private:
  fs::path root_;
};

QTEST_MAIN(MenuCommandsTest)
#include "menu_commands_test.moc"
