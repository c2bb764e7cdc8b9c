#pragma once
// The windows of the data checks: the error list ("Hibalista"), whose lines lead to their
// cell (or, for a list of variable hits, to the variable); "Cell control", the session's
// type control switched on or off; and "Checking of the data enter", the choices for a
// typed number outside its variable's limits; "Rename duplicated variables" after a load
// that found equal short names.

#include <QDialog>

#include <functional>
#include <string>
#include <vector>

class QLineEdit;
class QListWidget;
class QRadioButton;

namespace tarvika {

class Workspace;

class ErrorListWindow : public QDialog {
  Q_OBJECT
 public:
  explicit ErrorListWindow(const Workspace& ws, QWidget* parent = nullptr);
  // The lines of a verification; or (variableHits) the hits of a variable search, number
  // "=" name ";", under the marker "VarFind".
  void Fill(const std::vector<std::string>& lines, bool variableHits = false);
  QListWidget* List() const { return list_; }
  // Leads to the cell (or the variable) of the chosen line.
  void OpenChosen();

 signals:
  void CellChosen(int row, int col);
  void VariableChosen(int variable);

 private:
  QListWidget* list_;
  bool variableHits_ = false;
};

class CellControlDialog : public QDialog {
  Q_OBJECT
 public:
  explicit CellControlDialog(Workspace& ws, QWidget* parent = nullptr);
  QRadioButton* On() const { return on_; }
  QRadioButton* Off() const { return off_; }
  // "Apply": the chosen state becomes the session's type control.
  void Apply();

 private:
  Workspace& ws_;
  QRadioButton *on_, *off_;
};

class DataEntryCheckDialog : public QDialog {
  Q_OBJECT
 public:
  // `change` runs the chosen change of the tables (the window makes it undoable) and says
  // whether it was made.
  using Change = std::function<bool(const std::function<bool()>&)>;
  DataEntryCheckDialog(Workspace& ws, int col, int row, Change change, QWidget* parent = nullptr);

  QLineEdit* Entered() const { return entered_; }
  QLineEdit* Minimum() const { return minimum_; }
  QLineEdit* Maximum() const { return maximum_; }
  QRadioButton* ToMinimum() const { return toMinimum_; }
  QRadioButton* ToMaximum() const { return toMaximum_; }
  QRadioButton* NewLimits() const { return newLimits_; }
  // OK: the cell set to the chosen limit, or the variable's limits set to the fields (the
  // cell keeps what was entered); false after telling a wrong limit.
  bool Apply();

 private:
  Workspace& ws_;
  int col_, row_;
  Change change_;
  QLineEdit *entered_, *minimum_, *maximum_;
  QRadioButton *toMinimum_, *toMaximum_, *newLimits_;
};

class ResolveDuplicatesDialog : public QDialog {
  Q_OBJECT
 public:
  // `change` as above: the rename runs through it.
  ResolveDuplicatesDialog(Workspace& ws, DataEntryCheckDialog::Change change, QWidget* parent = nullptr);
  QListWidget* List() const { return list_; }
  QLineEdit* NewName() const { return name_; }
  // "Change name": the chosen variable gets the new short name (told when it is taken).
  bool ChangeName();
  // "Apply": closes once no two names are the same; else tells so.
  bool Apply();

 private:
  void Fill();

  Workspace& ws_;
  DataEntryCheckDialog::Change change_;
  QListWidget* list_;
  QLineEdit* name_;
};

}  // namespace tarvika
