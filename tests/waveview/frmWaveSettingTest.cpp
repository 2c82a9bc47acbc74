#include "waveview/frmWaveSetting.h"

#include <gtest/gtest.h>

#include "datasheet/records/DataSheetFile.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

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
