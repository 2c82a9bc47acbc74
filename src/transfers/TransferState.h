#pragma once

#include "platform/Prompts.h"

namespace oriolemark {

// The task of the next transfer.
enum class TransferKind {
  None = 0,
  MeasureCH1 = 1,
  MeasureCH2 = 2,
  DataCH1 = 3,
  DataCH2 = 4,
  WaveCH1 = 5,
  WaveCH2 = 6,
  WaveBoth = 7,
  Upload = 8,
  Download = 9,
};

// The handshake between a requesting window and the transfer window, and the run that messages
// belong to.
struct TransferState {
  oriolemark::TransferKind TransferKind = oriolemark::TransferKind::None;
  bool TransferDone = false;    // false while a requester waits
  bool TransferActive = false;  // from the window's load until the end of the transfer
  int run = 0;                  // number of the outermost transfer or refresh, 0 if none runs
  int lastRun = 0;              // the highest number so far
};

// Marks one transfer, as the user sees it, from here to the end of the block. That is a single
// transfer, or a refresh with all of its readings.
class TransferRun {
 public:
  explicit TransferRun(TransferState& state)
      : TransferRun(state, state.run != 0 ? state.run : ++state.lastRun) {}
  // One more part of the run with this number.
  TransferRun(TransferState& state, int number) : state_(state), before_(state.run) {
    state_.run = number;
  }
  ~TransferRun() { state_.run = before_; }
  TransferRun(const TransferRun&) = delete;
  TransferRun& operator=(const TransferRun&) = delete;

 private:
  TransferState& state_;
  const int before_;
};

// The message of every command that needs the instrument while it is not connected.
inline const Message kConnectFirst{.text = "Please Connect Oscilloscope First",
                                   .icon = MessageIcon::Exclamation};

}  // namespace oriolemark
