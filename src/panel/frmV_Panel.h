#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "link/USB_FUNC.h"
#include "output/PictureOutput.h"
#include "panel/KeySender.h"
#include "platform/Button.h"
#include "platform/Form.h"
#include "platform/Picture.h"
#include "platform/ScreenColors.h"
#include "platform/WatchedPrompts.h"
#include "transfers/TransferState.h"

namespace oriolemark {

inline constexpr int kScreenWidth = 320;
inline constexpr int kScreenHeight = 240;

// The parts that the virtual panel uses.
struct PanelContext {
  EventSource& events;
  const Waiting& waiting;
  TX5000Cmd& scope;
  USB_FUNC& usb;
  const LinkState& link;
  TransferState& transfer;
  const WatchedPrompts& prompts;
  ScreenColors& colors;
};

// The whole front of an instrument on USB: its keys and a copy of its screen. The mirror runs until
// it is stopped. It draws one frame at a turn of the event loop, and none while another exchange
// with the instrument is under way or a message is on the screen. A run of the mirror counts as one
// transfer for the messages that can be muted. When the connection is lost, a running mirror closes
// the window.
class frmV_Panel : public Form {
 public:
  frmV_Panel(const PanelContext& context, std::unique_ptr<Canvas> canvas, PictureContext output);

  Picture WavePic;  // the screen, one picture pixel for each of its pixels
  KeySender Keys;
  Button cmdRun;
  Button cmdStop;
  Button cmdExport;
  Button cmdPreview;  // "Print Preview"
  Button cmdPrint;
  Timer tDrawBmp;  // its tick draws one frame; it rests while the mirror is frozen

  void Form_Load() override;
  // Makes the drawing surface, black, and frees it.
  void InitResource();
  void FreeResource();
  // Draws one frame. A request that fails leaves the last one. The link may show its messages, and
  // the window may be closed behind them. Returns whether a frame has come.
  bool DrawBulkWave();

 protected:
  void Form_Unload() override;

 private:
  void tDrawBmp_Timer();
  void SetRunning(bool running);
  bool HeldUp() const;

  PanelContext context_;
  PictureOutput output_;
  std::vector<std::uint8_t> raw_;       // what the instrument sent
  std::vector<std::uint32_t> colours_;  // the same as colours
  bool isColor_ = false;                // the display, as far as it is known
  bool running_ = false;
  int run_ = 0;              // number of the mirror's run, for the messages
  bool frameDrawn_ = false;  // since the mirror was started
};

}  // namespace oriolemark
