#pragma once

#include <QString>

#include "platform/Prompts.h"
#include "platform/SettingsStore.h"
#include "platform/Waiting.h"

class QDialog;

namespace oriolemark {

// Message boxes and dialogs of the desktop. They block all windows of the application. They wait
// through `Waiting`, so that closing the program ends them like every other wait. A file dialog
// begins in the folder of the file that was chosen last, also in an earlier run. The store keeps
// it. If that folder is gone, the dialog begins in the user's home.
class QtPrompts : public Prompts {
 public:
  QtPrompts(Waiting& waiting, SettingsStore& store) : waiting_(waiting), store_(store) {}
  MessageAnswer Show(const Message& message) override;
  std::string AskFileName(const FileQuestion& question) override;
  void ShowPrinterDialog(const std::string& title) override;

 private:
  // Shows the dialog and waits until it closes. Returns true if it was accepted.
  bool Run(QDialog& dialog, const std::string& title);

  QString LastFolder();

  Waiting& waiting_;
  SettingsStore& store_;
};

}  // namespace oriolemark
