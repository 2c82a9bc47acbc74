#pragma once

#include <QWidget>
#include <memory>

#include "platform/HelpViewer.h"

namespace oriolemark {

class HelpBook;

// The help file in a separate window: contents, keyword index and full-text search beside the page.
// It is hidden until the first Open(). Closing it or pressing Escape hides it again. It never keeps
// the program running. The help library writes its files into a temporary folder.
class HelpWindow : public QWidget, public HelpViewer {
 public:
  explicit HelpWindow(QWidget* parent);
  ~HelpWindow() override;

  std::optional<std::string> Open(const std::string& path, HelpCommand command,
                                  const std::string& topic) override;

 private:
  std::unique_ptr<HelpBook> book_;  // null until the first file is open
};

}  // namespace oriolemark
