#include "simulator/program/ByteLog.h"

#include <iomanip>

bool ByteLog::Open(const std::string& path) {
  if (path.empty()) return true;
  file_.open(path, std::ios::trunc);
  return file_.is_open();
}

void ByteLog::Begin(std::chrono::milliseconds at) {
  file_ << std::setfill(' ') << std::setw(6) << at.count() / 1000 << '.' << std::setfill('0')
        << std::setw(3) << at.count() % 1000 << ' ';
}

void ByteLog::Note(std::chrono::milliseconds at, Direction direction, std::string_view bytes,
                   std::string_view where) {
  if (!file_.is_open()) return;
  Begin(at);
  if (!where.empty()) file_ << where << ' ';
  file_ << (direction == Direction::kToInstrument ? "> \"" : "< \"");
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\r') {
      file_ << "\\r";
    } else if (c == '\n') {
      file_ << "\\n";
    } else if (c == '"' || c == '\\') {
      file_ << '\\' << c;
    } else if (byte < 32 || byte > 126) {
      file_ << "\\x" << std::hex << std::setw(2) << static_cast<int>(byte) << std::dec;
    } else {
      file_ << c;
    }
  }
  file_ << "\"" << std::endl;
}

void ByteLog::Remark(std::chrono::milliseconds at, std::string_view text) {
  if (!file_.is_open()) return;
  Begin(at);
  file_ << "# " << text << std::endl;
}
