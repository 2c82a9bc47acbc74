// The whole program in front of an instrument that answers each query with the next line of the
// input, not at all where that line is empty, and with empty lines behind the last: connected, all
// settings read and sent, a waveform read and looked at. Each command is given as soon as the one
// before has ended, so that hardly a tick passes in idleness.
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
    // Few inputs would find the name that opens the door.
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
  // Pixels cost most.
  bench.wave->NoteInnerSize(PixelsToUnits(220), PixelsToUnits(110));
  bench.clock.Run(Milliseconds(5));
  bench.wave->ChkCursorX.SetValue(true);
  bench.wave->ChkCursorY.SetValue(true);
  // Of the channels that are on, or of both.
  if (bench.wave->OptionCH.Selected() == OptionGroup::kNone) bench.wave->OptionCH.Select(2);
  bench.wave->cmdRefresh.Click();
  module.controller.cmdUpload.Click();
  module.main.Unload();
  if (bench.clock.Stuck() || !module.sheet.Waves[0].HasData) std::abort();
  return 0;
}
