#pragma once

#include "platform/Prompts.h"
#include "platform/Waiting.h"

namespace oriolemark {

// Message boxes of the desktop. They block the whole application's windows, and are waited for
// through `Waiting`, so that the closing of the program ends them as it ends every other wait.
class QtPrompts : public Prompts {
 public:
  explicit QtPrompts(Waiting& waiting) : waiting_(waiting) {}
  MessageAnswer Show(const Message& message) override;
  // No printing on this system yet: nothing is shown.
  void ShowPrinterDialog(const std::string& title) override;

 private:
  Waiting& waiting_;
};

}  // namespace oriolemark
