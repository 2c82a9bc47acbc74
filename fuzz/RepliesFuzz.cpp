// The whole program in front of an instrument that answers each query with the next line of the
// input: connected, all settings read and sent, a waveform read and looked at.
#include <cstdlib>

#include "support/ProgramBench.h"

using namespace oriolemark;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  ProgramBench bench;
  bench.clock.SetDeadline(Milliseconds(36000000));
  bool identified = false;
  bench.port.hear = [&](const std::string& command) {
    if (command.find('?') == std::string::npos && command.find(":DATA") != 0) return;
    std::string line = text.substr(0, text.find('\n'));
    text.erase(0, line.size() + 1);
    // Few inputs would find the name that opens the door.
    if (!std::exchange(identified, true)) line = "TAVIK ELECTRONIC,TX-5000CA,SN,01.01.33";
    if (!line.empty()) bench.port.ArriveAfter(Milliseconds(1), line + "\n");
  };
  MainModule& module = bench.module;
  bench.At(200, [&] { module.main.mnuToolsConnect.Click(); });
  bench.At(20000, [&] { module.controller.cmdDownload.Click(); });
  bench.At(200000, [&] { module.controller.mnuExpand.Click(); });
  bench.At(210000, [&] { module.browser.files.AddWaveItem(); });
  bench.At(220000, [&] {
    bench.wave->ChkCursorX.SetValue(true);
    bench.wave->ChkCursorY.SetValue(true);
    bench.wave->cmdRefresh.Click();
  });
  bench.At(400000, [&] { module.controller.cmdUpload.Click(); });
  bench.At(500000, [&] { module.controlDocument.CtrlChanged = false; });
  bench.RunUntil(600000);
  if (bench.clock.Stuck()) std::abort();
  return 0;
}
