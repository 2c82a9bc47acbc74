#pragma once

#include <deque>
#include <ostream>
#include <string>
#include <vector>

#include "platform/Prompts.h"
#include "support/VirtualClock.h"

namespace oriolemark {

void PrintTo(const Message& message, std::ostream* out);

// The user in front of the message boxes: notes what is shown and answers it, at once or after a
// while in which events are served. A question without a scripted answer fails the test.
class RecordingPrompts : public Prompts {
 public:
  RecordingPrompts(VirtualClock& clock, Waiting& waiting) : clock_(clock), waiting_(waiting) {}

  void AnswerNext(MessageAnswer answer, Milliseconds delay = Milliseconds(0)) {
    answers_.push_back({answer, delay});
  }

  MessageAnswer Show(const Message& message) override;
  void ShowPrinterDialog(const std::string& title) override { printerDialogs.push_back(title); }

  std::vector<Message> shown;
  std::vector<std::string> printerDialogs;

 private:
  struct Answer {
    MessageAnswer answer;
    Milliseconds delay;
  };

  VirtualClock& clock_;
  Waiting& waiting_;
  std::deque<Answer> answers_;
};

}  // namespace oriolemark
