#pragma once
// The person at the screen: message boxes and input dialogs.

#include <QWidget>

#include "workspace/user_channel.h"

namespace tarvika {

class QtUserChannel : public UserChannel {
 public:
  void SetParent(QWidget* parent) { parent_ = parent; }
  void Tell(std::string_view message) override;
  std::optional<std::string> AskText(std::string_view prompt, std::string_view initial) override;
  Answer AskYesNoCancel(std::string_view question) override;

 private:
  QWidget* parent_ = nullptr;
};

}  // namespace tarvika
