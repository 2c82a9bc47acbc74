#include "waveview/frmWave.h"

#include <gtest/gtest.h>

#include "support/RecordingCanvas.h"
#include "support/TransferBench.h"

namespace oriolemark {
namespace {

using Ms = Milliseconds;

constexpr int kSlot = 2;

// An open wave view on slot 2, with room for a picture of `width` by `height` pixels beside its
// strip.
struct WaveBench : TransferBench {
  explicit WaveBench(double width = 1000, double height = 800) {
    Connect(kLinkRS232);
    Record().GridOn = true;
    view.SetTag("2");
    GiveRoom(width, height);
    view.Show();
    EXPECT_EQ(Bits(Drawn().calls.empty(), Record().ViewOpen), "10") << "before the first tick";
    clock.Run(Ms(1));
  }

  WaveRecord& Record() { return sheet.Waves[kSlot]; }
  RecordingCanvas& Drawn() { return dynamic_cast<RecordingCanvas&>(view.WavePic.Surface()); }
  void GiveRoom(double width, double height) {
    view.NoteInnerSize(PixelsToUnits(width) + 1100, PixelsToUnits(height) + 100);
  }

  RefreshFlags flags;
  RefreshSettings refresh;
  CtrlSettings ctrl;
  frmWave view{
      {sheet, scratch, ctrl, progress, {clock, waiting, prompts, state, transfer, flags, refresh}},
      std::make_unique<RecordingCanvas>(),
      {{prompts, {}}, {}, [] { return nullptr; }}};
};

TEST(frmWave, OpensWithTheOptionsOfTheRecordAndChangesThem) {
  WaveBench bench;
  EXPECT_EQ(Bits(bench.view.GridCheck.Value(), bench.view.OptionColor.IsSelected(1)), "11");
  EXPECT_TRUE(bench.view.OptionCH.IsSelected(0)) << "the only channel that is on";
  EXPECT_FALSE(bench.sheet.Modified);
  bench.view.GridCheck.SetValue(false);
  EXPECT_EQ(Bits(bench.sheet.Modified, bench.Record().GridOn), "10");
  bench.sheet.Modified = false;
  bench.view.OptionColor.Select(0);
  EXPECT_EQ(Bits(bench.sheet.Modified, bench.Record().ColorOn), "11");
  EXPECT_EQ(bench.Drawn().calls.front(), "clear 000000");
}

TEST(frmWave, ATypedZoomIsTakenOrRefused) {
  // What is typed, the zoom, 0 where the text is refused, and what is shown then.
  for (const auto& row : Rows(R"(
- | 0 | 150% || % | 0 | 150% || 200 | 0 | 150% || 200%  | 0 | 150% || inf% | 0 | 150%
0.4% | 0.01 | 1% || 99.6% | 0.996 | 100% ||  80 % | 0.8 | 80% || 1000% | 10 | 1000%
)")) {
    WaveBench bench;
    bench.view.ZoomCombo.EndEdit(row[0]);
    const bool refused = row[1] == "0";
    EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, refused ? 1.5 : std::stod(row[1])) << row[0];
    EXPECT_EQ(bench.view.ZoomCombo.Text(), row[2]) << row[0];
    EXPECT_EQ(bench.prompts.shown, std::vector<Message>(refused, Warning("Invalid Zoom Factor")));
  }
}

TEST(frmWave, BestFitTakesTheSmallerRatioKeepsItWhenClearedAndShowsNoBar) {
  WaveBench bench(348.6, 800);
  bench.view.BestFitChk.SetValue(true);
  EXPECT_EQ(Bits(bench.Record().BestFitOn, bench.sheet.Modified), "11");
  EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, 0.996);
  EXPECT_EQ(bench.view.ZoomCombo.Text() + Bits(bench.view.ZoomCombo.Enabled()), "100%0");
  bench.GiveRoom(-20, -20);
  EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, 0.01);
  bench.GiveRoom(1000, 125);
  EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, 0.5);
  bench.view.NoteCanvasScale(0.5);
  EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, 0.25) << "on coarser pixels";
  bench.GiveRoom(1000, 250);
  bench.view.BestFitChk.SetValue(false);
  EXPECT_TRUE(bench.view.ZoomCombo.Enabled());
  EXPECT_DOUBLE_EQ(bench.view.ZoomFactor, 0.5);
  EXPECT_EQ(bench.view.WavePic.Width(), 175);
  bench.view.NoteCanvasScale(1);
  for (const int size : {358, 359, 366, 398}) {
    bench.GiveRoom(size, size + 1.0 / 3);
    bench.view.BestFitChk.SetValue(true);
    bench.view.BestFitChk.SetValue(false);
    bench.view.ChkCursorX.SetValue(!bench.view.ChkCursorX.Value());
    EXPECT_EQ(Bits(bench.view.HScroll.Visible(), bench.view.VScroll.Visible()), "00") << size;
  }
}

TEST(frmWave, ScrollBarsShowWhereThePictureIsLarger) {
  // The room, which at zoom 2 is for a picture of 700 by 500, and the bars that show.
  for (const auto& row :
       Rows("700 | 500 | 00 || 600 | 500 | 10 || 700 | 400 | 01 || 350 | 100 | 11")) {
    const double width = std::stod(row[0]), height = std::stod(row[1]);
    SCOPED_TRACE(width);
    WaveBench bench(width, height);
    frmWave& view = bench.view;
    view.ZoomCombo.EndEdit("200%");
    EXPECT_EQ(Bits(view.HScroll.Visible(), view.VScroll.Visible()), row[2]);
    EXPECT_EQ(view.HScroll.Place(),
              (UnitRect{1120, height * 15 - 180, width * 15 - (row[2] == "11" ? 290 : 40), 250}));
    EXPECT_DOUBLE_EQ(view.HScroll.PageStep(), width / 7);
    view.HScroll.SetValue(50);
    view.VScroll.SetValue(50);
    const double left = (700 - width) / 2, top = (500 - height) / 2;
    EXPECT_EQ(std::pair(view.WavePic.Left() + left, view.WavePic.Top() + top), std::pair(0.0, 0.0));
    const PixelRect part = bench.Drawn().Part();
    EXPECT_EQ(
        std::tuple(part.left, part.top, part.width, part.height),
        std::tuple(left, top, std::min(width + 2, 700 - left), std::min(height + 2, 500 - top)));
    view.ZoomCombo.EndEdit("10%");
    EXPECT_EQ(std::pair(view.WavePic.Left(), view.WavePic.Top()), std::pair(0, 0)) << "it fits";
  }
}

TEST(frmWave, APictureBeyond64MillionPixelsIsNotDrawn) {
  WaveBench bench;
  bench.view.ZoomCombo.EndEdit("2700%");
  EXPECT_EQ(bench.Drawn().Width(), 1002);
  for (const char* zoom : {"2800%", "1e9%", "1e308%"}) {
    bench.Drawn().calls.clear();
    bench.view.ZoomCombo.EndEdit(zoom);
    bench.view.HScroll.SetValue(3);
    bench.view.ChkCursorX.SetValue(!bench.view.ChkCursorX.Value());
    EXPECT_EQ(Bits(bench.Drawn().Width(), !bench.Drawn().calls.empty()), "00") << zoom;
    EXPECT_GT(bench.view.ZoomFactor, 27) << zoom;
  }
  bench.view.ZoomCombo.EndEdit("100%");
  EXPECT_FALSE(bench.Drawn().calls.empty());
}

TEST(frmWave, AReopenedViewHasNewCursorsAndWithNoChannelToChooseReadsNothing) {
  WaveBench bench;
  bench.view.ChkCursorX.SetValue(true);
  bench.view.WavePic.mouseDown(100, 100);
  bench.view.WavePic.mouseMove(137.5, 100);
  EXPECT_EQ(bench.view.Cursors.X1Base, 75);
  bench.view.Unload();
  bench.ctrl.CH1Display = "OFF";
  bench.view.Show();
  bench.clock.Run(Ms(1));
  EXPECT_EQ(Bits(bench.view.ChkCursorX.Value(), bench.view.Cursors.DragX1), "00");
  EXPECT_EQ(bench.view.Cursors.X1Base, 50);
  EXPECT_EQ(bench.view.OptionCH.Selected(), OptionGroup::kNone);
  bench.view.cmdRefresh.Click();
  bench.clock.Run(Ms(1000));
  EXPECT_TRUE(bench.script.sent.empty());
  EXPECT_EQ(Bits(bench.transfer.TransferActive, bench.progress.Loaded(), bench.Record().HasData,
                 bench.sheet.Modified),
            "0000");
}

}  // namespace
}  // namespace oriolemark
