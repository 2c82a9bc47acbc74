#pragma once

#include <QString>

#include "platform/Prompts.h"
#include "platform/Waiting.h"

class QDialog;

namespace oriolemark {

// Message boxes and dialogs of the desktop. They block the whole application's windows, and are
// waited for through `Waiting`, so that the closing of the program ends them as it ends every other
// wait.
class QtPrompts : public Prompts {
 public:
  explicit QtPrompts(Waiting& waiting) : waiting_(waiting) {}
  MessageAnswer Show(const Message& message) override;
  std::string AskFileName(const FileQuestion& question) override;
  void ShowPrinterDialog(const std::string& title) override;

 private:
  // Shows the dialog and waits for its end; whether it was accepted.
  bool Run(QDialog& dialog, const std::string& title);

  Waiting& waiting_;
  QString folder_;  // of the file that was chosen last
};

}  // namespace oriolemark
