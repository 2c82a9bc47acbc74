#pragma once

#include <chrono>
#include <fstream>
#include <string>
#include <string_view>

// A file with a line for each piece of traffic: seconds since the start, where it passed unless on
// the serial line, a sign for the direction, the bytes in quotes with what is not printable written
// out. Each line is in the file at once.
class ByteLog {
 public:
  enum class Direction { kToInstrument, kFromInstrument };

  // Without a path nothing is kept. False where the file cannot be written.
  bool Open(const std::string& path);
  void Note(std::chrono::milliseconds at, Direction direction, std::string_view bytes,
            std::string_view where = {});
  // What happens beside the traffic.
  void Remark(std::chrono::milliseconds at, std::string_view text);

 private:
  void Begin(std::chrono::milliseconds at);

  std::ofstream file_;
};
