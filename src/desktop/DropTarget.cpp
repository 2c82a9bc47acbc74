#include "desktop/DropTarget.h"

#include <QApplication>
#include <QDockWidget>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <utility>

namespace oriolemark {
namespace {

DropTarget::Paths LocalFiles(const QMimeData& data) {
  DropTarget::Paths paths;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) paths.push_back(url.toLocalFile().toStdString());
  }
  return paths;
}

bool Blocked() {
  return QApplication::activeModalWidget() != nullptr;
}

}  // namespace

DropTarget::DropTarget(QWidget& window, std::function<bool(const Paths&)> takes,
                       std::function<void(const Paths&)> open)
    : QObject(&window), window_(window), takes_(std::move(takes)), open_(std::move(open)) {
  window.setAcceptDrops(true);
  // A line of text would take the path of a dropped file as its own text.
  QApplication::instance()->installEventFilter(this);
}

bool DropTarget::Covers(const QObject& watched) const {
  const auto* widget = qobject_cast<const QWidget*>(&watched);
  if (widget == nullptr) return false;
  const QWidget* top = widget->window();
  return top == &window_ || (qobject_cast<const QDockWidget*>(top) && top->parent() == &window_);
}

bool DropTarget::eventFilter(QObject* watched, QEvent* event) {
  const bool dropped = event->type() == QEvent::Drop;
  const bool over = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove;
  if ((!dropped && !over) || !Covers(*watched)) return false;
  auto& drop = static_cast<QDropEvent&>(*event);
  if (!drop.mimeData()->hasUrls()) return false;
  const Paths paths = LocalFiles(*drop.mimeData());
  const bool taken = !paths.empty() && !Blocked() && takes_(paths);
  // The file stays where it is, also if its folder's window proposes to move it.
  if (taken) drop.setDropAction(Qt::CopyAction);
  drop.setAccepted(taken);
  if (dropped && taken) QTimer::singleShot(0, this, [this, paths] { Open(paths); });
  return true;
}

void DropTarget::Open(const Paths& paths) {
  if (Blocked()) return;
  // The files come from another window, which has the focus.
  window_.activateWindow();
  open_(paths);
}

}  // namespace oriolemark
