#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Prompts.h"
#include "support/Tables.h"
#include "support/VirtualClock.h"

namespace oriolemark {

inline void PrintTo(const Message& message, std::ostream* out) {
  *out << message.title << ": " << ::testing::PrintToString(message.text + message.systemText)
       << static_cast<int>(message.icon) << static_cast<int>(message.buttons) << message.mayMute;
}

inline Message Warning(const std::string& text, const std::string& title = kApplicationTitle) {
  return {.text = text, .title = title, .icon = MessageIcon::Exclamation};
}
inline Message Critical(const std::string& text, const std::string& title = kApplicationTitle) {
  return {.text = text, .title = title, .icon = MessageIcon::Critical};
}

// The user in front of the message boxes: notes what is shown and answers it, at once or after a
// while in which events are served. A question without a scripted answer fails the test.
class RecordingPrompts : public Prompts {
 public:
  explicit RecordingPrompts(VirtualClock& clock) : clock_(clock) {}

  void AnswerNext(MessageAnswer answer, Milliseconds delay = Milliseconds(0)) {
    answers_.push_back({answer, delay});
  }

  MessageAnswer Show(const Message& message) override {
    if (clock_.waiting.Closing()) return MessageAnswer::Cancel;
    const bool asksToSave = message.buttons == MessageButtons::YesNoCancel;
    if (asksToSave && toSave && answers_.empty()) return *toSave;
    shown.push_back(message);
    if (answers_.empty()) {
      const bool asks = message.buttons != MessageButtons::Ok;
      EXPECT_FALSE(asks) << "no answer to " << message.text;
      return asks ? MessageAnswer::Cancel : MessageAnswer::Ok;
    }
    const auto [answer, delay] = answers_.front();
    answers_.pop_front();
    const Milliseconds end = clock_.Now() + delay;
    clock_.After(delay, [] {});
    const auto answered = [&] { return clock_.Now() >= end; };
    return clock_.waiting.WaitUntil(answered) ? answer : MessageAnswer::Cancel;
  }
  // The next file dialogs are answered with these paths in turn, and further ones cancelled.
  std::string AskFileName(const FileQuestion& question) override {
    questions.push_back(question);
    if (paths.empty()) return {};
    const std::string path = paths.front();
    paths.pop_front();
    return path;
  }
  void ShowPrinterDialog(const std::string&) override {}

  // The texts of the boxes since the last call.
  std::vector<std::string> Told() {
    std::vector<std::string> texts;
    for (const Message& message : std::exchange(shown, {})) {
      texts.push_back(message.text + message.systemText);
    }
    return texts;
  }

  // The answer to questions about unsaved changes that have no scripted one. They are not noted.
  std::optional<MessageAnswer> toSave;

  std::vector<Message> shown;
  std::vector<FileQuestion> questions;
  std::deque<std::string> paths;

 private:
  VirtualClock& clock_;
  std::deque<std::pair<MessageAnswer, Milliseconds>> answers_;
};

}  // namespace oriolemark
