#pragma once
// What the Qt tests of the forms share: the command line's report of a run, and moving
// names in an analysis form as a person does (choose them in the source list, press a button).

#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "ui/analysis_form.h"
#include "workspace/session.h"

namespace tarvika::test {

// A fresh program folder under the temporary folder (named by the tag and the process): the
// language files, an empty table folder, and the sample project as dat/people.msw.
inline std::filesystem::path MakeProgramFolder(const std::string& tag) {
  namespace fs = std::filesystem;
  fs::path root = fs::temp_directory_path() / (tag + std::to_string(QCoreApplication::applicationPid()));
  fs::remove_all(root);
  fs::create_directories(root / "stattab");
  fs::copy(TARVIKA_SOURCE_DIR "/data/language", root / "language");
  fs::create_directories(root / "dat");
  fs::copy_file(TARVIKA_TEST_DATA "/workspace/data/roundtrip.msw", root / "dat" / "people.msw");
  return root;
}

// Starts the session over the program folder with the decimal point; true when it is ready.
inline bool StartIn(Session& session, const std::filesystem::path& root) {
  StartOptions options;
  options.programFolder = root.string();
  options.decimalSeparator = '.';
  return session.StartUp(options) == StartResult::Ready;
}

// tarvika-cli ARGUMENTS: its standard output with "\n" line ends.
inline QString CliReport(const std::string& arguments) {
  std::string command = std::string(TARVIKA_PROGRAM_DIR) + "/tarvika-cli " + arguments;
  std::string out;
  FILE* pipe = popen(command.c_str(), "r");
  std::array<char, 4096> buffer;
  for (std::size_t n; (n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) out.append(buffer.data(), n);
  pclose(pipe);
  return QString::fromStdString(out).replace("\r\n", "\n");
}

// The bytes of a file, to compare the window's file with the command line's.
inline std::string Bytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// The cells of a grid's column, as the cells hold them.
inline QStringList Column(QTableView* view, int column) {
  QStringList cells;
  for (int r = 0; r < view->model()->rowCount(); ++r) cells << view->model()->data(view->model()->index(r, column), Qt::EditRole).toString();
  return cells;
}

// Selects the names in the form's source list and presses the button.
inline void MoveNames(AnalysisForm* form, const QStringList& names, const QString& button) {
  QListWidget* source = form->SourceListWidget();
  source->clearSelection();
  for (const QString& name : names) {
    auto found = source->findItems(name, Qt::MatchExactly);
    QVERIFY2(found.size() == 1, qPrintable(name));
    found.front()->setSelected(true);
  }
  auto* push = form->findChild<QPushButton*>(button);
  QVERIFY2(push != nullptr, qPrintable(button));
  QTest::mouseClick(push, Qt::LeftButton);
}

}  // namespace tarvika::test
