#include "documents/DocumentFile.h"

#include <utility>

namespace oriolemark {

DocumentFile::DocumentFile(const DocumentWords& words, std::string& name, bool& changed,
                           Prompts& prompts, DocumentStep read, DocumentStep write)
    : words_(words),
      name_(name),
      changed_(changed),
      prompts_(prompts),
      read_(std::move(read)),
      write_(std::move(write)) {}

bool DocumentFile::AskAboutChanges() {
  if (!changed_) return true;
  Message question{.text = words_.changes, .buttons = MessageButtons::YesNoCancel};
  if (!name_.empty()) {
    question.text += ' ';
    question.systemText = name_;
  }
  const MessageAnswer answer = prompts_.Show(question);
  // The interrupted command goes on, even if the file could not be saved.
  if (answer == MessageAnswer::Yes) Save();
  return answer != MessageAnswer::Cancel;
}

std::string DocumentFile::AskOpenName() {
  return prompts_.AskFileName(
      {.action = FileAction::Open, .title = "Open", .filter = words_.filter});
}

void DocumentFile::Use(const std::string& path) {
  name_ = path;
  read_(path);
  changed_ = false;
  if (addRecent) addRecent(path);
}

void DocumentFile::Save() {
  if (name_.empty() && !AskSaveName("Save", words_.filter)) return;
  SaveUnderName();
}

void DocumentFile::SaveAs() {
  if (AskSaveName(words_.saveAsTitle, words_.saveAsFilter)) SaveUnderName();
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
  write_(path);
  changed_ = false;
  if (addRecent) addRecent(path);
}

}  // namespace oriolemark
