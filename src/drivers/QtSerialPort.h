#pragma once

#include <linux/serial.h>

#include <QElapsedTimer>
#include <QSerialPort>

#include "platform/SerialPort.h"

namespace oriolemark {

// A serial device of this system. Belongs to the application's thread. Error texts are UTF-8: the
// system's own words, and after an empty line cause and cure.
class QtSerialPort : public SerialPort {
 public:
  // Path of the device (UTF-8) that a port number stands for; empty where none is set up.
  using DevicePath = std::function<std::string(int number)>;

  // Without a path of its own, port 1 is the first serial device that the system lists, and so on.
  explicit QtSerialPort(DevicePath devicePath);
  ~QtSerialPort() override;

  bool IsOpen() const override { return state_ == State::Open; }
  // Blocks until the line has taken what was written, as long as its speed allows and within 2 s of
  // the last write; drops the rest.
  void Close() override;
  void SetSettings(const std::string& settings) override { settings_ = settings; }
  void SetPort(int number) override { number_ = number; }
  std::string DeviceOf(int number) const override;
  // An open port is closed first. Settings and number count from here on.
  std::optional<std::string> Open() override;
  // May block while the device's own buffer is full, for 1 s at most, then fails.
  std::optional<std::string> Write(std::string_view bytes) override;
  std::string Read() override;
  void PollLines() override;

 private:
  // Vanishing: the device has gone and the port is about to be closed. Vanished: it is closed, and
  // whoever still sends is told so.
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
  std::string path_;  // as last opened
  State state_ = State::Closed;
  std::string received_;
  bool stalled_ = false;     // the last write found no room
  QElapsedTimer lastWrite_;  // since it began, or since the port was opened
  // As last seen; nothing where the device has none.
  std::optional<serial_icounter_struct> counters_;
  std::optional<int> pins_;
  // Last, so that its signals end before what they use.
  QSerialPort port_;
};

}  // namespace oriolemark
