// The dialogs of the Data and Edit menus over the editing core: merge and split give the
// command line's files, verification fills the error list, and the project copies of the
// folder "undo" warn about a name in use and come back as they were saved.

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "ui/main_window.h"
#include "ui/merge_dialog.h"
#include "ui/split_dialog.h"
#include "ui/undo_copy_dialog.h"
#include "ui/verification_windows.h"
#include "ui_test_support.h"
#include "workspace/project_file.h"
#include "workspace/session.h"

namespace fs = std::filesystem;
using namespace tarvika;

using tarvika::test::Bytes;
using tarvika::test::Column;

namespace {

QStringList Items(QListWidget* list) {
  QStringList items;
  for (int i = 0; i < list->count(); ++i) items << list->item(i)->text();
  return items;
}

void Choose(QListWidget* list, const QString& text) {
  list->clearSelection();
  auto found = list->findItems(text, Qt::MatchExactly);
  QVERIFY2(found.size() == 1, qPrintable(text));
  list->setCurrentItem(found.front());
  found.front()->setSelected(true);
}

// The dialog of that kind the window shows now (one closed before may wait for deletion).
template <class Dialog>
Dialog* Shown(QWidget& window) {
  for (Dialog* dialog : window.findChildren<Dialog*>())
    if (dialog->isVisible()) return dialog;
  return nullptr;
}

// A project in the file format: short names with their types, and the rows of the data.
fs::path WriteProject(const fs::path& path, const std::vector<std::pair<std::string, std::string>>& decl,
                      const std::vector<std::string>& rows) {
  std::string text = "<Tarvika_for_windows>=2.0;\r\n<variables>=" + std::to_string(decl.size()) + ";\r\n<cases>=" +
                     std::to_string(rows.size()) + ";\r\n";
  for (std::size_t v = 0; v < decl.size(); ++v) {
    text += "#=" + std::to_string(v + 1) + ";\r\n<name>=" + decl[v].first + ";\r\n<longname>=;\r\n$" + decl[v].second +
            "\r\n<assign>=none;\r\n<labels>=;\r\n<help>=;\r\n<missing>=;\r\n";
  }
  text += "<datamatrix>=;\r\n";
  for (const std::string& row : rows) text += row + "\r\n";
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

// A project to add: kor (the key), pont and nem; kor 71 is there twice, 50 not in people.msw.
fs::path WriteAdded(const fs::path& folder) {
  return WriteProject(folder / "added.msw", {{"kor", "num=0_120;"}, {"pont", "num=0_10;"}, {"nem", "num=0_0;"}},
                      {"71\t5\t2", "34\t7\t1", "50\t9\t1", "71\t3\t2"});
}

}  // namespace

class EditingDialogsTest : public QObject {
  Q_OBJECT
 private slots:
  void init() {
    root_ = tarvika::test::MakeProgramFolder("tarvika-editing-dialogs-");
    people_ = (root_ / "dat" / "people.msw").string();
    dir_ = "--program-dir '" + root_.string() + "' ";
  }
  void cleanup() { fs::remove_all(root_); }

  void mergeGivesTheCommandLinesTableAndUndoTakesItBack() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    QVERIFY(tarvika::test::StartIn(session, root_));
    MainWindow window(session);
    QVERIFY(window.OpenFile(QString::fromStdString(people_)));
    QVERIFY(window.MenuAction("data.merge_variables")->isEnabled());
    const fs::path added = WriteAdded(root_);
    QTableView* data = window.DataView();

    // Add variables by the key kor, with the source indicator: the command line's project.
    MergeDialog* merge = window.OpenMerge("data.merge_variables", QString::fromStdString(added.string()));
    QVERIFY(merge != nullptr);
    // A key the added file lacks is told, and the list starts without a key.
    merge->Key()->setText("megj");
    QVERIFY(!merge->Reset());
    QVERIFY(QString::fromStdString(user.told.back()).startsWith("A kulcs változóknak azonos nevet kell viselni"));
    QVERIFY(merge->Key()->text().isEmpty());
    merge->Key()->setText("kor");
    QVERIFY(merge->Reset());
    // The key of the added file joins no column; its nem is renamed beside the working nem.
    QCOMPARE(Items(merge->United()).mid(4), QStringList({"pont=2;", "nem0=3;"}));
    QVERIFY(Items(merge->Added()).isEmpty());
    Choose(merge->United(), "pont=2;");
    QCOMPARE(merge->Info()->text(), QString("pont: numerikus, 0 és 10 között"));
    merge->IndicatorOn()->setChecked(true);
    merge->IndicatorName()->setText("src");
    QVERIFY(merge->Finish());
    QCOMPARE(data->model()->columnCount(), 7);
    QCOMPARE(Column(data, 4), QStringList({"7", "", "5"}));  // the first case with kor 71
    QCOMPARE(Column(data, 6), QStringList({"1", "0", "1"}));
    QVERIFY(SaveProject(session.ws, (root_ / "ui.msw").string()));
    tarvika::test::CliReport(dir_ + "merge '" + people_ + "' '" + added.string() + "' --variables --key kor --indicator src --out '" +
                             (root_ / "cli.msw").string() + "'");
    QVERIFY(!Bytes(root_ / "cli.msw").empty());
    QCOMPARE(Bytes(root_ / "ui.msw"), Bytes(root_ / "cli.msw"));
    window.RunCommand("edit.undo");
    QCOMPARE(data->model()->columnCount(), 4);

    // Add cases: kor and nem pair by name; pont is paired by hand with jövedel and renamed;
    // a name already in the list is refused.
    merge = window.OpenMerge("data.merge_cases", QString::fromStdString(added.string()));
    QVERIFY(merge != nullptr);
    QCOMPARE(Items(merge->United()), QStringList({"kor & kor", "nem & nem", "jövedel=3;", "megj=4;", "pont=2;"}));
    merge->United()->clearSelection();
    merge->United()->item(2)->setSelected(true);
    merge->United()->item(4)->setSelected(true);
    QVERIFY(merge->Pair());
    QCOMPARE(Items(merge->United()), QStringList({"kor & kor", "nem & nem", "jövedel & pont", "megj=4;"}));
    Choose(merge->United(), "megj=4;");
    user.QueueText("kor");
    QVERIFY(!merge->Rename());
    QVERIFY(QString::fromStdString(user.told.back()).startsWith("Az új változónév megegyezik"));
    Choose(merge->United(), "jövedel & pont");
    user.QueueText("penz");
    QVERIFY(merge->Rename());
    QCOMPARE(merge->United()->item(2)->text(), QString("jövedel & pont -> penz"));
    QVERIFY(merge->Finish());
    QCOMPARE(data->model()->rowCount(), 7);
    QCOMPARE(data->model()->headerData(2, Qt::Horizontal).toString(), QString("penz"));
    QCOMPARE(Column(data, 2), QStringList({"1250.5", "", "999", "5", "7", "9", "3"}));
    QCOMPARE(Column(data, 3).mid(3), QStringList({"", "", "", ""}));  // megj exists only in the working file
    window.RunCommand("edit.undo");
    QCOMPARE(data->model()->rowCount(), 3);
    QCOMPARE(data->model()->headerData(2, Qt::Horizontal).toString(), QString("jövedel"));
  }

  void splitWritesTheCommandLinesFilesAndLeavesTheWorkspace() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    QVERIFY(tarvika::test::StartIn(session, root_));
    MainWindow window(session);
    QVERIFY(window.OpenFile(QString::fromStdString(people_)));
    SplitDialog* split = window.OpenSplit();
    split->First().file->setText(QString::fromStdString((root_ / "ui_a.msw").string()));
    split->First().variables->setText("megj, kor");
    split->First().range->setChecked(true);
    split->First().to->setText("3");
    // A range needs both ends: told, and nothing is written.
    QVERIFY(!split->Write(0));
    QCOMPARE(QString::fromStdString(user.told.back()), QString("Meg kell adnia a kezdő sorszámot!"));
    QVERIFY(!fs::exists(root_ / "ui_a.msw"));
    split->First().from->setText("2");
    split->First().to->setText("");
    QVERIFY(!split->Write(0));
    QCOMPARE(QString::fromStdString(user.told.back()), QString("Meg kell adnia a záró sorszámot!"));
    split->First().to->setText("9");
    QVERIFY(!split->Write(0));
    QCOMPARE(QString::fromStdString(user.told.back()),
             QString("Csak 1 és 3 közötti egész számot írhat!\r\nAz aktuális adattáblában 3 sor (eset) van!"));
    QVERIFY(!fs::exists(root_ / "ui_a.msw"));
    split->First().to->setText("3");
    QVERIFY(split->Write(0));
    split->Second().file->setText("ui_b");  // a bare name goes to the data folder
    split->Second().variables->setText("kor, nem");
    QCOMPARE(Items(split->Both()), QStringList({"kor"}));
    QVERIFY(split->Write(1));
    split->close();

    tarvika::test::CliReport(dir_ + "split '" + people_ + "' --vars megj,kor --cases 2-3 --out '" + (root_ / "cli_a.msw").string() + "'");
    tarvika::test::CliReport(dir_ + "split '" + people_ + "' --vars kor,nem --out '" + (root_ / "cli_b.msw").string() + "'");
    QVERIFY(!Bytes(root_ / "cli_a.msw").empty());
    QCOMPARE(Bytes(root_ / "ui_a.msw"), Bytes(root_ / "cli_a.msw"));
    QCOMPARE(Bytes(root_ / "dat" / "ui_b.msw"), Bytes(root_ / "cli_b.msw"));
    QCOMPARE(window.DataView()->model()->columnCount(), 4);
    QVERIFY(!session.ws.dataChanged);
  }

  void verificationFillsTheErrorListWhoseLinesLeadToTheCells() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    QVERIFY(tarvika::test::StartIn(session, root_));
    MainWindow window(session);
    QVERIFY(window.OpenFile(QString::fromStdString(people_)));
    QTableView* data = window.DataView();
    QVERIFY(data->model()->setData(data->model()->index(1, 0), "abc"));
    QVERIFY(data->model()->setData(data->model()->index(2, 0), " 200"));
    QVERIFY(SaveProject(session.ws, (root_ / "typed.msw").string()));

    window.RunCommand("data.verification");
    QListWidget* list = window.ErrorList()->List();
    QVERIFY(window.ErrorList()->isVisible());
    QCOMPARE(Items(list).join("\n") + "\n", tarvika::test::CliReport(dir_ + "verify '" + (root_ / "typed.msw").string() + "'"));
    QCOMPARE(Items(list), QStringList({"Sor=2;  Oszl=1; nem numerikus adat!", "Sor=3;  Oszl=1; megadott határokon kívüli érték"}));
    QCOMPARE(Column(data, 0), QStringList({"34", "abc", "200"}));  // the number is stored cleaned
    list->setCurrentRow(1);
    window.ErrorList()->OpenChosen();
    QCOMPARE(data->currentIndex().row(), 2);
    QCOMPARE(data->currentIndex().column(), 0);
    window.RunCommand("edit.undo");  // the cleaning is undone
    QCOMPARE(Column(data, 0), QStringList({"34", "abc", " 200"}));

    // Several variables that fit a pattern: the list of hits, whose lines lead to the variable.
    user.QueueText("*e*");
    window.RunCommand("variables.go_to");
    QCOMPARE(Items(list), QStringList({"2=nem;", "3=jövedel;", "4=megj;"}));
    list->setCurrentRow(2);
    window.ErrorList()->OpenChosen();
    QCOMPARE(data->currentIndex().column(), 3);

    // Cell control: ON and Apply switch the type control on.
    window.RunCommand("settings.cell_control");
    auto* control = Shown<CellControlDialog>(window);
    QVERIFY(control != nullptr && control->Off()->isChecked());
    control->On()->setChecked(true);
    control->Apply();
    QVERIFY(session.ws.typeControl);

    // With it on, a number past its limits offers the choices: the cell to the limit (undoable),
    // or new limits for the variable, the cell kept.
    QVERIFY(data->model()->setData(data->model()->index(0, 0), "150"));
    DataEntryCheckDialog* check = nullptr;
    QTRY_VERIFY((check = Shown<DataEntryCheckDialog>(window)) != nullptr);
    QCOMPARE(check->Entered()->text(), QString("150"));
    QCOMPARE(check->Maximum()->text(), QString("120"));
    QVERIFY(check->ToMaximum()->isChecked());
    QVERIFY(check->Apply());
    QCOMPARE(Column(data, 0).front(), QString("120"));
    window.RunCommand("edit.undo");
    QCOMPARE(Column(data, 0).front(), QString("150"));
    QVERIFY(data->model()->setData(data->model()->index(2, 0), "-5"));
    QTRY_VERIFY((check = Shown<DataEntryCheckDialog>(window)) != nullptr);
    QVERIFY(check->ToMinimum()->isChecked());
    check->NewLimits()->setChecked(true);
    check->Minimum()->setText("-10");
    check->Maximum()->setText("200");
    QVERIFY(check->Apply());
    QCOMPARE(session.ws.vars.GetCell(kType, 1), std::string_view("num=-10_200;"));
    QCOMPARE(Column(data, 0).back(), QString("-5"));
  }

  void equalShortNamesAreRenamedAfterALoad() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    QVERIFY(tarvika::test::StartIn(session, root_));
    MainWindow window(session);
    const fs::path twice = WriteProject(root_ / "twice.msw", {{"x", "num=0_9;"}, {"X", "num=0_9;"}, {"y", "num=0_9;"}}, {"1\t2\t3"});
    QVERIFY(window.OpenFile(QString::fromStdString(twice.string())));
    auto* dialog = Shown<ResolveDuplicatesDialog>(window);
    QVERIFY(dialog != nullptr);
    QCOMPARE(Items(dialog->List()), QStringList({"1=x;", "2=X;"}));
    QVERIFY(!dialog->Apply());
    QCOMPARE(QString::fromStdString(user.told.back()), QString("Hiba: azonos változónevek a listában!"));
    dialog->List()->setCurrentRow(1);
    dialog->NewName()->setText("Y");
    QVERIFY(!dialog->ChangeName());
    QVERIFY(QString::fromStdString(user.told.back()).startsWith("Az új változónév megegyezik egy létező változónévvel."));
    dialog->NewName()->setText("x2");
    QVERIFY(dialog->ChangeName());
    QVERIFY(Items(dialog->List()).isEmpty());
    QVERIFY(dialog->Apply());
    QCOMPARE(window.DataView()->model()->headerData(1, Qt::Horizontal).toString(), QString("x2"));
  }

  void undoCopiesWarnAboutATakenNameAndComeBackAsSaved() {
    ScriptedChannel user(Answer::No);
    Session session(user);
    QVERIFY(tarvika::test::StartIn(session, root_));
    session.ChangeLanguage();  // English
    MainWindow window(session);
    QVERIFY(window.OpenFile(QString::fromStdString(people_)));
    QVERIFY(window.MenuAction("edit.make_undo_file") != nullptr);
    QTableView* data = window.DataView();

    UndoCopyDialog* make = window.OpenUndoCopies(false);
    make->Name()->setText("before");
    QVERIFY(make->Warning()->isHidden());  // a new name: no warning
    QVERIFY(make->Run());
    QVERIFY(fs::exists(root_ / "undo" / "before.und"));

    // The name in use: the warning blinks between its two lines, green and yellow, on the timer.
    make = window.OpenUndoCopies(false);
    QCOMPARE(Items(make->List()), QStringList({"before"}));
    make->List()->setCurrentRow(0);
    QCOMPARE(make->Name()->text(), QString("before"));
    QVERIFY(!make->Warning()->isHidden());
    QVERIFY(make->Blinker()->isActive());
    QCOMPARE(make->Warning()->text(), QString("the file exsists . . ."));
    QVERIFY(make->Warning()->styleSheet().contains("#00ff00"));
    QTRY_COMPARE(make->Warning()->text(), QString(". . . overwrite it ?"));
    QVERIFY(make->Warning()->styleSheet().contains("yellow"));
    QTRY_COMPARE(make->Warning()->text(), QString("the file exsists . . ."));
    make->Name()->setText("other");
    QVERIFY(make->Warning()->isHidden());
    QVERIFY(!make->Blinker()->isActive());
    make->close();

    // A changed cell; the copy brings the saved tables back, and undo the changed ones.
    QVERIFY(data->model()->setData(data->model()->index(0, 0), "35"));
    UndoCopyDialog* restore = window.OpenUndoCopies(true);
    restore->List()->setCurrentRow(0);
    QVERIFY(restore->Warning()->isHidden());  // restoring overwrites nothing
    QVERIFY(restore->Run());
    QCOMPARE(Column(data, 0), QStringList({"34", "", "71"}));
    QVERIFY(session.ws.CurrentFileName().empty());
    window.RunCommand("edit.undo");
    QCOMPARE(Column(data, 0), QStringList({"35", "", "71"}));
  }

 private:
  fs::path root_;
  std::string people_, dir_;
};

QTEST_MAIN(EditingDialogsTest)
#include "editing_dialogs_test.moc"
