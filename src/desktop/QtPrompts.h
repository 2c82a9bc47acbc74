#pragma once

#include <QString>

#include "platform/Prompts.h"
#include "platform/SettingsStore.h"
#include "platform/Waiting.h"

namespace oriolemark {

class PagePrinter;

// Message boxes and dialogs of the desktop. They block all windows of the application. They wait
// through `Waiting`, so that closing the program ends them like every other wait. A file dialog
// begins in the folder of the file that was chosen last, also in an earlier run. The store keeps
// it. If that folder is gone, the dialog begins in the user's home.
class QtPrompts : public Prompts {
 public:
  QtPrompts(Waiting& waiting, SettingsStore& store, PagePrinter& printer)
      : waiting_(waiting), store_(store), printer_(printer) {}
  MessageAnswer Show(const Message& message) override;
  std::string AskFileName(const FileQuestion& question) override;
  void ShowPrinterDialog(const std::string& title) override;

 private:
  QString LastFolder();

  Waiting& waiting_;
  SettingsStore& store_;
  PagePrinter& printer_;
};

}  // namespace oriolemark
