// The main window over a real project: grids, editing through the core, the language
// switch, saving and opening again.

#include <QMenuBar>
#include <QHeaderView>
#include <QMenu>
#include <QFile>
#include <QLibraryInfo>
#include <QtTest>

#include <filesystem>
#include <functional>
#include <fstream>

#include <QComboBox>
#include <QLineEdit>

#include "analyses/command_table.h"
#include "ui/default_variable_form.h"
#include "ui/main_window.h"
#include "ui_test_support.h"
#include "workspace/main_menu.h"
#include "workspace/session.h"

namespace fs = std::filesystem;
using namespace tarvika;

namespace {

// Answers nothing and remembers what it was told.
class SilentChannel : public ScriptedChannel {
 public:
  SilentChannel() : ScriptedChannel(Answer::No) {}
};

QString Cell(QTableView* view, int row, int column) {
  return view->model()->data(view->model()->index(row, column)).toString();
}

QStringList MenuTitles(QMainWindow& w) {
  QStringList titles;
  for (QAction* a : w.menuBar()->actions()) titles << QString(a->text()).remove('&');
  return titles;
}

}  // namespace

class MainWindowTest : public QObject {
  Q_OBJECT
 private slots:
  void init() { root_ = tarvika::test::MakeProgramFolder("tarvika-ui-"); }
  void cleanup() { fs::remove_all(root_); }

  void opensEditsSwitchesLanguageAndSaves() {
    SilentChannel user;
    Session session(user);
    StartOptions options;
    options.programFolder = root_.string();
    options.decimalSeparator = '.';
    QCOMPARE(session.StartUp(options), StartResult::Ready);
    MainWindow window(session);
    window.show();
    QCOMPARE(MenuTitles(window).first(), QString("Fájl"));  // no settings file: Hungarian
    // Qt's own dialogs speak the session's language where Qt's translations are installed.
    bool qtHungarian = QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_hu.qm");
    if (qtHungarian) QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QString("Mégse"));

    QString project = QString::fromStdString((root_ / "dat" / "people.msw").string());
    QVERIFY(window.OpenFile(project));
    QCOMPARE(window.windowTitle(), "Tarvika: " + project);
    QTableView* data = window.DataView();
    QCOMPARE(data->model()->rowCount(), 3);
    QCOMPARE(data->model()->columnCount(), 4);
    QCOMPARE(data->model()->headerData(2, Qt::Horizontal).toString(), QString("jövedel"));
    QCOMPARE(Cell(data, 0, 0), QString("34"));
    QTableView* vars = window.VariableView();
    QCOMPARE(Cell(vars, 1, kGroupType), QString::fromUtf8("kódokkal"));  // in the session's words
    QCOMPARE(vars->model()->data(vars->model()->index(1, kGroupType), Qt::EditRole).toString(), QString("codes"));
    QCOMPARE(Cell(vars, 0, kLongName), QString("Életkor (év)"));

    // Editing goes through the core: with the type control on, a numeric cell is cleaned.
    window.RunCommand("edit.type_control_on");
    QVERIFY(data->model()->setData(data->model()->index(0, 0), " 041.50"));
    QCOMPARE(Cell(data, 0, 0), QString("41.5"));
    QVERIFY(session.ws.dataChanged);
    QCOMPARE(window.windowTitle(), "Tarvika: " + project + " *");  // unsaved changes are marked
    // A group type typed in is refused; one from the list is taken.
    QVERIFY(!vars->model()->setData(vars->model()->index(0, kGroupType), "sometimes"));
    QCOMPARE(QString::fromStdString(user.told.back()), QString("Használja a leomló listát a beírásra!"));
    // A ";" in a long name would be cut by the project file: refused, the cell kept.
    QVERIFY(!vars->model()->setData(vars->model()->index(0, kLongName), "Age; years"));
    QCOMPARE(QString::fromStdString(user.told.back()), QString("A hosszú név nem tartalmazhat \";\" karaktert."));
    QCOMPARE(Cell(vars, 0, kLongName), QString("Életkor (év)"));

    window.RunCommand("settings.language");
    QCOMPARE(MenuTitles(window).first(), QString("File"));
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QString("Cancel"));
    QCOMPARE(window.Pages()->tabText(1), QString("Variables"));
    window.RunCommand("settings.language");
    QCOMPARE(Cell(vars, 1, kGroupType), QString("kódokkal"));  // the change translates the words
    window.RunCommand("settings.language");
    QVERIFY(fs::exists(root_ / "Tarvika.cfg"));

    // A save keeps the current cell and clears the marker.
    data->setCurrentIndex(data->model()->index(2, 3));
    window.RunCommand("file.save");
    QCOMPARE(QString::fromStdString(user.told.back()), "Saved: " + project);
    QCOMPARE(data->currentIndex(), data->model()->index(2, 3));
    QCOMPARE(window.windowTitle(), "Tarvika: " + project);
    window.RunCommand("file.new");
    QCOMPARE(data->model()->rowCount(), 1);
    QVERIFY(window.OpenFile(project));
    QCOMPARE(Cell(data, 0, 0), QString("41.5"));

    // Properties of the default variable: the form hands its fields to the core.
    DefaultVariableForm form(session.ws, window.Texts());
    QCOMPARE(form.windowTitle(), QString("Properties of the default variable"));
    form.TypeBox()->setCurrentText("num");
    form.Minimum()->setText("1");
    form.Maximum()->setText("0");
    QVERIFY(!form.Apply());
    QCOMPARE(QString::fromStdString(user.told.back()), QString("Maximal value must be greater then minimal value."));
    form.Maximum()->setText("5");
    form.GroupTypeBox()->setCurrentIndex(1);
    form.Labels()->setText("1=no;/5=yes;/");
    QVERIFY(form.Apply());
    std::ifstream in(root_ / "default.var", std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    QCOMPARE(QString::fromStdString(bytes), QString("num=1_5;\r\n1=no;/5=yes;/\r\ncodes\r\n"));

    // Menus: an entry whose work isn't built is greyed out and says why; the standard keys.
    QAction* print = window.MenuAction("file.print");
    QVERIFY(print != nullptr);
    QVERIFY(!print->isEnabled());
    QCOMPARE(print->toolTip(), QString("Sorry, under construction."));
    QVERIFY(window.MenuAction("analysis.single")->isEnabled());
    QCOMPARE(window.MenuAction("file.open")->shortcut(), QKeySequence(QKeySequence::Open));
    QCOMPARE(window.MenuAction("file.save")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_S));
    QCOMPARE(window.MenuAction("edit.redo")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Y));
    auto* recent = window.RecentMenu();
    QVERIFY(recent != nullptr);
    QVERIFY(recent->actions().size() >= 1);
    QVERIFY(recent->actions().front()->text().endsWith(project));

    // A damaged file is told once: no question follows for each declaration it lost.
    std::ofstream((root_ / "dat" / "cut.msw").string(), std::ios::binary) << tarvika::test::Bytes(project.toStdString()).substr(0, 120);
    std::size_t asked = user.asked.size(), told = user.told.size();
    QVERIFY(!window.OpenFile(QString::fromStdString((root_ / "dat" / "cut.msw").string())));
    QCOMPARE(user.asked.size(), asked + 1);  // only whether to save the open project first
    QCOMPARE(QString::fromStdString(user.asked.back()), QString("Do you want to save current project?"));
    QCOMPARE(user.told.size(), told + 1);
    QVERIFY(QString::fromStdString(user.told.back()).startsWith("Invalid or damaged Tarvika file"));
    QCOMPARE(window.VariableView()->model()->rowCount(), 4);  // its variables kept, the lost ones named
    QVERIFY(window.OpenFile(project));

    // A larger font widens the columns with it: no header is cut.
    user.QueueText("24");
    window.RunCommand("settings.font");
    for (QTableView* view : {data, vars}) {
      QFontMetrics fm(view->horizontalHeader()->font());
      QCOMPARE(fm.height(), QFontMetrics(view->font()).height());
      for (int c = 1; c < view->model()->columnCount(); ++c) {
        QString head = view->model()->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
        QVERIFY2(fm.horizontalAdvance(head) < view->columnWidth(c), qPrintable(head));
      }
    }

    // A save that fails keeps the workspace and its marker, and says so.
    QVERIFY(data->model()->setData(data->model()->index(1, 0), "52"));
    fs::remove_all(root_ / "dat");
    window.RunCommand("file.save");
    QVERIFY(QString::fromStdString(user.told.back()).startsWith("The file cannot be written: " + project));
    QCOMPARE(Cell(data, 1, 0), QString("52"));
    QVERIFY(window.windowTitle().endsWith(" *"));
  }

  void theWindowRunsExactlyTheEntriesTheMenuOffers() {
    // An entry offered but not run would answer "Sorry, under construction."; one run but
    // not offered would stay grey: the core's built list and the window must not drift.
    std::function<void(const std::vector<tarvika::MenuEntry>&)> walk = [&](const std::vector<tarvika::MenuEntry>& entries) {
      for (const tarvika::MenuEntry& entry : entries) {
        walk(entry.children);
        if (entry.command.empty()) continue;
        QVERIFY2(MainWindow::Runs(entry.command) == tarvika::MenuEntryIsBuilt(entry.command),
                 std::string(entry.command).c_str());
      }
    };
    walk(tarvika::MainMenu());
  }

 private:
  fs::path root_;
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
