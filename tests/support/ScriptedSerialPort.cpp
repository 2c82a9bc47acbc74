#include "support/ScriptedSerialPort.h"

#include <utility>

namespace oriolemark {

void ScriptedSerialPort::ArriveAfter(Milliseconds delay, const std::string& bytes) {
  clock_.After(delay, [this, bytes] {
    arrived_ += bytes;
    Raise(serial_event::kReceive);
  });
}

void ScriptedSerialPort::Close() {
  open = false;
  ++closes;
}

std::optional<std::string> ScriptedSerialPort::Open() {
  if (!openError) open = true;
  return openError;
}

std::optional<std::string> ScriptedSerialPort::Write(std::string_view bytes) {
  if (writeError) return writeError;
  if (!open) return "Input/output error";
  written += bytes;
  const auto exchange = script_.Hear(std::string(bytes.substr(0, bytes.find('\r'))));
  if (exchange && !exchange->reply.empty()) ArriveAfter(exchange->delay, exchange->reply);
  return std::nullopt;
}

std::string ScriptedSerialPort::Read() {
  return std::exchange(arrived_, "");
}

}  // namespace oriolemark
