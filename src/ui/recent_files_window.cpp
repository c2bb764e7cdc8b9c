#include "ui/recent_files_window.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/qt_text.h"

namespace tarvika {
namespace {
enum Tag { kWindowTag = 150, kOpenTag = 151, kCancelTag = 152 };
}  // namespace

RecentFilesWindow::RecentFilesWindow(QWidget* parent) : QDialog(parent) {
  list_ = new QListWidget(this);
  openButton_ = new QPushButton(this);
  cancelButton_ = new QPushButton(this);
  openButton_->setDefault(true);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(openButton_);
  buttons->addWidget(cancelButton_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list_, 1);
  layout->addLayout(buttons);
  connect(openButton_, &QPushButton::clicked, this, &RecentFilesWindow::OpenChosen);
  connect(list_, &QListWidget::itemActivated, this, &RecentFilesWindow::OpenChosen);
  connect(cancelButton_, &QPushButton::clicked, this, &QDialog::reject);
  resize(560, 320);
  ApplyLanguage(nullptr);
}

void RecentFilesWindow::ApplyLanguage(const LanguageTexts* texts) {
  setWindowTitle(TagCaption(texts, kWindowTag));
  openButton_->setText(TagCaption(texts, kOpenTag));
  cancelButton_->setText(TagCaption(texts, kCancelTag));
}

void RecentFilesWindow::Fill(const std::vector<std::string>& paths) {
  list_->clear();
  for (const std::string& path : paths) list_->addItem(ToQt(path));
  if (list_->count() > 0) list_->setCurrentRow(0);
}

void RecentFilesWindow::OpenChosen() {
  QListWidgetItem* item = list_->currentItem();
  if (item == nullptr) return;
  QString path = item->text();
  accept();
  emit Chosen(path);
}

}  // namespace tarvika
