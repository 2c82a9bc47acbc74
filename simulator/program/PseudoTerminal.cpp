#include "simulator/program/PseudoTerminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace {

bool IsLink(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

}  // namespace

std::unique_ptr<PseudoTerminal> PseudoTerminal::Open(const std::string& linkPath,
                                                     std::string& error) {
  std::unique_ptr<PseudoTerminal> terminal(new PseudoTerminal);
  if (!terminal->Make()) {
    error = std::string("cannot make a pseudo-terminal: ") + std::strerror(errno);
    return nullptr;
  }
  if (!linkPath.empty() && !terminal->Link(linkPath)) {
    error = "cannot make the link " + linkPath + ": " + std::strerror(errno);
    return nullptr;
  }
  return terminal;
}

bool PseudoTerminal::Make() {
  near_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (near_ < 0 || grantpt(near_) != 0 || unlockpt(near_) != 0) return false;
  std::array<char, 128> name{};
  if (ptsname_r(near_, name.data(), name.size()) != 0) return false;
  path_ = name.data();
  // We keep the far end open too. Otherwise reading would fail whenever no other program has it
  // open.
  far_ = open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  termios mode{};
  if (far_ < 0 || tcgetattr(far_, &mode) != 0) return false;
  cfmakeraw(&mode);
  return tcsetattr(far_, TCSANOW, &mode) == 0;
}

bool PseudoTerminal::Link(const std::string& linkPath) {
  if (IsLink(linkPath)) unlink(linkPath.c_str());
  if (symlink(path_.c_str(), linkPath.c_str()) != 0) return false;
  linkPath_ = linkPath;
  return true;
}

PseudoTerminal::~PseudoTerminal() {
  std::error_code ignored;
  const auto target = std::filesystem::read_symlink(linkPath_, ignored);
  // Another simulator may have replaced the link meanwhile.
  if (!linkPath_.empty() && target == path_) unlink(linkPath_.c_str());
  if (far_ >= 0) close(far_);
  if (near_ >= 0) close(near_);
}

std::string PseudoTerminal::Read() {
  // A program that was killed leaves its reservation on the line, because we still hold the line
  // open.
  ioctl(far_, TIOCNXCL);
  std::array<char, 4096> buffer;
  const ssize_t count = read(near_, buffer.data(), buffer.size());
  return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
}

std::size_t PseudoTerminal::Write(std::string_view bytes) {
  const ssize_t count = write(near_, bytes.data(), bytes.size());
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}
