#pragma once
// The one way the core talks to a person: it tells a message, asks for a text, or asks a
// yes/no/cancel question. The desktop program answers with dialogs, the command line with
// standard error and answers given in advance, the tests with a scripted fake.

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvika {

enum class Answer { Yes, No, Cancel };
// What a told message is, for the icon of its box.
enum class MessageKind { Information, Warning, Error };

class UserChannel {
 public:
  virtual ~UserChannel() = default;
  // A message box: the person reads it and confirms.
  virtual void Tell(std::string_view message) = 0;
  // The same with its kind; a channel without icons just tells it.
  virtual void TellAs(MessageKind kind, std::string_view message) {
    (void)kind;
    Tell(message);
  }
  // A one-line text; nullopt when the person cancels.
  virtual std::optional<std::string> AskText(std::string_view prompt, std::string_view initial) = 0;
  virtual Answer AskYesNoCancel(std::string_view question) = 0;
};

// Answers from a prepared script and remembers everything it was told or asked.
// When the script runs out, texts are answered as cancelled and questions with the fallback.
class ScriptedChannel : public UserChannel {
 public:
  explicit ScriptedChannel(Answer fallback = Answer::Cancel) : fallback_(fallback) {}

  void QueueText(std::optional<std::string> text) { texts_.push_back(std::move(text)); }
  void QueueAnswer(Answer answer) { answers_.push_back(answer); }

  void Tell(std::string_view message) override { told.emplace_back(message); }
  std::optional<std::string> AskText(std::string_view prompt, std::string_view initial) override;
  Answer AskYesNoCancel(std::string_view question) override;

  std::vector<std::string> told;   // messages, in order
  std::vector<std::string> asked;  // prompts and questions, in order

 private:
  Answer fallback_;
  std::deque<std::optional<std::string>> texts_;
  std::deque<Answer> answers_;
};

}  // namespace tarvika
