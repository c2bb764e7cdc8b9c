// tarvika: the desktop program.

#include <QApplication>
#include <QStatusBar>
#include <QStringList>

#include <cstdio>

#include "ui/main_window.h"
#include "ui/qt_user_channel.h"
#include "ui/screenshots.h"
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
      // Writes pictures of the windows into the folder and ends.
      screenshotFolder = args[++i];
      options.singleInstance = false;
    } else if (!args[i].startsWith("--")) {
      options.fileToOpen = args[i].toStdString();
    }
  }

  if (!screenshotFolder.isEmpty()) {
    // No person answers while the pictures are taken: messages go to standard error.
    tarvika::ScriptedChannel quiet(tarvika::Answer::No);
    tarvika::Session session(quiet);
    if (session.StartUp(options) != tarvika::StartResult::Ready) return 1;
    tarvika::MainWindow window(session);
    bool ok = tarvika::WriteScreenshots(window, screenshotFolder);
    for (const std::string& message : quiet.told) fprintf(stderr, "%s\n", message.c_str());
    return ok ? 0 : 1;
  }

  tarvika::QtUserChannel user;
  tarvika::Session session(user);
  if (session.StartUp(options) != tarvika::StartResult::Ready) return 1;
  tarvika::MainWindow window(session);
  user.SetParent(&window);
  user.SetStatusLine([&window](const QString& text) { window.statusBar()->showMessage(text, 8000); });
  window.resize(1000, 700);
  window.show();
  return app.exec();
}
