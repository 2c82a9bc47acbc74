#include <benchmark/benchmark.h>

#include "Desk.h"
#include "Simulator.h"
#include "desktop/Dialogs.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtSerialPort.h"

namespace oriolemark {
namespace {

// A read of 17000 samples of one channel from the simulated instrument, as a click makes it: the
// progress window opens, follows the read and closes. The libraries of GPIB and USB are those that
// replace a real instrument's.
void ReadOver(benchmark::State& state, int link) {
  const Simulator simulator;
  qputenv("TX5000SIM_SOCKET", simulator.Socket().toLocal8Bit());
  QtEventSource events;
  QtSerialPort port([&](int) { return simulator.Line().toStdString(); });
  Desk desk(events, port);
  desk.store.values = {{"Drivers/GpibLibrary", GPIB_LIBRARY}, {"Drivers/UsbLibrary", USB_LIBRARY}};
  desk.settings.ScopeIOType = link;
  ProgressWindow window(desk.progress, nullptr);
  desk.progress.procedures.ReadWaveform = [&](const std::string& channel) {
    desk.reader.ReadWaveform(channel);
  };
  desk.scope.Link().Open();
  if (desk.scope.AskScope(":DATA:WinMemSize:?") != "17000") std::abort();
  for (auto _ : state) desk.progress.Transfer(TransferKind::WaveCH1, "Waveform Data Loading");
  if (desk.sheet.Waves[0].CH1Data[17000] == 0) std::abort();
}

BENCHMARK_CAPTURE(ReadOver, usb, kLinkUsb)->Iterations(1);
BENCHMARK_CAPTURE(ReadOver, gpib, kLinkGpib)->Iterations(1);
BENCHMARK_CAPTURE(ReadOver, serial, kLinkRS232)->Iterations(1);

}  // namespace
}  // namespace oriolemark
