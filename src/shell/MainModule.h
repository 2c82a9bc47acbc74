#pragma once

#include <functional>
#include <memory>
#include <string>

#include "datasheet/frmData.h"
#include "datasheet/records/TransferScratch.h"
#include "link/ScopeLink.h"
#include "measure/frmMeasure.h"
#include "panel/frmV_Key.h"
#include "panel/frmV_Panel.h"
#include "platform/Calendar.h"
#include "platform/Canvas.h"
#include "platform/Files.h"
#include "platform/GpibDriver.h"
#include "platform/UsbDriver.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"
#include "transfers/MeasureReader.h"
#include "transfers/SettingsTransfer.h"
#include "transfers/TransferPrompts.h"
#include "transfers/WaveReader.h"
#include "transfers/frmPrgress.h"
#include "waveview/frmWave.h"
#include "waveview/frmWaveSetting.h"

namespace oriolemark {

// The parts of the system that the program uses.
struct Platform {
  EventSource& events;
  Waiting& waiting;
  Prompts& prompts;
  SettingsStore& store;
  SerialPort& serial;
  GpibDriver& gpib;
  UsbDriver& usb;
  ScreenColors& colors;
  ShortDate today;
  std::function<std::unique_ptr<Canvas>()> makeCanvas;
  std::string version;  // major.minor.revision
  HelpViewer& help;
  std::string helpFile;  // UTF-8 path
  SyncFile syncFile;
  std::string handOverFile;  // UTF-8 path of the file between a picture and its page
  std::function<std::unique_ptr<PageReport>()> makeReport;
  std::string recoveredFolder;             // UTF-8 path of the folder for safety copies
  std::function<std::string()> timeStamp;  // the present time as a part of a file's name
};

// The whole program without its toolkit. It owns every record and every window, and connects them.
class MainModule {
 public:
  explicit MainModule(Platform platform);

  // Runs the program from the splash to the last window. Returns when the program has ended in
  // order.
  void Main();

  // The toolkit's side creates the widgets of each new view here.
  std::function<void(frmWave&)> onWaveView;
  std::function<void(frmMeasure&)> onMeasureView;
  std::function<void(frmData&)> onDataView;

  // The link, for a caller that works the program without a user.
  TX5000Cmd& Scope() { return link_.scope; }
  // The present state, for observers outside the program.
  const LinkState& Link() const { return link_.state; }
  const TransferState& Transfer() const { return transfer_; }
  const RefreshFlags& Refreshing() const { return refreshFlags_; }

  // Shared with the windows. Members are built in the order of their declaration, so each comes
  // after those that it uses. That is why public and private ones alternate.
  Preferences preferences;
  CtrlSettings settings;
  CtrlDocument controlDocument;
  ScreenPointer pointer;
  DataSheet sheet;

 private:
  ReadingContext Reading();
  ExportContext Exporting() { return {watched_, platform_.syncFile}; }
  PictureContext Picturing() { return {Exporting(), platform_.handOverFile, platform_.makeReport}; }
  std::unique_ptr<frmWave> MakeWaveView();
  std::unique_ptr<frmMeasure> MakeMeasureView();
  std::unique_ptr<frmData> MakeDataView();

  Platform platform_;
  TransferState transfer_;
  WatchedPrompts watched_{platform_.prompts};
  TransferPrompts prompts_{watched_, transfer_};
  RecoveredFiles recovered_{platform_.recoveredFolder, platform_.timeStamp, platform_.syncFile};
  ScopeLink link_;
  RefreshFlags refreshFlags_;
  TransferScratch scratch_;

 public:
  frmSplash splash;
  frmPrgress progress;
  frmAbout about;
  frmNewDoc newDoc;
  frmOpenDoc openDoc;
  frmOptions options;
  frmPassFailed passFailed;
  frmWaveSetting waveSetting;
  frmDataSheetTree browser;
  frmCtrlList controller;
  frmV_Key keys;
  frmV_Panel panel;
  frmMain main;

 private:
  WaveReader waveReader_;
  MeasureReader measureReader_;
  SettingsTransfer settingsTransfer_;
};

}  // namespace oriolemark
