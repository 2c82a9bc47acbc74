#pragma once

#include <memory>

#include "controller/records/CtrlSettings.h"
#include "datasheet/records/DataSheet.h"
#include "datasheet/records/TransferScratch.h"
#include "platform/CheckBox.h"
#include "platform/ComboBox.h"
#include "platform/OptionGroup.h"
#include "platform/Picture.h"
#include "platform/ScrollBar.h"
#include "transfers/RefreshLoop.h"
#include "transfers/frmPrgress.h"
#include "waveview/WaveCursors.h"

namespace oriolemark {

// What a wave view rests on.
struct WaveViewContext {
  DataSheet& sheet;
  const CtrlSettings& settings;
  TransferScratch& scratch;
  frmPrgress& progress;
  RefreshContext refresh;
};

// The window that shows one wave record as the instrument's screen shows it. The tag names the slot
// of the record; every procedure looks the record up anew, and nothing of the trace lives in the
// picture, so that the record may change under the view.
class frmWave : public Form {
 public:
  // Pictures of more pixels are not drawn: their canvas has the size 0 by 0.
  static constexpr double kMostPixels = 64e6;
  static constexpr double kLeastStrip = 1100;
  static constexpr int kKeyF5 = 116;
  enum class ShiftKeys { None, Held };

  frmWave(WaveViewContext context, std::unique_ptr<Canvas> canvas);

  // Width in window units that the controls at the left need; told by the toolkit's side before it
  // tells the room inside. Counts as 1100 at least.
  double stripWidth = kLeastStrip;
  // Pixels of the picture in a pixel of the window, told likewise: 1 but on screens whose scale is
  // no whole number.
  double canvasScale = 1;

  Picture WavePic;
  Backdrop BackPic;
  ScrollBar HScroll;
  ScrollBar VScroll;
  ComboBox ZoomCombo;
  CheckBox BestFitChk;
  CheckBox GridCheck;
  CheckBox ChkCursorX;
  CheckBox ChkCursorY;
  OptionGroup OptionColor;  // "Color", "B&&W"
  OptionGroup OptionCH;     // "CH1", "CH2", "CH1&&2"
  Button cmdRefresh;        // faces kRefreshFace and kStopFace
  Timer Timer1;

  double ZoomFactor = 1.0;   // 1.0 is a grid unit a pixel; never below 0.01
  bool InitPending = false;  // from the load to the first tick: nothing is drawn
  WaveCursors Cursors;

  // May run again on a loaded view whose slot has got another record: the view shows that one.
  void Form_Load() override;
  void Form_Resize() override;
  void cmdRefresh_Click();
  void Timer1_Timer();
  void KeyDown(int code, ShiftKeys shift);
  // The keyboard's way to drag a cursor.
  void MoveCursor(CursorLine line, int units);
  // One reading by the channel option. Waits until the transfer has ended.
  void LoadData();

 protected:
  void Form_Unload() override;

 private:
  WaveRecord& Record();
  void TakeFirstTick();
  void ZoomCombo_Change();
  void RefuseZoom();
  void ShowZoom();
  void BestFitChk_Click();
  void GridCheck_Click();
  void OptionColor_Click(int index);
  void WavePic_MouseMove(double x, double y);
  // So many window units in pixels of the picture.
  double CanvasPixels(double units) const { return UnitsToPixels(units) * canvasScale; }
  void PlaceBackPic();
  void FitPicture();
  void PlaceScrollBars();
  void ScrollPicture();
  void SizePicture();
  void RepaintPicture();

  WaveViewContext context_;
  RefreshLoop refresh_;
  double HRange = 0;  // pixels by which WavePic is larger than BackPic
  double VRange = 0;
};

}  // namespace oriolemark
