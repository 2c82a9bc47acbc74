#include <benchmark/benchmark.h>

#include <QImage>
#include <random>

#include "Desk.h"
#include "desktop/ScreenWidget.h"
#include "drivers/QtEventSource.h"
#include "drivers/ScreenPalettes.h"
#include "panel/frmV_Panel.h"
#include "platform/RasterCanvas.h"

namespace oriolemark {
namespace {

constexpr int kWatched = 1000;  // ms
constexpr std::size_t kScreenBytes = std::size_t{kScreenWidth} * kScreenHeight;

// An instrument with a colour display whose screen is there at once.
class InstantUsb : public UsbDriver {
 public:
  InstantUsb() {
    std::mt19937 random(1);
    for (std::uint8_t& byte : screen_) byte = static_cast<std::uint8_t>(random());
  }
  int GetDeviceNum() override { return 1; }
  std::string Problem() override { return {}; }
  bool Write_USB(int, std::uint8_t) override { return true; }
  bool Read_USB(int, int phase, int, std::span<std::uint8_t> buffer) override {
    constexpr std::string_view kIdentity = "TAVIK TECHNOLOGIES,TX-5102CA,S1,03.01.15\n";
    buffer[0] = kIdentity.size();
    if (phase != kUsbCountPhase) std::copy(kIdentity.begin(), kIdentity.end(), buffer.begin());
    return true;
  }
  bool Control_Command_Send(int, int, int, int) override { return true; }
  bool Bulk_DataTransfer_Read(int, int, std::span<std::uint8_t> buffer) override {
    std::copy(screen_.begin(), screen_.end(), buffer.begin());
    return true;
  }

 private:
  std::array<std::uint8_t, kScreenBytes> screen_;
};

// The desk with the panel on it, frozen.
struct PanelDesk : Desk {
  explicit PanelDesk(EventSource& eventSource, SerialPort& line) : Desk(eventSource, line) {
    panel.Load();
    panel.cmdStop.Click();
  }

  InstantUsb instrument;
  LinkSettings usbSettings;
  ScopeLink usbLink{port, gpibDriver, instrument, usbSettings, waiting, prompts};
  WatchedPrompts watched{prompts};
  ScreenPalettes colors;
  frmV_Panel panel{
      {events, waiting, usbLink.scope, usbLink.usb, usbLink.state, transfer, watched, colors},
      std::make_unique<RasterCanvas>(),
      {{prompts, {}}, {}, [] { return nullptr; }}};
};

void WaitFrozen(benchmark::State& state) {
  QtEventSource events;
  InstantLine line;
  PanelDesk desk(events, line);
  bool ended = false;
  Timer end(events, kWatched, [&] { ended = true; });
  for (auto _ : state) {
    ended = false;
    end.SetEnabled(true);
    desk.waiting.WaitUntil([&] { return ended; });
    end.SetEnabled(false);
  }
}

// One frame from the instrument's bytes to the pixels of the window.
void DrawFrame(benchmark::State& state) {
  InstantLine line;
  PanelDesk desk(line, line);
  desk.usbLink.state.LinkOpened = true;
  ScreenWidget screen(desk.panel.WavePic, nullptr);
  screen.resize(kScreenWidth, kScreenHeight);
  QImage window(screen.size(), QImage::Format_RGB32);
  for (auto _ : state) {
    desk.panel.DrawBulkWave();
    screen.render(&window);
  }
  if (window.pixel(kScreenWidth - 1, 0) != desk.panel.WavePic.Surface().Pixels()[319]) std::abort();
}

void SetPixels(benchmark::State& state) {
  QImage image(kScreenWidth, kScreenHeight, QImage::Format_RGB32);
  for (auto _ : state) {
    for (int y = 0; y < kScreenHeight; ++y) {
      for (int x = 0; x < kScreenWidth; ++x) image.setPixel(x, y, static_cast<unsigned>(x * y));
    }
    benchmark::DoNotOptimize(image.constBits());
  }
}

BENCHMARK(WaitFrozen)->Iterations(1)->MeasureProcessCPUTime();
BENCHMARK(DrawFrame);
BENCHMARK(SetPixels);

}  // namespace
}  // namespace oriolemark
