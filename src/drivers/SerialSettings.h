#pragma once

#include <QSerialPort>
#include <optional>
#include <string_view>

namespace oriolemark {

struct SerialSettings {
  int baudRate = 9600;
  QSerialPort::Parity parity = QSerialPort::NoParity;
  QSerialPort::DataBits dataBits = QSerialPort::Data8;
  QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

// Reads a text such as "9600,n,8,1": rate above 0; n, e, o, m or s in either case; 5 to 8; 1, 1.5
// or 2. Blanks around a field are skipped. Returns nothing for any other text.
std::optional<SerialSettings> ParseSerialSettings(std::string_view text);

// The time in ms that a working line needs for this many bytes of ten bits each, plus a reserve.
// 0 for no bytes.
qint64 TimeToSend(qint64 bytes, qint64 baudRate);

}  // namespace oriolemark
