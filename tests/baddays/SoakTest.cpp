#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <array>

#include "support/BlankCanvas.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;
using namespace std::chrono_literals;

constexpr Ms kInterval = 15min;
constexpr int kDays = 30;

std::size_t LiveBytes() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

// A program that refreshes by itself, on a machine that sleeps in most of each pause, with a link
// that fails in one reading of four.
struct Month : ProgramBench {
  Month() : ProgramBench([] { return std::make_unique<BlankCanvas>(); }) {
    clock.SetDeadline(kDays * 24h + 1h);
    store.values[{"General", "StartupCheckHardware"}] = "True";
    store.values[{"Refresh", "Refresh Type"}] = "Auto";
    store.values[{"Refresh", "Refresh Interval"}] = std::to_string(kInterval.count());
    clock.UserAfter(Ms(3000), [this] { module.browser.files.AddWaveItem(); });
    clock.UserAfter(Ms(5000), [this] { wave->cmdRefresh.Click(); });
    instrument.Turn(":STOP", "");
    clock.After(Ms(10000), [this] { Watch(); });
  }

  void Watch() {
    clock.After(Ms(2500), [this] {
      Watch();
      const bool tried = !port.written.empty() || !prompts.shown.empty();
      if (!tried || module.Transfer().TransferActive) return;
      Judge();
      Prepare();
      clock.Block(kInterval - Ms(15000));
    });
  }

  void Judge() {
    const WaveRecord& record = module.sheet.Waves[0];
    ++readings;
    healthy += kFaults[fault] == nullptr ? 1 : 0;
    const bool whole = record.HasData && record.Count == 600 && record.TimeRange != "";
    for (int i = 1; i <= 600; ++i) ASSERT_TRUE(!whole || record.CH1Data[i] == Expected(i)) << i;
    good += whole ? 1 : 0;
    EXPECT_EQ(waiting.Depth(), 2) << "the program's own wait and the pause";
    EXPECT_FALSE(module.Link().CommBusy || module.progress.Loaded());
    if (fault == 0 && bytesOfDayTwo == 0 && clock.Now() > 48h) bytesOfDayTwo = LiveBytes();
    if (fault == 0) bytes = LiveBytes();
    port.written.clear();
    prompts.shown.clear();
  }

  // The instrument stands still, so that each reading brings the same.
  int Expected(int sample) {
    if (block.empty()) block = instrument.Execute(":DATA:CHANNEL1").value();
    const std::string hex = block.substr(static_cast<std::size_t>(sample) * 5 - 3, 2);
    return std::clamp(std::stoi(hex, nullptr, 16), 26, 225) - 26;
  }

  void Prepare() {
    WaveRecord& record = module.sheet.Waves[0];
    record.CH1Data = {};
    record.TimeRange.clear();
    record.HasData = false;
    port.side.GetFaults().Clear();
    port.fails.clear();
    fault = static_cast<std::size_t>(readings) % kFaults.size();
    const char* const name = kFaults[fault];
    if (name == kBroken) {
      port.fails = "Input/output error";
    } else if (name != nullptr) {
      port.side.GetFaults().Add(*tx5000::ParseFault(name));
    }
  }

  static constexpr const char* kBroken = "broken";
  static constexpr std::array<const char*, 8> kFaults = {
      nullptr, nullptr, nullptr, "silence", nullptr, "die for :TimeBase:RANGE:?", nullptr, kBroken};
  std::size_t fault = 0;
  int readings = 0;
  int healthy = 0;
  int good = 0;
  std::size_t bytesOfDayTwo = 0;
  std::size_t bytes = 0;
  std::string block;
};

TEST(Soak, AMonthOfAutomaticRefreshOverABadLinkLosesNothingAndGrowsByNothing) {
  Month month;
  month.clock.UserAfter(kDays * 24h, [&] {
    EXPECT_EQ(month.wave->cmdRefresh.Face(), kStopFace);
    month.module.main.Close();
  });
  month.module.Main();
  EXPECT_GT(month.readings, kDays * 24 * 4 * 9 / 10);
  EXPECT_EQ(month.good, month.healthy);
  EXPECT_LE(month.bytes, month.bytesOfDayTwo + 4096);
  EXPECT_FALSE(month.module.Refreshing().WaveAutoRefresh || month.module.Link().CommBusy);
  EXPECT_EQ(month.instrument.UnknownCommands(), 0);
}

}  // namespace
}  // namespace oriolemark
