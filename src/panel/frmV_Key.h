#pragma once

#include "panel/KeySender.h"
#include "platform/Form.h"

namespace oriolemark {

// The front keys of an instrument whose screen cannot be read. It needs no connection: a click
// without one shows the link's own message.
class frmV_Key : public Form {
 public:
  frmV_Key(EventSource& events, TX5000Cmd& scope) : Keys(events, scope) {
    SetCaption("Virtual Keyboard");
  }

  KeySender Keys;

  void Form_Load() override { Keys.StopRepeat(); }

 protected:
  void Form_Unload() override { Keys.StopRepeat(); }
};

}  // namespace oriolemark
