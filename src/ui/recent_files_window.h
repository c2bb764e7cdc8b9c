#pragma once
// "Last edited files": the recent projects, newest first; choosing one opens it.

#include <QDialog>

#include <string>
#include <vector>

class QListWidget;
class QPushButton;

namespace tarvika {

class LanguageTexts;

class RecentFilesWindow : public QDialog {
  Q_OBJECT
 public:
  explicit RecentFilesWindow(QWidget* parent = nullptr);
  void ApplyLanguage(const LanguageTexts* texts);
  void Fill(const std::vector<std::string>& paths);
  QListWidget* List() const { return list_; }
  // Opens the chosen entry (the Open button, a double click or Enter).
  void OpenChosen();

 signals:
  void Chosen(const QString& path);

 private:
  QListWidget* list_;
  QPushButton* openButton_;
  QPushButton* cancelButton_;
};

}  // namespace tarvika
