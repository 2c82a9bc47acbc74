#pragma once

#include <functional>
#include <string>

#include "platform/Prompts.h"

namespace oriolemark {

// The texts of the file commands for one kind of document.
struct DocumentWords {
  const char* changes;  // the question about unsaved changes, without the file's name
  const char* saveAsTitle;
  const char* filter;  // of Open and Save
  const char* saveAsFilter;
};

// Reads the file at the path into the document, or writes the document to it. Shows a message
// itself if that fails.
using DocumentStep = std::function<void(const std::string& path)>;

// The file of a document: its name, and the commands that open, save and leave it.
class DocumentFile {
 public:
  // `name` is the path (UTF-8) of the file in use, empty for a new document. `changed` is true
  // while the document has changes that are not in a file. The document owns both.
  DocumentFile(const DocumentWords& words, std::string& name, bool& changed, Prompts& prompts,
               DocumentStep read, DocumentStep write);

  // Puts a path at the top of the recent files.
  DocumentStep addRecent;

  // Asks whether to save the changes, if there are any. Yes saves first. Returns false if the user
  // cancels what was about to happen.
  bool AskAboutChanges();
  // Asks for the file to open. Returns its path, or an empty text if cancelled.
  std::string AskOpenName();
  // Saves under the name in use. Asks for a name if there is none. After a failed write, which has
  // shown its message, the document still counts as saved under this name, and the path is in the
  // recent files.
  void Save();
  // The same, but always asks for a name.
  void SaveAs();
  // Reads the file and makes it the file in use, even if it could not be read.
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
