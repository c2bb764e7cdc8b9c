#include "ui/declaration_dialogs.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

#include "ui/qt_text.h"
#include "workspace/declarations.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

QString Number(const Workspace& ws, double x) {
  QString text = QString::number(x, 'g', 12);
  if (ws.decimalSeparator != '.') text.replace('.', QChar(ws.decimalSeparator));
  return text;
}

// The fields above OK and Cancel; OK closes the dialog only when the check passes (the
// core has told the person what is wrong otherwise).
void LayOut(QDialog* dialog, QLayout* fields, std::function<bool()> check) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, [dialog, check] {
    if (check()) dialog->accept();
  });
  auto* layout = new QVBoxLayout(dialog);
  layout->addLayout(fields);
  layout->addWidget(buttons);
}

}  // namespace

QString TypeInWords(const Workspace& ws, std::string_view type) {
  TypeEditor t = TypeEditor::FromType(type);
  if (t.kind == "num") {
    if (t.minimum.empty() && t.maximum.empty()) return ToQt(ws.Text("number", "szám"));
    return ToQt(ws.Text("number from ", "szám ")) + ToQt(t.minimum) + ToQt(ws.Text(" to ", "-tól ")) + ToQt(t.maximum) +
           ToQt(ws.Text("", "-ig"));
  }
  if (t.kind == "string") return ToQt(ws.Text("text of ", "szöveg, ")) + QString::number(t.length) + ToQt(ws.Text(" characters", " karakter"));
  if (t.kind == "date") return ToQt(ws.Text("date", "dátum"));
  if (t.kind == "link") return ToQt(ws.Text("link", "hivatkozás"));
  return ToQt(type);
}

QString LabelsInWords(const Workspace& ws, int variable) {
  auto labels = ParseLabels(ws, variable);
  if (!labels) return ToQt(ws.vars.GetCell(kGroupLabels, variable));  // a faulty cell as it is
  QStringList parts;
  for (const LabelEntry& e : *labels) {
    QString value = e.lo == e.hi ? Number(ws, e.lo) : Number(ws, e.lo) + QString::fromUtf8("–") + Number(ws, e.hi);
    parts << value + " = " + ToQt(e.label);
  }
  return parts.join(", ");
}

QString MissingInWords(const Workspace& ws, std::string_view missing) {
  MissingParse parse = ParseMissingText(missing, ws.decimalSeparator);
  const MissingCodes& m = parse.codes;
  QString to = ToQt(ws.Text(" to ", " – "));
  switch (m.count) {
    case 1: return Number(ws, m.lo);
    case 2: return Number(ws, m.lo) + ", " + Number(ws, m.hi);
    case 3: return Number(ws, m.lo) + ", " + Number(ws, m.hi) + ", " + Number(ws, m.extra);
    case 4: return Number(ws, m.lo) + to + Number(ws, m.hi);
    case 5: return Number(ws, m.lo) + to + Number(ws, m.hi) + ToQt(ws.Text(" and ", " és ")) + Number(ws, m.extra);
    default: return ToQt(missing);
  }
}

TypeDialog::TypeDialog(Workspace& ws, std::string_view type, QWidget* parent) : QDialog(parent), ws_(ws) {
  setWindowTitle(ToQt(ws.Text("Type of the variable", "A változó típusa")));
  TypeEditor t = TypeEditor::FromType(type);
  kind_ = new QComboBox(this);
  kind_->addItems({"num", "string", "date", "link"});
  kind_->setCurrentText(ToQt(t.kind));
  minimum_ = new QLineEdit(ToQt(t.minimum), this);
  maximum_ = new QLineEdit(ToQt(t.maximum), this);
  length_ = new QLineEdit(t.length > 0 ? QString::number(t.length) : QString(), this);
  auto* form = new QFormLayout;
  form->addRow(ToQt(ws.Text("&Type:", "&Típus:")), kind_);
  form->addRow(ToQt(ws.Text("M&inimum:", "M&inimum:")), minimum_);
  form->addRow(ToQt(ws.Text("M&aximum:", "M&aximum:")), maximum_);
  form->addRow(ToQt(ws.Text("&Length:", "&Hossz:")), length_);
  auto enable = [this] {
    bool number = kind_->currentText() == "num";
    minimum_->setEnabled(number);
    maximum_->setEnabled(number);
    length_->setEnabled(kind_->currentText() == "string");
  };
  connect(kind_, &QComboBox::currentTextChanged, this, enable);
  enable();
  LayOut(this, form, [this] { return Result().has_value(); });
}

std::optional<std::string> TypeDialog::Result() {
  TypeEditor t;
  t.kind = ToStd(kind_->currentText());
  if (t.kind == "num") {
    t.minimum = ToStd(minimum_->text().trimmed());
    t.maximum = ToStd(maximum_->text().trimmed());
  }
  if (t.kind == "string") t.length = length_->text().trimmed().toInt();
  return t.Build(ws_.user, ws_.language, ws_.decimalSeparator);
}

MissingDialog::MissingDialog(Workspace& ws, std::string_view missing, QWidget* parent) : QDialog(parent), ws_(ws) {
  setWindowTitle(ToQt(ws.Text("Missing codes", "Hiányzó kódok")));
  mode_ = new QComboBox(this);
  mode_->addItems({ToQt(ws.Text("Discrete values (up to three)", "Egyedi értékek (legfeljebb három)")),
                   ToQt(ws.Text("A range", "Tartomány")), ToQt(ws.Text("A range and one value", "Tartomány és egy érték"))});
  for (QLineEdit*& value : values_) value = new QLineEdit(this);
  low_ = new QLineEdit(this);
  high_ = new QLineEdit(this);
  // The present codes fill the fields.
  const MissingCodes m = ParseMissingText(missing, ws.decimalSeparator).codes;
  if (m.count >= 1 && m.count <= 3) {
    const double codes[3] = {m.lo, m.hi, m.extra};
    for (int k = 0; k < m.count; ++k) values_[k]->setText(QString::number(codes[k], 'g', 12));
  } else if (m.count >= 4) {
    mode_->setCurrentIndex(m.count == 4 ? 1 : 2);
    low_->setText(QString::number(m.lo, 'g', 12));
    high_->setText(QString::number(m.hi, 'g', 12));
    if (m.count == 5) values_[2]->setText(QString::number(m.extra, 'g', 12));
  }
  auto* form = new QFormLayout;
  form->addRow(ToQt(ws.Text("&Kind:", "&Fajta:")), mode_);
  for (int k = 0; k < 3; ++k) form->addRow(ToQt(ws.Text("Value ", "Érték ")) + QString::number(k + 1) + ":", values_[k]);
  form->addRow(ToQt(ws.Text("&Low:", "&Alsó:")), low_);
  form->addRow(ToQt(ws.Text("&High:", "&Felső:")), high_);
  auto enable = [this] {
    int mode = mode_->currentIndex();
    values_[0]->setEnabled(mode == 0);
    values_[1]->setEnabled(mode == 0);
    values_[2]->setEnabled(true);
    low_->setEnabled(mode != 0);
    high_->setEnabled(mode != 0);
  };
  connect(mode_, &QComboBox::currentIndexChanged, this, enable);
  enable();
  LayOut(this, form, [this] { return Result().has_value(); });
}

std::optional<std::string> MissingDialog::Result() {
  MissingEditor editor;
  editor.mode = static_cast<MissingMode>(mode_->currentIndex());
  for (int k = 0; k < 3; ++k) editor.values[k] = ToStd(values_[k]->text().trimmed());
  if (editor.mode == MissingMode::Range) editor.values[2].clear();
  editor.low = ToStd(low_->text().trimmed());
  editor.high = ToStd(high_->text().trimmed());
  return editor.Build(ws_.user, ws_.language, ws_.decimalSeparator);
}

LabelDialog::LabelDialog(Workspace& ws, bool intervals, std::string_view labels, QWidget* parent)
    : QDialog(parent), ws_(ws), intervals_(intervals), editor_(intervals, labels, ws.decimalSeparator) {
  setWindowTitle(ToQt(ws.Text("Group labels", "Csoportnevek")));
  list_ = new QListWidget(this);
  low_ = new QLineEdit(this);
  high_ = new QLineEdit(this);
  label_ = new QLineEdit(this);
  high_->setEnabled(intervals);
  auto* form = new QFormLayout;
  form->addRow(ToQt(intervals ? ws.Text("&From:", "&Alsó határ:") : ws.Text("&Code:", "&Kód:")), low_);
  form->addRow(ToQt(ws.Text("&To:", "&Felső határ:")), high_);
  form->addRow(ToQt(ws.Text("&Label:", "&Címke:")), label_);
  auto* add = new QPushButton(ToQt(ws.Text("&Add", "&Hozzáad")), this);
  auto* change = new QPushButton(ToQt(ws.Text("C&hange", "&Módosít")), this);
  auto* remove = new QPushButton(ToQt(ws.Text("&Remove", "&Töröl")), this);
  connect(add, &QPushButton::clicked, this, &LabelDialog::Add);
  connect(change, &QPushButton::clicked, this, &LabelDialog::Change);
  connect(remove, &QPushButton::clicked, this, &LabelDialog::Remove);
  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row < 0 || row >= static_cast<int>(editor_.Entries().size())) return;
    const LabelEditor::Entry& e = editor_.Entries()[row];
    low_->setText(ToQt(e.low));
    high_->setText(ToQt(e.high));
    label_->setText(ToQt(e.label));
  });
  auto* actions = new QHBoxLayout;
  for (QPushButton* b : {add, change, remove}) {
    b->setAutoDefault(false);
    actions->addWidget(b);
  }
  auto* fields = new QVBoxLayout;
  fields->addWidget(list_);
  fields->addLayout(form);
  fields->addLayout(actions);
  LayOut(this, fields, [this] {
    // Typed values not yet added make the core ask first.
    bool pending = !low_->text().isEmpty() || !label_->text().isEmpty();
    return editor_.ConfirmExit(ws_.user, ws_.language, pending);
  });
  Show();
}

LabelEditor::Entry LabelDialog::Typed() const {
  return {ToStd(low_->text().trimmed()), intervals_ ? ToStd(high_->text().trimmed()) : std::string(), ToStd(label_->text())};
}

void LabelDialog::Show() {
  list_->clear();
  for (const LabelEditor::Entry& e : editor_.Entries()) {
    list_->addItem(ToQt(e.high.empty() ? e.low : e.low + "_" + e.high) + " = " + ToQt(e.label));
  }
}

bool LabelDialog::Add() {
  if (!editor_.Add(ws_.user, ws_.language, Typed())) return false;
  low_->clear();
  high_->clear();
  label_->clear();
  Show();
  return true;
}

bool LabelDialog::Change() {
  int row = list_->currentRow();
  if (row < 0 || !editor_.Change(ws_.user, ws_.language, row, Typed())) return false;
  Show();
  return true;
}

void LabelDialog::Remove() {
  int row = list_->currentRow();
  if (row < 0) return;
  editor_.Remove(row);
  Show();
}

}  // namespace tarvika
