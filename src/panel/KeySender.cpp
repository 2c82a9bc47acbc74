#include "panel/KeySender.h"

namespace oriolemark {
namespace {

constexpr int kRepeatInterval = 100;  // ms

}  // namespace

KeySender::KeySender(EventSource& events, TX5000Cmd& scope)
    : ButtonPressTimer(events, kRepeatInterval,
                       [this] {
                         // A copy: another key may be pressed behind a message of the link.
                         const std::string command = heldCommand_;
                         scope_.SendToScope(command);
                       }),
      scope_(scope) {}

void KeySender::Press(const PanelKey& key) {
  if (key.repeat == KeyRepeat::Once) return;
  heldCommand_ = CommandOf(key);
  ButtonPressTimer.SetEnabled(true);
}

// The click comes on top of the repeats: a press of n ticks sends n + 1 commands.
void KeySender::LetGo(const PanelKey& key, Release where) {
  if (key.repeat == KeyRepeat::WhileHeld) StopRepeat();
  if (where == Release::Inside) Click(key);
}

void KeySender::Click(const PanelKey& key) {
  scope_.SendToScope(CommandOf(key));
}

}  // namespace oriolemark
