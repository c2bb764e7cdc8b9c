#pragma once
// The project copies of the folder "undo": "Make \"undo\" file . . ." saves the workspace
// under a name, and while that name is taken a warning blinks (two forms, green and
// yellow); the restoring dialog loads a chosen copy. Both list the ".und" files there.

#include <QDialog>

#include <functional>
#include <string>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTimer;

namespace tarvika {

class Workspace;

class UndoCopyDialog : public QDialog {
  Q_OBJECT
 public:
  enum class Mode { Make, Restore };
  // `restore` loads the named copy into the window (Restore only).
  UndoCopyDialog(Workspace& ws, Mode mode, std::function<bool(const std::string&)> restore = {}, QWidget* parent = nullptr);

  QListWidget* List() const { return list_; }
  QLineEdit* Name() const { return name_; }
  QLabel* Warning() const { return warning_; }
  QTimer* Blinker() const { return blinker_; }
  // "OK": saves the copy (Make) or loads it (Restore); the dialog closes when it worked.
  bool Run();

 private:
  void NameChanged();
  void Blink();

  Workspace& ws_;
  Mode mode_;
  std::function<bool(const std::string&)> restore_;
  QListWidget* list_;
  QLineEdit* name_;
  QLabel* warning_;
  QTimer* blinker_;
  bool secondForm_ = false;
};

}  // namespace tarvika
