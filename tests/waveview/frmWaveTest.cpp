#include "waveview/frmWave.h"

#include <gtest/gtest.h>

#include "datasheet/records/DataSheetFile.h"
#include "support/ProgramBench.h"
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
  EXPECT_EQ(Bits(bench.view.GridCheck.Value(), bench.view.OptionColor.IsSelected(1),
                 bench.view.OptionCH.IsSelected(0), bench.sheet.Modified),
            "1110");
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
  EXPECT_EQ(std::pair(bench.view.ZoomFactor, bench.view.WavePic.Width()), std::pair(0.5, 175));
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

// The spectra of the program's waveforms.
struct Spectra : ProgramBench, testing::Test {
  Spectra() { module.main.Load(); }
  void Open(std::function<void()> hand) {
    At(2, std::move(hand));
    module.main.tbToolBar_ButtonClick("FFT");
  }

  DataSheet& sheet = module.sheet;
  frmWaveSetting& dialog = module.waveSetting;
};

TEST_F(Spectra, GoToTheLastOfANameThatWasReadAndItsViewIsMade) {
  // The items in use, name and channels of each slot, 0 where it was not read, and what a choice of
  // the first one brings: OK, first and last source, slot.
  for (const auto& row : Rows(R"(
0 | - | 0 CH1CH2 0 || 0 | A1 | 0 CH1CH2 0 || 1 | A0 | 0 CH1CH2 0 || 1 | A1 | 1 CH1CH1 0
1 | A2 | 1 CH2CH2 0 || 1 | A3 | 1 CH1CH2 0 || 1 | A4 | 0 CH1CH2 0 || 3 | A1 B3 A2 | 1 CH2CH2 2
2 | A1 A0 | 0 CH1CH1 0 || 2 | A0 A1 | 1 CH1CH1 1 || 2 | A1 A4 | 0 CH1CH1 1
1 | A1 A0 | 0 CH1CH1 0 || 1 | A1 A2 | 1 CH2CH2 1 || 1 | A1 B1 A2 | 1 CH1CH1 0
18 | A1 B B B B B B B B B B B B B B B B A2 | 1 CH2CH2 17
)")) {
    SCOPED_TRACE(row[0] + " " + row[1]);
    UnloadViews(sheet);
    for (WaveRecord& record : sheet.Waves) record.Name.clear();
    sheet.WaveCount = std::stoi(row[0]);
    std::size_t slot = 0;
    for (const std::string& item : Split(row[1], ' ')) {
      WaveRecord& record = sheet.Waves[slot++];
      record.Name = item[0];
      record.Channels = item[1] - '0';
      record.HasData = record.Channels > 0;
    }
    Open([&] {
      const std::vector<std::string>& sources = dialog.SourceCombo.Items();
      EXPECT_EQ(Bits(dialog.cmdOK.Enabled()) + " " + sources.front() + sources.back() + " " +
                    std::to_string(dialog.TargetSlot),
                row[2]);
      dialog.cmdOK.Click();
      dialog.cmdCancel.Click();
    });
    const ItemView* view = sheet.WaveViews[static_cast<std::size_t>(dialog.TargetSlot)].get();
    if (row[2].starts_with('0')) continue;
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->Tag() + view->Caption(), std::to_string(dialog.TargetSlot) + "A");
  }
}

TEST_F(Spectra, AreMadeByOkAloneStayForTheRecordAndAreNoChangeOfTheSheet) {
  module.browser.files.AddWaveItem();
  clock.Run(Milliseconds(10));
  module.main.mnuToolsConnect.Click();
  wave->cmdRefresh.Click();
  sheet.Modified = false;
  const std::string saved = DataSheetText(sheet);
  const WaveRecord& record = sheet.Waves[0];
  const auto rows = [&data = record.FFTData] { return std::tuple(data[1], data[2], data[1023]); };
  // Whether the picture shows the ground below, the frame and the spectrum.
  const auto shown = [&canvas = wave->WavePic.Surface()] {
    const auto has = [&](unsigned pixel) { return std::ranges::count(canvas.Pixels(), pixel) > 0; };
    return Bits(has(0xFF010203U), has(0xFFC0C0C0U), has(0xFF00FF00U));
  };
  for (Button* button : {&dialog.cmdCancel, &dialog.cmdOK, &dialog.cmdOK}) {
    const auto before = rows();
    wave->WavePic.Surface().Clear({1, 2, 3});
    Open([&] {
      dialog.WindowCombo.SetListIndex(2);
      dialog.OptScreen.Select(1);
      button->Click();
    });
    const bool ok = button == &dialog.cmdOK;
    EXPECT_EQ(shown(), ok ? "101" : "100") << "the grid comes later";
    EXPECT_EQ(Bits(record.FFTOn, rows() != before), ok ? "11" : "00");
    EXPECT_EQ(record.FFTWindow, ok ? "Hamming" : "");
    EXPECT_EQ(Bits(record.FFTFull, sheet.Modified, DataSheetText(sheet) == saved), "001");
  }
  const auto [least, most] = std::ranges::minmax(dialog.SpectrumBuffer);
  EXPECT_EQ(std::tuple(least, most, record.FFTCount), std::tuple(0, 255, 1024));
  const auto before = rows();
  wave->cmdRefresh.Click();
  EXPECT_EQ(Bits(sheet.Modified, record.FFTOn, rows() == before) + shown(), "111011");
}

}  // namespace
}  // namespace oriolemark
