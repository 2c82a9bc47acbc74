#pragma once

#include <string>

#include "datasheet/records/TransferScratch.h"
#include "link/TX5000Cmd.h"
#include "platform/Calendar.h"
#include "transfers/frmPrgress.h"

namespace oriolemark {

// The objects that a read of measures uses.
struct MeasureReaderContext {
  Waiting& waiting;
  TX5000Cmd& scope;
  TransferScratch& scratch;
  TransferProgress progress;
  ShortDate today;
};

// Reads the automatic measures of one channel. The transfer window runs it, with the instrument
// halted.
class MeasureReader {
 public:
  explicit MeasureReader(MeasureReaderContext context) : context_(std::move(context)) {}

  // Makes `channel` the source of the measures, and asks for the 18 quantities one after the other.
  // Leaves their texts in TransferValues and a title in TransferText. `channel` is "CH1"; any other
  // text means channel 2. A reply that is too short for its name leaves the text of an earlier
  // read.
  void ReadMeasures(const std::string& channel);

 private:
  void ReadTitle(bool first);

  MeasureReaderContext context_;
};

}  // namespace oriolemark
