#pragma once

#include <chrono>
#include <fstream>
#include <string>
#include <string_view>

// A file with one line for each piece of traffic: seconds since the start, the connector unless it
// is the serial line, a sign for the direction, and the bytes in quotes. Bytes that are not
// printable are escaped. Each line is written to the file at once.
class ByteLog {
 public:
  enum class Direction { kToInstrument, kFromInstrument };

  // Without a path nothing is logged. Returns false if the file cannot be written.
  bool Open(const std::string& path);
  void Note(std::chrono::milliseconds at, Direction direction, std::string_view bytes,
            std::string_view where = {});
  // Logs an event beside the traffic.
  void Remark(std::chrono::milliseconds at, std::string_view text);

 private:
  void Begin(std::chrono::milliseconds at);

  std::ofstream file_;
};
