#pragma once

#include <memory>

#include "datasheet/records/TransferScratch.h"
#include "platform/CheckBox.h"
#include "platform/ComboBox.h"
#include "platform/OptionGroup.h"
#include "platform/Picture.h"
#include "platform/ScrollBar.h"
#include "transfers/ReadingView.h"
#include "waveview/WaveCursors.h"

namespace oriolemark {

// The window that shows one wave record as the instrument's screen shows it. Nothing of the trace
// lives in the picture, so that the record may change under the view.
class frmWave : public ReadingView {
 public:
  // Pictures of more pixels are not drawn: their canvas has the size 0 by 0.
  static constexpr double kMostPixels = 64e6;
  static constexpr double kLeastStrip = 1100;

  frmWave(const ReadingContext& context, TransferScratch& scratch, std::unique_ptr<Canvas> canvas);

  // Width in window units that the controls at the left need; told by the toolkit's side before it
  // tells the room inside. Counts as 1100 at least.
  double stripWidth = kLeastStrip;

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

  double ZoomFactor = 1.0;  // 1.0 is a grid unit a pixel; never below 0.01
  WaveCursors Cursors;

  void Form_Load() override;
  void Form_Resize() override;
  // The toolkit's side only: pixels of the picture in a pixel of the window. It is 1 but on screens
  // whose scale is no whole number.
  void NoteCanvasScale(double scale);
  // A key over the picture: the arrows move the first cursor of a pair by a unit, with Shift the
  // second, with Ctrl by ten. False when the key means nothing here.
  bool WavePic_KeyDown(int code, int held);

 protected:
  void Form_Unload() override;
  void ShowRecord() override;
  void PrepareReading() override { scratch_.TransferWaveSlot = Slot(); }
  void TakeReading() override { Form_Resize(); }

 private:
  WaveRecord& Record();
  void ZoomCombo_Change();
  void RefuseZoom();
  void ShowZoom();
  void BestFitChk_Click();
  void GridCheck_Click();
  void OptionColor_Click(int index);
  void WavePic_MouseMove(double x, double y);
  // So many window units in pixels of the picture.
  double CanvasPixels(double units) const { return UnitsToPixels(units) * canvasScale_; }
  void PlaceBackPic();
  void FitPicture();
  void PlaceScrollBars();
  void ScrollPicture();
  void SizePicture();
  void RepaintPicture();

  TransferScratch& scratch_;
  double canvasScale_ = 1;
  double HRange = 0;  // pixels by which WavePic is larger than BackPic
  double VRange = 0;
};

}  // namespace oriolemark
