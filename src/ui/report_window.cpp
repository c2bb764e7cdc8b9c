#include "ui/report_window.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QFile>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "frame/report_writer.h"
#include "ui/qt_text.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

enum Tag {
  kWindowTag = 130,
  kLastPageTag = 131,
  kCompletePageTag = 132,
  kAppendTag = 133,
  kSaveTag = 134,
  kDiscardTag = 135,
  kCloseTag = 136,
  kSearchTag = 137,
  kFindLabelTag = 138,
  kReplaceLabelTag = 139,
  kCaseTag = 140,
  kFindTag = 141,
  kReplaceTag = 142,
  kReplaceAllTag = 143,
  kRefreshTag = 144,
  kHtmlTag = 145,
};

// The length in UTF-16 units of the first `bytes` bytes of a UTF-8 text.
int QtLength(const std::string& text, std::size_t bytes) {
  return static_cast<int>(QString::fromUtf8(text.data(), static_cast<qsizetype>(std::min(bytes, text.size()))).size());
}

}  // namespace

ReportWindow::ReportWindow(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws), viewer_(ws) {
  setWindowModality(Qt::ApplicationModal);
  viewer_.openExternal = [this](const std::string& path) { OpenHtml(path); };

  menu_ = new QMenuBar(this);
  refreshAction_ = menu_->addAction(QString());
  searchAction_ = menu_->addAction(QString());
  htmlAction_ = menu_->addAction(QString());

  pages_ = new QTabWidget(this);
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  for (QPlainTextEdit*& edit : edits_) {
    edit = new QPlainTextEdit(pages_);
    edit->setFont(fixed);
    edit->setLineWrapMode(QPlainTextEdit::NoWrap);  // long report lines are never wrapped
    edit->setTabStopDistance(QFontMetricsF(fixed).horizontalAdvance(' ') * 8);
    pages_->addTab(edit, QString());
  }

  searchPanel_ = new QWidget(this);
  findLabel_ = new QLabel(searchPanel_);
  findText_ = new QLineEdit(searchPanel_);
  replaceLabel_ = new QLabel(searchPanel_);
  replaceText_ = new QLineEdit(searchPanel_);
  caseSensitive_ = new QCheckBox(searchPanel_);
  findButton_ = new QPushButton(searchPanel_);
  replaceButton_ = new QPushButton(searchPanel_);
  replaceAllButton_ = new QPushButton(searchPanel_);
  auto* search = new QGridLayout(searchPanel_);
  search->setContentsMargins(0, 0, 0, 0);
  search->addWidget(findLabel_, 0, 0);
  search->addWidget(findText_, 0, 1);
  search->addWidget(caseSensitive_, 0, 2);
  search->addWidget(findButton_, 0, 3);
  search->addWidget(replaceLabel_, 1, 0);
  search->addWidget(replaceText_, 1, 1);
  search->addWidget(replaceButton_, 1, 2);
  search->addWidget(replaceAllButton_, 1, 3);
  searchPanel_->hide();

  appendButton_ = new QPushButton(this);
  saveButton_ = new QPushButton(this);
  discardButton_ = new QPushButton(this);
  closeButton_ = new QPushButton(this);
  for (auto [widget, name] : {std::pair<QWidget*, const char*>{findButton_, "findNext"}, {replaceButton_, "replace"},
                              {replaceAllButton_, "replaceAll"}, {appendButton_, "append"}, {saveButton_, "saveAndExit"},
                              {discardButton_, "exitWithoutSaving"}, {closeButton_, "close"}}) {
    widget->setObjectName(name);
  }
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(appendButton_);
  buttons->addWidget(saveButton_);
  buttons->addWidget(discardButton_);
  buttons->addStretch();
  buttons->addWidget(closeButton_);

  auto* layout = new QVBoxLayout(this);
  layout->setMenuBar(menu_);
  layout->addWidget(pages_, 1);
  layout->addWidget(searchPanel_);
  layout->addLayout(buttons);

  connect(refreshAction_, &QAction::triggered, this, &ReportWindow::RefreshPages);
  connect(searchAction_, &QAction::triggered, this, [this] {
    searchPanel_->setVisible(!searchPanel_->isVisible());
    if (searchPanel_->isVisible()) findText_->setFocus();
  });
  connect(htmlAction_, &QAction::triggered, this, &ReportWindow::ShowAsHtml);
  connect(pages_, &QTabWidget::currentChanged, this, [this](int page) {
    TakeEdits();
    viewer_.Show(page == 0 ? ReportViewer::kLast : ReportViewer::kComplete);
    setWindowTitle(ToQt(viewer_.Title()));
  });
  connect(findButton_, &QPushButton::clicked, this, &ReportWindow::FindNext);
  connect(replaceButton_, &QPushButton::clicked, this, &ReportWindow::Replace);
  connect(replaceAllButton_, &QPushButton::clicked, this, &ReportWindow::ReplaceAll);
  connect(appendButton_, &QPushButton::clicked, this, &ReportWindow::AppendToComplete);
  connect(saveButton_, &QPushButton::clicked, this, &ReportWindow::SaveAndExit);
  connect(discardButton_, &QPushButton::clicked, this, &ReportWindow::ExitWithoutSaving);
  connect(closeButton_, &QPushButton::clicked, this, [this] {
    viewer_.Close();
    hide();
  });
  connect(this, &QDialog::finished, this, [this] { viewer_.Close(); });
  resize(900, 620);
  ApplyLanguage(nullptr);
}

void ReportWindow::ApplyLanguage(const LanguageTexts* texts) {
  pages_->setTabText(0, TagCaption(texts, kLastPageTag));
  pages_->setTabText(1, TagCaption(texts, kCompletePageTag));
  refreshAction_->setText(TagCaption(texts, kRefreshTag));
  searchAction_->setText(TagCaption(texts, kSearchTag));
  htmlAction_->setText(TagCaption(texts, kHtmlTag));
  findLabel_->setText(TagCaption(texts, kFindLabelTag));
  replaceLabel_->setText(TagCaption(texts, kReplaceLabelTag));
  caseSensitive_->setText(TagCaption(texts, kCaseTag));
  struct Captioned {
    QPushButton* button;
    int tag;
  };
  for (auto [button, tag] : {Captioned{findButton_, kFindTag}, Captioned{replaceButton_, kReplaceTag},
                             Captioned{replaceAllButton_, kReplaceAllTag}, Captioned{appendButton_, kAppendTag},
                             Captioned{saveButton_, kSaveTag}, Captioned{discardButton_, kDiscardTag},
                             Captioned{closeButton_, kCloseTag}}) {
    button->setText(TagCaption(texts, tag));
    button->setToolTip(TagHint(texts, tag));
  }
  if (viewer_.Title().empty()) setWindowTitle(TagCaption(texts, kWindowTag));
}

void ReportWindow::OpenReport() {
  viewer_.Open();
  ShowPages();
  show();
  raise();
  activateWindow();
}

void ReportWindow::TakeEdits() {
  for (ReportViewer::Page page : {ReportViewer::kLast, ReportViewer::kComplete}) {
    if (!edits_[page]->document()->isModified()) continue;
    viewer_.SetText(page, ToStd(edits_[page]->toPlainText()));
    edits_[page]->document()->setModified(false);
  }
}

void ReportWindow::ShowPages() {
  for (ReportViewer::Page page : {ReportViewer::kLast, ReportViewer::kComplete}) {
    edits_[page]->setPlainText(ToQt(viewer_.Text(page)));
  }
  pages_->blockSignals(true);
  pages_->setCurrentIndex(viewer_.Shown());
  pages_->blockSignals(false);
  setWindowTitle(ToQt(viewer_.Title()));
}

void ReportWindow::ShowSelection() {
  QPlainTextEdit* edit = edits_[viewer_.Shown()];
  const std::string& text = viewer_.Text(viewer_.Shown());
  QTextCursor cursor = edit->textCursor();
  cursor.setPosition(QtLength(text, viewer_.SelectionStart()));
  cursor.setPosition(QtLength(text, viewer_.SelectionStart() + viewer_.SelectionLength()), QTextCursor::KeepAnchor);
  edit->setTextCursor(cursor);
}

void ReportWindow::AppendToComplete() {
  TakeEdits();
  viewer_.AppendToComplete();
  ShowPages();
}

void ReportWindow::SaveAndExit() {
  TakeEdits();
  if (viewer_.SaveAndExit()) hide();
}

void ReportWindow::ExitWithoutSaving() {
  viewer_.ExitWithoutSaving();
  ShowPages();
  hide();
}

void ReportWindow::RefreshPages() {
  viewer_.Refresh();
  ShowPages();
}

void ReportWindow::FindNext() {
  TakeEdits();
  if (viewer_.FindNext(ToStd(findText_->text()), caseSensitive_->isChecked())) ShowSelection();
}

void ReportWindow::Replace() {
  TakeEdits();
  bool found = viewer_.Replace(ToStd(findText_->text()), ToStd(replaceText_->text()), caseSensitive_->isChecked());
  ShowPages();
  if (found) ShowSelection();
}

void ReportWindow::ReplaceAll() {
  TakeEdits();
  viewer_.ReplaceAll(ToStd(findText_->text()), ToStd(replaceText_->text()), caseSensitive_->isChecked());
  ShowPages();
}

void ReportWindow::ShowAsHtml() {
  TakeEdits();
  viewer_.ShowAsHtml();
}

void ReportWindow::OpenHtml(const std::string& path) {
  // The system's handler where there is one; without a screen or a handler, a browser here.
  if (QGuiApplication::platformName() != "offscreen" && QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path)))) {
    return;
  }
  QFile file(ToQt(path));
  if (!file.open(QIODevice::ReadOnly)) return;
  QByteArray bytes = file.readAll();
  auto* browser = new QTextBrowser(this);
  browser->setWindowFlag(Qt::Window);
  browser->setAttribute(Qt::WA_DeleteOnClose);
  browser->setWindowTitle(ToQt(path));
  browser->setHtml(ToQt(FromReportEncoding(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())))));
  browser->resize(800, 600);
  browser->show();
  htmlBrowser_ = browser;
}

}  // namespace tarvika
