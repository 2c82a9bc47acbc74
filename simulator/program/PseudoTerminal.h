#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

// A line with two ends: ours, and one that any program opens by a path like a serial port. Raw,
// without echo. The far end may be opened and closed any number of times.
class PseudoTerminal {
 public:
  // If the link path exists already, a symbolic link there is replaced and anything else is an
  // error. If the line cannot be made, returns null and the reason in `error`.
  static std::unique_ptr<PseudoTerminal> Open(const std::string& linkPath, std::string& error);

  // Closes the line and removes the link.
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  // The path to open: the link if there is one.
  const std::string& Path() const { return linkPath_.empty() ? path_ : linkPath_; }

  // For poll. Read and Write never block.
  int Descriptor() const { return near_; }
  std::string Read();
  std::size_t Write(std::string_view bytes);  // returns how many were written

 private:
  PseudoTerminal() = default;
  bool Make();
  bool Link(const std::string& linkPath);

  int near_ = -1;
  int far_ = -1;
  std::string path_;
  std::string linkPath_;
};
