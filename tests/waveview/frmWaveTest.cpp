#include "waveview/frmWave.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/LinkBench.h"
#include "support/MemoryStore.h"
#include "support/RecordingCanvas.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;

constexpr int kSlot = 2;

// A wave view on slot 2, with room for a picture of `width` by `height` pixels beside its strip.
struct WaveBench : LinkBench {
  explicit WaveBench(double width = 1000, double height = 800) {
    Connect(kLinkRS232);
    sheet.WaveCount = 3;
    Record().CH1Range = "1.00V";
    view.SetTag("2");
    GiveRoom(width, height);
    progress.procedures.ReadWaveform = [this](const std::string& channel) {
      read.push_back(channel + (scratch.TransferWaveSlot == kSlot ? "" : " elsewhere") + ": " +
                     progress.Caption());
      if (reading) reading();
    };
  }

  WaveRecord& Record() { return sheet.Waves[kSlot]; }
  RecordingCanvas& Drawn() { return dynamic_cast<RecordingCanvas&>(view.WavePic.Surface()); }
  void GiveRoom(double width, double height) {
    view.NoteInnerSize(PixelsToUnits(width) + 1100, PixelsToUnits(height) + 100);
  }
  void Open() {
    view.Show();
    clock.Run(Ms(1));
  }
  // The answer that lets a transfer begin.
  void AnswerTransfers(int count) {
    for (int i = 0; i < count; ++i) script.Answer(":TRIGGER:STATUS:?", "STOP\n");
  }

  MemoryStore store;
  TransferState transfer;
  RefreshFlags flags;
  RefreshSettings refresh;
  CtrlSettings ctrl;
  DataSheet sheet;
  TransferScratch scratch;
  frmPrgress progress{clock, waiting, store, state, transfer, scope};
  std::vector<std::string> read;
  std::function<void()> reading;
  frmWave view{{sheet, ctrl, scratch, progress,
                RefreshContext{clock, waiting, prompts, state, transfer, flags, refresh}},
               std::make_unique<RecordingCanvas>()};
};

TEST(frmWave, OpensAt150PercentAndDrawsAtItsFirstTick) {
  WaveBench bench;
  bench.Record().GridOn = true;
  bench.view.Show();
  EXPECT_TRUE(bench.Drawn().calls.empty());
  EXPECT_FALSE(bench.Record().ViewOpen);
  bench.clock.Run(Ms(1));
  EXPECT_TRUE(bench.Record().ViewOpen);
  EXPECT_EQ(bench.view.ZoomFactor, 1.5);
  EXPECT_EQ(bench.view.ZoomCombo.Text(), "150%");
  EXPECT_EQ(bench.view.WavePic.Width(), 525);
  EXPECT_EQ(bench.view.WavePic.Height(), 375);
  EXPECT_EQ(bench.Drawn().calls[2], "line 25,25 25,325 000000 width 2");
  EXPECT_TRUE(bench.view.GridCheck.Value());
  EXPECT_TRUE(bench.view.OptionColor.IsSelected(1));
  EXPECT_TRUE(bench.view.OptionCH.IsSelected(0)) << "the only channel that is on";
  EXPECT_FALSE(bench.sheet.Modified);
}

struct ZoomCase {
  const char* typed;
  double zoom;  // 0 where the text is refused
  const char* shown;
};

const ZoomCase kZooms[] = {
    {"", 0, "150%"},       {"%", 0, "150%"},         {"abc%", 0, "150%"},
    {"200", 0, "150%"},    {"200% ", 0, "150%"},     {"1,000%", 0, "150%"},
    {"inf%", 0, "150%"},   {"0%", 0.01, "1%"},       {"-50%", 0.01, "1%"},
    {"0.4%", 0.01, "1%"},  {"99.6%", 0.996, "100%"}, {"1.2e2%", 1.2, "120%"},
    {" 80 %", 0.8, "80%"}, {"1000%", 10, "1000%"},   {"82.5%", 0.825, "83%"},
};

TEST(frmWave, ATypedZoomIsTakenOrRefused) {
  for (const ZoomCase& row : kZooms) {
    WaveBench bench;
    bench.Open();
    bench.view.ZoomCombo.EndEdit(row.typed);
    const bool refused = row.zoom == 0;
    EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, refused ? 1.5 : row.zoom) << row.typed;
    EXPECT_EQ(bench.view.ZoomCombo.Text(), row.shown) << row.typed;
    ASSERT_EQ(bench.prompts.shown.size(), refused ? 1 : 0) << row.typed;
    if (refused) {
      EXPECT_EQ(bench.prompts.shown[0],
                (Message{.text = "Invalid Zoom Factor", .icon = MessageIcon::Exclamation}));
    }
  }
}

TEST(frmWave, BestFitTakesTheSmallerRatioAndKeepsItWhenCleared) {
  WaveBench bench(348.6, 800);
  bench.Open();
  bench.view.BestFitChk.SetValue(true);
  EXPECT_TRUE(bench.Record().BestFitOn);
  EXPECT_TRUE(bench.sheet.Modified);
  EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, 0.996);
  EXPECT_EQ(bench.view.ZoomCombo.Text(), "100%");
  EXPECT_FALSE(bench.view.ZoomCombo.Enabled());
  bench.GiveRoom(1000, 125);
  EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, 0.5);
  bench.GiveRoom(-20, -20);
  EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, 0.01);
  bench.view.stripWidth = 2000;
  bench.view.NoteInnerSize(2000 + 700 * 15, 100 + 500 * 15);
  EXPECT_EQ(bench.view.BackPic.Place(), (UnitRect{2000, 100, 700 * 15, 500 * 15}));
  bench.view.BestFitChk.SetValue(false);
  EXPECT_TRUE(bench.view.ZoomCombo.Enabled());
  EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, 2);
  EXPECT_EQ(bench.view.WavePic.Width(), 700);
}

struct ScrollCase {
  const char* name;
  double width;  // room, at zoom 2: the picture has 700 by 500
  double height;
  bool horizontal;
  bool vertical;
  double horizontalWidth;  // window units
  double verticalHeight;
  int left;  // of the picture, both bars at 50
  int top;
};

const ScrollCase kScrolls[] = {
    {"fits", 700, 500, false, false, 0, 0, 0, 0},
    {"wider", 600, 500, true, false, 600 * 15 - 40, 0, -50, 0},
    {"higher", 700, 400, false, true, 0, 400 * 15 - 45, 0, -50},
    {"both", 350, 100, true, true, 350 * 15 - 290, 100 * 15 - 295, -175, -200},
};

TEST(frmWave, ScrollBarsShowWhereThePictureIsLarger) {
  for (const ScrollCase& row : kScrolls) {
    WaveBench bench(row.width, row.height);
    bench.Open();
    bench.view.ZoomCombo.EndEdit("200%");
    const ScrollBar& across = bench.view.HScroll;
    const ScrollBar& down = bench.view.VScroll;
    EXPECT_EQ(across.Visible(), row.horizontal) << row.name;
    EXPECT_EQ(down.Visible(), row.vertical) << row.name;
    if (row.horizontal) {
      EXPECT_EQ(across.Place(),
                (UnitRect{1120, 100 + row.height * 15 - 280, row.horizontalWidth, 250}));
      EXPECT_DOUBLE_EQ(across.PageStep(), row.width / 7);
    }
    if (row.vertical) {
      EXPECT_EQ(down.Place(),
                (UnitRect{1100 + row.width * 15 - 280, 120, 250, row.verticalHeight}));
      EXPECT_DOUBLE_EQ(down.PageStep(), row.height / 5);
    }
    const std::size_t drawn = bench.Drawn().calls.size();
    bench.view.HScroll.SetValue(50);
    bench.view.VScroll.SetValue(50);
    EXPECT_EQ(bench.view.WavePic.Left(), row.left) << row.name;
    EXPECT_EQ(bench.view.WavePic.Top(), row.top) << row.name;
    EXPECT_EQ(bench.Drawn().calls.size(), drawn) << "scrolling draws nothing";
    // A picture that fits again stands at the corner.
    bench.view.ZoomCombo.EndEdit("10%");
    EXPECT_EQ(bench.view.WavePic.Left(), 0) << row.name;
    EXPECT_EQ(bench.view.WavePic.Top(), 0) << row.name;
  }
}

TEST(frmWave, APictureBeyond64MillionPixelsIsNotDrawn) {
  WaveBench bench;
  bench.Open();
  bench.view.ZoomCombo.EndEdit("2700%");
  EXPECT_EQ(bench.Drawn().Width(), 9450);
  for (const char* zoom : {"2800%", "1e9%", "1e308%"}) {
    bench.Drawn().calls.clear();
    bench.view.ZoomCombo.EndEdit(zoom);
    bench.view.HScroll.SetValue(3);
    bench.view.ChkCursorX.SetValue(!bench.view.ChkCursorX.Value());
    EXPECT_EQ(bench.Drawn().Width(), 0) << zoom;
    EXPECT_TRUE(bench.Drawn().calls.empty()) << zoom;
    EXPECT_GT(bench.view.ZoomFactor, 27) << zoom;
  }
  bench.view.ZoomCombo.EndEdit("100%");
  EXPECT_EQ(bench.Drawn().Width(), 350);
  EXPECT_FALSE(bench.Drawn().calls.empty());
}

TEST(frmWave, OptionsGoToTheRecordAndMarkTheSheet) {
  const std::vector<void (*)(frmWave&)> actions{
      [](frmWave& view) { view.GridCheck.SetValue(true); },
      [](frmWave& view) { view.OptionColor.Select(0); },
      [](frmWave& view) { view.BestFitChk.SetValue(true); },
  };
  WaveBench bench;
  bench.Open();
  for (const auto& act : actions) {
    bench.sheet.Modified = false;
    int told = 0;
    bench.view.WavePic.onChanged = [&told] { ++told; };
    act(bench.view);
    EXPECT_TRUE(bench.sheet.Modified);
    EXPECT_EQ(told, 1) << "one repaint";
  }
  EXPECT_TRUE(bench.Record().GridOn && bench.Record().ColorOn && bench.Record().BestFitOn);
  EXPECT_EQ(bench.Drawn().calls.front(), "clear 000000");
  EXPECT_EQ(bench.view.BackPic.Background(), (Color{0, 0, 0}));
}

TEST(frmWave, ADraggedCursorFollowsTheMouseByARepaint) {
  WaveBench bench;
  bench.Open();
  bench.view.ChkCursorX.SetValue(true);
  EXPECT_FALSE(bench.sheet.Modified) << "cursors belong to the window";
  const Picture& picture = bench.view.WavePic;
  EXPECT_EQ(bench.Drawn().CallsOf("line 100,30 100,").size(), 1);
  picture.MouseMove(101, 60);
  EXPECT_EQ(picture.Pointer(), MousePointer::WestEast);
  picture.MouseDown(101, 60);
  picture.MouseMove(160, 60);
  EXPECT_EQ(bench.Drawn().CallsOf("line 160,30 160,").size(), 1);
  EXPECT_EQ(bench.view.Cursors.X1Base, 90);
  picture.MouseMove(-500, 60);
  EXPECT_EQ(bench.Drawn().CallsOf("line 27,30 27,").size(), 1);
  picture.MouseUp(-500, 60);
  picture.MouseMove(200, 60);
  EXPECT_EQ(bench.view.Cursors.X1Base, -350);
  EXPECT_EQ(picture.Pointer(), MousePointer::Arrow);
}

TEST(frmWave, ANewWindowStartsFreshAndAShiftedOneShowsItsNewRecord) {
  WaveBench bench;
  bench.Open();
  bench.view.ZoomCombo.EndEdit("300%");
  bench.view.ChkCursorX.SetValue(true);
  bench.view.Cursors.X1Base = 10;
  bench.view.Unload();
  EXPECT_FALSE(bench.Record().ViewOpen);
  bench.Open();
  EXPECT_EQ(bench.view.ZoomFactor, 1.5);
  EXPECT_EQ(bench.view.Cursors.X1Base, 50);
  EXPECT_FALSE(bench.view.ChkCursorX.Value());
  EXPECT_FALSE(bench.view.Cursors.CursorXOn);

  bench.Record().ColorOn = true;
  bench.Record().ViewOpen = false;
  bench.view.Form_Load();
  bench.clock.Run(Ms(1));
  EXPECT_TRUE(bench.Record().ViewOpen);
  EXPECT_TRUE(bench.view.OptionColor.IsSelected(0));
  EXPECT_EQ(bench.Drawn().calls.front(), "clear 000000");
}

TEST(frmWave, AReadingFillsTheSlotByTheChannelOption) {
  const char* kChannels[] = {"CH1", "CH2", "CH1CH2"};
  for (int option = 0; option < 3; ++option) {
    WaveBench bench;
    bench.ctrl.CH2Display = "ON";
    bench.Open();
    bench.view.OptionCH.Select(option);
    bench.AnswerTransfers(1);
    bench.reading = [&bench] {
      EXPECT_FALSE(bench.view.cmdRefresh.Enabled());
      bench.Record().ColorOn = true;
    };
    bench.view.KeyDown(frmWave::kKeyF5, frmWave::ShiftKeys::Held);
    EXPECT_TRUE(bench.read.empty());
    bench.view.KeyDown(frmWave::kKeyF5, frmWave::ShiftKeys::None);
    EXPECT_EQ(bench.read,
              std::vector<std::string>{std::string(kChannels[option]) + ": Waveform Data Loading"});
    EXPECT_TRUE(bench.Record().HasData);
    EXPECT_TRUE(bench.sheet.Modified);
    EXPECT_TRUE(bench.view.cmdRefresh.Enabled());
    EXPECT_EQ(bench.Drawn().calls.front(), "clear 000000") << "drawn from the new record";
  }
}

TEST(frmWave, WithNoOptionNothingIsReadAndNothingIsLeftBehind) {
  WaveBench bench;
  bench.Open();
  bench.ctrl.CH1Display = "OFF";
  bench.clock.Run(Ms(500));
  bench.view.cmdRefresh.Click();
  bench.clock.Run(Ms(1000));
  EXPECT_TRUE(bench.script.sent.empty());
  EXPECT_FALSE(bench.transfer.TransferActive || bench.progress.Loaded());
  EXPECT_FALSE(bench.Record().HasData || bench.sheet.Modified);
}

TEST(frmWave, TheProgramsCloseDuringAReadingLeavesTheRecordAlone) {
  WaveBench bench;
  bench.Open();
  bench.clock.After(Ms(50), [&bench] { bench.waiting.BeginClosing(); });
  bench.view.cmdRefresh.Click();
  EXPECT_FALSE(bench.Record().HasData || bench.sheet.Modified);
}

TEST(frmWave, AViewClosedInItsLoopEndsTheLoopAndStaysUntouched) {
  WaveBench bench;
  bench.refresh = {.RefreshType = "Auto", .RefreshInterval = 300};
  bench.Open();
  bench.AnswerTransfers(3);
  bench.reading = [&bench] {
    if (bench.read.size() == 2) bench.view.Unload();
  };
  bench.view.cmdRefresh.Click();
  const RecordingCanvas::Calls left = bench.Drawn().calls;
  bench.clock.Run(Ms(5000));
  EXPECT_EQ(bench.read.size(), 2);
  EXPECT_TRUE(bench.Record().HasData) << "the transfer has ended normally";
  EXPECT_FALSE(bench.flags.WaveAutoRefresh || bench.Record().ViewOpen);
  EXPECT_EQ(bench.view.cmdRefresh.Face(), kRefreshFace);
  EXPECT_EQ(bench.Drawn().calls, left);
}

}  // namespace
}  // namespace oriolemark
