// A waveform of any block over any link, drawn afterwards.
#include <cstdlib>

#include "platform/RasterCanvas.h"
#include "support/TransferBench.h"
#include "transfers/WaveReader.h"
#include "waveview/DrawCursors.h"
#include "waveview/DrawGrid.h"
#include "waveview/DrawTraces.h"

using namespace oriolemark;

namespace {

// The first line of the text, which is taken away.
std::string TakeLine(std::string& text) {
  const std::string line = text.substr(0, text.find('\n'));
  text.erase(0, line.size() + 1);
  return line + "\n";
}

void Draw(const WaveRecord& record) {
  RasterCanvas canvas;
  canvas.SetSize(525, 375);
  const WaveSurface surface{canvas, 1.5, ColorsOf(record.ColorOn)};
  WaveCursors cursors{.CursorXOn = true, .CursorYOn = true};
  PlaceCursors(cursors);
  FollowZoom(cursors, surface.zoom);
  DrawScrGrid(surface, GridDots::Shown);
  DrawOSC(surface, record);
  DrawCursors(surface, record, cursors);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  if (text.empty()) return 0;
  const int choice = data[0];
  TransferBench bench;
  bench.Connect(choice % 3);
  WaveReader reader({bench.settings, bench.state, bench.waiting, bench.scope, bench.rs232,
                     bench.gpib, bench.usb, bench.sheet, bench.scratch,
                     bench.progress.Progressing(), [] { return "11/21/26"; }});
  const auto answer = [&](std::initializer_list<const char*> queries) {
    for (const char* query : queries) bench.script.Answer(query, TakeLine(text));
  };
  const bool rolling = (choice & 8) != 0;
  answer({":DATA:WinMemSize:?", ":TimeBase:FORMAT:?"});
  bench.script.Answer(":TimeBase:SCAN:?", rolling ? "ON\n" : "OFF\n");
  if (rolling) {
    answer({":DATA:RollingStartPos:?", ":DATA:RollingEraseWidth:?"});
  } else {
    answer({":ACQUIRE:ACQUISITION:?"});
  }
  answer({":CHANNEL1:RANGE:?", ":CHANNEL1:OFFSET:?", ":TimeBase:RANGE:?",
          ":TimeBase:TRIGGER DELAY:?"});
  bench.script.Answer(":DATA:CHANNEL1", text);
  bench.clock.SetDeadline(Milliseconds(3600000));
  reader.ReadWaveform("CH1");
  bench.sheet.Waves[0].HasData = true;
  Draw(bench.sheet.Waves[0]);
  if (bench.clock.Stuck()) std::abort();
  return 0;
}
