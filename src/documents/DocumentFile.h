#pragma once

#include <functional>
#include <string>

#include "documents/RecoveredFiles.h"
#include "platform/Prompts.h"
#include "platform/WatchedFlag.h"

namespace oriolemark {

// The texts of the file commands for one kind of document.
struct DocumentWords {
  const char* changes;  // the question about unsaved changes, without the file's name
  const char* saveAsTitle;
  const char* filter;  // of Open and Save
  const char* saveAsFilter;
  const char* extension;  // of a safety copy
};

// The steps of the file commands for one kind of document. Paths and titles are UTF-8.
struct DocumentSteps {
  // Reads the file into the document. Shows a message itself if that fails.
  std::function<void(const std::string& path)> read;
  // Writes the document to the file. If that fails, shows a message itself and returns false.
  std::function<bool(const std::string& path)> write;
  // Title and contents of a safety copy. A document that is not worth a copy has no contents.
  std::function<std::string()> title;
  std::function<std::string()> contents;
  // Returns whether a document exists that can be saved. Shows a message itself if not. May be left
  // out.
  std::function<bool()> maySave{};
};

// The file of a document: its name, and the commands that open, save and leave it.
class DocumentFile {
 public:
  // `name` is the path (UTF-8) of the file in use, empty for a new document. `changed` is true
  // while the document has changes that are not in a file. The document owns both.
  DocumentFile(const DocumentWords& words, std::string& name, WatchedFlag& changed,
               Prompts& prompts, RecoveredFiles& recovered, DocumentSteps steps);

  // Puts a path at the top of the recent files.
  std::function<void(const std::string& path)> addRecent;

  // Asks whether to save the changes, if there are any. Yes saves first. Returns false if the user
  // cancels what was about to happen.
  bool AskAboutChanges();
  // The document is about to be cleared or left. Keeps a safety copy if it has changes that reached
  // no file, because a save was cancelled or failed. Changes to which the user has said No are
  // given up; `LastWord::Later` copies them too, and the next Use removes that copy.
  enum class LastWord { Given, Later };
  void Leave(LastWord word = LastWord::Given);
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
  // A new document has no file in use.
  void UseNone();
  // The document was cleared for a file that the user did not choose. Until the next Use or
  // UseNone, Save asks for a name, so that the file in use is not overwritten. The safety copy
  // stays.
  void UseNothing();

 private:
  bool AskSaveName(const char* title, const char* filter);
  void SaveUnderName();
  bool MaySave() const { return !steps_.maySave || steps_.maySave(); }

  DocumentWords words_;
  std::string& name_;
  WatchedFlag& changed_;
  Prompts& prompts_;
  RecoveredFiles& recovered_;
  DocumentSteps steps_;
  bool asksName_ = false;
  bool writeFailed_ = false;  // the last save did not reach the file
  bool givenUp_ = false;      // the user has just said No
  std::string spareCopy_;     // of changes that the user may have given up
};

}  // namespace oriolemark
