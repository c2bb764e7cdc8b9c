#include "ui/default_variable_form.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include "ui/qt_text.h"
#include "workspace/declaration_editors.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

enum Tag {
  kWindowTag = 160,
  kTypeTag = 161,
  kMinimumTag = 162,
  kMaximumTag = 163,
  kLengthTag = 164,
  kGroupTypeTag = 165,
  kLabelsTag = 166,
  kOkTag = 167,
  kCancelTag = 168,
};

}  // namespace

DefaultVariableForm::DefaultVariableForm(Workspace& ws, const LanguageTexts* texts, QWidget* parent)
    : QDialog(parent), ws_(ws) {
  setWindowTitle(TagCaption(texts, kWindowTag));
  type_ = new QComboBox(this);
  for (const char* kind : {"num", "string", "date", "link"}) type_->addItem(kind);
  minimum_ = new QLineEdit(this);
  maximum_ = new QLineEdit(this);
  length_ = new QSpinBox(this);
  length_->setRange(0, 100000);
  groupType_ = new QComboBox(this);
  labels_ = new QLineEdit(this);
  minimumLabel_ = new QLabel(TagCaption(texts, kMinimumTag), this);
  maximumLabel_ = new QLabel(TagCaption(texts, kMaximumTag), this);
  lengthLabel_ = new QLabel(TagCaption(texts, kLengthTag), this);

  auto* form = new QFormLayout;
  form->addRow(TagCaption(texts, kTypeTag), type_);
  form->addRow(minimumLabel_, minimum_);
  form->addRow(maximumLabel_, maximum_);
  form->addRow(lengthLabel_, length_);
  form->addRow(TagCaption(texts, kGroupTypeTag), groupType_);
  form->addRow(TagCaption(texts, kLabelsTag), labels_);
  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton(TagCaption(texts, kOkTag), QDialogButtonBox::AcceptRole);
  buttons->addButton(TagCaption(texts, kCancelTag), QDialogButtonBox::RejectRole);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &DefaultVariableForm::Apply);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(type_, &QComboBox::currentIndexChanged, this, &DefaultVariableForm::ShowKind);

  // The present default variable.
  TypeEditor present = TypeEditor::FromType(ws.vars.GetCell(kType, 0));
  type_->setCurrentText(ToQt(present.kind));
  minimum_->setText(ToQt(present.minimum));
  maximum_->setText(ToQt(present.maximum));
  length_->setValue(present.length);
  FillGroupTypeBox(groupType_, ws.language, ws.vars.GetCell(kGroupType, 0));
  labels_->setText(ToQt(ws.vars.GetCell(kGroupLabels, 0)));
  ShowKind();
}

void DefaultVariableForm::ShowKind() {
  bool numeric = type_->currentText() == "num", text = type_->currentText() == "string";
  for (QWidget* w : std::initializer_list<QWidget*>{minimum_, maximum_, minimumLabel_, maximumLabel_}) w->setVisible(numeric);
  length_->setVisible(text);
  lengthLabel_->setVisible(text);
}

bool DefaultVariableForm::Apply() {
  TypeEditor type;
  type.kind = ToStd(type_->currentText());
  type.minimum = ToStd(minimum_->text());
  type.maximum = ToStd(maximum_->text());
  type.length = length_->value();
  if (!ChangeDefaultVariable(ws_, type, ToStd(groupType_->currentText()), ToStd(labels_->text()))) return false;
  accept();
  return true;
}

}  // namespace tarvika
