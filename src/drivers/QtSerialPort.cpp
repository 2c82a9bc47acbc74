#include "drivers/QtSerialPort.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <QList>
#include <QMetaObject>
#include <QSerialPortInfo>
#include <QString>
#include <QStringList>
#include <QThread>
#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "drivers/DeviceRights.h"
#include "drivers/SerialSettings.h"

namespace oriolemark {

namespace {

constexpr std::size_t kReceivedLimit = std::size_t{64} << 20;
constexpr qint64 kWriteLimit = 1000;  // ms
// The limit in ms from the start of the last write to the end of the close. A program that is
// closing has to end within 2 s.
constexpr qint64 kCloseLimit = 1800;

// A service that looks for modems opens each new adapter and keeps it for a while.
constexpr const char* kBusyCure =
    "Close the other program that is using it. If the adapter was plugged in just now, "
    "ModemManager may be trying it: wait half a minute, then connect again. A udev rule keeps "
    "ModemManager away (the manual explains how under Connecting).";

struct CountedError {
  int serial_icounter_struct::*counter;
  int code;
};

constexpr std::array kCountedErrors = {
    CountedError{&serial_icounter_struct::brk, serial_event::kBreak},
    CountedError{&serial_icounter_struct::frame, serial_event::kFraming},
    CountedError{&serial_icounter_struct::overrun, serial_event::kOverrun},
    CountedError{&serial_icounter_struct::buf_overrun, serial_event::kBufferOverflow},
    CountedError{&serial_icounter_struct::parity, serial_event::kParity},
};

struct Pin {
  int mask;
  int code;
};

constexpr std::array kPins = {
    Pin{TIOCM_CTS, serial_event::kCts},
    Pin{TIOCM_DSR, serial_event::kDsr},
    Pin{TIOCM_CAR, serial_event::kCarrier},
    Pin{TIOCM_RNG, serial_event::kRing},
};

std::string SystemText(int error) {
  return std::generic_category().message(error);
}

// Returns 0 once the line accepts more bytes, or an error number after `limit` ms.
int AwaitRoom(int handle, qint64 limit) {
  pollfd line = {.fd = handle, .events = POLLOUT, .revents = 0};
  const int ready = ::poll(&line, 1, static_cast<int>(std::max<qint64>(limit, 0)));
  if (ready == 0) return ETIMEDOUT;
  if (ready < 0) return errno == EINTR ? 0 : errno;
  return (line.revents & POLLOUT) != 0 ? 0 : EIO;
}

bool HasHungUp(int handle) {
  pollfd line = {.fd = handle, .events = 0, .revents = 0};
  return ::poll(&line, 1, 0) > 0;
}

// Bypasses the toolkit's buffer, because the toolkit treats a full line as a removed device.
int WriteAll(int handle, std::string_view bytes, qint64 limit) {
  QElapsedTimer clock;
  clock.start();
  while (!bytes.empty()) {
    const auto count = ::write(handle, bytes.data(), bytes.size());
    if (count > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (count == 0 || errno == EAGAIN) {
      if (const int error = AwaitRoom(handle, limit - clock.elapsed())) return error;
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

// The number of bytes that the system has not sent yet. 0 if it is unknown.
int Unsent(int handle) {
  int bytes = 0;
  return ::ioctl(handle, TIOCOUTQ, &bytes) == 0 ? bytes : 0;
}

}  // namespace

QtSerialPort::QtSerialPort(DevicePath devicePath) : devicePath_(std::move(devicePath)) {
  QObject::connect(&port_, &QSerialPort::readyRead, [this] { TakeReceived(); });
  QObject::connect(&port_, &QSerialPort::errorOccurred,
                   [this](QSerialPort::SerialPortError error) { NoteError(error); });
}

QtSerialPort::~QtSerialPort() {
  port_.disconnect();
  Close();
}

void QtSerialPort::Close() {
  if (state_ == State::Open) FinishSending();
  state_ = State::Closed;
  stalled_ = false;
  if (port_.isOpen()) port_.close();
  received_.clear();
  counters_.reset();
  pins_.reset();
}

// Closing a port resets the speed, then waits up to half a minute until the remaining bytes are
// sent. So this waits as long as the line needs, then drops the rest.
void QtSerialPort::FinishSending() {
  const int handle = port_.handle();
  const qint64 limit =
      std::min(TimeToSend(Unsent(handle), port_.baudRate()), kCloseLimit - lastWrite_.elapsed());
  QElapsedTimer clock;
  clock.start();
  while (!stalled_ && Unsent(handle) > 0 && clock.elapsed() < limit) QThread::msleep(1);
  if (stalled_ || Unsent(handle) > 0) {
    ::tcflush(handle, TCOFLUSH);
  } else {
    // The last bytes are still in the device's own buffer.
    ::tcdrain(handle);
  }
}

std::vector<ListedPort> QtSerialPort::ListPorts() const {
  std::vector<ListedPort> ports;
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
    // Two adapters of one kind differ in their serial numbers.
    QStringList words{port.description(), port.serialNumber()};
    words.removeAll(QString());
    ports.push_back({port.systemLocation().toStdString(), words.join(", ").toStdString()});
  }
  return ports;
}

std::string QtSerialPort::DeviceOf(int number, const std::string& name) const {
  if (!name.empty()) return name.starts_with('/') ? name : "/dev/" + name;
  const auto listed = QSerialPortInfo::availablePorts();
  if (number < 1 || number > listed.size()) return {};
  return listed[number - 1].systemLocation().toStdString();
}

// The system's words, an empty line, then the port and the cure.
std::string QtSerialPort::Failure(const std::string& text, const std::string& cure) const {
  return text + "\n\nCOM" + std::to_string(number_) + " is " + path_ + ". " + cure;
}

std::string QtSerialPort::OpenFailure() const {
  const std::string text = port_.errorString().toStdString();
  switch (port_.error()) {
    case QSerialPort::DeviceNotFoundError:
      return Failure(text, "Plug it in, or choose another port in the options.");
    case QSerialPort::PermissionError:
      // A missing right and another program's lock cause the same error.
      if (MayUse(path_)) return Failure(text, kBusyCure);
      return Failure(text, JoinGroup(GroupOf(path_, "dialout")));
    default:
      return Failure(text, "It cannot be used as a serial line at " + settings_ + ".");
  }
}

std::string QtSerialPort::WriteFailure(int error) const {
  return Failure(SystemText(error), error == ETIMEDOUT
                                        ? "It accepts no more bytes. Check its cable."
                                        : "It was disconnected. Plug it in and connect again.");
}

std::optional<std::string> QtSerialPort::Open() {
  Close();
  const auto settings = ParseSerialSettings(settings_);
  if (!settings) return SystemText(EINVAL) + "\n\nInvalid serial settings: " + settings_ + ".";
  path_ = DeviceOf(number_, devicePath_ ? devicePath_(number_) : std::string());
  if (path_.empty()) {
    return SystemText(ENOENT) + "\n\nNo serial device was found for COM" + std::to_string(number_) +
           ". Plug one in, or choose another port in the options.";
  }
  port_.setPortName(QString::fromStdString(path_));
  const bool set = port_.setBaudRate(settings->baudRate) && port_.setParity(settings->parity) &&
                   port_.setDataBits(settings->dataBits) && port_.setStopBits(settings->stopBits) &&
                   port_.setFlowControl(QSerialPort::NoFlowControl);
  if (!set || !port_.open(QIODevice::ReadWrite)) {
    auto failure = OpenFailure();
    Close();
    return failure;
  }
  port_.clear();
  state_ = State::Open;
  lastWrite_.start();
  counters_ = ReadCounters();
  pins_ = ReadPins();
  return std::nullopt;
}

std::optional<std::string> QtSerialPort::Write(std::string_view bytes) {
  if (state_ == State::Vanishing || state_ == State::Vanished) return WriteFailure(EIO);
  if (state_ == State::Closed) return SystemText(EBADF);
  lastWrite_.start();
  // A line that accepted nothing for that long gets no second wait.
  const int error = WriteAll(port_.handle(), bytes, stalled_ ? 0 : kWriteLimit);
  stalled_ = error == ETIMEDOUT;
  if (error == 0) return std::nullopt;
  return WriteFailure(error);
}

std::string QtSerialPort::Read() {
  return std::exchange(received_, {});
}

void QtSerialPort::TakeReceived() {
  const auto bytes = port_.readAll();
  if (state_ != State::Open || bytes.isEmpty()) return;
  const auto room = kReceivedLimit - received_.size();
  const auto count = std::min(room, static_cast<std::size_t>(bytes.size()));
  received_.append(bytes.constData(), count);
  if (count < static_cast<std::size_t>(bytes.size())) Raise(serial_event::kBufferOverflow);
  Raise(serial_event::kReceive);
}

void QtSerialPort::NoteError(QSerialPort::SerialPortError error) {
  if (state_ != State::Open) return;
  // A failed read alone does not mean that the device was removed. The removal causes either of two
  // errors, depending on the system's last error of any kind.
  const bool ended = error == QSerialPort::ResourceError ||
                     (error == QSerialPort::ReadError && HasHungUp(port_.handle()));
  if (!ended) return;
  state_ = State::Vanishing;
  // Not inside the port's own signal, but soon, because the port repeats the signal without a
  // pause.
  QMetaObject::invokeMethod(
      &port_, [this] { FinishVanishing(); }, Qt::QueuedConnection);
}

void QtSerialPort::FinishVanishing() {
  // The port has been closed or reopened meanwhile.
  if (state_ != State::Vanishing) return;
  state_ = State::Vanished;
  port_.close();
  Raise(serial_event::kVanished);
}

std::optional<serial_icounter_struct> QtSerialPort::ReadCounters() {
  serial_icounter_struct counters = {};
  if (::ioctl(port_.handle(), TIOCGICOUNT, &counters) != 0) return std::nullopt;
  return counters;
}

std::optional<int> QtSerialPort::ReadPins() {
  int pins = 0;
  if (::ioctl(port_.handle(), TIOCMGET, &pins) != 0) return std::nullopt;
  return pins;
}

void QtSerialPort::PollLines() {
  if (state_ != State::Open) return;
  // Both are replaced before the first event, because its handler may close the port.
  const auto oldCounters = counters_;
  const auto oldPins = pins_;
  const auto newCounters = counters_ = oldCounters ? ReadCounters() : std::nullopt;
  const auto newPins = pins_ = oldPins ? ReadPins() : std::nullopt;
  if (oldCounters && newCounters) {
    for (const auto& [counter, code] : kCountedErrors) {
      if ((*newCounters).*counter != (*oldCounters).*counter) Raise(code);
    }
  }
  if (oldPins && newPins) {
    for (const auto& [mask, code] : kPins) {
      if (((*newPins ^ *oldPins) & mask) != 0) Raise(code);
    }
  }
}

void QtSerialPort::Raise(int code) {
  if (onEvent) onEvent(code);
}

}  // namespace oriolemark
