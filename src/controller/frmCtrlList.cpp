#include "controller/frmCtrlList.h"

#include "controller/records/ControlFile.h"
#include "link/StringRES.h"

namespace oriolemark {
namespace {

constexpr DocumentWords kWords{
    .changes = "Save the changes to the Control File",
    .saveAsTitle = "Save",
    .filter = "Control Files (*.cfx)|*.cfx",
    .saveAsFilter = "Control Files (*.cfx)|*.cfx|Text Files (*.txt)|*.txt|All Files (*.*)|*.*",
    .extension = ".cfx"};

constexpr Milliseconds kAutoSetTime(4000);

// The virtual panel's screen copy needs this firmware.
constexpr int kPanelVersionNum = 30115;
constexpr const char* kPanelVersion = "03.01.15";

}  // namespace

frmCtrlList::frmCtrlList(const CtrlListContext& context)
    : cmdUpload([this] { cmdUpload_Click(); }),
      cmdDownload([this] { cmdDownload_Click(); }),
      nodes_(CtrlTreeView, context.settings, context.document.CtrlChanged),
      dialog({context.settings, context.document, nodes_, context.scope, context.waiting,
              context.prompts}),
      file(kWords, context.document.CtrlFileName, context.document.CtrlChanged, context.prompts,
           context.recovered,
           {.read =
                [this](const std::string& path) {
                  ReadControlFile(path, context_.settings, context_.prompts);
                },
            .write =
                [this](const std::string& path) {
                  return WriteControlFile(path, context_.settings, context_.prompts, context_.sync);
                },
            .title = [] { return std::string("Controller"); },
            .contents = [this] { return ControlFileText(context_.settings); }}),
      context_(context) {
  SetCaption("DSO Controller");
  const MenuRow separator;
  popmenu1.entries = MakeMenu({
      {&mnuNewCtrl, "mnuNewCtrl", "&New Control File", [this] { mnuNewCtrl_Click(); }},
      {&mnuOpenCtrl, "mnuOpenCtrl", "&Open Control File", [this] { mnuOpenCtrl_Click(); }},
      separator,
      {&mnuSaveCtrl, "mnuSaveCtrl", "&Save Control File", [this] { mnuSaveCtrl_Click(); }},
      {&mnuSaveAsCtrl, "mnuSaveAsCtrl", "Save Control File &As", [this] { file.SaveAs(); }},
      separator,
      {&mnuConnect, "mnuConnect", "&Connect To DSO", [this] { context_.scope.ConnectScope(); }},
      {&mnuDisconnect, "mnuDisconnect", "D&isconnect",
       [this] { context_.scope.DisconnectScope(); }},
      separator,
      {&mnuUpload, "mnuUpload", "&Upload", [this] { cmdUpload_Click(); }},
      {&mnuDownLoad, "mnuDownLoad", "&Download", [this] { cmdDownload_Click(); }},
      separator,
      {&mnuExpand, "mnuExpand", "&Expand All", [this] { nodes_.ExpandAll(); }},
  });
  CtrlTreeView.nodeClick = [this](TreeNode node) { CtrlNodePath = CtrlTreeView.FullPath(node); };
  CtrlTreeView.doubleClick = [this] { EditClicked(); };
  context_.document.CtrlChanged.onChanged = [this] { nodes_.ShowChanged(); };
  CtrlTreeView.mouseDown = [this](int button) {
    if (button == kRightButton) popmenu1.Popup();
  };
}

// Closing the pane and opening it again keeps the document.
void frmCtrlList::Form_Load() {
  if (context_.document.CtrlModelReady) {
    nodes_.BuildCtrlTree();
    nodes_.ExpandGroup(ctrl_group::kRunningControl);
    return;
  }
  mnuNewCtrl_Click();
  context_.document.CtrlChanged = false;
  context_.document.CtrlModelReady = true;
}

void frmCtrlList::Form_Unload() {
  dialog.Unload();
}

bool frmCtrlList::Connected() {
  if (context_.link.ScopeConnected) return true;
  context_.prompts.Show(kConnectFirst);
  return false;
}

void frmCtrlList::EditClicked() {
  if (Connected()) PraseCtrlList(CtrlNodePath);
}

// Runs before settings are sent and after they are read: both inverts and the memory offset become
// OFF.
void frmCtrlList::SwitchOffInvert() {
  CtrlSettings& settings = context_.settings;
  for (const Field field :
       {&CtrlSettings::CH1Invert, &CtrlSettings::CH2Invert, &CtrlSettings::MemOffset}) {
    settings.*field = DropFirstChar(kOff);
  }
}

void frmCtrlList::cmdUpload_Click() {
  if (!Connected() || context_.transfer.TransferActive) return;
  SwitchOffInvert();
  UploadToDSO();
}

void frmCtrlList::cmdDownload_Click() {
  if (!Connected() || context_.transfer.TransferActive) return;
  DownloadfromDSO();
  SwitchOffInvert();
  context_.document.CtrlChanged = true;
}

void frmCtrlList::UploadToDSO() {
  context_.progress.Transfer(TransferKind::Upload, "Data Uploading");
}

void frmCtrlList::DownloadfromDSO() {
  context_.progress.Transfer(TransferKind::Download, "Data Downloading");
}

void frmCtrlList::AutoSet() {
  context_.scope.SendToScope(kAuto);
  // The pointer becomes normal again when the transfer ends.
  context_.pointer.SetShape(PointerShape::Hourglass);
  context_.waiting.Sleep(kAutoSetTime);
  cmdDownload_Click();
}

void frmCtrlList::SetTrig50() {
  context_.scope.SendToScope(kTrig50);
  const Field level = &CtrlSettings::TrigLevel;
  context_.settings.*level = context_.scope.AskScope(ParameterOf(level).Question());
  // On purpose always the level's position under EDGE, even if the present method has another node
  // there.
  nodes_.RepairAt(ctrl_group::kTrigger, 6, level);
}

void frmCtrlList::ForceTrigger() {
  context_.scope.SendToScope(kForceTrig);
}

void frmCtrlList::ShowVirtualPanel() {
  // Not Link(): any transport but USB itself gets the keys alone, even one that talks USB.
  if (context_.linkSettings.ScopeIOType != kLinkUsb) return showKeyWindow();
  // This version itself passes, although the message asks for a higher one.
  if (context_.link.ScopeVersionNum >= kPanelVersionNum) return showPanel();
  context_.prompts.Show(
      {.text = std::string("This function can only be used when the DSO version is higher than ") +
               kPanelVersion + "\rCurrent Version is " + context_.link.ScopeVersion +
               "\rPlease contact TAVIK at " + kMakerWebAddress,
       .icon = MessageIcon::Exclamation});
}

}  // namespace oriolemark
