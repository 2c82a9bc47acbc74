#pragma once

#include <linux/serial.h>

#include <QElapsedTimer>
#include <QSerialPort>

#include "platform/SerialPort.h"

namespace oriolemark {

// A serial device of this system. Use it in the application's thread only. Error texts are UTF-8:
// the system's own words, an empty line, then cause and cure.
class QtSerialPort : public SerialPort {
 public:
  // The settings' name (UTF-8) of the device for a port number. Empty if they have none.
  using DevicePath = std::function<std::string(int number)>;

  explicit QtSerialPort(DevicePath devicePath);
  ~QtSerialPort() override;

  bool IsOpen() const override { return state_ == State::Open; }
  // Blocks until the written bytes are sent, for no longer than the line's speed requires, and
  // until at most 2 s after the last write. Drops the rest.
  void Close() override;
  void SetSettings(const std::string& settings) override { settings_ = settings; }
  void SetPort(int number) override { number_ = number; }
  std::vector<ListedPort> ListPorts() const override;
  // A name without a slash at its head is one in the folder /dev.
  std::string DeviceOf(int number, const std::string& name) const override;
  // Closes an open port first. Uses the present settings and number.
  std::optional<std::string> Open() override;
  // Blocks for at most 1 s while the device's own buffer is full, then fails.
  std::optional<std::string> Write(std::string_view bytes) override;
  std::string Read() override;
  void PollLines() override;

 private:
  // Vanishing: the device was removed and the port is about to be closed. Vanished: the port is
  // closed, and every write fails with a message.
  enum class State { Closed, Open, Vanishing, Vanished };

  std::string Failure(const std::string& text, const std::string& cure) const;
  std::string OpenFailure() const;
  std::string WriteFailure(int error) const;
  void FinishSending();
  void TakeReceived();
  void NoteError(QSerialPort::SerialPortError error);
  void FinishVanishing();
  std::optional<serial_icounter_struct> ReadCounters();
  std::optional<int> ReadPins();
  void Raise(int code);

  DevicePath devicePath_;
  std::string settings_ = "9600,n,8,1";
  int number_ = 1;
  std::string path_;  // the path that was opened last
  State state_ = State::Closed;
  std::string received_;
  bool stalled_ = false;     // the last write found the buffer full
  QElapsedTimer lastWrite_;  // since the last write began, or since the port was opened
  // The last counters. Nothing if the device has none.
  std::optional<serial_icounter_struct> counters_;
  std::optional<int> pins_;
  // The last member, so that its signals end before the members that they use.
  QSerialPort port_;
};

}  // namespace oriolemark
