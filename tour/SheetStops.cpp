#include <QFile>
#include <QFileInfo>
#include <QKeyCombination>
#include <QMainWindow>
#include <QPainter>
#include <QTreeWidget>
#include <algorithm>

#include "Tour.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {
namespace {

constexpr const char* kSheet = "sheet.orm";
constexpr const char* kRenamed = "Ripple, 5 V";
constexpr int kWaves = 4;

QString PictureFile(int slot) {
  return QString("wave%1.png").arg(slot);
}

}  // namespace

// Four waveforms, one of each shape.
void Tour::AddSheetStops() {
  const auto idle = [this] { return Idle(); };
  const auto read = [this] { Click("cmdRefresh"); };
  Add({
      {"envelope-window", idle, [this] { OpenItem("Wave1"); }},
      {"envelope-channels", idle,
       [this] {
         instrument_.Do("xy off");
         instrument_.Do("set :ACQUIRE:ACQUISITION ENVELOPE");
         ClickText("CH1&2");
       }},
      {"envelope-of-both", idle, read},
      {"rolling-window", idle,
       [this] {
         Check(Wave(1).Envelope && Wave(1).Channels == 3, "an envelope of both channels was read");
         Click("tool_AddNewWaveform");
       }},
      {"rolling", idle,
       [this] {
         instrument_.Do("set :ACQUIRE:ACQUISITION NORMAL");
         instrument_.Do("signal 1 ramp 0.5");
         instrument_.Do("scan on");
         Click("cmdRefresh");
       }},
      {"plain-window", idle,
       [this] {
         Check(Wave(2).IsScan, "a rolling record was read");
         instrument_.Do("scan off");
         instrument_.Do("set :TimeBase:RANGE 500.0us");
         instrument_.Do("signal 1 square 1000");
         Click("tool_AddNewWaveform");
       }},
      {"plain", idle, read},
      {"for-paper", idle,
       [this] {
         Check(Wave(3).IsYT && !Wave(3).IsScan && !Wave(3).Envelope, "a plain record was read");
         ClickText("B&W");
         Click("GridCheck");
       }},
  });
}

// The zoom and the cursors belong to the window, not to the sheet. The pictures are kept without
// cursors, two at the zoom of a window that has just been opened, and two fitted to their windows.
void Tour::AddSaveStops() {
  const auto idle = [this] { return Idle(); };
  Add({
      {"rename", idle,
       [this] {
         ClickItem(Item("Wave1"), Qt::LeftButton);
         Press(Qt::Key_F2);
       }},
      {"renamed", idle,
       [this] {
         Type(kRenamed);
         Press(Qt::Key_Return);
       }},
      // The window came to the front with its new name.
      {"zoom-renamed", idle, [this] { SetZoom("150%"); }},
      {"front-xy", idle, [this] { OpenItem("Wave0"); }},
      {"zoom-xy", idle,
       [this] {
         Click("ChkCursorX");
         Click("ChkCursorY");
         SetZoom("150%");
       }},
      {"sheet-tiled", idle,
       [this] {
         module_.main.mnuWindowTileVertical.Click();
         // Without a real screen no window is active after a dialog, and none gets shortcuts.
         Main()->activateWindow();
       }},
      {"sheet-save", idle,
       [this] {
         QFile::remove(folder_.filePath(kSheet));
         KeepPictures();
         Press(Qt::CTRL | Qt::Key_S);
       }},
      // The dialog adds the extension.
      {"sheet-named", Asking, [this] { NameFile(QFileInfo(kSheet).baseName()); }},
      {"not-in-the-file", idle,
       [this] {
         Check(QFile::exists(folder_.filePath(kSheet)), "the sheet's file is there");
         Click("tool_AddNewWaveform");
       }},
  });
}

void Tour::KeepPictures() {
  bool differ = true;
  QList<QImage> pictures;
  for (int slot = 0; slot < kWaves; ++slot) {
    const QImage picture = Drawn(slot);
    differ = differ && !picture.isNull() && !pictures.contains(picture);
    pictures << picture;
    picture.save(folder_.filePath(PictureFile(slot)));
  }
  Check(differ, "each waveform has a picture of its own");
}

void Tour::AddReturnStops() {
  const auto idle = [this] { return Idle(); };
  const QString path = folder_.absoluteFilePath(kSheet);
  // Goes on behind the pictures of the first start.
  taken_ = static_cast<int>(folder_.entryList({"*-*.png"}).size());
  Add({
      {"started-again", [this] { return module_.main.Visible(); }, [this] { OpenFileMenu(); }},
      {"recent-sheets", MenuOpen, [this] { ChooseEntry("Recent Data Sheet File"); }},
      {"sheet-chosen", [path] { return Entry(path) != nullptr; },
       [this, path] { ChooseEntry(path); }},
      {"sheet-opened", idle, [this] { module_.main.mnuWindowTileVertical.Click(); }},
      {"same-pictures", idle, [this] { CheckReopened(); }},
      // Nothing has changed, so nothing is asked.
      {"ended-again", idle, CloseMain},
  });
}

void Tour::CheckReopened() {
  const DataSheet& sheet = module_.sheet;
  Check(sheet.WaveCount == kWaves && sheet.MeasureCount == 1 && sheet.DataCount == 1,
        "the sheet has the items that were saved, and not the one that was added later");
  Check(Item(kRenamed) != nullptr, "the renamed waveform has its new name");
  for (int slot = 0; slot < kWaves; ++slot) {
    const QImage before(folder_.filePath(PictureFile(slot)));
    const bool same = Drawn(slot) == before.convertToFormat(QImage::Format_RGB32);
    Check(same && !before.isNull(), QString("the picture of waveform %1 is the same").arg(slot));
  }
}

// The whole picture, whatever part of it the window shows.
QImage Tour::Raster(int slot) {
  auto* view =
      dynamic_cast<frmWave*>(module_.sheet.WaveViews[static_cast<std::size_t>(slot)].get());
  if (view == nullptr) return {};
  const std::unique_ptr<Canvas> canvas = view->WholePicture();
  const auto* bytes = reinterpret_cast<const uchar*>(canvas->Pixels().data());
  return QImage(bytes, canvas->Width(), canvas->Height(), QImage::Format_RGB32).copy();
}

// Without the last half unit of the grid: a trace ends there at a sample behind those that the file
// keeps.
QImage Tour::Drawn(int slot) {
  QImage picture = Raster(slot);
  const double zoom = picture.width() / kPictureWidth;
  const auto column = [zoom](double units) { return kMargin + units * zoom; };
  const int left = static_cast<int>(column(kGridWidth - 0.5));
  const int right = static_cast<int>(column(kGridWidth) + 1);
  QPainter(&picture).fillRect(left, 0, right - left, picture.height(), Qt::black);
  return picture;
}

}  // namespace oriolemark
