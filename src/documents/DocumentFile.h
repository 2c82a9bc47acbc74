#pragma once

#include <functional>
#include <string>

#include "platform/Prompts.h"

namespace oriolemark {

// What the file commands of one kind of document say and offer.
struct DocumentWords {
  const char* changes;  // the question about unsaved changes, without the file's name
  const char* saveAsTitle;
  const char* filter;  // of Open and Save
  const char* saveAsFilter;
};

// Brings the file at the path into the document, or the document into the file. A failure shows its
// message.
using DocumentStep = std::function<void(const std::string& path)>;

// The file of a document: how it is named, opened, saved and left.
class DocumentFile {
 public:
  // `name` is the path (UTF-8) of the file in use, empty for a new document; `changed` is true
  // while there are changes that no file holds. Both belong to the document.
  DocumentFile(const DocumentWords& words, std::string& name, bool& changed, Prompts& prompts,
               DocumentStep read, DocumentStep write);

  // Puts a path at the head of the recent files.
  DocumentStep addRecent;

  // The question about unsaved changes, answered at once when there are none. False when the user
  // cancels what was about to happen; Yes saves first.
  bool AskAboutChanges();
  // The path of a file to open; empty when cancelled.
  std::string AskOpenName();
  // Under the name in use, or after asking for one.
  void Save();
  // Always asks for a name.
  void SaveAs();
  // Reads the file. It is in use from now on, whatever came of the reading.
  void Use(const std::string& path);

 private:
  bool AskSaveName(const char* title, const char* filter);
  void SaveUnderName();

  DocumentWords words_;
  std::string& name_;
  bool& changed_;
  Prompts& prompts_;
  DocumentStep read_;
  DocumentStep write_;
};

}  // namespace oriolemark
