#include <gtest/gtest.h>
#include <malloc.h>

#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

using namespace std::chrono_literals;

using Texts = std::vector<std::string>;

// In milliseconds from the start.
constexpr int kAsked = 4000;    // the refresh is clicked
constexpr int kHealed = 90000;  // all is well again, and what is open is closed

const char* const kConnect = "Please Connect Oscilloscope First";
const char* const kLineFails = "Input/output error";

// The program linked to a healthy instrument that stands still, with one wave item.
struct Day : ProgramBench {
  explicit Day(const char* refreshType, const char* interval = "5000") {
    Store("Refresh", "Refresh Type", refreshType);
    Store("Refresh", "Refresh Interval", interval);
    prompts.toSave = MessageAnswer::No;
    instrument.Turn(":STOP", "");
    ProgressBar& bar = module.progress.ProgressBar1;
    bar.onRefresh = [&bar] { EXPECT_EQ(std::clamp(bar.Value(), 0.0, 100.0), bar.Value()); };
    At(1000, [this] { module.main.mnuToolsConnect.Click(); });
    At(500, [this] { module.browser.files.AddWaveItem(); });
    At(kAsked, [this] { View().cmdRefresh.Click(); });
  }

  frmWave& View() { return dynamic_cast<frmWave&>(*module.sheet.WaveViews[0]); }
  void CancelDialogs() {
    Form* const dialogs[] = {&module.newDoc, &module.openDoc, &module.options, &module.about};
    for (Form* dialog : dialogs) dialog->Unload();
  }
  void Heal() {
    port.fails.clear();
    port.lies.clear();
    port.side.GetFaults().Clear();
    port.side.PlugIn();
    if (View().cmdRefresh.Face() == kStopFace) View().cmdRefresh.Click();
    module.preferences.refresh.RefreshType = "Single";
  }
  void ReadAgain() {
    if (!module.Link().ScopeConnected) module.main.mnuToolsConnect.Click();
    if (module.sheet.WaveCount == 0) module.browser.files.AddWaveItem();
    module.browser.DataSheetTree.Select(module.sheet.Waves[0].TreeNode);
    module.browser.DataSheetTree.DoubleClick();
    instrument.Turn(":STOP", "");
    At(500, [this] {
      module.sheet.Waves[0].HasData = false;
      View().cmdRefresh.Click();
    });
  }
  // So many waits are left, and none of them is for the instrument.
  void ExpectRest(int waits) {
    EXPECT_EQ(waiting.Depth(), waits);
    EXPECT_EQ(View().cmdRefresh.Face(), kRefreshFace);
    EXPECT_EQ(Bits(module.Transfer().TransferActive, module.progress.Loaded(),
                   module.Link().CommBusy, module.Refreshing().WaveAutoRefresh),
              "0000");
  }
  void Close() {
    EXPECT_EQ(std::exchange(closed, clock.Now()), Milliseconds(0)) << "it ends at once";
    sent = port.written.size();
    module.main.Close();
  }
  // Every control of the main window and of the view.
  std::map<std::string, std::function<void()>> Hands() {
    std::map<std::string, std::function<void()>> hands = {
        {"refresh", [this] { View().cmdRefresh.Click(); }},
        {"print", [this] { View().cmdPrint.Click(); }},
        {"preview", [this] { View().cmdPreview.Click(); }},
        {"close the view", [this] { View().Unload(); }},
        {"close the program", [this] { Close(); }},
        {"close the bar", [this] { module.progress.Unload(); }},
        {"new sheet with an item", [this] {
           module.browser.mnuNewDataSheet_Click();
           module.browser.files.AddWaveItem();
         }}};
    frmMain& main = module.main;
    for (std::size_t place = 0; place < main.Tools.size(); ++place) {
      hands["tool " + std::to_string(place)] = [&main, place] { main.ToolButtons[place].Click(); };
    }
    for (const frmMain::Menu& menu : main.MenuBar) {
      for (MenuEntry* entry : menu.entries) {
        if (entry == nullptr || entry == &main.mnuFileExit) continue;
        hands["menu " + entry->Caption()] = [entry] { entry->Click(); };
      }
    }
    return hands;
  }
  // From the start to the end. `messages` are the texts of all boxes, in order.
  void Live(const Texts& messages) {
    At(64500, [this] { EXPECT_LE(module.Link().RxBuffer.size(), std::size_t{64} << 20); });
    At(kHealed, [this] { Heal(); });
    At(100000, [this] { ReadAgain(); });
    At(130000, [this] {
      // The refresh of a healthy instrument has brought its samples, and all is at rest.
      EXPECT_EQ(Bits(module.sheet.Waves[0].HasData, View().cmdRefresh.Enabled()), "11");
      ExpectSamples(module.sheet.Waves[0], ":DATA:CHANNEL1");
      ExpectRest(1);
      Close();
    });
    module.Main();
    EXPECT_LT(clock.Now() - closed, Milliseconds(2000));
    EXPECT_EQ(port.written.find('?', sent), std::string::npos) << "no more questions";
    EXPECT_EQ(port.written.ends_with(":KEY:LOCK:ENABLE\r"), module.Link().ScopeConnected);
    EXPECT_EQ(Bits(module.main.Loaded(), View().Loaded()), "00");
    ExpectRest(0);
    EXPECT_EQ(Told(), messages);
  }

  Milliseconds closed{0};
  std::size_t sent = 0;  // by then
};

using Happens = std::function<void(Day&)>;

// From then on every reply suffers so.
Happens Fault(const char* fault) {
  return [fault](Day& day) { day.port.side.GetFaults().Add(*tx5000::ParseFault(fault)); };
}

const Happens kSlowly = [](Day& day) { day.port.side.SetBaud(9600); };

// On a line so slow that the progress of the block, which is of this size, is shown.
Happens Size(const std::string& reply) {
  return [reply](Day& day) {
    day.port.lies[":DATA:WinMemSize:?"] = reply;
    kSlowly(day);
  };
}

// From then on the line refuses.
const Happens kVanishes = [](Day& day) {
  day.port.fails = kLineFails;
  day.port.onEvent(serial_event::kVanished);
};

// Bytes that nobody has asked for, again and again.
Happens Chatter(int duration, int period, const std::string& bytes) {
  return [=](Day& day) {
    for (int at = 0; at < duration; at += period) day.port.ArriveAfter(Milliseconds(at), bytes);
  };
}

// What the record of the item holds: its count, and of its samples the first two, one from the
// middle and the one behind the last, which no reading of 600 samples converts.
using Held = std::array<int, 5>;
constexpr Held kWhole = {600, 87, 87, 50, 37};
// Without a block the samples of the reading before are converted again, of an X-Y figure here:
// the reply that tells the format is missing too.
constexpr Held kStale = {600, -26, 61, 24, 37};
constexpr Held kNoBlock = {600, 0, 61, 24, 37};

constexpr int kBefore = kAsked - 1;  // just before the refresh

struct Trouble {
  const char* name;
  int when;
  Happens happens;
  Held held;  // afterwards; a reading of 600 samples went well before
  Texts messages = {};
};

const Trouble kTroubles[] = {
    {"no port when it connects", 500, kVanishes, {}, {kLineFails, kConnect, kConnect}},
    {"silence", kBefore, Fault("silence"), kStale},
    {"half of each line", kBefore, Fault("cut"), {60, 87, 87, 76, 37}},
    {"half a block, then nothing", kBefore, Fault("die for :DATA:CHANNEL1"), kNoBlock},
    {"each reply later than it is waited for", kBefore, Fault("delay 2300"), kStale},
    {"garbage", kBefore, Fault("garbage"), kStale},
    // A digit that cannot be read takes its neighbour's place.
    {"NUL bytes", kBefore, Fault("nul"), {600, -9, -10, 50, 37}},
    {"more samples than announced", kBefore, Fault("long-block"), {600, 87, 87, 50, 125}},
    {"size 0", kBefore, Size("0\n"), {0, 113, 113, 76, 37}},
    {"size -5", kBefore, Size("-5\n"), {-5, 113, 113, 76, 37}},
    {"size 2147483647", kBefore, Size("2147483647\n"), {2147483647, 87, 87, 50, 11}},
    {"lines while nobody waits", 3100, Chatter(900, 300, "0x7D 0x7D \n1\n"), kWhole},
    {"lines into each wait", kBefore, Chatter(56000, 20, "2\n"), {2, 0, 61, 50, 37}},
    {"a minute of no line end", kAsked, Chatter(60000, 1000, std::string(1'200'000, '0')), kWhole},
    {"the port goes while idle", 3500, kVanishes, kStale, Texts(13, kLineFails)},
    {"the port goes in a transfer", kAsked + 350, kVanishes, kNoBlock, Texts(4, kLineFails)}};

TEST(BadDays, TheProgramLivesThroughEveryTroubleOfTheLine) {
  for (const Trouble& row : kTroubles) {
    SCOPED_TRACE(row.name);
    Day day("Single");
    day.At(1700, [&day] { day.View().cmdRefresh.Click(); });
    day.At(row.when, [&] { row.happens(day); });
    day.At(kHealed - 1, [&] {
      const WaveRecord& record = day.module.sheet.Waves[0];
      const SampleArray& data = record.CH1Data;
      EXPECT_EQ((Held{record.Count, data[1], data[2], data[300], data[601]}), row.held);
    });
    day.Live(row.messages);
  }
}

// Where the program waits when the hand comes.
struct Wait {
  const char* name;
  int at;
  const char* refreshType;
  Happens prepare = [](Day&) {};
  // The hand that is answered by a message.
  const char* refused = "";
};

const Wait kWaits[] = {{"handshake", 1300, "Single", Fault("delay 1000 for *IDN?"), "refresh"},
                       {"before the transfer", kAsked + 50, "Single"},
                       {"in a query", kAsked + 150, "Single", Fault("delay 100")},
                       {"in a block", kAsked + 2500, "Auto", kSlowly},
                       {"refresh pause", 9000, "Auto"}};

TEST(BadDays, AHandMayDoAnythingInAnyWait) {
  for (const Wait& wait : kWaits) {
    for (const auto& [name, unused] : Day("Single").Hands()) {
      SCOPED_TRACE(std::string(wait.name) + ": " + name);
      Day day(wait.refreshType);
      wait.prepare(day);
      day.At(wait.at, day.Hands().at(name));
      day.At(wait.at + 500, [&day] { day.CancelDialogs(); });
      day.Live(Texts(name == wait.refused, kConnect));
    }
  }
}

// A refresh every 15 minutes, on a machine that sleeps in most of each pause, with a link that
// fails in one reading of four.
struct Month : Day {
  Month() : Day("Auto", "900000") {
    clock.SetDeadline(kDays * 24h + 1h);
    clock.After(10s, [this] { Watch(); });
  }
  void Watch() {
    clock.After(2500ms, [this] {
      Watch();
      const bool tried = !port.written.empty() || !prompts.shown.empty();
      if (!tried || module.Transfer().TransferActive) return;
      Judge();
      clock.Block(15min - 15s);
    });
  }
  void Judge() {
    WaveRecord& record = module.sheet.Waves[0];
    const bool healthy = *kFaults[fault] == 0;
    EXPECT_EQ(Bits(record.HasData, !record.TimeRange.empty()), healthy ? "11" : "10")
        << kFaults[fault];
    if (healthy) ExpectSamples(record, ":DATA:CHANNEL1");
    ++readings;
    EXPECT_EQ(waiting.Depth(), 2) << "the program's own wait and the pause";
    EXPECT_EQ(Bits(module.Link().CommBusy, module.progress.Loaded()), "00");
    const auto memory = mallinfo2();
    if (fault == 0) bytes = memory.uordblks + memory.hblkhd;
    if (clock.Now() < 48h) bytesOfDayTwo = bytes;
    port.written.clear();
    prompts.shown.clear();
    record.CH1Data = {};
    record.TimeRange.clear();
    record.HasData = false;
    port.side.GetFaults().Clear();
    fault = static_cast<std::size_t>(readings) % std::size(kFaults);
    port.fails = kFaults[fault] == kLineFails ? kLineFails : "";
    if (const auto parsed = tx5000::ParseFault(kFaults[fault])) port.side.GetFaults().Add(*parsed);
  }

  static constexpr int kDays = 30;
  const char* const kFaults[8] = {"", "",        "", "silence", "", "die for :TimeBase:RANGE:?",
                                  "", kLineFails};
  std::size_t fault = 0;
  int readings = 0;
  std::size_t bytesOfDayTwo = 0;
  std::size_t bytes = 0;
};

TEST(BadDays, AMonthOfAutomaticRefreshOverABadLinkLosesNothingAndGrowsByNothing) {
  Month month;
  month.clock.UserAfter(Month::kDays * 24h, [&] {
    EXPECT_EQ(month.View().cmdRefresh.Face(), kStopFace);
    month.Close();
  });
  month.module.Main();
  EXPECT_GT(month.readings, Month::kDays * 24 * 4 * 9 / 10);
  EXPECT_LE(month.readings, Month::kDays * 24 * 4) << "the pause comes behind each reading";
  EXPECT_LE(month.bytes, month.bytesOfDayTwo + 4096);
  month.ExpectRest(0);
}

}  // namespace
}  // namespace oriolemark
