#include "panel/frmV_Panel.h"

#include <gtest/gtest.h>

#include "output/Bitmap.h"
#include "panel/frmV_Key.h"
#include "support/LinkBench.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;

TEST(KeySender, AClickSendsTheKeysCommandOnceAndSixKeysRepeatWhileHeldInAnOpenWindow) {
  const auto rows = Rows(R"(
Acquire | ACQUIRE || Auto | AUTO || CH_Off | CH_OFF || CH1 | CH1 || CH2 | CH2 || Cursor | CURSOR
Display | DISPLAY || F1 | F1 || F2 | F2 || F3 | F3 || F4 | F4 || F5 | F5 || H_Dec | H_SCALE_DEC
H_Inc | H_SCALE_INC || H_Pos_Dec | H_POS_DEC | held || H_Pos_Inc | H_POS_INC | held || Math | Math
Measure | MEASURE || P_V | PROMPT_V || P_H | PROMPT_H || Ref | REF || Run_Stop | RUN
Storage | STORAGE || TimeMenu | MNU_TIME || Trig_50 | TRIG%50 || Trig_Force | FORCE
Trig_Lvl_Dec | TRIG_LVL_DEC | held || Trig_Lvl_Inc | TRIG_LVL_INC | held || Trig_Menu | MNU_TRIG
Utility | UTILITY || V_Dec | V_SCALE_DEC || V_Inc | V_SCALE_INC || V_Pos_Dec | V_POS_DEC | held
V_Pos_Inc | V_POS_INC | held
)");
  ASSERT_EQ(kPanelKeys.size(), rows.size());
  LinkBench bench;
  bench.Connect(kLinkUsb);
  frmV_Key window(bench.clock, bench.scope);
  window.Show();
  KeySender& keys = window.Keys;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const PanelKey& key = kPanelKeys[i];
    EXPECT_EQ(key.control, "VK_" + rows[i][0]);
    // For how long it is held, whether it is let go inside, and how many commands go out.
    const std::size_t repeats = rows[i].size() == 3 ? 10 : 0;
    const std::tuple<int, KeySender::Release, std::size_t> presses[] = {
        {99, KeySender::Release::Inside, 1},
        {1000, KeySender::Release::Inside, repeats + 1},
        {1000, KeySender::Release::Outside, repeats}};
    for (const auto& [time, where, count] : presses) {
      keys.Press(key);
      bench.clock.Run(Ms(time));
      keys.LetGo(key, where);
      bench.clock.Run(Ms(300));
      EXPECT_EQ(std::exchange(bench.script.sent, {}),
                std::vector<std::string>(count, ":KEY:" + rows[i][1]));
    }
  }
  keys.Press(kPanelKeys[33]);
  bench.clock.Run(Ms(250));
  window.Unload();
  bench.clock.Run(Ms(250));
  EXPECT_EQ(bench.script.sent.size(), 2u) << "closed while held";
}

// The program on USB with a connected instrument that has a colour display.
struct PanelBench : ProgramBench {
  explicit PanelBench(const std::string& model = "TX-5102CA") {
    Store("IO Settings", "ScopeIOType", "0");
    module.main.Load();
    identity = "TAVIK TECHNOLOGIES," + model + ",S1,03.01.15\n";
    script.Answer("*IDN?", identity);
    module.main.mnuToolsConnect.Click();
    EXPECT_TRUE(module.Link().ScopeConnected);
    script.sent.clear();
    usb.screen = Screen(1);
  }
  // A screen of which each byte follows from its place, the first ones included.
  static std::string Screen(int first) {
    std::string bytes;
    for (int i = 0; i < 76800; ++i) bytes += static_cast<char>((first + i / 320 * 7 + i) & 0xFF);
    return bytes;
  }
  // The panel with so many frames drawn.
  void Open(int frames) {
    Answer(frames);
    module.panel.Show();
    clock.Run(Ms(10 * frames));
  }
  void Answer(int frames) {
    for (int i = 0; i < frames; ++i) script.Answer("*IDN?", identity);
  }
  std::string Sent() {
    std::string commands;
    for (const std::string& command : std::exchange(script.sent, {})) commands += command + " ";
    return commands;
  }
  // The messages since the last call: to Send or to Read, and whether they may be muted.
  std::string Shown() {
    std::string shown;
    for (const Message& message : std::exchange(prompts.shown, {}))
      shown += message.title[4] + Bits(message.mayMute);
    return shown;
  }
  // How many pixels are not this operation's colour of this screen's byte.
  int Wrong(std::uint32_t operation, const std::string& screen) {
    const auto pixels = panel.WavePic.Surface().Pixels();
    if (pixels.size() != screen.size()) return -1;
    int wrong = 0;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      wrong += pixels[i] != 0xFF000000u + operation + static_cast<std::uint8_t>(screen[i]);
    }
    return wrong;
  }

  std::string identity;
  frmV_Panel& panel = module.panel;
};

TEST(Panel, AFrameIsAskedForReadAndShownInTheDisplaysColoursUntilItIsFrozen) {
  // The model, and the operation that makes its colours.
  const std::pair<const char*, std::uint32_t> rows[] = {{"TX-5102CA", 0xC00}, {"TX-5102", 0xB00}};
  for (const auto& [model, operation] : rows) {
    PanelBench bench(model);
    int drawn = 0;
    bench.panel.WavePic.onChanged = [&] { ++drawn; };
    bench.Open(1);
    EXPECT_EQ(bench.Sent(), ":HARD_COPY *IDN? ");
    EXPECT_EQ(bench.usb.transfers,
              (std::vector<std::vector<int>>{
                  {0, 8, 0, 80}, {0, 9, 0x2C00, 1}, {0, 7, 0, 9}, {0, 76800}}));
    EXPECT_EQ(bench.Wrong(operation, bench.Screen(1)), 0);
    EXPECT_EQ(drawn, 1);
    EXPECT_EQ(Bits(bench.panel.cmdRun.Enabled(), bench.panel.cmdStop.Enabled()), "01");
    bench.panel.cmdStop.Click();
    EXPECT_EQ(Bits(bench.panel.cmdRun.Enabled(), bench.panel.cmdStop.Enabled()), "10");
    bench.usb.screen = bench.Screen(9);
    bench.module.main.mnuToolsDisconnect.Click();
    bench.clock.Run(Ms(1000));
    EXPECT_EQ(bench.Sent(), ":KEY:LOCK:ENABLE ");
    EXPECT_EQ(bench.Wrong(operation, bench.Screen(1)), 0);
    EXPECT_TRUE(bench.panel.Visible()) << "a lost connection is noticed while running only";
    bench.Answer(1);
    bench.panel.cmdRun.Click();
    bench.clock.Run(Ms(10));
    EXPECT_EQ(bench.Wrong(operation, bench.Screen(9)), 0);
    bench.clock.Run(Ms(10));
    EXPECT_EQ(Bits(bench.panel.Loaded(), bench.panel.tDrawBmp.Enabled()), "00");
    EXPECT_EQ(bench.Sent(), ":HARD_COPY *IDN? ");
  }
}

TEST(Panel, NoFrameIsDrawnWhileTheInstrumentOrTheUserIsBusyWithSomethingElse) {
  PanelBench bench;
  bench.Open(1);
  bench.prompts.AnswerNext(MessageAnswer::Ok, Ms(500));
  bench.Sent();
  bench.help.error = "gone";
  bench.module.main.ShowHelp(HelpCommand::Contents);
  EXPECT_EQ(bench.Told().size() + bench.Sent().size(), 1u);
  std::string within;
  bench.module.progress.procedures.ReadSettings = [&](const std::string&) {
    bench.clock.Run(Ms(100));
    within = bench.Sent();
  };
  bench.script.Answer(":TRIGGER:STATUS:?", "STOP\n");
  bench.Answer(100);
  bench.module.progress.Transfer(TransferKind::Download, "");
  EXPECT_EQ(within, ":TRIGGER:STATUS:? ");
  bench.Sent();
  bench.clock.Run(Ms(20));
  EXPECT_NE(bench.Sent(), "") << "and it goes on";
  // Over another line, chosen behind the open panel, the wait for a reply serves events.
  bench.module.preferences.link.ScopeIOType = kLinkRS232;
  bench.port.lies["*IDN?"] = "no line end";
  bench.module.main.mnuToolsConnect.Click();
  EXPECT_EQ(bench.port.written.find(":HARD_COPY"), std::string::npos);
  bench.clock.Run(Ms(20));
  EXPECT_FALSE(bench.panel.Loaded()) << "the other line has no screen";
}

TEST(Panel, ALinkThatGoesAtAnyStepOfAFrameIsToldAndKeepsThePictureThatIsThere) {
  // How many operations of the driver still succeed: 11 bytes, 3 requests, the block, 6 bytes, and
  // both phases of the reply. Then the messages of that frame.
  const std::tuple<int, const char*, bool> rows[] = {{10, "S0S1R0", false}, {11, "S0R0", false},
                                                     {14, "S0R0", false},   {15, "S0R0", true},
                                                     {21, "R0", true},      {22, "R0", true}};
  for (const auto& [operations, messages, fresh] : rows) {
    SCOPED_TRACE(operations);
    PanelBench bench;
    bench.Open(1);
    bench.usb.screen = bench.Screen(5);
    bench.Answer(1);
    bench.usb.operationsLeft = operations;
    bench.clock.Run(Ms(10));
    EXPECT_EQ(bench.Shown(), messages);
    EXPECT_EQ(bench.Wrong(0xC00, bench.Screen(fresh ? 5 : 1)), 0);
  }
}

TEST(Panel, AMessageOfEveryFrameIsMutedUntilTheMirrorIsStartedAgain) {
  PanelBench bench;
  bench.Open(1);
  for (int run = 0; run < 2; ++run) {
    bench.usb.operationsLeft = 0;
    using enum MessageAnswer;
    for (const auto answer : {Ok, OkAndMute, Ok, OkAndMute}) bench.prompts.AnswerNext(answer);
    bench.clock.Run(Ms(3000));
    EXPECT_EQ(bench.Shown(), "S0S1R0R1") << "the last one in the next frame";
    EXPECT_LT(bench.Sent().size(), 200u) << "a dead line is not asked a hundred times a second";
    bench.help.error = "gone";
    for (int again = 0; again < 2; ++again) bench.module.main.mnuHelpContents.Click();
    EXPECT_EQ(bench.Shown(), "l0l0") << "not of the mirror";
    bench.help.error.reset();
    for (const auto answer : {Ok, Ok, OkAndMute, OkAndMute}) bench.prompts.AnswerNext(answer);
    bench.module.progress.Transfer(TransferKind::Download, "");
    EXPECT_EQ(bench.Shown(), "S0R0S1R1") << "of another transfer";
    bench.clock.Run(Ms(3000));
    EXPECT_EQ(bench.Shown(), "") << "the mirror is still muted";
    bench.panel.cmdStop.Click();
    bench.panel.cmdRun.Click();
  }
}

TEST(Panel, TheWindowOrTheProgramMayCloseInsideAnyMessageOfAFrame) {
  for (int box = 1; box <= 3; ++box) {
    for (const bool program : {false, true}) {
      SCOPED_TRACE(box);
      PanelBench bench;
      bench.Open(1);
      bench.usb.operationsLeft = 0;
      for (int i = 0; i < box; ++i) bench.prompts.AnswerNext(MessageAnswer::Ok, Ms(100));
      bench.At(100 * box - 40, [&] { program ? bench.module.main.Close() : bench.panel.Unload(); });
      bench.clock.Run(Ms(1000));
      const std::size_t after = !program && box == 2 ? 1 : 0;  // the read of the query under way
      EXPECT_EQ(bench.Told().size(), box + after);
      bench.panel.Unload();
      EXPECT_EQ(bench.panel.WavePic.Surface().Width(), 0);
      EXPECT_EQ(Bits(bench.panel.tDrawBmp.Enabled(), bench.module.Transfer().run != 0), "00");
    }
  }
}

TEST(Panel, ThePictureGoesOntoThePageAsTheFrameThatWasOnTheScreen) {
  PanelBench bench;
  bench.Open(1);
  bench.panel.cmdStop.Click();
  const std::string picture = BitmapBytes(bench.panel.WavePic.Surface().Pixels(), 320);
  for (Button* button : {&bench.panel.cmdPreview, &bench.panel.cmdPrint}) {
    button->Click();
    EXPECT_EQ(bench.reports.steps.back(), button == &bench.panel.cmdPrint ? "print" : "preview");
    EXPECT_TRUE(std::exchange(bench.reports.picture, {}) == picture);
  }
}

}  // namespace
}  // namespace oriolemark
