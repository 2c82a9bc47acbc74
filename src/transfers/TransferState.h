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

// The handshake between a requesting window and the transfer window, and the count of the transfers
// that run.
struct TransferState {
  oriolemark::TransferKind TransferKind = oriolemark::TransferKind::None;
  bool TransferDone = false;    // false while a requester waits
  bool TransferActive = false;  // from the window's load until the end of the transfer
  int runs = 0;                 // running transfers and refreshes, one inside another
  int runNumber = 0;            // number of the outermost one
};

// Marks one transfer, as the user sees it, from here to the end of the block. That is a single
// transfer, or a refresh with all of its readings.
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

// The message of every command that needs the instrument while it is not connected.
inline const Message kConnectFirst{.text = "Please Connect Oscilloscope First",
                                   .icon = MessageIcon::Exclamation};

}  // namespace oriolemark
