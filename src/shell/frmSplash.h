#pragma once

#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/Prompts.h"

namespace oriolemark {

// Shows product title, company and version while the program loads.
class frmSplash : public Form {
 public:
  explicit frmSplash(const std::string& version) {
    SetCaption(kApplicationTitle);
    lblVersion.SetText(version);
  }

  Label lblVersion;
  // Set by the toolkit's side when the window has been drawn on the screen.
  bool Drawn = false;
};

}  // namespace oriolemark
