#pragma once

#include "platform/Button.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/Prompts.h"

namespace oriolemark {

class frmAbout : public Form {
 public:
  frmAbout(Prompts& prompts, const std::string& version)
      : cmdOK([this] { Unload(); }), cmdSysInfo([&prompts] {
          // The tool that shows it exists on another system only.
          prompts.Show({.text = "System Information Is Unavailable At This Time"});
        }) {
    SetCaption(std::string("About ") + kApplicationTitle);
    lblVersion.SetText("Version " + version);
  }

  Label lblVersion;
  Button cmdOK;
  Button cmdSysInfo;
};

}  // namespace oriolemark
