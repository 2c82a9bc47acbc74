#pragma once

#include <QString>

#include "platform/Prompts.h"
#include "platform/Waiting.h"

class QDialog;

namespace oriolemark {

// Message boxes and dialogs of the desktop. They block all windows of the application. They wait
// through `Waiting`, so that closing the program ends them like every other wait.
class QtPrompts : public Prompts {
 public:
  explicit QtPrompts(Waiting& waiting) : waiting_(waiting) {}
  MessageAnswer Show(const Message& message) override;
  std::string AskFileName(const FileQuestion& question) override;
  void ShowPrinterDialog(const std::string& title) override;

 private:
  // Shows the dialog and waits until it closes. Returns true if it was accepted.
  bool Run(QDialog& dialog, const std::string& title);

  Waiting& waiting_;
  QString folder_;  // the folder of the file that was chosen last
};

}  // namespace oriolemark
