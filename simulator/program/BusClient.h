#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/BusSide.h"
#include "simulator/MemoryWindow.h"
#include "simulator/program/ByteLog.h"
#include "simulator/shims/Protocol.h"

// The parts that all connections share. Each must outlive them.
struct Bench {
  tx5000::Instrument& instrument;
  tx5000::Faults& faults;
  ByteLog& log;
  int gpibAddress;
};

// One program at the socket, behind a GPIB or USB connector of its own. The connector's buffers are
// lost with the connection. Nothing here blocks. Time is the instrument's time.
class BusClient {
 public:
  // Owns the descriptor, which must be non-blocking.
  BusClient(int descriptor, Bench bench) : descriptor_(descriptor), bench_(bench) {}
  ~BusClient();
  BusClient(const BusClient&) = delete;
  BusClient& operator=(const BusClient&) = delete;

  int Descriptor() const { return descriptor_; }
  short PollEvents() const;

  // Takes the bytes that have arrived.
  void Receive();
  // Carries out the requests that it can, and sends as much as it can.
  void Serve();

  // The time at which Serve has work even if nothing arrives.
  std::optional<std::chrono::milliseconds> NextDue() const;

  // The other end has gone or has broken a rule.
  bool IsOver() const { return over_; }
  // A fault has pulled the plug.
  bool HasVanished() const { return side_ && side_->HasVanished(); }

 private:
  struct Row;
  struct PendingRead {
    std::size_t count;
    std::optional<std::chrono::milliseconds> deadline;
    std::string bytes;
  };

  bool TakeRequest();
  void CarryOut(std::string_view request);
  void ContinueRead();
  void Answer(tx5000::protocol::Outcome outcome, std::string_view result = {});
  void Send();

  void Open(std::string_view arguments);
  void Write(std::string_view arguments);
  void Read(std::string_view arguments);
  void Clear(std::string_view arguments);
  void CountWaiting(std::string_view arguments);
  void Fetch(std::string_view arguments);
  void Control(std::string_view arguments);
  void ReadBulk(std::string_view arguments);

  void NoteReceived(std::string_view bytes, bool end);
  void NoteSent(std::string_view bytes, bool end);
  void Remark(std::string_view text);

  int descriptor_;
  Bench bench_;
  std::string_view connector_;  // for the log
  std::optional<tx5000::BusSide> side_;
  tx5000::MemoryWindow memory_{bench_.instrument};
  std::optional<PendingRead> read_;
  std::string incoming_;
  std::string outgoing_;
  std::string spoken_;  // USB: the bytes of the command being written
  bool over_ = false;
};
