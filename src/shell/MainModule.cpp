#include "shell/MainModule.h"

namespace oriolemark {

MainModule::MainModule(Platform platform)
    : platform_(std::move(platform)),
      rs232_(platform_.serial, preferences.link, link_, platform_.waiting, prompts_),
      gpib_(platform_.gpib, preferences.link, link_, platform_.waiting, prompts_),
      usb_(platform_.usb, preferences.link, link_, platform_.waiting, prompts_),
      serialEvents_(platform_.serial, rs232_),
      scope_(preferences.link, link_, rs232_, gpib_, usb_, platform_.waiting, prompts_),
      splash(platform_.version),
      progress(platform_.events, platform_.waiting, platform_.store, link_, transfer_, scope_,
               pointer),
      about(prompts_, platform_.version),
      newDoc(docChoice_),
      openDoc(docChoice_),
      options(preferences, platform_.serial, platform_.gpib, platform_.usb, docChoice_),
      browser(sheet, prompts_),
      controller({settings, controlDocument, preferences.link, link_, transfer_, scope_, progress,
                  platform_.waiting, prompts_, pointer, platform_.syncFile}),
      main({platform_.events,
            platform_.waiting,
            prompts_,
            platform_.store,
            preferences,
            link_,
            transfer_,
            scope_,
            platform_.serial,
            serialEvents_,
            sheet,
            browser,
            controller,
            controlDocument,
            about,
            newDoc,
            openDoc,
            options,
            docChoice_,
            platform_.help,
            platform_.helpFile}),
      waveReader_({preferences.link, link_, platform_.waiting, scope_, rs232_, gpib_, usb_, sheet,
                   scratch_, progress.Progressing(), platform_.today}),
      settingsTransfer_(settings, scope_, progress.ProgressBar1, platform_.waiting) {
  browser.files.makeWaveView = [this] { return MakeWaveView(); };
  progress.procedures.ReadWaveform = [this](const std::string& channel) {
    waveReader_.ReadWaveform(channel);
  };
  progress.procedures.ReadChannelData = [this](const std::string& channel) {
    waveReader_.ReadChannelData(channel);
  };
  progress.procedures.WriteSettings = [this] { settingsTransfer_.WriteSettings(); };
  progress.procedures.ReadSettings = [this] { settingsTransfer_.ReadSettings(); };
  settingsTransfer_.buildCtrlTree = [this] { controller.BuildCtrlTree(); };
}

std::unique_ptr<frmWave> MainModule::MakeWaveView() {
  const RefreshContext refresh{platform_.events, platform_.waiting, prompts_,           link_,
                               transfer_,        refreshFlags_,     preferences.refresh};
  auto view = std::make_unique<frmWave>(
      WaveViewContext{sheet, settings, scratch_, progress, refresh}, platform_.makeCanvas());
  if (onWaveView) onWaveView(*view);
  return view;
}

void MainModule::Main() {
  splash.Show();
  splash.Repaint();
  main.Load();
  splash.Unload();
  main.Show();
  platform_.waiting.WaitUntil([] { return false; });
  // Every nested wait has unwound: the last steps run now.
  main.Unload();
}

}  // namespace oriolemark
