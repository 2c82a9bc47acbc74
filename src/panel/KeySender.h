#pragma once

#include <string>

#include "link/TX5000Cmd.h"
#include "panel/PanelKeys.h"
#include "platform/Timer.h"

namespace oriolemark {

// Sends the commands of the front keys for one window. A held key repeats every 100 ms if its row
// says so. The first repeat comes 100 ms after the press. Each send may show the link's message and
// serve events meanwhile.
class KeySender {
 public:
  enum class Release { Inside, Outside };

  KeySender(EventSource& events, TX5000Cmd& scope);

  // The key goes down, by the mouse or by Space.
  void Press(const PanelKey& key);
  // It is let go. Inside the key this is also a click.
  void LetGo(const PanelKey& key, Release where);
  // Sends the key's command once.
  void Click(const PanelKey& key);
  // Ends the repeat without a click.
  void StopRepeat() { ButtonPressTimer.SetEnabled(false); }

  Timer ButtonPressTimer;

 private:
  TX5000Cmd& scope_;
  std::string heldCommand_;
};

}  // namespace oriolemark
