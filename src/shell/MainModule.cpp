#include "shell/MainModule.h"

namespace oriolemark {
namespace {

constexpr int kTurnsToShow = 10;
constexpr Milliseconds kLongestTurn{10};

}  // namespace

MainModule::MainModule(Platform platform)
    : platform_(std::move(platform)),
      link_(platform_.serial, platform_.gpib, platform_.usb, preferences.link, platform_.waiting,
            prompts_),
      splash(platform_.version),
      progress(platform_.events, platform_.waiting, platform_.store, link_.state, transfer_,
               link_.scope, pointer),
      about(prompts_, platform_.version),
      options({preferences, platform_.store, watched_, platform_.serial, platform_.gpib,
               platform_.usb, platform_.colors}),
      passFailed(sheet, platform_.events, platform_.waiting, watched_),
      waveSetting(sheet, [this](int slot) { return browser.files.View(ItemKind::Wave, slot); }),
      browser({sheet, scratch_, prompts_, recovered_, platform_.syncFile}),
      controller({settings, controlDocument, preferences.link, link_.state, transfer_, link_.scope,
                  progress, platform_.waiting, prompts_, pointer, recovered_, platform_.syncFile}),
      keys(platform_.events, link_.scope),
      panel({platform_.events, platform_.waiting, link_.scope, link_.usb, link_.state, transfer_,
             watched_, platform_.colors},
            platform_.makeCanvas(), Picturing()),
      main({platform_.events,
            platform_.waiting,
            prompts_,
            platform_.store,
            preferences,
            link_.state,
            transfer_,
            link_.scope,
            platform_.serial,
            link_.serialEvents,
            sheet,
            browser,
            controller,
            controlDocument,
            about,
            newDoc,
            openDoc,
            options,
            waveSetting,
            platform_.help,
            platform_.helpFile}),
      waveReader_({platform_.waiting, link_.scope, sheet, scratch_, progress.Progressing(),
                   platform_.today}),
      measureReader_(
          {platform_.waiting, link_.scope, scratch_, progress.Progressing(), platform_.today}),
      settingsTransfer_(settings, link_.scope, progress.ProgressBar1, platform_.waiting) {
  browser.files.makeView[ItemKind::Wave] = [this] { return MakeWaveView(); };
  browser.files.makeView[ItemKind::Measure] = [this] { return MakeMeasureView(); };
  browser.files.makeView[ItemKind::Data] = [this] { return MakeDataView(); };
  progress.procedures.ReadMeasures = [this](const std::string& channel) {
    measureReader_.ReadMeasures(channel);
  };
  progress.procedures.ReadWaveform = [this](const std::string& channel) {
    waveReader_.ReadWaveform(channel);
  };
  progress.procedures.ReadChannelData = [this](const std::string& channel) {
    waveReader_.ReadChannelData(channel);
  };
  progress.procedures.WriteSettings = [this](const std::string&) {
    settingsTransfer_.WriteSettings();
  };
  progress.procedures.ReadSettings = [this](const std::string&) {
    settingsTransfer_.ReadSettings();
  };
  controller.showKeyWindow = [this] { keys.ShowModal(platform_.waiting); };
  controller.showPanel = [this] { panel.BringToFront(); };
  settingsTransfer_.buildCtrlTree = [this] { controller.BuildCtrlTree(); };
}

ReadingContext MainModule::Reading() {
  const RefreshContext refresh{platform_.events, platform_.waiting, prompts_,           link_.state,
                               transfer_,        refreshFlags_,     preferences.refresh};
  return {sheet, scratch_, settings, progress, refresh};
}

std::unique_ptr<frmWave> MainModule::MakeWaveView() {
  auto view = std::make_unique<frmWave>(Reading(), platform_.makeCanvas(), Picturing());
  main.FirstSteps.SetVisible(false);
  if (onWaveView) onWaveView(*view);
  return view;
}

std::unique_ptr<frmMeasure> MainModule::MakeMeasureView() {
  auto view = std::make_unique<frmMeasure>(Reading(), Exporting(), passFailed);
  main.FirstSteps.SetVisible(false);
  if (onMeasureView) onMeasureView(*view);
  return view;
}

std::unique_ptr<frmData> MainModule::MakeDataView() {
  auto view = std::make_unique<frmData>(Reading(), Exporting());
  main.FirstSteps.SetVisible(false);
  if (onDataView) onDataView(*view);
  return view;
}

void MainModule::Main() {
  splash.Show();
  splash.Repaint();
  // A desktop needs a few events to put the window up, and what follows may block for seconds.
  for (int turn = 0; turn < kTurnsToShow && !splash.Drawn; ++turn) {
    platform_.waiting.WaitEvents(kLongestTurn);
  }
  // Takes what was drawn to the screen.
  platform_.waiting.DoEvents();
  main.Load();
  splash.Unload();
  main.Show();
  platform_.waiting.WaitUntil([] { return false; });
  // All nested waits have returned by now.
  panel.Unload();
  main.Unload();
}

}  // namespace oriolemark
