#include "drivers/SerialSettings.h"

#include <array>
#include <charconv>
#include <span>

namespace oriolemark {

namespace {

template <typename Value>
struct Choice {
  std::string_view text;
  Value value;
};
template <typename Value>
Choice(const char*, Value) -> Choice<Value>;

constexpr std::array kParities = {
    Choice{"n", QSerialPort::NoParity},    Choice{"N", QSerialPort::NoParity},
    Choice{"e", QSerialPort::EvenParity},  Choice{"E", QSerialPort::EvenParity},
    Choice{"o", QSerialPort::OddParity},   Choice{"O", QSerialPort::OddParity},
    Choice{"m", QSerialPort::MarkParity},  Choice{"M", QSerialPort::MarkParity},
    Choice{"s", QSerialPort::SpaceParity}, Choice{"S", QSerialPort::SpaceParity},
};

constexpr std::array kDataBits = {
    Choice{"5", QSerialPort::Data5},
    Choice{"6", QSerialPort::Data6},
    Choice{"7", QSerialPort::Data7},
    Choice{"8", QSerialPort::Data8},
};

constexpr std::array kStopBits = {
    Choice{"1", QSerialPort::OneStop},
    Choice{"1.5", QSerialPort::OneAndHalfStop},
    Choice{"2", QSerialPort::TwoStop},
};

template <typename Value, std::size_t kCount>
bool Choose(const std::array<Choice<Value>, kCount>& choices, std::string_view text, Value& value) {
  for (const auto& choice : choices) {
    if (choice.text != text) continue;
    value = choice.value;
    return true;
  }
  return false;
}

bool ReadRate(std::string_view text, int& rate) {
  const auto* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, rate);
  return error == std::errc() && rest == end && rate > 0;
}

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Splits the text at its commas. Returns false if the number of fields is different.
bool CutFields(std::string_view text, std::span<std::string_view> fields) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto comma = text.find(',');
    const bool last = i + 1 == fields.size();
    if (last != (comma == std::string_view::npos)) return false;
    fields[i] = Trimmed(text.substr(0, comma));
    if (!last) text.remove_prefix(comma + 1);
  }
  return true;
}

}  // namespace

std::optional<SerialSettings> ParseSerialSettings(std::string_view text) {
  std::array<std::string_view, 4> fields;
  SerialSettings settings;
  if (CutFields(text, fields) && ReadRate(fields[0], settings.baudRate) &&
      Choose(kParities, fields[1], settings.parity) &&
      Choose(kDataBits, fields[2], settings.dataBits) &&
      Choose(kStopBits, fields[3], settings.stopBits)) {
    return settings;
  }
  return std::nullopt;
}

qint64 TimeToSend(qint64 bytes, qint64 baudRate) {
  constexpr qint64 kBits = 10;
  constexpr qint64 kSpare = 100;
  if (bytes <= 0 || baudRate <= 0) return 0;
  return bytes * kBits * 1000 / baudRate + kSpare;
}

}  // namespace oriolemark
