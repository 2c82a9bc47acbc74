#include "desktop/HelpKey.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <iterator>
#include <utility>

namespace oriolemark {
namespace {

struct DialogPage {
  const char* dialog;  // its object name, its title or its class
  const char* page;
};

constexpr DialogPage kPages[] = {
    {"frmOptions", "options.html"},        {"CtrlDialog", "controller.html#edit"},
    {"frmPassFailed", "limits.html"},      {"frmWaveSetting", "fft.html"},
    {"frmNewDoc", "controlfile.html"},     {"frmOpenDoc", "controlfile.html"},
    {"QPrintDialog", "output.html#setup"}, {"QPrintPreviewDialog", "output.html#preview"},
    {"Export File", "output.html#export"}, {"Save As", "sheet.html#files"},
    {"QFileDialog", "controlfile.html"},   {"frmV_Key", "panel.html#keys"},
    {"frmV_Panel", "panel.html"},          {"frmPrgress", "reading.html#progress"},
    {"QMessageBox", "messages.html"},      {"QDialog", "index.html"},
};

// The last row is for every dialog.
const char* PageOf(const QDialog& dialog) {
  return std::find_if(std::begin(kPages), std::end(kPages) - 1,
                      [&dialog](const DialogPage& row) {
                        return dialog.objectName() == row.dialog ||
                               dialog.windowTitle() == row.dialog || dialog.inherits(row.dialog);
                      })
      ->page;
}

}  // namespace

HelpKey::HelpKey(QWidget& help, std::function<void(const std::string& page)> open)
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
  QTimer::singleShot(0, this, [this, page = PageOf(*dialog)] { open_(page); });
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
