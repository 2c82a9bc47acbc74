#include "link/SerialEvents.h"

#include <algorithm>
#include <iterator>

namespace oriolemark {
namespace {

enum class Kind { Event, Error };

struct CodeRow {
  int code;
  Kind kind;
  const char* text;
};

constexpr CodeRow kCodes[] = {
    {serial_event::kCts, Kind::Event, "Change in CTS Detected"},
    {serial_event::kDsr, Kind::Event, "Change in DSR Detected"},
    {serial_event::kCarrier, Kind::Event, "Change in CD Detected"},
    {serial_event::kRing, Kind::Event, "The Phone is Ringing"},
    {7, Kind::Event, "End of File Detected"},
    {serial_event::kBreak, Kind::Error, "Break Received"},
    {1002, Kind::Error, "CTS Timeout"},
    {1003, Kind::Error, "DSR Timeout"},
    {serial_event::kFraming, Kind::Error, "Framing Error"},
    {serial_event::kOverrun, Kind::Error, "Overrun Error"},
    {1007, Kind::Error, "Carrier Detect Timeout"},
    {serial_event::kBufferOverflow, Kind::Error, "Receive Buffer Overflow"},
    {serial_event::kParity, Kind::Error, "Parity Error"},
    {1010, Kind::Error, "Transmit Buffer Full"},
    {1011, Kind::Error, "Error retrieving DCB"},
};
constexpr CodeRow kUnlisted{0, Kind::Error, "Unknown error or event"};

const CodeRow& RowOf(int code) {
  const auto row = std::find_if(std::begin(kCodes), std::end(kCodes),
                                [code](const CodeRow& each) { return each.code == code; });
  return row != std::end(kCodes) ? *row : kUnlisted;
}

}  // namespace

SerialEvents::SerialEvents(SerialPort& port, RS232Func& rs232) : port_(port), rs232_(rs232) {
  port_.onEvent = [this](int code) { OnComm(code); };
}

SerialEvents::~SerialEvents() {
  port_.onEvent = nullptr;
}

void SerialEvents::OnComm(int code) {
  if (code == serial_event::kReceive) {
    rs232_.RS232OnReceive(port_.Read());
  } else if (code != serial_event::kSend) {
    const CodeRow& row = RowOf(code);
    (row.kind == Kind::Event ? EventMsg : ErrorMsg) = row.text;
  }
  // Neither text is ever cleared. A text that was set once is shown again at each event. After the
  // first event of the line, no error is shown any more.
  const std::string& shown = EventMsg.empty() ? ErrorMsg : EventMsg;
  if (!shown.empty() && showStatus) showStatus("Status: " + shown);
}

}  // namespace oriolemark
