#pragma once
// The windows of the data checks: the error list ("Hibalista"), whose lines lead to their
// cell (or, for a list of variable hits, to the variable), and "Cell control", the
// session's type control switched on or off.

#include <QDialog>

#include <string>
#include <vector>

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

}  // namespace tarvika
