#pragma once

#include <optional>
#include <string>

namespace oriolemark {

// The place at which a help file opens. The numbers are those of the desktop's own help command.
enum class HelpCommand {
  Context = 1,         // the page of one topic
  Contents = 3,        // the table of contents
  PartialKey = 0x105,  // the keyword index, ready for the first letters of a keyword
};

// The desktop's viewer of help files. There is only one, and it is not modal: the program runs on
// beside it. Another Open() brings the same viewer to the front.
class HelpViewer {
 public:
  virtual ~HelpViewer() = default;

  // Opens the help file at `path`, a file-system path. For Context, `topic` has names of the
  // topic, one a line, the most exact first. The first name that the file knows counts, and the
  // start page is shown if it knows none. For other commands it is empty. Returns as soon as the
  // viewer is shown, and serves no events meanwhile. If the file cannot be opened (missing,
  // unreadable, not a help file), shows nothing and returns the error in UTF-8; the caller reports
  // it. Returns nothing on success.
  virtual std::optional<std::string> Open(const std::string& path, HelpCommand command,
                                          const std::string& topic) = 0;
};

}  // namespace oriolemark
