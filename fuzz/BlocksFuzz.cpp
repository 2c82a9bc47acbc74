// Reads a waveform from any block over any link, then draws it.
#include <cstdlib>

#include "platform/RasterCanvas.h"
#include "support/LinkBench.h"
#include "support/ProgramBench.h"
#include "transfers/WaveReader.h"
#include "waveview/DrawCursors.h"
#include "waveview/DrawTraces.h"

using namespace oriolemark;

namespace {

// Removes the first line of the text and returns it.
std::string TakeLine(std::string& text) {
  const std::string line = text.substr(0, text.find('\n'));
  text.erase(0, line.size() + 1);
  return line + "\n";
}

// The link and the data of a read. The sheet and the scratch are reused and emptied, because making
// them takes longer than filling them.
struct ReaderBench : LinkBench {
  explicit ReaderBench(int ioType) {
    static const WaveRecord kEmpty;
    static const TransferScratch kClear;
    sheet.Waves[0] = kEmpty;
    scratch = kClear;
    Connect(ioType);
    usbDriver.pollTime = Milliseconds(50);
    clock.SetDeadline(Milliseconds(3600000));
  }

  inline static DataSheet sheet;
  inline static TransferScratch scratch;
  MemoryStore store;
  TransferState transfer;
  ScreenPointer pointer;
  frmPrgress progress{clock, waiting, store, state, transfer, scope, pointer};
  WaveReader reader{
      {waiting, scope, sheet, scratch, progress.Progressing(), [] { return "11/21/26"; }}};
};

// Draws at the lowest zoom that has read-outs, because pixels take the most time. The grid is left
// out, because it is always the same.
void Draw(const WaveRecord& record) {
  static RasterCanvas canvas;
  canvas.SetSize(140, 100);
  canvas.Clear({});
  const WaveSurface surface{canvas, 0.4, ColorsOf(record.ColorOn)};
  WaveCursors cursors{.CursorXOn = true, .CursorYOn = true};
  PlaceCursors(cursors);
  FollowZoom(cursors, surface.zoom);
  DrawOSC(surface, record);
  DrawCursors(surface, record, cursors);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  if (text.empty()) return 0;
  const int choice = data[0];
  ReaderBench bench(choice % 3);
  const auto answer = [&](std::initializer_list<const char*> queries) {
    for (const char* query : queries) bench.script.Answer(query, TakeLine(text));
  };
  // Few inputs would find the words for these modes.
  const bool rolling = (choice & 8) != 0;
  const bool figure = (choice & 16) != 0;
  const bool envelope = (choice & 32) != 0;
  answer({":DATA:WinMemSize:?"});
  bench.script.Answer(":TimeBase:FORMAT:?", figure ? "X-Y\n" : "Y-T\n");
  bench.script.Answer(":TimeBase:SCAN:?", rolling ? "ON\n" : "OFF\n");
  if (rolling) {
    answer({":DATA:RollingStartPos:?", ":DATA:RollingEraseWidth:?"});
  } else {
    bench.script.Answer(":ACQUIRE:ACQUISITION:?", envelope ? "ENVELOPE\n" : "NORMAL\n");
  }
  answer({":CHANNEL1:RANGE:?", ":CHANNEL2:RANGE:?", ":CHANNEL1:OFFSET:?", ":CHANNEL2:OFFSET:?",
          ":TimeBase:RANGE:?", ":TimeBase:TRIGGER DELAY:?"});
  if (!envelope || rolling || figure) {
    answer({":DATA:CHANNEL1"});
    bench.script.Answer(":DATA:CHANNEL2", text);
  } else {
    answer({":DATA:EnvelopeMax:CH1", ":DATA:EnvelopeMin:CH1", ":DATA:EnvelopeMax:CH2"});
    bench.script.Answer(":DATA:EnvelopeMin:CH2", text);
  }
  bench.reader.ReadWaveform("CH1CH2");
  bench.sheet.Waves[0].HasData = true;
  Draw(bench.sheet.Waves[0]);
  if (bench.clock.Stuck()) std::abort();
  return 0;
}
