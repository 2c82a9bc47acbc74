#include "support/RecordingPrompts.h"

#include <gtest/gtest.h>

#include <memory>

namespace oriolemark {

void PrintTo(const Message& message, std::ostream* out) {
  *out << ::testing::PrintToString(message.text) << " under " << message.title << ", icon "
       << static_cast<int>(message.icon) << ", buttons " << static_cast<int>(message.buttons);
}

MessageAnswer RecordingPrompts::Show(const Message& message) {
  if (waiting_.Closing()) return MessageAnswer::Cancel;
  shown.push_back(message);
  const bool question = message.buttons != MessageButtons::Ok;
  if (answers_.empty()) {
    if (question) ADD_FAILURE() << "no answer to " << message.text;
    return question ? MessageAnswer::Cancel : MessageAnswer::Ok;
  }
  const Answer next = answers_.front();
  answers_.pop_front();
  if (next.delay > Milliseconds::zero()) {
    const auto answered = std::make_shared<bool>(false);
    clock_.After(next.delay, [answered] { *answered = true; });
    if (!waiting_.WaitUntil([answered] { return *answered; })) return MessageAnswer::Cancel;
  }
  return next.answer;
}

}  // namespace oriolemark
