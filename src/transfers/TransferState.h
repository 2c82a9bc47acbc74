#pragma once

#include "platform/Prompts.h"

namespace oriolemark {

// What the next transfer does.
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

// The handshake between a requesting window and the transfer window, and whose turn it is.
struct TransferState {
  oriolemark::TransferKind TransferKind = oriolemark::TransferKind::None;
  bool TransferDone = false;    // false while a requester waits
  bool TransferActive = false;  // from the window's load until the end of the transfer
  int runs = 0;                 // transfers and refreshes, one inside another
  int runNumber = 0;            // counts the outermost ones
};

// One transfer to the user, from here to the end of the block: a transfer by itself, or a refresh
// with all of its readings.
class TransferRun {
 public:
  explicit TransferRun(TransferState& state) : state_(state) {
    if (state_.runs++ == 0) ++state_.runNumber;
  }
  ~TransferRun() { --state_.runs; }
  TransferRun(const TransferRun&) = delete;
  TransferRun& operator=(const TransferRun&) = delete;

 private:
  TransferState& state_;
};

// What every command that needs the instrument says without one.
inline const Message kConnectFirst{.text = "Please Connect Oscilloscope First",
                                   .icon = MessageIcon::Exclamation};

}  // namespace oriolemark
