#include "waveview/frmWave.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "platform/Keys.h"
#include "platform/Rounding.h"
#include "values/Number.h"
#include "waveview/DrawCursors.h"
#include "waveview/DrawGrid.h"
#include "waveview/DrawTraces.h"
#include "waveview/WaveDescription.h"

namespace oriolemark {
namespace {

constexpr double kLeastZoom = 0.01;
constexpr int kOpeningZoom = 4;  // "150%"
constexpr double kPageZoom = 2.0;

// Window units.
constexpr double kBackPicTop = 100;
constexpr double kBarThickness = 250;
constexpr double kBarFromEdge = 280;  // from the far edge of BackPic to the near edge of a bar
constexpr double kBarInset = 20;
constexpr double kHorizontalMargins = 40;
constexpr double kVerticalMargins = 45;

constexpr int kRoundedAway = 2;  // pixels

struct CursorKey {
  int code;
  CursorLine line;
  CursorLine withShift;
  int units;
};

constexpr int kCtrlUnits = 10;
constexpr CursorKey kCursorKeys[] = {{kLeftKey, CursorLine::X1, CursorLine::X2, -1},
                                     {kRightKey, CursorLine::X1, CursorLine::X2, 1},
                                     {kUpKey, CursorLine::Y1, CursorLine::Y2, -1},
                                     {kDownKey, CursorLine::Y1, CursorLine::Y2, 1}};

std::string ZoomText(double zoom) {
  return FormatFixed(zoom * 100, 0, 0) + "%";
}

// Reads a typed zoom: a number followed by a percent sign.
std::optional<double> ZoomOf(const std::string& text) {
  if (text.empty() || text.back() != '%') return std::nullopt;
  const std::optional<double> percent = NumberInReply(text.substr(0, text.size() - 1));
  if (!percent) return std::nullopt;
  return *percent / 100;
}

// Rounds to whole pixels, because a fitted picture can differ from the room by a rounding error.
double PixelsBeyond(double size, double room) {
  return std::max(0.0, static_cast<double>(RoundToInt(size)) - RoundToInt(room));
}

int ScrolledBy(const ScrollBar& bar, double range) {
  return RoundToInt(-bar.Value() * range / 100);
}

}  // namespace

frmWave::frmWave(const ReadingContext& context, std::unique_ptr<Canvas> canvas,
                 PictureContext output)
    : ReadingView(context,
                  {ItemKind::Wave,
                   FirstTick::ShowsBeforeOptions,
                   "Waveform Data Loading",
                   {TransferKind::WaveCH1, TransferKind::WaveCH2, TransferKind::WaveBoth}}),
      WavePic(std::move(canvas)),
      HScroll([this] { ScrollPicture(); }),
      VScroll([this] { ScrollPicture(); }),
      ZoomCombo([this] { ZoomCombo_Change(); }),
      BestFitChk([this] { BestFitChk_Click(); }),
      GridCheck([this] { GridCheck_Click(); }),
      ChkCursorX([this] {
        Cursors.CursorXOn = ChkCursorX.Value();
        Form_Resize();
      }),
      ChkCursorY([this] {
        Cursors.CursorYOn = ChkCursorY.Value();
        Form_Resize();
      }),
      OptionColor(2, [this](int index) { OptionColor_Click(index); }),
      cmdExport([this] { output_.Export([this] { return WholePicture(); }); }),
      cmdPreview([this] { PutOnPage(&PictureOutput::Preview); }),
      cmdPrint([this] { PutOnPage(&PictureOutput::Print); }),
      output_(std::move(output)) {
  WavePic.mouseDown = [this](double x, double y) { SeizeCursors(Cursors, {x, y}); };
  WavePic.mouseMove = [this](double x, double y) { WavePic_MouseMove(x, y); };
  WavePic.mouseUp = [this](double, double) { ReleaseCursors(Cursors); };
}

WaveSurface frmWave::SurfaceOf(Canvas& canvas) {
  return {canvas, ZoomFactor, ColorsOf(Record().ColorOn), plans_};
}

WaveRecord& frmWave::Record() {
  return context_.sheet.Waves[static_cast<std::size_t>(Slot())];
}

void frmWave::Form_Load() {
  ReadingView::Form_Load();
  output_.Open();
  ZoomFactor = 1.0;
  PlaceCursors(Cursors);
  HScroll.SetValue(0);
  VScroll.SetValue(0);
  ZoomCombo.SetItems(
      {"50%", "75%", "100%", "125%", "150%", "200%", "250%", "300%", "400%", "500%"});
  ZoomCombo.SetListIndex(kOpeningZoom);
}

void frmWave::Form_Unload() {
  ReadingView::Form_Unload();
  output_.Close();
  Cursors = {};
  WavePic.SetPointer(MousePointer::Arrow);
  // Frees the picture, which can be large, while the window is not shown.
  WavePic.Surface().SetSize(0, 0);
  plans_ = {};
  drawn_ = nullptr;
}

void frmWave::ShowRecord() {
  // The controls' handlers mark the sheet as modified. Showing a record does not change it, so the
  // mark is put back.
  const bool modified = context_.sheet.Modified;
  const WaveRecord& record = Record();
  BestFitChk.SetValue(record.BestFitOn);
  ZoomCombo.SetEnabled(!record.BestFitOn);
  GridCheck.SetValue(record.GridOn);
  OptionColor.Select(record.ColorOn ? 0 : 1);
  ChkCursorX.SetValue(Cursors.CursorXOn);
  ChkCursorY.SetValue(Cursors.CursorYOn);
  Form_Resize();
  context_.sheet.Modified = modified;
}

void frmWave::ZoomCombo_Change() {
  // The box is left because the view is closing.
  if (!Loaded()) return;
  const std::optional<double> zoom = ZoomOf(ZoomCombo.Text());
  if (!zoom) {
    RefuseZoom();
    return;
  }
  ZoomFactor = std::max(*zoom, kLeastZoom);
  ShowZoom();
  Form_Resize();
}

void frmWave::RefuseZoom() {
  context_.refresh.prompts.Show({.text = "Invalid Zoom Factor", .icon = MessageIcon::Exclamation});
  ShowZoom();
}

void frmWave::ShowZoom() {
  ZoomCombo.SetText(ZoomText(ZoomFactor));
}

void frmWave::BestFitChk_Click() {
  Record().BestFitOn = BestFitChk.Value();
  context_.sheet.Modified = true;
  ZoomCombo.SetEnabled(!BestFitChk.Value());
  // When best fit is switched off, the picture keeps the last fitted zoom.
  if (BestFitChk.Value()) Form_Resize();
}

void frmWave::GridCheck_Click() {
  Record().GridOn = GridCheck.Value();
  context_.sheet.Modified = true;
  RepaintPicture();
}

void frmWave::OptionColor_Click(int index) {
  Record().ColorOn = index == 0;
  context_.sheet.Modified = true;
  RepaintPicture();
}

void frmWave::PutOnPage(PutPicture put) {
  const double zoom = ZoomFactor;
  ZoomFactor = kPageZoom;
  RepaintPicture();
  (output_.*put)(*WholePicture(), [this, zoom] {
    if (!Loaded()) return;
    WavePic.Surface().Clear(BackPic.Background());
    ZoomFactor = zoom;
    Form_Resize();
  });
}

void frmWave::NoteCanvasScale(double scale) {
  if (scale == canvasScale_) return;
  canvasScale_ = scale;
  Form_Resize();
}

bool frmWave::WavePic_KeyDown(int code, int held) {
  for (const CursorKey& key : kCursorKeys) {
    if (key.code != code) continue;
    const CursorLine line = (held & kShiftHeld) != 0 ? key.withShift : key.line;
    const int units = (held & kCtrlHeld) != 0 ? key.units * kCtrlUnits : key.units;
    if (StepCursor(Cursors, line, units)) Form_Resize();
    return true;
  }
  return false;
}

void frmWave::WavePic_MouseMove(double x, double y) {
  if (DragCursor(Cursors, {x, y}, ZoomFactor)) Form_Resize();
  WavePic.SetPointer(PointerOver(Cursors, {x, y}, ZoomFactor));
}

void frmWave::Form_Resize() {
  if (!Loaded()) return;
  PlaceBackPic();
  if (Record().BestFitOn) {
    FitPicture();
  } else {
    PlaceScrollBars();
  }
  RepaintPicture();
}

void frmWave::PlaceBackPic() {
  const double left = std::max(stripWidth, kLeastStrip);
  BackPic.SetPlace({.left = left,
                    .top = kBackPicTop,
                    .width = std::max(0.0, InnerWidth() - left),
                    .height = std::max(0.0, InnerHeight() - kBackPicTop)});
}

void frmWave::FitPicture() {
  HScroll.SetVisible(false);
  VScroll.SetVisible(false);
  const UnitRect& back = BackPic.Place();
  ZoomFactor = std::max(kLeastZoom, std::min(CanvasPixels(back.width) / kPictureWidth,
                                             CanvasPixels(back.height) / kPictureHeight));
  ZoomCombo.SetEnabled(false);
  ShowZoom();
  HRange = 0;
  VRange = 0;
  MovePicture();
}

// Shows a bar if the picture is larger than its room by at least one pixel. If both bars show, each
// leaves the corner free.
void frmWave::PlaceScrollBars() {
  const UnitRect& back = BackPic.Place();
  const double width = CanvasPixels(back.width);
  const double height = CanvasPixels(back.height);
  HRange = PixelsBeyond(kPictureWidth * ZoomFactor, width);
  VRange = PixelsBeyond(kPictureHeight * ZoomFactor, height);
  const double corner = HRange > 0 && VRange > 0 ? kBarThickness : 0;
  HScroll.SetPlace({.left = back.left + kBarInset,
                    .top = back.top + back.height - kBarFromEdge,
                    .width = std::max(0.0, back.width - kHorizontalMargins - corner),
                    .height = kBarThickness});
  VScroll.SetPlace({.left = back.left + back.width - kBarFromEdge,
                    .top = back.top + kBarInset,
                    .width = kBarThickness,
                    .height = std::max(0.0, back.height - kVerticalMargins - corner)});
  HScroll.SetPageStep(width / (kPictureWidth * ZoomFactor) * 100);
  VScroll.SetPageStep(height / (kPictureHeight * ZoomFactor) * 100);
  HScroll.SetVisible(HRange > 0);
  VScroll.SetVisible(VRange > 0);
  MovePicture();
}

void frmWave::MovePicture() {
  WavePic.MoveTo(ScrolledBy(HScroll, HRange), ScrolledBy(VScroll, VRange));
}

// Moves the picture inside BackPic, and draws it again because other parts of it show now.
void frmWave::ScrollPicture() {
  MovePicture();
  if (!Loaded() || InitPending) return;
  SizePicture();
  DrawShown();
  WavePic.NoteDrawn();
}

// The part of the picture inside BackPic, widened by what the rounding of the window's units can
// hide.
PixelRect frmWave::ShownPart() const {
  const auto shown = [](int moved, int size, double room) {
    const int first = std::clamp(-moved, 0, size);
    const int last = std::clamp(RoundToInt(std::ceil(room)) + kRoundedAway - moved, first, size);
    return std::pair(first, last - first);
  };
  const UnitRect& back = BackPic.Place();
  const auto [left, width] = shown(WavePic.Left(), WavePic.Width(), CanvasPixels(back.width));
  const auto [top, height] = shown(WavePic.Top(), WavePic.Height(), CanvasPixels(back.height));
  return {left, top, width, height};
}

bool frmWave::Drawable() const {
  return kPictureWidth * ZoomFactor * (kPictureHeight * ZoomFactor) <= kMostPixels;
}

void frmWave::SizePicture() {
  const std::pair old(WavePic.Width(), WavePic.Height());
  const std::pair size(RoundToInt(kPictureWidth * ZoomFactor),
                       RoundToInt(kPictureHeight * ZoomFactor));
  WavePic.SetSize(size.first, size.second);
  const PixelRect part = Drawable() ? ShownPart() : PixelRect{};
  if (old == size && part == WavePic.Surface().Part()) return;
  WavePic.Surface().SetPart(size.first, size.second, part);
}

std::unique_ptr<Canvas> frmWave::WholePicture() {
  std::unique_ptr<Canvas> whole = WavePic.Surface().MakeCopy();
  // The window may have been closed while its user was asked for a file.
  const bool drawable = Loaded() && Drawable();
  whole->SetSize(drawable ? WavePic.Width() : 0, drawable ? WavePic.Height() : 0);
  if (!drawable) return whole;
  DrawTraces(*whole);
  DrawOver(*whole);
  return whole;
}

void frmWave::RepaintPicture() {
  if (!Loaded()) return;
  FollowZoom(Cursors, ZoomFactor);
  SizePicture();
  if (InitPending) return;
  drawnOver_ = false;
  const WaveRecord& record = Record();
  BackPic.SetBackground(ColorsOf(record.ColorOn).background);
  DrawShown();
  WavePic.SetDescription(DescribeWave(record, Cursors, ZoomFactor));
  WavePic.NoteDrawn();
}

void frmWave::DrawTraces(Canvas& canvas) {
  const WaveRecord& record = Record();
  const WaveSurface surface = SurfaceOf(canvas);
  DrawScrGrid(surface, record.GridOn ? GridDots::Shown : GridDots::Hidden);
  oriolemark::DrawOSC(surface, record);
}

void frmWave::DrawOver(Canvas& canvas) {
  DrawCursors(SurfaceOf(canvas), Record(), Cursors);
  if (drawnOver_) oriolemark::DrawOSC(SurfaceOf(canvas), Record());
}

// Draws what shows. A step of a cursor leaves grid and traces as they are. The record is compared
// as a whole, because a reading changes it at any time.
void frmWave::DrawShown() {
  Canvas& canvas = WavePic.Surface();
  if (canvas.Width() == 0 || canvas.Height() == 0) return;
  const bool kept = drawn_ && drawn_->zoom == ZoomFactor && drawn_->record == Record();
  if (!kept || !canvas.DropOverlay()) DrawTraces(canvas);
  if (!Cursors.CursorXOn && !Cursors.CursorYOn) {
    drawn_ = nullptr;
  } else if (!kept) {
    drawn_ = std::make_unique<Drawn>(Drawn{ZoomFactor, Record()});
  }
  if (drawn_ && !drawnOver_) canvas.BeginOverlay();
  DrawOver(canvas);
}

// The cursors below can no longer be taken away.
void frmWave::DrawOSC() {
  if (InitPending || !Drawable()) return;
  drawnOver_ = true;
  Canvas& canvas = WavePic.Surface();
  if (canvas.DropOverlay()) {
    DrawOver(canvas);
  } else {
    oriolemark::DrawOSC(SurfaceOf(canvas), Record());
  }
  WavePic.NoteDrawn();
}

}  // namespace oriolemark
