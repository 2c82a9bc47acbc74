#include <gtest/gtest.h>
#include <malloc.h>

#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;
using namespace std::chrono_literals;

constexpr Ms kInterval = 15min;
constexpr int kDays = 30;

// A program that refreshes by itself, on a machine that sleeps in most of each pause, with a link
// that fails in one reading of four.
struct Month : ProgramBench {
  Month() {
    clock.SetDeadline(kDays * 24h + 1h);
    Store("General", "StartupCheckHardware", "True");
    Store("Refresh", "Refresh Type", "Auto");
    Store("Refresh", "Refresh Interval", std::to_string(kInterval.count()));
    At(3000, [this] { module.browser.files.AddWaveItem(); });
    At(5000, [this] { wave->cmdRefresh.Click(); });
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
    const bool healthy = kFaults[fault].empty();
    EXPECT_EQ(record.HasData ? record.TimeRange.empty() : true, !healthy) << kFaults[fault];
    if (readings == 1) picture = record.CH1Data;
    for (int i = 1; healthy && i <= 600; ++i) ASSERT_EQ(record.CH1Data[i], picture[i]) << i;
    EXPECT_EQ(waiting.Depth(), 2) << "the program's own wait and the pause";
    EXPECT_EQ(Bits(module.Link().CommBusy, module.progress.Loaded()), "00");
    const auto memory = mallinfo2();
    if (fault == 0) bytes = memory.uordblks + memory.hblkhd;
    if (clock.Now() < 48h) bytesOfDayTwo = bytes;
    port.written.clear();
    prompts.shown.clear();
  }

  void Prepare() {
    WaveRecord& record = module.sheet.Waves[0];
    record.CH1Data = {};
    record.TimeRange.clear();
    record.HasData = false;
    port.side.GetFaults().Clear();
    fault = static_cast<std::size_t>(readings) % kFaults.size();
    const std::string_view name = kFaults[fault];
    port.fails = name == "broken" ? "Input/output error" : "";
    if (const auto parsed = tx5000::ParseFault(name)) port.side.GetFaults().Add(*parsed);
  }

  static constexpr std::array<std::string_view, 8> kFaults = {
      "", "", "", "silence", "", "die for :TimeBase:RANGE:?", "", "broken"};
  std::size_t fault = 0;
  int readings = 0;
  std::size_t bytesOfDayTwo = 0;
  std::size_t bytes = 0;
  SampleArray picture;  // the instrument stands still: each reading brings the same
};

TEST(Soak, AMonthOfAutomaticRefreshOverABadLinkLosesNothingAndGrowsByNothing) {
  Month month;
  month.clock.UserAfter(kDays * 24h, [&] {
    EXPECT_EQ(month.wave->cmdRefresh.Face(), kStopFace);
    month.module.main.Close();
  });
  month.module.Main();
  EXPECT_GT(month.readings, kDays * 24 * 4 * 9 / 10);
  EXPECT_LE(month.readings, kDays * 24 * 4) << "the pause comes behind each reading";
  EXPECT_LE(month.bytes, month.bytesOfDayTwo + 4096);
  EXPECT_EQ(Bits(month.module.Refreshing().WaveAutoRefresh, month.module.Link().CommBusy), "00");
  EXPECT_EQ(month.instrument.UnknownCommands(), 0);
}

}  // namespace
}  // namespace oriolemark
