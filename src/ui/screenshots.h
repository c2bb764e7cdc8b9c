#pragma once
// Pictures of the program's windows for its documentation and for a look by eye: the two
// pages of the main window, the single-sample dialog in four commands and the viewer
// after a run, written as PNG files into a folder.

#include <QString>

namespace tarvika {

class MainWindow;

// Needs a project with numeric variables open; false when a picture can't be written.
bool WriteScreenshots(MainWindow& window, const QString& folder);

}  // namespace tarvika
