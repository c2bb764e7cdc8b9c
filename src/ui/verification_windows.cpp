#include "ui/verification_windows.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <charconv>

#include "editing/verify_data.h"
#include "ui/qt_text.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

// The variable of a line number "=" name ";" (a variable hit, a duplicated name); 0 when none.
int VariableOfLine(const std::string& line) {
  int variable = 0;
  auto [end, ec] = std::from_chars(line.data(), line.data() + line.size(), variable);
  return ec == std::errc() && variable > 0 ? variable : 0;
}

}  // namespace

ErrorListWindow::ErrorListWindow(const Workspace& ws, QWidget* parent) : QDialog(parent) {
  setObjectName("THibakForm");
  setWindowFlag(Qt::Window);
  setWindowTitle(ToQt(ws.Text("Error list", "Hibalista")));
  list_ = new QListWidget(this);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list_);
  connect(list_, &QListWidget::itemActivated, this, &ErrorListWindow::OpenChosen);
  connect(list_, &QListWidget::itemClicked, this, &ErrorListWindow::OpenChosen);
}

void ErrorListWindow::Fill(const std::vector<std::string>& lines, bool variableHits) {
  variableHits_ = variableHits;
  list_->clear();
  for (const std::string& line : lines) list_->addItem(ToQt(line));
}

void ErrorListWindow::OpenChosen() {
  QListWidgetItem* item = list_->currentItem();
  if (item == nullptr) return;
  const std::string line = ToStd(item->text());
  if (variableHits_) {
    if (int variable = VariableOfLine(line)) emit VariableChosen(variable);
    return;
  }
  if (auto cell = FindingCell(line)) emit CellChosen(cell->first, cell->second);
}

CellControlDialog::CellControlDialog(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setWindowTitle(ToQt(ws.Text("Cell control", "Cellaellenőrzés")));
  on_ = new QRadioButton("ON", this);
  off_ = new QRadioButton("OFF", this);
  (ws.typeControl ? on_ : off_)->setChecked(true);
  auto* buttons = new QDialogButtonBox(this);
  QPushButton* apply = buttons->addButton(ToQt(ws.Text("Apply", "Alkalmaz")), QDialogButtonBox::AcceptRole);
  apply->setObjectName("apply");
  buttons->addButton(QDialogButtonBox::Cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(on_);
  layout->addWidget(off_);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &CellControlDialog::Apply);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void CellControlDialog::Apply() {
  ws_.typeControl = on_->isChecked();
  accept();
}

DataEntryCheckDialog::DataEntryCheckDialog(Workspace& ws, int col, int row, Change change, QWidget* parent)
    : QDialog(parent), ws_(ws), col_(col), row_(row), change_(std::move(change)) {
  setWindowTitle(ToQt(ws.Text("Checking of the data enter", "Az adatbevitel ellenőrzése")));
  entered_ = new QLineEdit(ToQt(ws.data.GetCell(col, row)), this);
  entered_->setReadOnly(true);
  std::optional<DeclaredRange> range = RangeOf(ws, col);
  minimum_ = new QLineEdit(range ? ToQt(FormatGeneral(range->lo, ws.decimalSeparator)) : QString(), this);
  maximum_ = new QLineEdit(range ? ToQt(FormatGeneral(range->hi, ws.decimalSeparator)) : QString(), this);
  toMinimum_ = new QRadioButton(ToQt(ws.Text(". . . to the allowable minimum", ". . . a megengedett minimumra")), this);
  toMaximum_ = new QRadioButton(ToQt(ws.Text(". . . to the allowable maximum", ". . . a megengedett maximumra")), this);
  newLimits_ = new QRadioButton(ToQt(ws.Text("Modify the limits", "A határok módosítása")), this);
  // The nearer limit is the likelier fix.
  std::optional<double> value = ParseLocalNumber(ws.data.GetCell(col, row), ws.decimalSeparator);
  (range && value && *value < range->lo ? toMinimum_ : toMaximum_)->setChecked(true);
  // The limits are typed only when they are to change: the fields show what is stored.
  for (QLineEdit* limit : {minimum_, maximum_}) {
    limit->setReadOnly(true);
    connect(newLimits_, &QRadioButton::toggled, limit, [limit](bool on) { limit->setReadOnly(!on); });
  }

  auto* form = new QFormLayout;
  form->addRow(ToQt(ws.Text("Short name:", "Rövid név:")), new QLabel(ToQt(ws.vars.GetCell(kShortName, col)), this));
  form->addRow(ToQt(ws.Text("the data you entered:", "a beírt adat:")), entered_);
  form->addRow(ToQt(ws.Text("Minimum value", "Minimális érték")), minimum_);
  form->addRow(ToQt(ws.Text("Maximum value", "Maximális érték")), maximum_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(new QLabel(ToQt(ws.Text("Modify the entered data . . .", "A beírt adat módosítása . . .")), this));
  layout->addWidget(toMinimum_);
  layout->addWidget(toMaximum_);
  layout->addWidget(newLimits_);
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &DataEntryCheckDialog::Apply);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

bool DataEntryCheckDialog::Apply() {
  if (!newLimits_->isChecked()) {
    const EntryFix fix = toMinimum_->isChecked() ? EntryFix::ToMinimum : EntryFix::ToMaximum;
    if (!change_([&] { return FixEnteredValue(ws_, col_, row_, fix); })) return false;
    accept();
    return true;
  }
  std::optional<double> lo = ParseLocalNumber(ToStd(minimum_->text().trimmed()), ws_.decimalSeparator);
  std::optional<double> hi = ParseLocalNumber(ToStd(maximum_->text().trimmed()), ws_.decimalSeparator);
  if (!lo || !hi || !(*lo < *hi)) {
    ws_.user.Tell(ws_.Text("The limits must be numbers, the minimum below the maximum.",
                           "A határok számok legyenek, a minimum kisebb a maximumnál."));
    return false;
  }
  if (!change_([&] { return ChangeLimits(ws_, col_, *lo, *hi); })) return false;
  accept();
  return true;
}

ResolveDuplicatesDialog::ResolveDuplicatesDialog(Workspace& ws, DataEntryCheckDialog::Change change, QWidget* parent)
    : QDialog(parent), ws_(ws), change_(std::move(change)) {
  setWindowTitle(ToQt(ws.Text("Rename duplicated variables", "Azonos nevű változók átnevezése")));
  list_ = new QListWidget(this);
  name_ = new QLineEdit(this);
  auto* rename = new QPushButton(ToQt(ws.Text("Change name", "Név módosítása")), this);
  auto* apply = new QPushButton(ToQt(ws.Text("Apply", "Alkalmaz")), this);
  for (QPushButton* b : {rename, apply}) b->setAutoDefault(false);
  auto* form = new QFormLayout;
  form->addRow(ToQt(ws.Text("New short name:", "Új rövid név:")), name_);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(rename);
  buttons->addStretch();
  buttons->addWidget(apply);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list_);
  layout->addLayout(form);
  layout->addLayout(buttons);
  connect(rename, &QPushButton::clicked, this, &ResolveDuplicatesDialog::ChangeName);
  connect(apply, &QPushButton::clicked, this, &ResolveDuplicatesDialog::Apply);
  connect(name_, &QLineEdit::returnPressed, this, &ResolveDuplicatesDialog::ChangeName);
  Fill();
}

void ResolveDuplicatesDialog::Fill() {
  list_->clear();
  for (const std::string& line : DuplicatedVariables(ws_)) list_->addItem(ToQt(line));
}

bool ResolveDuplicatesDialog::ChangeName() {
  QListWidgetItem* item = list_->currentItem();
  const std::string name = ToStd(name_->text().trimmed());
  if (item == nullptr || name.empty()) return false;
  const int variable = VariableOfLine(ToStd(item->text()));
  if (!change_([&] { return RenameVariable(ws_, variable, name); })) return false;
  name_->clear();
  Fill();
  return true;
}

bool ResolveDuplicatesDialog::Apply() {
  if (!DuplicatedVariables(ws_).empty()) {
    ws_.user.Tell(ws_.Text("Error: same variable names in this list!", "Hiba: azonos változónevek a listában!"));
    return false;
  }
  accept();
  return true;
}

}  // namespace tarvika
