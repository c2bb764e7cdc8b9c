#include "ui/qt_user_channel.h"

#include <QInputDialog>
#include <QMessageBox>

#include "ui/qt_text.h"

namespace tarvika {
void QtUserChannel::Tell(std::string_view message) { TellAs(MessageKind::Warning, message); }

void QtUserChannel::TellAs(MessageKind kind, std::string_view message) {
  switch (kind) {
    case MessageKind::Information:
      if (status_) {
        status_(ToQt(message));
      } else {
        QMessageBox::information(parent_, "Tarvika", ToQt(message));
      }
      break;
    case MessageKind::Warning:
      QMessageBox::warning(parent_, "Tarvika", ToQt(message));
      break;
    case MessageKind::Error:
      QMessageBox::critical(parent_, "Tarvika", ToQt(message));
      break;
  }
}

std::optional<std::string> QtUserChannel::AskText(std::string_view prompt, std::string_view initial) {
  bool ok = false;
  QString text = QInputDialog::getText(parent_, "Tarvika", ToQt(prompt), QLineEdit::Normal, ToQt(initial), &ok);
  if (!ok) return std::nullopt;
  return text.toStdString();
}

Answer QtUserChannel::AskYesNoCancel(std::string_view question) {
  auto button = QMessageBox::question(parent_, "Tarvika", ToQt(question),
                                      QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
  if (button == QMessageBox::Yes) return Answer::Yes;
  if (button == QMessageBox::No) return Answer::No;
  return Answer::Cancel;
}

}  // namespace tarvika
