#pragma once

#include <optional>
#include <string>

namespace oriolemark {

// What a help file is opened for. The numbers are those of the desktop's own help command.
enum class HelpCommand {
  Context = 1,         // one page
  Contents = 3,        // the table of contents
  PartialKey = 0x105,  // the keyword index, ready for the first letters of a keyword
};

// The desktop's viewer of help files. There is one, and it is not modal: the program goes on beside
// it, and a further Open() brings the same viewer to the front.
class HelpViewer {
 public:
  virtual ~HelpViewer() = default;

  // Opens the help file at `path`, a file-system path. `page` is the page within it that Context
  // is for, with "#" and a heading if need be; other commands have none. Returns as soon as it is
  // shown, serving no events meanwhile. A file that cannot be opened (missing, unreadable, not a
  // help file) shows nothing and gives the description of the error in UTF-8; to tell it is the
  // caller's part. Gives nothing on success.
  virtual std::optional<std::string> Open(const std::string& path, HelpCommand command,
                                          const std::string& page) = 0;
};

}  // namespace oriolemark
