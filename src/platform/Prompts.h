#pragma once

#include <optional>
#include <string>

namespace oriolemark {

// The application's title: the title of every message box that names none.
inline constexpr const char* kApplicationTitle = "Oriolemark";

enum class MessageIcon { None, Exclamation, Critical, Question, Information };
enum class MessageButtons { Ok, YesNoCancel };
// OkAndMute: OK, with the mark that this message need not come again.
enum class MessageAnswer { Ok, Yes, No, Cancel, OkAndMute };

struct Message {
  std::string text{};        // 8-bit, shown as plain text; CR stands between lines
  std::string systemText{};  // UTF-8, shown right behind it: a path, or the system's own words
  std::string title = kApplicationTitle;
  MessageIcon icon = MessageIcon::None;
  MessageButtons buttons = MessageButtons::Ok;
  bool mayMute = false;  // with a check box not to see it again during this transfer
  bool operator==(const Message&) const = default;
};

enum class FileAction { Open, Save };

// A file dialog. A save dialog asks before it takes a file that exists, and gives a name without an
// extension that of the chosen filter.
struct FileQuestion {
  FileAction action = FileAction::Open;
  std::string title;
  std::string filter;  // "Name (*.a)|*.a|Other (*.*)|*.*"
  bool operator==(const FileQuestion&) const = default;
};

// The system's own modal windows. Each call shows one and returns with the user's answer; events
// are served meanwhile. While the program is closing they return at once, as cancelled.
class Prompts {
 public:
  virtual ~Prompts() = default;
  virtual MessageAnswer Show(const Message& message) = 0;
  // The chosen path (UTF-8), empty when cancelled.
  virtual std::string AskFileName(const FileQuestion& question) = 0;
  // The printer dialog, under its title. Its outcome is of no use to the program.
  virtual void ShowPrinterDialog(const std::string& title) = 0;
};

}  // namespace oriolemark
