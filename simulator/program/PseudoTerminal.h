#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

// A line with two ends: ours, and one that any program opens by a path as it opens a serial port.
// Raw, with no echo. The far end may be opened and closed as often as it likes.
class PseudoTerminal {
 public:
  // A link path that stands is replaced if it is a symbolic link, and an error if it is anything
  // else. Null, and the reason in `error`, where the line cannot be made.
  static std::unique_ptr<PseudoTerminal> Open(const std::string& linkPath, std::string& error);

  // Takes the link away with the line.
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  // Where to open it: the link if there is one.
  const std::string& Path() const { return linkPath_.empty() ? path_ : linkPath_; }

  // For poll. Neither call below ever blocks.
  int Descriptor() const { return near_; }
  std::string Read();
  std::size_t Write(std::string_view bytes);  // how many went

 private:
  PseudoTerminal() = default;
  bool Make();
  bool Link(const std::string& linkPath);

  int near_ = -1;
  int far_ = -1;
  std::string path_;
  std::string linkPath_;
};
