#include "ui/undo_copy_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "editing/cell_journal.h"
#include "ui/qt_text.h"

namespace tarvika {

UndoCopyDialog::UndoCopyDialog(Workspace& ws, Mode mode, std::function<bool(const std::string&)> restore, QWidget* parent)
    : QDialog(parent), ws_(ws), mode_(mode), restore_(std::move(restore)) {
  setWindowTitle(ToQt(mode == Mode::Make ? ws.Text("Make \"undo\" file . . .", "\"Undo\" fájl készítése . . .")
                                         : ws.Text("Restore \"undo\" file . . .", "\"Undo\" fájl visszatöltése . . .")));
  list_ = new QListWidget(this);
  for (const std::string& name : UndoCopies(ws)) list_->addItem(ToQt(name));
  name_ = new QLineEdit(this);
  warning_ = new QLabel(this);
  warning_->setObjectName("warning");
  warning_->setAlignment(Qt::AlignCenter);
  warning_->hide();
  blinker_ = new QTimer(this);
  blinker_->setInterval(500);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(ToQt(ws.Text("Copies in the folder \"undo\":", "Másolatok az \"undo\" mappában:")), this));
  layout->addWidget(list_);
  layout->addWidget(new QLabel(ToQt(ws.Text("Name:", "Név:")), this));
  layout->addWidget(name_);
  layout->addWidget(warning_);
  layout->addWidget(buttons);

  connect(list_, &QListWidget::currentTextChanged, name_, &QLineEdit::setText);
  connect(list_, &QListWidget::itemDoubleClicked, this, &UndoCopyDialog::Run);
  connect(name_, &QLineEdit::textChanged, this, &UndoCopyDialog::NameChanged);
  connect(blinker_, &QTimer::timeout, this, &UndoCopyDialog::Blink);
  connect(buttons, &QDialogButtonBox::accepted, this, &UndoCopyDialog::Run);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void UndoCopyDialog::NameChanged() {
  // Only a new copy can overwrite one: the warning is the save's.
  const std::string name = ToStd(name_->text().trimmed());
  if (mode_ == Mode::Make && !name.empty() && UndoCopyExists(ws_, name)) {
    if (!blinker_->isActive()) {
      secondForm_ = true;
      Blink();
      blinker_->start();
    }
    warning_->show();
  } else {
    blinker_->stop();
    warning_->hide();
  }
}

void UndoCopyDialog::Blink() {
  // The two lines of the warning in turn, on green and on yellow.
  secondForm_ = !secondForm_;
  const QString warning = ToQt(UndoCopyExistsWarning(ws_));
  const QStringList lines = warning.split("\r\n");
  warning_->setText(secondForm_ ? lines.value(1) : lines.value(0));
  warning_->setStyleSheet(secondForm_ ? "background-color: yellow; color: black;" : "background-color: #00ff00; color: black;");
}

bool UndoCopyDialog::Run() {
  const std::string name = ToStd(name_->text().trimmed());
  if (name.empty()) return false;
  const bool done = mode_ == Mode::Make ? SaveUndoCopy(ws_, name) : restore_ && restore_(name);
  if (done) accept();
  return done;
}

}  // namespace tarvika
