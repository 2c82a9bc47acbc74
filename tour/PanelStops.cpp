#include <QDialog>
#include <QFile>
#include <QTest>
#include <algorithm>

#include "Tour.h"

namespace oriolemark {
namespace {

constexpr const char* kScreenFile = "screen.bmp";
constexpr int kHold = 1000;  // ms
constexpr QRgb kTraceColour = 0xFFFFFF00;
constexpr int kLeastMove = 5;  // rows

QWidget* InWindow(const QString& window, const QString& name) {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (top->objectName() == window && top->isVisible()) return top->findChild<QWidget*>(name);
  }
  return nullptr;
}

// The highest row of the trace in the left half of the screen, which no menu covers.
int TopOfTrace(const QImage& screen) {
  for (int y = 25; y < screen.height(); ++y) {
    for (int x = 20; x < screen.width() / 2; ++x) {
      if (screen.pixel(x, y) == kTraceColour) return y;
    }
  }
  return -1;
}

}  // namespace

// The instrument's front: with its screen over USB, the keys alone over the other links.
void Tour::AddPanelStops() {
  const auto idle = [this] { return Idle(); };
  const bool mirrors = link_.ioType == kLinkUsb;
  const QString window = mirrors ? "frmV_Panel" : "frmV_Key";
  const auto open = [window] { return InWindow(window, "VK_F1") != nullptr; };
  const auto click = [this, window](const char* name) {
    QWidget* button = InWindow(window, name);
    if (button == nullptr) return Check(false, QString("the window has ") + name);
    QTest::mouseClick(button, Qt::LeftButton);
  };
  Add({{"front", idle, [this] { OpenRow("Virtual Panel", ""); }}});
  // The last one of them moves the trace up.
  for (const PanelKey& key : kPanelKeys) {
    if (key.repeat == KeyRepeat::Once) continue;
    Add({{"front-key-held", open,
          [this, window, &key] { Hold(key, InWindow(window, key.control)); }},
         {"front-key-released", [this] { return !holding_; }, [this, &key] { CheckHeld(key); }}});
  }
  if (mirrors) {
    Add({{"mirror-moved", open,
          [this, click] {
            const int top = TopOfTrace(Screen());
            Check(top >= 0 && top <= topBefore_ - kLeastMove,
                  QString("the key moves the trace up from row %1 to %2").arg(topBefore_).arg(top));
            click("cmdStop");
          }},
         {"mirror-frozen", open,
          [this, click] {
            frozen_ = instrument_.Count(":HARD_COPY");
            QFile::remove(folder_.filePath(kScreenFile));
            click("cmdExport");
          }},
         {"screen-named", Asking, [this] { NameFile(kScreenFile); }},
         {"screen-exported", [] { return !Asking(); },
          [this] {
            const QImage saved(folder_.filePath(kScreenFile));
            Check(!saved.isNull() && saved.convertToFormat(QImage::Format_RGB32) == Screen(),
                  "the exported picture has the pixels of the screen");
            Check(instrument_.Count(":HARD_COPY") == frozen_, "a frozen mirror asks for no frame");
          }}});
  }
  Add({{"all-keys", open,
        [this, click, mirrors] {
          for (const PanelKey& key : kPanelKeys) {
            const QString command = QString::fromStdString(CommandOf(key));
            const int before = instrument_.Count(command);
            click(mirrors && key.panelControl != nullptr ? key.panelControl : key.control);
            Check(instrument_.Count(command) == before + 1, "the key sends " + command);
          }
        }},
       {"front-closed", open,
        [window] { QTest::keyClick(InWindow(window, "VK_F1"), Qt::Key_Escape); }}});
}

void Tour::Hold(const PanelKey& key, QWidget* button) {
  if (button == nullptr) return Check(false, "a key to hold");
  topBefore_ = TopOfTrace(Screen());
  heldBefore_ = instrument_.Count(QString::fromStdString(CommandOf(key)));
  holding_ = true;
  QTest::mousePress(button, Qt::LeftButton);
  QTimer::singleShot(kHold, button, [this, button] {
    QTest::mouseRelease(button, Qt::LeftButton);
    holding_ = false;
  });
}

// A tick every 100 ms, and the click at the end. A busy machine merges ticks.
void Tour::CheckHeld(const PanelKey& key) {
  const QString command = QString::fromStdString(CommandOf(key));
  const int sent = instrument_.Count(command) - heldBefore_;
  Check(sent >= 3 && sent <= 11,
        QString("a key held for 1 s sends %1 %2 times").arg(command).arg(sent));
}

QImage Tour::Screen() {
  const Canvas& canvas = module_.panel.WavePic.Surface();
  const auto* bytes = reinterpret_cast<const uchar*>(canvas.Pixels().data());
  return QImage(bytes, canvas.Width(), canvas.Height(), QImage::Format_RGB32).copy();
}

}  // namespace oriolemark
