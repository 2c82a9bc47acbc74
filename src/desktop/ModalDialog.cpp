#include "desktop/ModalDialog.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <optional>

namespace oriolemark {
namespace {

// The interval in ms at which a dialog checks whether the program is closing.
constexpr int kWatchInterval = 100;

}  // namespace

bool RunModal(QDialog& dialog, Waiting& waiting) {
  dialog.setWindowModality(Qt::ApplicationModal);
  std::optional<int> result;
  QObject::connect(&dialog, &QDialog::finished, [&result](int code) { result = code; });
  // The toolkit's own question in front of the dialog runs its own wait. It has to be closed.
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&waiting] {
    QWidget* front = QApplication::activeModalWidget();
    if (waiting.Closing() && front != nullptr) front->close();
  });
  watch.start(kWatchInterval);
  dialog.show();
  waiting.WaitForUser([&result] { return result.has_value(); });
  dialog.disconnect();
  return result == QDialog::Accepted;
}

}  // namespace oriolemark
