#pragma once
// The person at the screen: message boxes with the icon of their kind, input dialogs, and
// the status line for plain information that needs no answer.

#include <QWidget>

#include <functional>

#include "workspace/user_channel.h"

namespace tarvika {

class QtUserChannel : public UserChannel {
 public:
  void SetParent(QWidget* parent) { parent_ = parent; }
  // Where information goes instead of a box (the main window's status line), when set.
  void SetStatusLine(std::function<void(const QString&)> show) { status_ = std::move(show); }
  // A message without a kind is a refusal or a fault: a warning box.
  void Tell(std::string_view message) override;
  void TellAs(MessageKind kind, std::string_view message) override;
  std::optional<std::string> AskText(std::string_view prompt, std::string_view initial) override;
  Answer AskYesNoCancel(std::string_view question) override;

 private:
  QWidget* parent_ = nullptr;
  std::function<void(const QString&)> status_;
};

}  // namespace tarvika
