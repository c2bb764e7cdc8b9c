#pragma once
// The dialogs of a variable's declarations on the Variables page: its type, its missing
// codes and its group labels. Each is a view of the core's editor (TypeEditor,
// MissingEditor, LabelEditor), so every check and message of the core reaches the person;
// and the words the page shows instead of the raw cells.

#include <QDialog>

#include <optional>
#include <string>

#include "workspace/declaration_editors.h"

class QComboBox;
class QLineEdit;
class QListWidget;

namespace tarvika {

class Workspace;

// The cells in words: "number from 1 to 5", "text of 20 characters", "1 = Female, 2 = Male",
// "90 to 99 and 0".
QString TypeInWords(const Workspace& ws, std::string_view type);
QString LabelsInWords(const Workspace& ws, int variable);
QString MissingInWords(const Workspace& ws, std::string_view missing);

class TypeDialog : public QDialog {
  Q_OBJECT
 public:
  TypeDialog(Workspace& ws, std::string_view type, QWidget* parent = nullptr);
  // The new Type cell, or nullopt after the core told what is wrong.
  std::optional<std::string> Result();
  QComboBox* Kind() const { return kind_; }
  QLineEdit* Minimum() const { return minimum_; }
  QLineEdit* Maximum() const { return maximum_; }
  QLineEdit* Length() const { return length_; }

 private:
  Workspace& ws_;
  QComboBox* kind_;
  QLineEdit *minimum_, *maximum_, *length_;
};

class MissingDialog : public QDialog {
  Q_OBJECT
 public:
  MissingDialog(Workspace& ws, std::string_view missing, QWidget* parent = nullptr);
  std::optional<std::string> Result();
  QComboBox* Mode() const { return mode_; }
  QLineEdit* Value(int k) const { return values_[k]; }
  QLineEdit* Low() const { return low_; }
  QLineEdit* High() const { return high_; }

 private:
  Workspace& ws_;
  QComboBox* mode_;
  QLineEdit* values_[3];
  QLineEdit *low_, *high_;
};

class LabelDialog : public QDialog {
  Q_OBJECT
 public:
  LabelDialog(Workspace& ws, bool intervals, std::string_view labels, QWidget* parent = nullptr);
  // The entry in the fields added, or the chosen entry changed; false after the core told why.
  bool Add();
  bool Change();
  void Remove();
  std::string Result() const { return editor_.Text(); }
  QLineEdit* Low() const { return low_; }
  QLineEdit* High() const { return high_; }
  QLineEdit* Label() const { return label_; }
  QListWidget* Entries() const { return list_; }

 private:
  void Show();
  LabelEditor::Entry Typed() const;

  Workspace& ws_;
  bool intervals_;
  LabelEditor editor_;
  QListWidget* list_;
  QLineEdit *low_, *high_, *label_;
};

}  // namespace tarvika
