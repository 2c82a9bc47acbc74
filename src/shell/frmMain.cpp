#include "shell/frmMain.h"

#include <algorithm>
#include <string_view>

#include "link/StringRES.h"

namespace oriolemark {
namespace {

constexpr double kDockBand = 3000;
constexpr const char* kSheetPane = "DataSheet";
constexpr const char* kControllerPane = "Controller";

void Toggle(MenuEntry& entry, Control& shown) {
  entry.SetChecked(!entry.Checked());
  shown.SetVisible(entry.Checked());
}

// The first path with this extension, in any case. Empty if there is none.
std::string FirstOf(const std::vector<std::string>& paths, std::string_view extension) {
  const auto same = [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? a + ('a' - 'A') : a) == b;
  };
  for (const std::string& path : paths) {
    if (path.size() <= extension.size()) continue;
    const std::string_view end = std::string_view(path).substr(path.size() - extension.size());
    if (std::ranges::equal(end, extension, same)) return path;
  }
  return {};
}

// A caption without the mark of its access key and without the dots of a dialog.
std::string Words(std::string caption) {
  std::erase(caption, '&');
  if (caption.ends_with("...")) caption.resize(caption.size() - 3);
  return caption;
}

std::string AccessKey(const std::string& caption) {
  const std::string key = caption.substr(caption.find('&') + 1, 1);
  return key >= "a" ? std::string(1, static_cast<char>(key[0] - ('a' - 'A'))) : key;
}

}  // namespace

frmMain::frmMain(MainContext context)
    : picLED_ON("Connection Status-[Connected]"),
      picLED_OFF("Connection Status-[Disconnected]"),
      CommTimer(context.events, 2000,
                [this] {
                  StatusPanel.SetText("Status: ");
                  CommTimer.SetEnabled(false);
                }),
      TimerInit(context.events, 1, [this] { TimerInit_Timer(); }),
      TimeOutTimer(context.events, 100,
                   [this] {
                     ++context_.link.SerialTicks;
                     ++context_.link.UsbTicks;
                     context_.serial.PollLines();
                   }),
      // Kept because the window has four timers; nothing reads the busy flag.
      CommBusyTimer(context.events, 200, [] {}),
      context_(std::move(context)),
      recentCtrls_(context_.store, "Recent Ctrl", mnuRecentCtrlRoot,
                   [this](const std::string& path) { context_.controller.OpenCtrl(path); }),
      recentSheets_(context_.store, "Recent Sheet", mnuRecentSheetRoot,
                    [this](const std::string& path) { context_.browser.OpenDataSheet(path); }) {
  SetCaption(kApplicationTitle);
  StatusPanel.SetText("Status: ");
  BuildMenus();
  mnuViewToolbar.SetChecked(true);
  mnuViewStatusBar.SetChecked(true);
  picLED_ON.SetVisible(false);
  onArrange = [](Arrangement) {};
  BuildToolBar();
  FirstSteps.SetVisible(false);
  FirstSteps.SetText("1. Choose the link to the oscilloscope: " + WayTo(mnuToolsOptions) +
                     "\n2. Connect: " + WayTo(mnuToolsConnect) + "\n3. Add a waveform: " +
                     WayTo(mnuFileNew) + ", " + RowOf(ItemKind::Wave).newType);
  context_.scope.showIndicator = [this](bool connected) { ShowIndicator(connected); };
  context_.serialEvents.showStatus = [this](const std::string& text) { ShowStatus(text); };
  context_.controller.file.addRecent = [this](const std::string& path) { recentCtrls_.Add(path); };
  context_.browser.file.addRecent = [this](const std::string& path) { recentSheets_.Add(path); };
  context_.browser.files.setAddButtons = [this](bool enabled) { SetAddButtons(enabled); };
}

void frmMain::BuildMenus() {
  const auto arrange = [this](Arrangement code) { return [this, code] { onArrange(code); }; };
  const auto help = [this](HelpCommand command) { return [this, command] { ShowHelp(command); }; };
  const MenuRow separator;
  MenuBar = {
      {"&File",
       MakeMenu({
           {&mnuFileNew, "mnuFileNew", "&New", [this] { mnuFileNew_Click(); }, "Ctrl+N"},
           {&mnuFileOpen, "mnuFileOpen", "&Open...", [this] { mnuFileOpen_Click(); }, "Ctrl+O"},
           separator,
           {&mnuFileSaveDataSheet, "mnuFileSaveDataSheet", "&Save Data Sheet",
            [this] { context_.browser.mnuSaveDataSheet_Click(); }, "Ctrl+S"},
           {&mnuFileSaveCtrlFile, "mnuFileSaveCtrlFile", "Save C&ontroller",
            [this] { context_.controller.mnuSaveCtrl_Click(); }},
           {&mnuFileSaveAll, "mnuFileSaveAll", "Save A&ll",
            [this] {
              mnuFileSaveCtrlFile.Click();
              mnuFileSaveDataSheet.Click();
            },
            "Ctrl+Shift+S"},
           separator,
           {&mnuFilePageSetup, "mnuFilePageSetup", "Page Set&up...",
            [this] { mnuFilePageSetup_Click(); }},
           separator,
           {&mnuRecentCtrlRoot, "mnuRecentCtrlRoot", "&Recent Control File"},
           {&mnuRecentSheetRoot, "mnuRecentSheetRoot", "Recen&t Data Sheet File"},
           separator,
           {&mnuFileExit, "mnuFileExit", "E&xit", [this] { Close(); }, "Ctrl+Q"},
       })},
      {"&View", MakeMenu({
                    {&mnuViewToolbar, "mnuViewToolbar", "&Toolbar",
                     [this] { Toggle(mnuViewToolbar, tbToolBar); }},
                    {&mnuViewStatusBar, "mnuViewStatusBar", "Status &Bar",
                     [this] { Toggle(mnuViewStatusBar, sbrStatus); }},
                    separator,
                    {&mnuViewController, "mnuViewController", "Show &Controller",
                     [this] { tabDock.ShowPane(kControllerPane); }},
                    {&mnuViewDataBrowser, "mnuViewDataBrowser", "Show &Data Browser",
                     [this] { tabDock.ShowPane(kSheetPane); }},
                })},
      {"&Tools", MakeMenu({
                     {&mnuToolsConnect, "mnuToolsConnect", "&Connect to Oscilloscope",
                      [this] { context_.scope.ConnectScope(); }},
                     {&mnuToolsDisconnect, "mnuToolsDisconnect", "&Disconnect",
                      [this] { context_.scope.DisconnectScope(); }},
                     separator,
                     {&mnuToolsOptions, "mnuToolsOptions", "&Options...",
                      [this] { mnuToolsOptions_Click(); }, "Ctrl+,"},
                 })},
      {"&Window",
       MakeMenu({
           {&mnuWindowCascade, "mnuWindowCascade", "&Cascade", arrange(Arrangement::Cascade)},
           {&mnuWindowTileHorizontal, "mnuWindowTileHorizontal", "Tile &Horizontal",
            arrange(Arrangement::TileHorizontal)},
           {&mnuWindowTileVertical, "mnuWindowTileVertical", "Tile &Vertical",
            arrange(Arrangement::TileVertical)},
           {&mnuWindowArrangeIcons, "mnuWindowArrangeIcons", "&Arrange Icons",
            arrange(Arrangement::ArrangeIcons)},
       })},
      {"&Help",
       MakeMenu({
           {&mnuHelpContents, "mnuHelpContents", "&Contents", help(HelpCommand::Contents), "F1"},
           {&mnuHelpSearchForHelpOn, "mnuHelpSearchForHelpOn", "&Search For Help On...",
            help(HelpCommand::PartialKey)},
           separator,
           {&mnuHelpAbout, "mnuHelpAbout", "&About ",
            [this] { context_.about.ShowModal(context_.waiting); }},
       })},
  };
}

// The captions that lead to an entry of the menu bar, then its keys: "File, New (Ctrl+N)".
std::string frmMain::WayTo(const MenuEntry& entry) const {
  const auto menu = std::ranges::find_if(MenuBar, [&entry](const Menu& candidate) {
    return std::ranges::find(candidate.entries, &entry) != candidate.entries.end();
  });
  const std::string keys =
      entry.keys.empty() ? "Alt+" + AccessKey(menu->caption) + ", " + AccessKey(entry.Caption())
                         : entry.keys;
  return Words(menu->caption) + ", " + Words(entry.Caption()) + " (" + keys + ")";
}

void frmMain::BuildToolBar() {
  const auto click = [](MenuEntry& entry) { return [&entry] { entry.Click(); }; };
  const Tool separator;
  Tools = {
      {"New", "New", "New", click(mnuFileNew)},
      {"Open", "Open", "Open", click(mnuFileOpen)},
      {"Save", "Save", "Save", click(mnuFileSaveAll)},
      separator,
      {"Connect", "Connect to Oscilloscope", "Connect", click(mnuToolsConnect)},
      {"Disconnect", "Disconnect", "Disconnect", click(mnuToolsDisconnect)},
      separator,
      {"Controller", "DSO Controller", "Controller", click(mnuViewController)},
      {"DataBrowser", "Data Browser", "DataSheet", click(mnuViewDataBrowser)},
      separator,
  };
  for (const ItemKind kind : kTreeOrder) {
    const ItemKindRow& row = RowOf(kind);
    Tools.push_back({std::string("AddNew") + row.noun, std::string("Add new ") + row.noun, row.word,
                     [this, kind] { context_.browser.files.Add(kind); }, Tool::Adds::Item});
  }
  Tools.push_back(separator);
  Tools.push_back({"Options", "Options", "Setting", click(mnuToolsOptions)});
  for (const Tool& tool : Tools) {
    ToolButtons.emplace_back([this, key = tool.key] { tbToolBar_ButtonClick(key); });
  }
}

void frmMain::tbToolBar_ButtonClick(const std::string& key) {
  // Without a button, because the trace that the dialog makes is not a spectrum yet.
  if (key == "FFT") context_.waveSetting.ShowModal(context_.waiting);
  const auto tool = std::ranges::find(Tools, key, &Tool::key);
  if (tool != Tools.end() && tool->action) tool->action();
}

void frmMain::Form_Load() {
  context_.transfer.TransferActive = false;
  recentCtrls_.Load();
  recentSheets_.Load();
  CommTimer.SetEnabled(false);
  context_.link.ScopeConnected = false;
  context_.sheet.Modified = false;
  context_.link.CommBusy = false;
  CommBusyTimer.SetEnabled(true);
  TimeOutTimer.SetEnabled(true);
  LoadSoftwareSetting();
  context_.controlDocument.CtrlModelReady = false;
  tabDock.AddPane(kSheetPane, context_.browser);
  tabDock.AddPane(kControllerPane, context_.controller);
  tabDock.SetBandWidth(kDockBand);
  if (context_.preferences.startup.StartupCheckHardware) context_.scope.ConnectScope();
  TimerInit.SetInterval(1);
  TimerInit.SetEnabled(true);
}

void frmMain::LoadSoftwareSetting() {
  // Each close stores the link, so without it the program has never been used.
  FirstSteps.SetVisible(!context_.store.Read("IO Settings", "ScopeIOType"));
  LoadPreferences(context_.store, context_.preferences);
  Move(context_.preferences.mainWindow);
}

void frmMain::SaveSoftwareSetting() {
  context_.preferences.mainWindow = Place();
  SavePreferences(context_.store, context_.preferences,
                  Minimised ? WindowRows::Skipped : WindowRows::Written);
}

void frmMain::TimerInit_Timer() {
  TimerInit.SetEnabled(false);
  tabDock.ShowPane(kSheetPane);
  tabDock.ShowPane(kControllerPane);
  const auto& startup = context_.preferences.startup;
  if (startup.StartupLoadCtrl) recentCtrls_.OpenLatest();
  if (startup.StartupLoadSheet) recentSheets_.OpenLatest();
  OpenDropped(FilesAtStart);
}

void frmMain::mnuFileNew_Click() {
  if (!context_.newDoc.AskModal(context_.waiting)) return;
  const int type = context_.newDoc.DocType;
  if (type == doc_type::kDataSheet) context_.browser.mnuNewDataSheet_Click();
  if (type == doc_type::kController) context_.controller.mnuNewCtrl_Click();
  const int item = type - doc_type::kFirstItem;
  if (item >= 0) context_.browser.files.Add(kTreeOrder[static_cast<std::size_t>(item)]);
}

void frmMain::mnuFileOpen_Click() {
  if (!context_.openDoc.AskModal(context_.waiting)) return;
  const int type = context_.openDoc.DocType;
  if (type == doc_type::kDataSheet) context_.browser.mnuOpenDataSheet_Click();
  if (type == doc_type::kController) context_.controller.mnuOpenCtrl_Click();
}

void frmMain::OpenDropped(const std::vector<std::string>& paths) {
  // Copies, because the documents' messages serve events.
  const std::string sheet = FirstOf(paths, ".orm");
  const std::string settings = FirstOf(paths, ".cfx");
  if (!sheet.empty()) context_.browser.OpenDataSheet(sheet);
  if (!settings.empty()) context_.controller.OpenCtrl(settings);
}

bool frmMain::TakesDrop(const std::vector<std::string>& paths) {
  return !FirstOf(paths, ".orm").empty() || !FirstOf(paths, ".cfx").empty();
}

// Disconnects and stays disconnected: the new choices take effect when the user connects again.
void frmMain::mnuToolsOptions_Click() {
  if (context_.link.ScopeConnected) context_.scope.DisconnectScope();
  context_.options.ShowModal(context_.waiting);
}

void frmMain::mnuFilePageSetup_Click() {
  context_.prompts.ShowPrinterDialog("Page Setup");
}

void frmMain::ShowHelp(HelpCommand command, const std::string& topic) {
  const auto error = context_.help.Open(context_.helpFile, command, topic);
  if (error) context_.prompts.Show({.systemText = *error});
}

void frmMain::ShowStatus(const std::string& text) {
  StatusPanel.SetText(text);
  // Counts the two seconds from the last event, not from the first.
  CommTimer.SetEnabled(false);
  CommTimer.SetEnabled(true);
}

void frmMain::ShowIndicator(bool connected) {
  picLED_ON.SetVisible(connected);
  picLED_OFF.SetVisible(!connected);
}

void frmMain::SetAddButtons(bool enabled) {
  for (std::size_t place = 0; place < Tools.size(); ++place) {
    if (Tools[place].adds == Tool::Adds::Item) ToolButtons[place].SetEnabled(enabled);
  }
}

bool frmMain::Close() {
  // A second close while the question is on the screen asks nothing.
  if (closeAsked_) return false;
  closeAsked_ = true;
  const bool leavesSheet = context_.browser.file.AskAboutChanges();
  // Asked in any case: a Cancel of the first question keeps the program open all the same.
  const bool leavesSettings = context_.controller.file.AskAboutChanges();
  closeAsked_ = false;
  if (!leavesSheet || !leavesSettings) return false;
  context_.browser.file.Leave();
  context_.controller.file.Leave();
  context_.waiting.BeginClosing();
  return true;
}

void frmMain::Form_Unload() {
  UnloadViews(context_.sheet);
  context_.controller.Unload();
  SaveSoftwareSetting();
  if (context_.link.ScopeConnected) {
    context_.scope.SendToScope(std::string(kKey) + kLock + kEnable);
  }
}

}  // namespace oriolemark
