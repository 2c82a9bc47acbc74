#pragma once

#include <memory>

#include "output/PictureOutput.h"
#include "platform/Button.h"
#include "platform/CheckBox.h"
#include "platform/ComboBox.h"
#include "platform/OptionGroup.h"
#include "platform/Picture.h"
#include "platform/ScrollBar.h"
#include "transfers/ReadingView.h"
#include "waveview/WaveCursors.h"
#include "waveview/WaveSurface.h"

namespace oriolemark {

// The window that shows one wave record as the instrument's screen shows it. The picture keeps no
// data of the trace, so the record may change while the view is open.
class frmWave : public ReadingView {
 public:
  // A picture with more pixels is not drawn; its canvas has the size 0 by 0.
  static constexpr double kMostPixels = 64e6;
  static constexpr double kLeastStrip = 1100;

  frmWave(const ReadingContext& context, std::unique_ptr<Canvas> canvas, PictureContext output);

  // Width in window units of the controls at the left. The toolkit's side sets it before it reports
  // the room inside. Values below 1100 count as 1100.
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
  Button cmdExport;
  Button cmdPreview;  // "Print Preview"
  Button cmdPrint;

  double ZoomFactor = 1.0;  // at 1.0 a grid unit is one pixel; never below 0.01
  WaveCursors Cursors;

  void Form_Load() override;
  void Form_Resize() override;
  void ShowReading() override { Form_Resize(); }
  // Draws the traces and texts of the record over the picture as it is. The next repaint puts the
  // grid below and the cursors above them. Does nothing while there is no picture.
  void DrawOSC();
  // The picture with all that is beyond the window, drawn on a canvas of its own. It has no pixels
  // if there are too many to draw.
  std::unique_ptr<Canvas> WholePicture();
  // Only the toolkit's side calls this: picture pixels per window pixel. It is 1, except on screens
  // with a fractional scale.
  void NoteCanvasScale(double scale);
  // A key over the picture. The arrows move the first cursor of a pair by one unit, with Shift the
  // second, with Ctrl by ten units. Returns false for a key that does nothing here.
  bool WavePic_KeyDown(int code, int held);

 protected:
  void Form_Unload() override;
  void ShowRecord() override;

 private:
  WaveRecord& Record();
  WaveSurface SurfaceOf(Canvas& canvas);
  void ZoomCombo_Change();
  void RefuseZoom();
  void ShowZoom();
  void BestFitChk_Click();
  void GridCheck_Click();
  void OptionColor_Click(int index);
  // Draws the picture for the page, always at the same zoom, and shows it as before afterwards.
  using PutPicture = void (PictureOutput::*)(const Canvas&, const std::function<void()>&) const;
  void PutOnPage(PutPicture put);
  void WavePic_MouseMove(double x, double y);
  // Converts window units to pixels of the picture.
  double CanvasPixels(double units) const { return UnitsToPixels(units) * canvasScale_; }
  void PlaceBackPic();
  void FitPicture();
  void PlaceScrollBars();
  void MovePicture();
  void ScrollPicture();
  bool Drawable() const;
  PixelRect ShownPart() const;
  void SizePicture();
  void RepaintPicture();
  void DrawTraces(Canvas& canvas);
  // The cursors, and over them the traces where they were drawn once more.
  void DrawOver(Canvas& canvas);
  void DrawShown();

  PictureOutput output_;
  TracePlans plans_;
  // The drawing below the cursors. Kept while there are cursors.
  struct Drawn {
    double zoom;
    WaveRecord record;
  };
  std::unique_ptr<Drawn> drawn_;
  bool drawnOver_ = false;  // the traces were drawn once more, over the cursors
  double canvasScale_ = 1;
  double HRange = 0;  // pixels by which WavePic is larger than BackPic
  double VRange = 0;
};

}  // namespace oriolemark
