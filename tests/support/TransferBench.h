#pragma once

#include "support/LinkBench.h"
#include "support/ProgramBench.h"

namespace oriolemark {

// The link with what a transfer works on.
struct TransferBench : LinkBench {
  MemoryStore store;
  TransferState transfer;
  DataSheet sheet;
  TransferScratch scratch;
  ScreenPointer pointer;
  frmPrgress progress{clock, waiting, store, state, transfer, scope, pointer};
};

}  // namespace oriolemark
