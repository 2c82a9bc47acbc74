#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "controller/frmCtrlList.h"
#include "datasheet/DocTypeDialog.h"
#include "datasheet/frmDataSheetTree.h"
#include "link/SerialEvents.h"
#include "link/TX5000Cmd.h"
#include "platform/Button.h"
#include "platform/HelpViewer.h"
#include "platform/Label.h"
#include "platform/MenuEntry.h"
#include "platform/TabDock.h"
#include "platform/Timer.h"
#include "shell/Arrangement.h"
#include "shell/RecentFiles.h"
#include "shell/SoftwareSetting.h"
#include "shell/frmAbout.h"
#include "shell/frmOptions.h"
#include "waveview/frmWaveSetting.h"

namespace oriolemark {

// A small picture with a tool tip. It is shown or hidden.
class Lamp : public Control {
 public:
  explicit Lamp(std::string toolTip) : ToolTip(std::move(toolTip)) {}
  const std::string ToolTip;
};

// What the main window needs.
struct MainContext {
  EventSource& events;
  Waiting& waiting;
  Prompts& prompts;
  SettingsStore& store;
  Preferences& preferences;
  LinkState& link;
  TransferState& transfer;
  TX5000Cmd& scope;
  SerialPort& serial;
  SerialEvents& serialEvents;
  DataSheet& sheet;
  frmDataSheetTree& browser;
  frmCtrlList& controller;
  CtrlDocument& controlDocument;
  frmAbout& about;
  frmNewDoc& newDoc;
  frmOpenDoc& openDoc;
  frmOptions& options;
  frmWaveSetting& waveSetting;
  HelpViewer& help;
  std::string helpFile;
};

// The main window: menu, toolbar, status bar, connection indicator and two docked panes. Its timer
// is the only clock of the link.
class frmMain : public Form {
 public:
  explicit frmMain(MainContext context);

  // One menu of the menu bar: its entries in order, null for a separator.
  struct Menu {
    std::string caption;
    std::vector<MenuEntry*> entries;
  };
  std::vector<Menu> MenuBar;

  // One position of the toolbar. A separator has no key.
  struct Tool {
    enum class Adds { Nothing, Item };

    std::string key;
    std::string toolTip;
    std::string image;
    std::function<void()> action;
    Adds adds = Adds::Nothing;
  };

  MenuEntry mnuFileNew, mnuFileOpen, mnuFileSaveDataSheet, mnuFileSaveCtrlFile, mnuFileSaveAll;
  MenuEntry mnuFilePageSetup, mnuRecentCtrlRoot, mnuRecentSheetRoot, mnuFileExit;
  MenuEntry mnuViewToolbar, mnuViewStatusBar, mnuViewController, mnuViewDataBrowser;
  MenuEntry mnuToolsConnect, mnuToolsDisconnect, mnuToolsOptions;
  MenuEntry mnuWindowCascade, mnuWindowTileHorizontal, mnuWindowTileVertical;
  MenuEntry mnuWindowArrangeIcons;
  MenuEntry mnuHelpContents, mnuHelpSearchForHelpOn, mnuHelpAbout;

  Control tbToolBar;
  Control sbrStatus;
  Label StatusPanel;  // the panel with the key "Status"
  std::vector<Tool> Tools;
  std::deque<Button> ToolButtons;  // one for each position
  Lamp picLED_ON;
  Lamp picLED_OFF;
  // The first steps of a new user, one on each line. Visible from a start without stored settings
  // until the first view.
  Label FirstSteps;
  TabDock tabDock;
  Timer CommTimer;
  Timer TimerInit;
  Timer TimeOutTimer;
  Timer CommBusyTimer;

  // The toolkit's side arranges the child windows by this code.
  std::function<void(Arrangement)> onArrange;
  // The toolkit's side sets this while the window is an icon.
  bool Minimised = false;
  // Files (UTF-8 paths) of the command line. The program opens them after the recent ones, as if
  // they were dropped.
  std::vector<std::string> FilesAtStart;

  void Form_Load() override;

  // Runs the action of the tool with this key. The key "FFT" has no button and opens its dialog.
  // Ignores any other key.
  void tbToolBar_ButtonClick(const std::string& key);

  // The user closes the window. Asks about unsaved changes. If the user cancels, or if the question
  // is already on the screen, returns false. Otherwise the program ends as soon as all running
  // handlers have returned.
  bool Close();

  // Files (UTF-8 paths) were dropped on the window. Opens the first data sheet and the first
  // control file among them. TakesDrop returns whether there is one.
  void OpenDropped(const std::vector<std::string>& paths);
  static bool TakesDrop(const std::vector<std::string>& paths);

  // Opens the help file beside the program and reports a failure. `topic` is used for Context.
  void ShowHelp(HelpCommand command, const std::string& topic = {});

 protected:
  void Form_Unload() override;

 private:
  void LoadSoftwareSetting();
  void SaveSoftwareSetting();
  void BuildMenus();
  void BuildToolBar();
  std::string WayTo(const MenuEntry& entry) const;
  void mnuFileNew_Click();
  void mnuFileOpen_Click();
  void mnuToolsOptions_Click();
  void mnuFilePageSetup_Click();
  void TimerInit_Timer();
  void ShowStatus(const std::string& text);
  void ShowIndicator(bool connected);
  void SetAddButtons(bool enabled);

  MainContext context_;
  RecentFiles recentCtrls_;
  RecentFiles recentSheets_;
  bool closeAsked_ = false;
};

}  // namespace oriolemark
