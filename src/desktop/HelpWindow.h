#pragma once

#include <QWidget>
#include <memory>

#include "platform/HelpViewer.h"

namespace oriolemark {

class HelpBook;

// The help file in a window of its own: contents, keyword index and full-text search beside the
// page. It is hidden until the first Open(), closing or Escape hides it again, and neither keeps
// the program alive. What the help library has to write stands in a temporary folder.
class HelpWindow : public QWidget, public HelpViewer {
 public:
  explicit HelpWindow(QWidget* parent);
  ~HelpWindow() override;

  std::optional<std::string> Open(const std::string& path, HelpCommand command,
                                  const std::string& page) override;

 private:
  std::unique_ptr<HelpBook> book_;  // none before the first file is open
};

}  // namespace oriolemark
