#include "ui/verification_windows.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <charconv>

#include "editing/verify_data.h"
#include "ui/qt_text.h"
#include "workspace/workspace.h"

namespace tarvika {

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
    // number "=" name ";"
    int variable = 0;
    auto [end, ec] = std::from_chars(line.data(), line.data() + line.size(), variable);
    if (ec == std::errc() && variable > 0) emit VariableChosen(variable);
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

}  // namespace tarvika
