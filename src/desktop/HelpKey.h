#pragma once

#include <QObject>
#include <functional>
#include <string>

class QWidget;

namespace oriolemark {

// F1 in a dialog opens the manual at the page about that dialog. The help window can be used while
// a dialog blocks the others: it counts as a part of the foremost one, unless it owns that dialog.
class HelpKey : public QObject {
 public:
  // `open` opens the help file at a page.
  HelpKey(QWidget& help, std::function<void(const std::string& page)> open);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void StandBefore(const QWidget* dialog);

  QWidget& help_;
  std::function<void(const std::string& page)> open_;
};

}  // namespace oriolemark
