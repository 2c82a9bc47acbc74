#include "simulator/program/BusClient.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace protocol = tx5000::protocol;
using protocol::Outcome;
using std::chrono::milliseconds;

struct BusClient::Row {
  protocol::Kind kind;
  std::size_t shortest;  // length of the arguments
  std::size_t longest;
  void (BusClient::*carryOut)(std::string_view arguments);
};

namespace {

constexpr std::size_t kLongestSpoken = 256;

}  // namespace

BusClient::~BusClient() {
  close(descriptor_);
}

short BusClient::PollEvents() const {
  const bool room = incoming_.size() < protocol::kLongestRequest + protocol::kLengthSize;
  return static_cast<short>((room ? POLLIN : 0) | POLLRDHUP | (outgoing_.empty() ? 0 : POLLOUT));
}

void BusClient::Receive() {
  std::array<char, 16384> buffer;
  const ssize_t count = recv(descriptor_, buffer.data(), buffer.size(), 0);
  if (count > 0) incoming_.append(buffer.data(), static_cast<std::size_t>(count));
  over_ = over_ || count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);
}

void BusClient::Serve() {
  const int before = bench_.instrument.UnknownCommands();
  if (read_) ContinueRead();
  if (!outgoing_.empty()) Send();
  // A program that does not take its answers gets no further ones, so they never pile up.
  while (!over_ && !read_ && outgoing_.empty() && TakeRequest()) {
    if (!outgoing_.empty()) Send();
  }
  const int more = bench_.instrument.UnknownCommands() - before;
  if (more > 0) Remark("not understood: " + std::to_string(more));
}

bool BusClient::TakeRequest() {
  if (incoming_.size() < protocol::kLengthSize) return false;
  const std::uint32_t length = protocol::UnpackNumber(incoming_, protocol::kLengthSize);
  over_ = over_ || length == 0 || length > protocol::kLongestRequest;
  if (over_ || incoming_.size() < protocol::kLengthSize + length) return false;
  const std::string request = incoming_.substr(protocol::kLengthSize, length);
  incoming_.erase(0, protocol::kLengthSize + length);
  CarryOut(request);
  return !over_;
}

void BusClient::CarryOut(std::string_view request) {
  static constexpr Row kRows[] = {
      {protocol::kOpen, 2, 2, &BusClient::Open},
      {protocol::kWrite, 1, 1 + protocol::kMostBytes, &BusClient::Write},
      {protocol::kRead, 8, 8, &BusClient::Read},
      {protocol::kClear, 0, 0, &BusClient::Clear},
      {protocol::kWaiting, 0, 0, &BusClient::CountWaiting},
      {protocol::kFetch, 4, 4, &BusClient::Fetch},
      {protocol::kControl, 5, 5, &BusClient::Control},
      {protocol::kBulkRead, 4, 4, &BusClient::ReadBulk},
  };
  const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                [&](const Row& r) { return r.kind == request[0]; });
  const std::string_view arguments = request.substr(1);
  over_ = row == std::end(kRows) || arguments.size() < row->shortest ||
          arguments.size() > row->longest || (!side_ && row->kind != protocol::kOpen);
  if (over_) {
    Remark("cut off: not the language of this socket");
  } else {
    (this->*row->carryOut)(arguments);
  }
}

void BusClient::Answer(Outcome outcome, std::string_view result) {
  outgoing_ += protocol::PackMessage(outcome, result);
}

void BusClient::Send() {
  const ssize_t count = send(descriptor_, outgoing_.data(), outgoing_.size(), MSG_NOSIGNAL);
  if (count > 0) outgoing_.erase(0, static_cast<std::size_t>(count));
  over_ = over_ || (count < 0 && errno != EAGAIN && errno != EINTR);
}

void BusClient::Open(std::string_view arguments) {
  const bool gpib = arguments[0] == 'g';
  over_ = side_ || (!gpib && arguments[0] != 'u');
  if (over_) return;
  if (gpib && static_cast<unsigned char>(arguments[1]) != bench_.gpibAddress) {
    Answer(protocol::kNobody);
    return;
  }
  connector_ = gpib ? "gpib" : "usb";
  side_.emplace(bench_.instrument, bench_.faults,
                gpib ? tx5000::Framing::kEnd : tx5000::Framing::kReturn);
  Answer(protocol::kDone);
}

void BusClient::Write(std::string_view arguments) {
  const bool end = arguments[0] != 0;
  NoteReceived(arguments.substr(1), end);
  side_->Receive(arguments.substr(1), end);
  // After a fault has pulled the plug there is no answer.
  if (!HasVanished()) Answer(protocol::kDone);
}

void BusClient::Read(std::string_view arguments) {
  const std::uint32_t count = protocol::UnpackNumber(arguments, 4);
  const std::uint32_t time = protocol::UnpackNumber(arguments.substr(4), 4);
  over_ = count == 0 || count > protocol::kMostBytes;
  if (over_) return;
  read_ = PendingRead{count, {}, {}};
  if (time > 0) read_->deadline = bench_.instrument.Now() + milliseconds(time);
  ContinueRead();
}

void BusClient::ContinueRead() {
  const auto piece = side_->FetchUpToEnd(read_->count - read_->bytes.size());
  read_->bytes += piece.bytes;
  const bool complete = piece.end || read_->bytes.size() == read_->count;
  const bool late = read_->deadline && *read_->deadline <= bench_.instrument.Now();
  if (!complete && !late) return;
  const PendingRead read = std::move(*read_);
  read_.reset();
  NoteSent(read.bytes, piece.end);
  Answer(complete ? protocol::kDone : protocol::kFailed,
         std::string(1, piece.end ? '\1' : '\0') + read.bytes);
}

void BusClient::Clear(std::string_view) {
  side_->Clear();
  spoken_.clear();
  Remark("clear");
  Answer(protocol::kDone);
}

void BusClient::CountWaiting(std::string_view) {
  Answer(protocol::kDone, protocol::PackNumber(static_cast<std::uint32_t>(side_->Waiting()), 4));
}

void BusClient::Fetch(std::string_view arguments) {
  const std::uint32_t count = protocol::UnpackNumber(arguments, 4);
  over_ = count > protocol::kMostBytes;
  if (over_) return;
  const auto bytes = side_->Fetch(count);
  if (bytes) NoteSent(*bytes, false);
  Answer(bytes ? protocol::kDone : protocol::kFailed, bytes.value_or(""));
}

void BusClient::Control(std::string_view arguments) {
  const auto request = static_cast<unsigned char>(arguments[0]);
  const std::uint32_t number = protocol::UnpackNumber(arguments.substr(1), 4);
  const bool taken = memory_.Control(request, number);
  Remark("control request " + std::to_string(request) + " of " + std::to_string(number) +
         (taken ? "" : ": refused"));
  Answer(taken ? protocol::kDone : protocol::kFailed);
}

void BusClient::ReadBulk(std::string_view arguments) {
  const std::uint32_t count = protocol::UnpackNumber(arguments, 4);
  const auto bytes = memory_.Read(count);
  Remark("bulk read of " + std::to_string(count) + (bytes ? "" : ": refused"));
  Answer(bytes ? protocol::kDone : protocol::kFailed, bytes.value_or(""));
}

std::optional<milliseconds> BusClient::NextDue() const {
  if (!read_) return std::nullopt;
  const auto arrival = side_->NextArrival();
  if (!arrival || !read_->deadline) return arrival ? arrival : read_->deadline;
  return std::min(*arrival, *read_->deadline);
}

void BusClient::NoteReceived(std::string_view bytes, bool end) {
  const auto note = [this](std::string_view text, bool last) {
    const std::string where = std::string(connector_) + (last ? " END" : "");
    bench_.log.Note(bench_.instrument.Now(), ByteLog::Direction::kToInstrument, text, where);
  };
  if (connector_ == "gpib") {
    note(bytes, end);
    return;
  }
  // Over USB commands come byte by byte. The log has one line for each command.
  for (const char byte : bytes) {
    spoken_ += byte;
    if (byte != '\r' && spoken_.size() < kLongestSpoken) continue;
    note(spoken_, false);
    spoken_.clear();
  }
}

void BusClient::NoteSent(std::string_view bytes, bool end) {
  if (bytes.empty()) return;
  const std::string where = std::string(connector_) + (end ? " END" : "");
  bench_.log.Note(bench_.instrument.Now(), ByteLog::Direction::kFromInstrument, bytes, where);
}

void BusClient::Remark(std::string_view text) {
  const std::string where = connector_.empty() ? "socket" : std::string(connector_);
  bench_.log.Remark(bench_.instrument.Now(), where + ": " + std::string(text));
}
