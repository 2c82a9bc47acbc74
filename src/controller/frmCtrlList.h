#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "controller/CtrlDialog.h"
#include "controller/CtrlTreeNodeFunc.h"
#include "controller/records/CtrlDocument.h"
#include "documents/DocumentFile.h"
#include "link/TX5000Cmd.h"
#include "platform/Button.h"
#include "platform/Files.h"
#include "platform/Form.h"
#include "platform/MenuEntry.h"
#include "platform/PopupMenu.h"
#include "platform/ScreenPointer.h"
#include "platform/TreeView.h"
#include "transfers/frmPrgress.h"

namespace oriolemark {

// What the Controller needs.
struct CtrlListContext {
  CtrlSettings& settings;
  CtrlDocument& document;
  const LinkSettings& linkSettings;
  const LinkState& link;
  const TransferState& transfer;
  TX5000Cmd& scope;
  frmPrgress& progress;
  Waiting& waiting;
  Prompts& prompts;
  ScreenPointer& pointer;
  RecoveredFiles& recovered;
  SyncFile sync;
};

// The Controller's pane: the instrument's settings as a tree. The user changes one setting, sends
// or reads all of them, and keeps them in a file. CtrlFileCommands.cpp has the file commands,
// PraseCtrlList.cpp the edit of one setting, and frmCtrlList.cpp all else.
class frmCtrlList : public Form {
 public:
  explicit frmCtrlList(const CtrlListContext& context);

  TreeView CtrlTreeView;
  Button cmdUpload;
  Button cmdDownload;
  MenuEntry mnuNewCtrl, mnuOpenCtrl, mnuSaveCtrl, mnuSaveAsCtrl, mnuConnect, mnuDisconnect;
  MenuEntry mnuUpload, mnuDownLoad, mnuExpand;
  PopupMenu popmenu1;

 private:
  // Declared between public members because members are built in this order: the tree comes before
  // the nodes, and the nodes before the dialog that writes on them.
  CtrlTreeNodeFunc nodes_;

 public:
  CtrlDialog dialog;

  DocumentFile file;

  // Show the two windows with the instrument's front.
  std::function<void()> showKeyWindow = [] {};
  std::function<void()> showPanel = [] {};

  void Form_Load() override;
  // Shows the settings again, with the groups collapsed.
  void BuildCtrlTree() { nodes_.BuildCtrlTree(); }

  void mnuNewCtrl_Click();
  void mnuOpenCtrl_Click();
  void mnuSaveCtrl_Click() { file.Save(); }
  void OpenCtrl(const std::string& path);

  // Runs the edit that the node's path names: a dialog, a command, a message or nothing.
  void PraseCtrlList(std::string_view path);

 protected:
  void Form_Unload() override;

 private:
  void UseFile(const std::string& path);
  void ShowDocument();

  void EditClicked();
  bool Connected();
  void cmdUpload_Click();
  void cmdDownload_Click();
  void UploadToDSO();
  void DownloadfromDSO();
  void SwitchOffInvert();
  void AutoSet();
  void SetTrig50();
  void ForceTrigger();
  void ShowVirtualPanel();

  void EditParameter(const Parameter& parameter, const std::string& value);
  void FillCombo(const Parameter& parameter);
  void SetCtrlDialogTimeDivNum(const Parameter& timeDiv);
  void SetCtrlDialogVoltDivNum(const std::string& probe);
  void SetCtrlDialogTrigLevelNum();

  CtrlListContext context_;
  // The path of the node clicked last, as it read at the click. After an edit, Enter without a new
  // click offers the old value. On purpose.
  std::string CtrlNodePath;
};

}  // namespace oriolemark
