#include "transfers/TransferPrompts.h"

#include <utility>

namespace oriolemark {

MessageAnswer TransferPrompts::Show(const Message& message) {
  if (transfer_.runs == 0 || message.buttons != MessageButtons::Ok) return system_.Show(message);
  if (std::exchange(runNumber_, transfer_.runNumber) != transfer_.runNumber) muted_.clear();
  const Words words{message.text, message.systemText, message.title};
  const auto [place, isNew] = muted_.try_emplace(words, false);
  if (place->second) return MessageAnswer::Ok;
  Message shown = message;
  shown.mayMute = !isNew;
  if (system_.Show(shown) == MessageAnswer::OkAndMute) muted_[words] = true;
  return MessageAnswer::Ok;
}

}  // namespace oriolemark
