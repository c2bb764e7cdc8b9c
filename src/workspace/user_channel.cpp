#include "workspace/user_channel.h"

namespace tarvika {

std::optional<std::string> ScriptedChannel::AskText(std::string_view prompt, std::string_view) {
  asked.emplace_back(prompt);
  if (texts_.empty()) return std::nullopt;
  auto text = std::move(texts_.front());
  texts_.pop_front();
  return text;
}

Answer ScriptedChannel::AskYesNoCancel(std::string_view question) {
  asked.emplace_back(question);
  if (answers_.empty()) return fallback_;
  Answer a = answers_.front();
  answers_.pop_front();
  return a;
}

}  // namespace tarvika
