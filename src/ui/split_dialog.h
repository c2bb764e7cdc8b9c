#pragma once
// "Split file": two sections, each a file name, its variables (in the order typed) and its
// cases (all, or from a case to a case), with a list of the variables that go to both;
// each section's run writes its file. The workspace is not changed.

#include <QDialog>

#include <optional>

#include "editing/split_file.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace tarvika {

class SplitDialog : public QDialog {
  Q_OBJECT
 public:
  SplitDialog(Workspace& ws, QWidget* parent = nullptr);

  struct Section {
    QLineEdit* file;
    QLineEdit* variables;  // short names separated by commas; empty: all
    QRadioButton* all;
    QRadioButton* range;
    QLineEdit* from;
    QLineEdit* to;
  };
  const Section& First() const { return sections_[0]; }
  const Section& Second() const { return sections_[1]; }
  QListWidget* Variables() const { return variables_; }
  QListWidget* Both() const { return both_; }

  // The run of a section: checks it (told) and writes its file; false on a fault.
  bool Write(int section);

 private:
  QWidget* MakeSection(int section, const QString& title);
  // The part a section describes; nullopt after telling a wrong name.
  std::optional<SplitPart> PartOf(int section);
  void ShowBoth();

  Workspace& ws_;
  Section sections_[2];
  QListWidget* variables_;
  QListWidget* both_;
};

}  // namespace tarvika
