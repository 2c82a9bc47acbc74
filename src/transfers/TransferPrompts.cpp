#include "transfers/TransferPrompts.h"

#include <cstddef>

namespace oriolemark {

namespace {

// A muted mirror of the instrument's screen stays muted while other transfers come and go.
constexpr std::size_t kKeptRuns = 8;

}  // namespace

MessageAnswer TransferPrompts::Show(const Message& message) {
  const int run = transfer_.run;
  if (run == 0 || message.buttons != MessageButtons::Ok) return system_.Show(message);
  if (!muted_.contains(run) && muted_.size() == kKeptRuns) muted_.erase(muted_.begin());
  const Words words{message.text, message.systemText, message.title};
  const auto [place, isNew] = muted_[run].try_emplace(words, false);
  if (place->second) return MessageAnswer::Ok;
  Message shown = message;
  shown.mayMute = !isNew;
  if (system_.Show(shown) == MessageAnswer::OkAndMute) muted_[run][words] = true;
  return MessageAnswer::Ok;
}

}  // namespace oriolemark
