// tarvika: the desktop program.

#include <QApplication>
#include <QDir>
#include <QStringList>

#include "ui/main_window.h"
#include "ui/qt_user_channel.h"
#include "workspace/session.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QStringList args = app.arguments();

  tarvika::StartOptions options;
  QString screenshotFolder;
  options.programFolder = QCoreApplication::applicationDirPath().toStdString();
  options.singleInstance = true;
  for (int i = 1; i < args.size(); ++i) {
    if (args[i] == "--program-dir" && i + 1 < args.size()) {
      options.programFolder = args[++i].toStdString();
    } else if (args[i] == "--screenshots" && i + 1 < args.size()) {
      // Writes pictures of the main window's pages into the folder and ends.
      screenshotFolder = args[++i];
      options.singleInstance = false;
    } else if (!args[i].startsWith("--")) {
      options.fileToOpen = args[i].toStdString();
    }
  }

  tarvika::QtUserChannel user;
  tarvika::Session session(user);
  if (session.StartUp(options) != tarvika::StartResult::Ready) return 1;
  tarvika::MainWindow window(session);
  user.SetParent(&window);
  window.resize(1000, 700);
  window.show();
  if (!screenshotFolder.isEmpty()) {
    QDir().mkpath(screenshotFolder);
    for (int page = 0; page < window.Pages()->count(); ++page) {
      window.Pages()->setCurrentIndex(page);
      QApplication::processEvents();
      window.grab().save(QDir(screenshotFolder).filePath(QString("main_window_page%1.png").arg(page + 1)));
    }
    return 0;
  }
  return app.exec();
}
