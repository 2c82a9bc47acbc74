#include "desktop/HelpKey.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>
#include <utility>

namespace oriolemark {
namespace {

// A file dialog has no name of its own, so its title and its class count too.
std::string TopicOf(const QDialog& dialog) {
  QStringList names{dialog.objectName(), dialog.windowTitle()};
  for (const auto* meta = dialog.metaObject(); meta != nullptr; meta = meta->superClass()) {
    names << meta->className();
  }
  return names.join('\n').toStdString();
}

}  // namespace

HelpKey::HelpKey(QWidget& help, std::function<void(const std::string& topic)> open)
    : help_(help), open_(std::move(open)) {
  qApp->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
  if (!watched->isWidgetType()) return false;
  const auto* dialog = qobject_cast<QDialog*>(watched);
  if (event->type() == QEvent::Show && dialog != nullptr && dialog->isModal()) StandBefore(dialog);
  if (event->type() == QEvent::Hide && dialog != nullptr) {
    StandBefore(QApplication::activeModalWidget());
  }
  if (event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  dialog = qobject_cast<QDialog*>(static_cast<QWidget*>(watched)->window());
  if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier || dialog == nullptr) {
    return false;
  }
  help_.winId();  // creates the native window if it was never shown
  StandBefore(dialog);
  // Runs after the key event, because a file that cannot be opened is reported in a box.
  QTimer::singleShot(0, this, [this, topic = TopicOf(*dialog)] { open_(topic); });
  return true;
}

// A modal window does not block its own child windows, so the help window becomes one of them.
void HelpKey::StandBefore(const QWidget* dialog) {
  if (help_.windowHandle() == nullptr) return;
  for (const QWidget* at = dialog; at != nullptr; at = at->parentWidget()) {
    if (at == &help_) return;
  }
  help_.windowHandle()->setTransientParent(dialog != nullptr ? dialog->windowHandle() : nullptr);
}

}  // namespace oriolemark
