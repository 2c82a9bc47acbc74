#include "panel/frmV_Panel.h"

#include <utility>

#include "link/StringRES.h"

namespace oriolemark {
namespace {

constexpr int kScreenBytes = kScreenWidth * kScreenHeight;
// The instrument's block and its colours have one place more than the screen has pixels.
constexpr std::size_t kPlaces = kScreenBytes + 1;
constexpr int kFrameInterval = 10;  // ms
constexpr Color kDark{};

}  // namespace

frmV_Panel::frmV_Panel(const PanelContext& context, std::unique_ptr<Canvas> canvas,
                       PictureContext output)
    : WavePic(std::move(canvas)),
      Keys(context.events, context.scope),
      cmdRun([this] { SetRunning(true); }),
      cmdStop([this] { SetRunning(false); }),
      cmdExport([this] { output_.Export(WavePic.Surface()); }),
      cmdPreview([this] { output_.Preview(WavePic.Surface()); }),
      cmdPrint([this] { output_.Print(WavePic.Surface()); }),
      tDrawBmp(context.events, kFrameInterval, [this] { tDrawBmp_Timer(); }),
      context_(context),
      output_(std::move(output)) {
  SetCaption("Virtual Panel");
  WavePic.SetSize(kScreenWidth, kScreenHeight);
}

void frmV_Panel::Form_Load() {
  output_.Open();
  InitResource();
  Keys.StopRepeat();
  SetRunning(true);
}

void frmV_Panel::Form_Unload() {
  SetRunning(false);
  FreeResource();
  output_.Close();
  Keys.StopRepeat();
}

// The surface is off the screen: the toolkit copies it to the window once for each frame.
void frmV_Panel::InitResource() {
  raw_.assign(kPlaces, 0);
  colours_.assign(kPlaces, 0);
  WavePic.Surface().SetSize(kScreenWidth, kScreenHeight);
  WavePic.Surface().Clear(kDark);
}

void frmV_Panel::FreeResource() {
  WavePic.Surface().SetSize(0, 0);
  std::exchange(raw_, {});
  std::exchange(colours_, {});
}

void frmV_Panel::SetRunning(bool running) {
  if (running && !run_) run_.emplace(context_.transfer);
  if (!running) run_.reset();
  frameDrawn_ = false;
  tDrawBmp.SetEnabled(running);
  ShowRunning();
}

void frmV_Panel::ShowRunning() {
  cmdRun.SetEnabled(!run_);
  cmdStop.SetEnabled(run_.has_value());
}

bool frmV_Panel::HeldUp() const {
  return context_.transfer.TransferActive || context_.link.AwaitedReplies > 0 ||
         context_.prompts.AnyOpen();
}

// The wait between two frames is the program's own. With a loop in here, a wait around it could not
// end while the window is open.
void frmV_Panel::tDrawBmp_Timer() {
  if (HeldUp()) return;
  // The connection is looked at after each frame and the events that follow it, not before the
  // first.
  if (frameDrawn_ && !context_.link.ScopeConnected) {
    Unload();
    return;
  }
  frameDrawn_ = true;
  DrawBulkWave();
}

void frmV_Panel::DrawBulkWave() {
  context_.scope.SendToScope(kHardCopy);
  if (!Loaded() || context_.waiting.Closing()) return;
  context_.usb.USBReadScreen(0, raw_, kScreenBytes);
  const bool isColor = context_.scope.IsColorScope();
  if (!Loaded() || context_.waiting.Closing()) return;
  const auto raw = std::span<const std::uint8_t>(raw_).first(kScreenBytes);
  const auto colours = std::span(colours_).first(kScreenBytes);
  if (isColor) {
    context_.colors.TransClr(raw, colours);
  } else {
    context_.colors.TransMono(raw, colours);
  }
  WavePic.Surface().SetPixels(colours);
  WavePic.NoteDrawn();
}

}  // namespace oriolemark
