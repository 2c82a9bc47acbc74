#include "panel/frmV_Panel.h"

#include <utility>

#include "link/StringRES.h"

namespace oriolemark {
namespace {

constexpr int kScreenBytes = kScreenWidth * kScreenHeight;
constexpr std::size_t kPlaces = kScreenBytes + 1;
// ms from the end of a frame to the start of the next
constexpr int kFrameInterval = 10;
constexpr int kRetryInterval = 500;  // if the instrument did not answer
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
  if (running && !running_) run_ = ++context_.transfer.lastRun;
  running_ = running;
  frameDrawn_ = false;
  tDrawBmp.SetInterval(kFrameInterval);
  tDrawBmp.SetEnabled(running);
  // The one that is enabled comes first, because the other one may hold the focus.
  (running ? cmdStop : cmdRun).SetEnabled(true);
  (running ? cmdRun : cmdStop).SetEnabled(false);
}

bool frmV_Panel::HeldUp() const {
  return context_.transfer.TransferActive || context_.link.AwaitedReplies > 0 ||
         context_.prompts.AnyOpen();
}

// Each tick draws one frame and returns to the program's own wait. A loop in here would hold up
// every wait around it until the window closes.
void frmV_Panel::tDrawBmp_Timer() {
  tDrawBmp.SetEnabled(false);
  if (!HeldUp()) {
    // The connection is looked at after each frame and the events that follow it, not before the
    // first. Another link has no screen.
    const bool lost = frameDrawn_ && !context_.link.ScopeConnected;
    if (lost || &context_.scope.Link() != &context_.usb) {
      Unload();
      return;
    }
    frameDrawn_ = true;
    const TransferRun part(context_.transfer, run_);
    DrawBulkWave();
    tDrawBmp.SetInterval(context_.link.Answered ? kFrameInterval : kRetryInterval);
  }
  // Counted from the end of the frame, so that the user gets a turn on a slow link too.
  tDrawBmp.SetEnabled(running_);
}

bool frmV_Panel::DrawBulkWave() {
  context_.scope.SendToScope(kHardCopy);
  if (!Loaded() || context_.waiting.Closing()) return false;
  const bool came = context_.usb.USBReadScreen(0, raw_, kScreenBytes);
  const bool isColor = context_.scope.IsColorScope();
  if (!Loaded() || context_.waiting.Closing()) return false;
  // An instrument that does not answer keeps its colours.
  if (context_.link.Answered) isColor_ = isColor;
  const auto raw = std::span<const std::uint8_t>(raw_).first(kScreenBytes);
  const auto colours = std::span(colours_).first(kScreenBytes);
  if (isColor_) {
    context_.colors.TransClr(raw, colours);
  } else {
    context_.colors.TransMono(raw, colours);
  }
  WavePic.Surface().SetPixels(colours);
  WavePic.NoteDrawn();
  return came && context_.link.Answered;
}

}  // namespace oriolemark
