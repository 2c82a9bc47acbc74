#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace oriolemark {

// Takes files that are dropped anywhere on a window: on its panes, also floating ones, and on the
// windows inside it. The window owns it.
class DropTarget : public QObject {
 public:
  using Paths = std::vector<std::string>;  // UTF-8, local files only

  // Files that `takes` refuses, or that meet a modal window, are shown as refused. `open` runs
  // after the drop is over, because it may ask the user something.
  DropTarget(QWidget& window, std::function<bool(const Paths&)> takes,
             std::function<void(const Paths&)> open);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Covers(const QObject& watched) const;
  void Open(const Paths& paths);

  QWidget& window_;
  const std::function<bool(const Paths&)> takes_;
  const std::function<void(const Paths&)> open_;
};

}  // namespace oriolemark
