#pragma once

#include <QObject>
#include <functional>
#include <string>

class QWidget;

namespace oriolemark {

// F1 in a dialog opens the manual at the page about that dialog. The help window can be used while
// a modal dialog is open. For this it becomes a child of the front dialog, unless the dialog
// belongs to the help window.
class HelpKey : public QObject {
 public:
  // `open` opens the help file at a topic, see HelpViewer.
  HelpKey(QWidget& help, std::function<void(const std::string& topic)> open);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void StandBefore(const QWidget* dialog);

  QWidget& help_;
  std::function<void(const std::string& topic)> open_;
};

}  // namespace oriolemark
