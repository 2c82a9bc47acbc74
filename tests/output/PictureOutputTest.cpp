#include "output/PictureOutput.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "output/Bitmap.h"
#include "platform/Keys.h"
#include "support/FileFolder.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

// A wave view with data, worked by the user 3 s after the start.
struct PictureBench : ProgramBench {
  ~PictureBench() { std::filesystem::remove(handOver); }
  void Run(std::function<void(frmWave&)> user) {
    At(200, [this] { module.browser.files.AddWaveItem(); });
    At(3000, [this, user = std::move(user)] {
      wave->BestFitChk.SetValue(false);
      wave->NoteInnerSize(PixelsToUnits(2000), PixelsToUnits(1500));
      WaveRecord& record = module.sheet.Waves[0];
      record.HasData = record.IsYT = true;
      record.Channels = 1;
      record.Count = 600;
      for (int i = 1; i <= record.Count; ++i) record.CH1Data.Store(i, i % 200);
      user(*wave);
    });
    RunUntil(10000);
  }
};

TEST(PictureOutput, AnExportHoldsThePictureAtItsZoomOrLeavesTheFileAsItWas) {
  PictureBench bench;
  const FileFolder folder;
  const std::string path = folder.folder + "/export.bmp";
  bench.Run([&](frmWave& view) {
    view.ChkCursorX.SetValue(true);
    view.ZoomCombo.EndEdit("75%");
    bench.prompts.paths = {"", path, path, folder.folder + "/no/folder.bmp"};
    view.cmdExport.Click();
    EXPECT_FALSE(std::filesystem::exists(path)) << "cancelled";
    const std::string shown = BitmapBytes(view.WavePic.Surface().Pixels(), 262);
    view.NoteInnerSize(PixelsToUnits(173), PixelsToUnits(90));  // 75 % is larger than that
    view.HScroll.SetValue(40);
    EXPECT_EQ(view.WavePic.Surface().Width(), 102);
    view.cmdExport.Click();
    view.ZoomCombo.EndEdit("3000%");
    view.cmdExport.Click();
    EXPECT_TRUE(FileFolder::Bytes(path) == shown) << "all of it, though less shows";
    view.ZoomCombo.EndEdit("100%");
    view.cmdExport.Click();
    EXPECT_EQ(bench.prompts.questions[3],
              (FileQuestion{FileAction::Save, "Export File", "BitMap Files (*.bmp)|*.bmp"}));
    EXPECT_EQ(bench.Told(), (std::vector<std::string>{
                                "The picture is too large to be saved. Choose a smaller zoom.",
                                "No such file or directory"}));
  });
}

TEST(PictureOutput, AStepOfACursorShowsWhatACompleteDrawingDoes) {
  PictureBench bench;
  bench.Run([&](frmWave& view) {
    WaveRecord& record = bench.module.sheet.Waves[0];
    view.ChkCursorX.SetValue(true);
    view.ChkCursorY.SetValue(true);
    const std::function<void()> changes[] = {
        [] {},
        [&] { record.CH1Data.Store(300, 7); },
        [&] { record.Count = 450; },
        [&] { view.ChkCursorY.SetValue(false); },
        [&] { view.DrawOSC(); },
        [&] { view.GridCheck.SetValue(!view.GridCheck.Value()); },
        [&] { view.ZoomCombo.EndEdit("200%"); },
        [&] { view.ZoomCombo.EndEdit("200.13%"); },  // as many pixels
        [&] { view.ZoomCombo.EndEdit("200%"); },
        [&] { view.cmdPreview.Click(); },  // at 200 % too, and clears the picture
        [&] { view.DrawOSC(); }};
    for (const auto& change : changes) {
      for (const int key : {kRightKey, kDownKey}) view.WavePic_KeyDown(key, 0);
      change();
      if (&change != &changes[10]) view.WavePic_KeyDown(kLeftKey, 0);
      const std::unique_ptr<Canvas> whole = view.WholePicture();
      EXPECT_TRUE(std::ranges::equal(view.WavePic.Surface().Pixels(), whole->Pixels()))
          << &change - changes;
    }
  });
}

TEST(PictureOutput, ThePageHasItsOwnZoomWhateverTheViewShows) {
  PictureBench bench;
  bench.Run([&](frmWave& view) {
    view.ZoomCombo.EndEdit("200%");
    const std::string atTwo = BitmapBytes(view.WavePic.Surface().Pixels(), 700);
    bench.reports.failure = "no paper";
    for (const char* zoom : {"50%", "9000%"}) {
      for (const bool prints : {false, true}) {
        SCOPED_TRACE(zoom);
        view.ZoomCombo.EndEdit(zoom);
        bench.reports.whilePreview = [&] {
          EXPECT_EQ(view.ZoomFactor, 2.0);
          view.ShowReading();
        };
        (prints ? view.cmdPrint : view.cmdPreview).Click();
        EXPECT_EQ(std::exchange(bench.reports.steps, {}),
                  (std::vector<std::string>{
                      "report", "page 8.50 11.00 ",
                      prints ? "picture 1.10 2.00 7.28 5.20 " : "picture 0.60 2.00 7.28 5.20 ",
                      prints ? "print" : "preview"}));
        EXPECT_TRUE(bench.reports.picture == atTwo);
        EXPECT_EQ(view.ZoomCombo.Text(), zoom);
        EXPECT_EQ(view.WavePic.Width(), 350 * view.ZoomFactor);
        EXPECT_EQ(bench.Told(), std::vector<std::string>{"no paper"});
      }
    }
    view.BestFitChk.SetValue(true);
    const double fitted = view.ZoomFactor;
    view.cmdPreview.Click();
    EXPECT_EQ(view.ZoomFactor, fitted);
  });
}

TEST(PictureOutput, AHandOverFileThatCannotBeWrittenIsReportedAndThePageComes) {
  PictureBench bench;
  std::filesystem::remove(bench.handOver);
  std::filesystem::create_directory(bench.handOver);
  bench.Run([&](frmWave& view) {
    view.cmdPreview.Click();
    EXPECT_EQ(bench.Told(), std::vector<std::string>{"Is a directory"});
    EXPECT_EQ(bench.reports.steps.back(), "preview");
    // The view goes while its page is on the screen, and while its message is.
    bench.reports.whilePreview = [&] { view.Unload(); };
    view.cmdPreview.Click();
    EXPECT_FALSE(view.Loaded());
    EXPECT_EQ(view.WavePic.Surface().Width(), 0) << "not drawn again";
  });
}

}  // namespace
}  // namespace oriolemark
