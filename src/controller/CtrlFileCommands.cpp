// The file commands of the Controller.

#include "controller/frmCtrlList.h"

namespace oriolemark {

void frmCtrlList::ShowDocument() {
  nodes_.BuildCtrlTree();
  nodes_.ExpandGroup(ctrl_group::kRunningControl);
  CtrlTreeView.Click(CtrlTreeView.First());
}

void frmCtrlList::mnuNewCtrl_Click() {
  if (!file.AskAboutChanges()) return;
  file.Leave();
  file.UseNone();
  SetNewSettings(context_.settings);
  ShowDocument();
  context_.document.CtrlChanged = false;
}

void frmCtrlList::OpenCtrl(const std::string& path) {
  if (file.AskAboutChanges()) UseFile(path);
}

void frmCtrlList::mnuOpenCtrl_Click() {
  if (!file.AskAboutChanges()) return;
  const std::string path = file.AskOpenName();
  if (!path.empty()) UseFile(path);
}

void frmCtrlList::UseFile(const std::string& path) {
  file.Leave();
  file.Use(path);
  ShowDocument();
}

}  // namespace oriolemark
