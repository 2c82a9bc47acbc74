#pragma once

#include <optional>
#include <string>

namespace oriolemark {

// The application's title, and the title of every message box that sets none.
inline constexpr const char* kApplicationTitle = "Oriolemark";

enum class MessageIcon { None, Exclamation, Critical, Question, Information };
// YesNo is for what cannot be undone: No is the default, and the answer to a cancelled question.
enum class MessageButtons { Ok, YesNo, YesNoCancel };
// OkAndMute is OK with the mute box ticked.
enum class MessageAnswer { Ok, Yes, No, Cancel, OkAndMute };

struct Message {
  std::string text{};        // 8-bit, shown as plain text; CR separates lines
  std::string systemText{};  // UTF-8, shown right after `text`: a path, or the system's own words
  std::string title = kApplicationTitle;
  MessageIcon icon = MessageIcon::None;
  MessageButtons buttons = MessageButtons::Ok;
  bool mayMute = false;  // adds a check box that hides this message for the rest of the transfer
  bool operator==(const Message&) const = default;
};

enum class FileAction { Open, Save };

// A file dialog. A save dialog asks before it accepts an existing file. It adds the chosen filter's
// extension to a name without one.
struct FileQuestion {
  FileAction action = FileAction::Open;
  std::string title;
  std::string filter;  // "Name (*.a)|*.a|Other (*.*)|*.*"
  bool operator==(const FileQuestion&) const = default;
};

// The system's own modal windows. Each call shows one window, serves events and returns the user's
// answer. While the program is closing it returns at once, as if cancelled.
class Prompts {
 public:
  virtual ~Prompts() = default;
  virtual MessageAnswer Show(const Message& message) = 0;
  // Returns the chosen path (UTF-8), or an empty text if cancelled.
  virtual std::string AskFileName(const FileQuestion& question) = 0;
  // Shows the printer dialog with this title. The program does not use its outcome.
  virtual void ShowPrinterDialog(const std::string& title) = 0;
};

}  // namespace oriolemark
