#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>

#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;

constexpr Ms kAsked{4000};    // the refresh is clicked
constexpr Ms kHealed{90000};  // all is well again, and what is open is closed
constexpr Ms kAgain{100000};  // a plain refresh
constexpr Ms kLooked{130000};

const char* const kConnect = "Please Connect Oscilloscope First";
const char* const kLineFails = "Input/output error";
const char* const kFull = "Exceed maximum file numbers limit";

// The program linked to a healthy instrument that stands still, with one wave item.
struct Day : ProgramBench {
  explicit Day(const char* refreshType) {
    store.values[{"Refresh", "Refresh Type"}] = refreshType;
    store.values[{"Refresh", "Refresh Interval"}] = "5000";
    instrument.Turn(":STOP", "");
    ProgressBar& bar = module.progress.ProgressBar1;
    bar.onRefresh = [&bar] { EXPECT_TRUE(bar.Value() >= 0 && bar.Value() <= 100) << bar.Value(); };
    At(Ms(1000), [this] { module.main.mnuToolsConnect.Click(); });
    At(Ms(500), [this] { module.browser.files.AddWaveItem(); });
    At(kAsked, [this] { View().cmdRefresh.Click(); });
  }
  void At(Ms when, std::function<void()> action) { clock.UserAfter(when, std::move(action)); }

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
    At(Ms(500), [this] {
      module.sheet.Waves[0].HasData = false;
      View().cmdRefresh.Click();
    });
  }
  // The refresh of a healthy instrument has brought its samples, and all is at rest.
  void ExpectUsable() {
    const WaveRecord& record = module.sheet.Waves[0];
    EXPECT_TRUE(record.HasData);
    ExpectSamples(record, ":DATA:CHANNEL1");
    EXPECT_EQ(View().cmdRefresh.Face(), kRefreshFace);
    EXPECT_TRUE(View().cmdRefresh.Enabled());
    EXPECT_EQ(waiting.Depth(), 1) << "only the program's own wait is left";
    ExpectRest();
  }
  void ExpectRest() {
    EXPECT_FALSE(module.Transfer().TransferActive || module.progress.Loaded());
    EXPECT_FALSE(module.Link().CommBusy);
    EXPECT_FALSE(module.Refreshing().WaveAutoRefresh);
  }
  void ExpectEndedInOrder() {
    EXPECT_FALSE(clock.Stuck());
    EXPECT_EQ(waiting.Depth(), 0);
    EXPECT_FALSE(module.main.Loaded() || View().Loaded());
    EXPECT_EQ(port.written.ends_with(":KEY:LOCK:ENABLE\r"), module.Link().ScopeConnected);
    ExpectRest();
  }
  // From the start to the end. `messages` are the texts of all boxes, in order.
  void Live(const std::vector<std::string>& messages) {
    At(Ms(64500), [this] { EXPECT_LE(module.Link().RxBuffer.size(), std::size_t{64} << 20); });
    At(kHealed, [this] { Heal(); });
    At(kAgain, [this] { ReadAgain(); });
    At(kLooked, [this] {
      ExpectUsable();
      module.main.Close();
    });
    module.Main();
    ExpectEndedInOrder();
    EXPECT_EQ(Told(), messages);
  }
};

using Happens = std::function<void(Day&)>;

// From just before the refresh on, every reply suffers so.
Happens Fault(const char* fault) {
  return [fault](Day& day) {
    day.At(kAsked - Ms(1),
           [&day, fault] { day.port.side.GetFaults().Add(*tx5000::ParseFault(fault)); });
  };
}

// On a line so slow that the progress of the block, which is of this size, is shown.
Happens Size(const std::string& reply) {
  return [reply](Day& day) {
    day.At(kAsked - Ms(1), [&day, reply] {
      day.port.lies[":DATA:WinMemSize:?"] = reply;
      day.port.side.SetBaud(9600);
    });
  };
}

// From then on the line refuses.
Happens Fails(Ms when) {
  return [when](Day& day) {
    day.At(when, [&day] {
      day.port.fails = kLineFails;
      day.port.onEvent(serial_event::kVanished);
    });
  };
}

// Bytes that nobody has asked for, again and again.
Happens Chatter(Ms from, Ms until, Ms period, const std::string& bytes) {
  return [=](Day& day) {
    for (Ms at = from; at < until; at += period) day.port.ArriveAfter(at, bytes);
  };
}

// What the record of the item holds: of its samples the first two, one from the middle and the one
// behind the last, which no reading of 600 samples converts.
struct Held {
  int count;
  std::array<int, 4> samples;
};
constexpr Held kNothing = {0, {0, 0, 0, 0}};
constexpr Held kWhole = {600, {87, 87, 50, 37}};
// Without a block the samples of the reading before are converted again, of an X-Y figure here:
// the reply that tells the format is missing too.
constexpr Held kStale = {600, {-26, 61, 24, 37}};
constexpr Held kNoBlock = {600, {0, 61, 24, 37}};
// A digit that cannot be read takes its neighbour's place.
constexpr Held kStrewn = {600, {-9, -10, 50, 37}};

struct Trouble {
  const char* name;
  Happens happens;
  Held held;  // afterwards; a reading of 600 samples went well before
  // How often the line's own message comes, and which others behind it.
  int failures = 0;
  std::vector<std::string> others = {};
};

const Trouble kTroubles[] = {
    {"no port when it connects", Fails(Ms(500)), kNothing, 1, {kConnect, kConnect}},
    {"silence", Fault("silence"), kStale},
    {"half of each line", Fault("cut"), {60, {87, 87, 76, 37}}},
    {"half a block, then nothing", Fault("die for :DATA:CHANNEL1"), kNoBlock},
    {"each reply later than it is waited for", Fault("delay 2300"), kStale},
    {"garbage", Fault("garbage"), kStale},
    {"NUL bytes", Fault("nul"), kStrewn},
    {"no line end", Fault("no-lf"), kStale},
    {"more samples than announced", Fault("long-block"), {600, {87, 87, 50, 125}}},
    {"each line twice", Fault("double"), kWhole},
    {"size 0", Size("0\n"), {0, {113, 113, 76, 37}}},
    {"size -5", Size("-5\n"), {-5, {113, 113, 76, 37}}},
    {"size 2147483647", Size("2147483647\n"), {2147483647, {87, 87, 50, 11}}},
    {"size abc", Size("abc\n"), kWhole},
    {"a line of 10 MB in a reply", Size(std::string(10'000'000, '7') + "\n"), kWhole},
    {"lines while nobody waits", Chatter(Ms(3100), kAsked, Ms(300), "0x7D 0x7D \n1\n"), kWhole},
    {"lines into each wait", Chatter(kAsked, Ms(60000), Ms(20), "2\n"), {2, {0, 61, 50, 37}}},
    {"bytes for a minute and no line end",
     Chatter(kAsked, Ms(64000), Ms(1000), std::string(1'200'000, '0')), kWhole},
    {"the port goes while idle", Fails(Ms(3500)), kStale, 13},
    {"the port goes in a transfer", Fails(kAsked + Ms(350)), kNoBlock, 4}};

TEST(BadDays, TheProgramLivesThroughEveryTroubleOfTheLine) {
  for (const Trouble& row : kTroubles) {
    SCOPED_TRACE(row.name);
    Day day("Single");
    day.At(Ms(1700), [&day] { day.View().cmdRefresh.Click(); });
    row.happens(day);
    day.At(kHealed - Ms(1), [&day, &held = row.held] {
      const WaveRecord& record = day.module.sheet.Waves[0];
      const SampleArray& data = record.CH1Data;
      EXPECT_EQ(record.Count, held.count);
      EXPECT_EQ((std::array{data[1], data[2], data[300], data[601]}), held.samples);
    });
    std::vector<std::string> messages(static_cast<std::size_t>(row.failures), kLineFails);
    messages.insert(messages.end(), row.others.begin(), row.others.end());
    day.Live(messages);
  }
}

// Where the program waits when the hand comes.
struct Wait {
  const char* name;
  Ms at;
  const char* refreshType;
  Happens prepare = [](Day&) {};
  std::vector<std::string> messages = {};
  // After a hand that is answered by a message of its own.
  std::map<std::string, std::vector<std::string>> otherMessages = {};
};

const auto kSlowly = [](Day& day) { day.port.side.SetBaud(9600); };

const Wait kWaits[] = {
    {"handshake",
     Ms(1300),
     "Single",
     [](Day& day) { day.port.side.GetFaults().Add(*tx5000::ParseFault("delay 1000 for *IDN?")); },
     {},
     {{"refresh", {kConnect}}}},
    {"before the transfer", kAsked + Ms(50), "Single"},
    {"in a query", kAsked + Ms(150), "Single", Fault("delay 100")},
    {"in a block", kAsked + Ms(2500), "Auto", kSlowly},
    {"refresh pause", Ms(9000), "Auto"},
    {"message box",
     Ms(3600),
     "Single",
     [](Day& day) {
       day.prompts.AnswerNext(MessageAnswer::Ok, Ms(300));
       day.At(Ms(3500), [&day] {
         day.module.sheet.MeasureCount = 16;
         day.module.browser.files.AddMeasureItem();
       });
     },
     {kFull},
     {{"tool 5", {kFull, kConnect}},
      {"tool 14", {kFull, kConnect}},
      {"menu &Disconnect", {kFull, kConnect}},
      {"menu &Options...", {kFull, kConnect}},
      {"tool 11", {kFull, kFull}}}}};

// Every control of the main window and of the view.
std::vector<std::pair<std::string, Happens>> Hands() {
  std::vector<std::pair<std::string, Happens>> hands = {
      {"refresh", [](Day& day) { day.View().cmdRefresh.Click(); }},
      {"close the view", [](Day& day) { day.View().Unload(); }},
      {"close the bar", [](Day& day) { day.module.progress.Unload(); }},
      {"new sheet with an item", [](Day& day) {
         day.module.browser.mnuNewDataSheet_Click();
         day.module.browser.files.AddWaveItem();
         if (day.clock.Now() < kAsked) return;
         day.At(kHealed - day.clock.Now() - Ms(1), [&day] {
           EXPECT_FALSE(day.module.sheet.Waves[0].HasData) << "that was another item's transfer";
         });
       }}};
  for (std::size_t place = 0; place < frmMain::kToolPlaces; ++place) {
    hands.push_back({"tool " + std::to_string(place),
                     [place](Day& day) { day.module.main.ToolButtons[place].Click(); }});
  }
  Day sample("Single");
  const auto menus = sample.module.main.MenuBar();
  for (std::size_t menu = 0; menu < menus.size(); ++menu) {
    for (std::size_t at = 0; at < menus[menu].entries.size(); ++at) {
      const MenuEntry* const entry = menus[menu].entries[at];
      if (entry == nullptr || entry == &sample.module.main.mnuFileExit) continue;
      hands.push_back({"menu " + entry->Caption(), [menu, at](Day& day) {
                         day.module.main.MenuBar()[menu].entries[at]->Click();
                       }});
    }
  }
  return hands;
}

TEST(BadDays, AHandMayDoAnythingInAnyWait) {
  for (const Wait& wait : kWaits) {
    for (const auto& [name, act] : Hands()) {
      SCOPED_TRACE(std::string(wait.name) + ": " + name);
      Day day(wait.refreshType);
      wait.prepare(day);
      day.At(wait.at, [&day, hand = act] { hand(day); });
      day.At(wait.at + Ms(500), [&day] { day.CancelDialogs(); });
      day.Live(wait.otherMessages.contains(name) ? wait.otherMessages.at(name) : wait.messages);
    }
  }
}

TEST(BadDays, TheProgramMayBeClosedInAnyWait) {
  for (const Wait& wait : kWaits) {
    SCOPED_TRACE(wait.name);
    Day day(wait.refreshType);
    wait.prepare(day);
    std::size_t sent = 0;
    day.At(wait.at, [&] {
      sent = day.port.written.size();
      day.module.main.Close();
    });
    day.module.Main();
    EXPECT_EQ(day.port.written.find('?', sent), std::string::npos) << "no more questions";
    EXPECT_LT(day.clock.Now() - wait.at, Ms(2000));
    day.ExpectEndedInOrder();
    EXPECT_EQ(day.Told(), wait.messages);
  }
}

// What a removal of the first item does to the sheet.
void RemoveFirstWave(DataSheet& sheet) {
  for (std::size_t slot = 0; slot + 1 < static_cast<std::size_t>(sheet.WaveCount); ++slot) {
    sheet.WaveViews[slot]->Unload();
    sheet.Waves[slot] = sheet.Waves[slot + 1];
    sheet.WaveViews[slot]->Show();
  }
  sheet.WaveViews[static_cast<std::size_t>(--sheet.WaveCount)]->Unload();
}

TEST(BadDays, ItemsThatMoveUpInATransferKeepTheirOwnSamples) {
  for (const Ms when : {Ms(50), Ms(300), Ms(650)}) {
    SCOPED_TRACE(when.count());
    Day day("Single");
    DataSheet& sheet = day.module.sheet;
    day.At(Ms(600), [&day] { day.module.browser.files.AddWaveItem(); });
    day.At(Ms(700), [&day] { day.module.browser.files.AddWaveItem(); });
    day.At(Ms(20000), [&] { dynamic_cast<frmWave&>(*sheet.WaveViews[1]).cmdRefresh.Click(); });
    day.At(Ms(20000) + when, [&] { RemoveFirstWave(sheet); });
    day.At(Ms(40000), [&] {
      EXPECT_TRUE(sheet.Waves[0].Name == "Wave1" && sheet.Waves[0].HasData);
      EXPECT_EQ(sheet.Waves[0].Count, 600);
      EXPECT_TRUE(sheet.Waves[1].Name == "Wave2" && !sheet.Waves[1].HasData);
      EXPECT_EQ(sheet.Waves[1].Count, 0);
    });
    day.Live({});
  }
}

}  // namespace
}  // namespace oriolemark
