#pragma once

#include <string>
#include <string_view>

#include "datasheet/records/DataSheet.h"
#include "datasheet/records/TransferScratch.h"
#include "link/TX5000Cmd.h"
#include "platform/Calendar.h"
#include "transfers/frmPrgress.h"

namespace oriolemark {

// What a read of samples needs.
struct WaveReaderContext {
  Waiting& waiting;
  TX5000Cmd& scope;
  DataSheet& sheet;
  TransferScratch& scratch;
  TransferProgress progress;
  ShortDate today;
};

enum class Clamp { Screen, None };

// Reads sample blocks. The transfer window runs these reads. Nothing throws. A count that cannot be
// read keeps its old value. A text that does not come is stored empty, and what is worked out from
// it is 0 or off. Samples behind the end of a reply keep the values of the read before.
class WaveReader {
 public:
  explicit WaveReader(WaveReaderContext context) : context_(std::move(context)) {}

  // Asks how the instrument acquires, and fills the wave record in slot TransferWaveSlot. `channel`
  // is "CH1", "CH2" or "CH1CH2". An X-Y figure always reads both channels.
  void ReadWaveform(std::string channel);
  // Reads one channel as a plain list into the scratch fields. `channel` is "CH1" or "CH2".
  void ReadChannelData(const std::string& channel);

 private:
  enum class KeepTokens { No, Yes };

  std::string Ask(std::string_view path);
  // The record of the item that is being read. Once that has been removed, a record of nobody.
  WaveRecord& Record();
  void ReadChannelFields(const std::string& channel);
  void ReadBlocks();
  // Reads a block that has been asked for. Its progress starts at `base` per cent. `total` is the
  // number of samples of the whole read.
  void ReadBlock(SampleArray WaveRecord::*destination, double base, double total, int count,
                 Clamp clamp);

  // Reads the block of so many samples that has been asked for.
  void ReadTokens(double base, double total, int count, int firstIndex, KeepTokens keep);
  std::string ReadReply(double base, double total);
  // Returns the number of tokens in the instrument's own form.
  std::size_t Split(std::string_view text, int firstIndex, KeepTokens keep);
  void ShowProgress(double percent);

  WaveReaderContext context_;
  WaveRecord dropped_;
};

}  // namespace oriolemark
