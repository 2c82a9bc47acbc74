#include "documents/DocumentFile.h"

#include <utility>

namespace oriolemark {

DocumentFile::DocumentFile(const DocumentWords& words, std::string& name, WatchedFlag& changed,
                           Prompts& prompts, RecoveredFiles& recovered, DocumentSteps steps)
    : words_(words),
      name_(name),
      changed_(changed),
      prompts_(prompts),
      recovered_(recovered),
      steps_(std::move(steps)) {}

bool DocumentFile::AskAboutChanges() {
  givenUp_ = false;
  if (!changed_) return true;
  Message question{.text = words_.changes, .buttons = MessageButtons::YesNoCancel};
  if (!name_.empty()) {
    question.text += ' ';
    question.systemText = name_;
  }
  const MessageAnswer answer = prompts_.Show(question);
  // The interrupted command goes on, even if the file could not be saved.
  if (answer == MessageAnswer::Yes) Save();
  givenUp_ = answer == MessageAnswer::No;
  return answer != MessageAnswer::Cancel;
}

void DocumentFile::Leave(LastWord word) {
  spareCopy_.clear();
  if ((changed_ || writeFailed_) && !(givenUp_ && word == LastWord::Given)) {
    const std::string contents = steps_.contents();
    std::string copy;
    if (!contents.empty()) copy = recovered_.Keep(steps_.title(), words_.extension, contents);
    // A spare copy does not push out another one unless it stays.
    if (givenUp_) {
      spareCopy_ = copy;
    } else {
      recovered_.Trim();
    }
  }
  writeFailed_ = false;
}

std::string DocumentFile::AskOpenName() {
  return prompts_.AskFileName(
      {.action = FileAction::Open, .title = "Open", .filter = words_.filter});
}

void DocumentFile::Use(const std::string& path) {
  if (!spareCopy_.empty()) RecoveredFiles::Remove(std::exchange(spareCopy_, {}));
  name_ = path;
  asksName_ = false;
  steps_.read(path);
  changed_ = false;
  if (addRecent) addRecent(path);
}

void DocumentFile::UseNothing() {
  recovered_.Trim();
  asksName_ = true;
}

void DocumentFile::UseNone() {
  name_.clear();
  asksName_ = false;
}

void DocumentFile::Save() {
  if (!MaySave()) return;
  if ((name_.empty() || asksName_) && !AskSaveName("Save", words_.filter)) return;
  SaveUnderName();
}

void DocumentFile::SaveAs() {
  if (MaySave() && AskSaveName(words_.saveAsTitle, words_.saveAsFilter)) SaveUnderName();
}

bool DocumentFile::AskSaveName(const char* title, const char* filter) {
  const std::string path =
      prompts_.AskFileName({.action = FileAction::Save, .title = title, .filter = filter});
  if (path.empty()) return false;
  name_ = path;
  return true;
}

void DocumentFile::SaveUnderName() {
  // A copy, because a message of the write serves events, which may change the name in use.
  const std::string path = name_;
  writeFailed_ = !steps_.write(path);
  changed_ = false;
  if (addRecent) addRecent(path);
}

}  // namespace oriolemark
