#pragma once
// "Properties of the default variable": the type, group type and group labels that new
// variables get. The checks and the writing of "default.var" are the core's.

#include <QDialog>

class QComboBox;
class QLineEdit;
class QSpinBox;
class QLabel;
class QPushButton;

namespace tarvika {

class LanguageTexts;
class Workspace;

class DefaultVariableForm : public QDialog {
  Q_OBJECT
 public:
  DefaultVariableForm(Workspace& ws, const LanguageTexts* texts, QWidget* parent = nullptr);

  // Hands the fields to the core; closes the form when it took them.
  bool Apply();

  QComboBox* TypeBox() const { return type_; }
  QLineEdit* Minimum() const { return minimum_; }
  QLineEdit* Maximum() const { return maximum_; }
  QSpinBox* Length() const { return length_; }
  QComboBox* GroupTypeBox() const { return groupType_; }
  QLineEdit* Labels() const { return labels_; }

 private:
  void ShowKind();

  Workspace& ws_;
  QComboBox* type_;
  QLineEdit* minimum_;
  QLineEdit* maximum_;
  QSpinBox* length_;
  QComboBox* groupType_;
  QLineEdit* labels_;
  QLabel* minimumLabel_;
  QLabel* maximumLabel_;
  QLabel* lengthLabel_;
};

}  // namespace tarvika
