// The whole program with an instrument that answers each query with the next line of the input. It
// does not answer if the line is empty. After the last line it answers with empty lines. The
// program connects, reads and sends all settings, then reads and shows a waveform. Each command
// follows the previous one at once, so that little time is idle.
#include <cstdlib>

#include "support/ProgramBench.h"

using namespace oriolemark;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  ProgramBench bench;
  bench.clock.SetDeadline(Milliseconds(36000000));
  bool identified = false;
  bench.port.hear = [&](const std::string& command) {
    if (command.find('?') == std::string::npos && command.find(":DATA") != 0) return;
    const bool silent = text.starts_with('\n');
    std::string line(text.substr(0, text.find('\n')));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    // Few inputs would find the name that the program accepts.
    if (!std::exchange(identified, true)) line = "TAVIK ELECTRONIC,TX-5000CA,SN,01.01.33";
    if (!silent || !line.empty()) bench.port.ArriveAfter(Milliseconds(1), line + "\n");
  };
  MainModule& module = bench.module;
  module.main.Load();
  bench.clock.Run(Milliseconds(5));
  module.main.mnuToolsConnect.Click();
  module.controller.cmdDownload.Click();
  module.controller.mnuExpand.Click();
  module.browser.files.AddWaveItem();
  // A small view, because pixels take the most time.
  bench.wave->NoteInnerSize(PixelsToUnits(220), PixelsToUnits(110));
  bench.clock.Run(Milliseconds(5));
  bench.wave->ChkCursorX.SetValue(true);
  bench.wave->ChkCursorY.SetValue(true);
  // Keeps the selected channels, or selects both.
  if (bench.wave->OptionCH.Selected() == OptionGroup::kNone) bench.wave->OptionCH.Select(2);
  bench.wave->cmdRefresh.Click();
  module.controller.cmdUpload.Click();
  module.main.Unload();
  if (bench.clock.Stuck() || !module.sheet.Waves[0].HasData) std::abort();
  return 0;
}
