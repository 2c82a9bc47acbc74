// The file commands of the Controller.

#include "controller/frmCtrlList.h"
#include "controller/records/ControlFile.h"

namespace oriolemark {
namespace {

constexpr const char* kControlFiles = "Control Files (*.cfx)|*.cfx";
constexpr const char* kAnyFiles =
    "Control Files (*.cfx)|*.cfx|Text Files (*.txt)|*.txt|All Files (*.*)|*.*";

}  // namespace

bool frmCtrlList::AskAboutChanges() {
  CtrlDocument& document = context_.document;
  if (!document.CtrlChanged) return true;
  Message question{.text = "Save the changes to the Control File",
                   .buttons = MessageButtons::YesNoCancel};
  if (!document.CtrlFileName.empty()) {
    question.text += ' ';
    question.systemText = document.CtrlFileName;
  }
  const MessageAnswer answer = context_.prompts.Show(question);
  // What was interrupted goes on, whether or not the file could be saved.
  if (answer == MessageAnswer::Yes) mnuSaveCtrl_Click();
  return answer != MessageAnswer::Cancel;
}

void frmCtrlList::ShowDocument() {
  nodes_.BuildCtrlTree();
  nodes_.ExpandGroup(ctrl_group::kRunningControl);
  CtrlTreeView.Click(CtrlTreeView.First());
}

void frmCtrlList::mnuNewCtrl_Click() {
  if (!AskAboutChanges()) return;
  context_.document.CtrlFileName.clear();
  SetNewSettings(context_.settings);
  ShowDocument();
  context_.document.CtrlChanged = false;
}

void frmCtrlList::OpenCtrl(const std::string& path) {
  if (AskAboutChanges()) UseFile(path);
}

void frmCtrlList::mnuOpenCtrl_Click() {
  if (!AskAboutChanges()) return;
  const std::string path = context_.prompts.AskFileName(
      {.action = FileAction::Open, .title = "Open", .filter = kControlFiles});
  if (!path.empty()) UseFile(path);
}

// The path becomes the file in use whatever came of the reading.
void frmCtrlList::UseFile(const std::string& path) {
  context_.document.CtrlFileName = path;
  ReadControlFile(path, context_.settings, context_.prompts);
  context_.document.CtrlChanged = false;
  if (AddRecentCtrl) AddRecentCtrl(path);
  ShowDocument();
}

void frmCtrlList::mnuSaveCtrl_Click() {
  if (context_.document.CtrlFileName.empty() && !NameFile(kControlFiles)) return;
  SaveFile();
}

void frmCtrlList::mnuSaveAsCtrl_Click() {
  if (NameFile(kAnyFiles)) SaveFile();
}

bool frmCtrlList::NameFile(const char* filter) {
  const std::string path =
      context_.prompts.AskFileName({.action = FileAction::Save, .title = "Save", .filter = filter});
  if (path.empty()) return false;
  context_.document.CtrlFileName = path;
  return true;
}

// No command tells a good write from a failed one: the changes count as saved.
void frmCtrlList::SaveFile() {
  const std::string path = context_.document.CtrlFileName;
  WriteControlFile(path, context_.settings, context_.prompts, context_.sync);
  context_.document.CtrlChanged = false;
  if (AddRecentCtrl) AddRecentCtrl(path);
}

}  // namespace oriolemark
