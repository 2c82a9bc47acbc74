#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/BusSide.h"
#include "simulator/MemoryWindow.h"
#include "simulator/program/ByteLog.h"
#include "simulator/shims/Protocol.h"

// What all connections share. Each part must outlive them.
struct Bench {
  tx5000::Instrument& instrument;
  tx5000::Faults& faults;
  ByteLog& log;
  int gpibAddress;
};

// One program at the socket, behind a GPIB or USB connector of its own: buffers are emptied with
// the connection. Nothing here blocks. Time is the instrument's.
class BusClient {
 public:
  // Owns the descriptor, which does not block.
  BusClient(int descriptor, Bench bench) : descriptor_(descriptor), bench_(bench) {}
  ~BusClient();
  BusClient(const BusClient&) = delete;
  BusClient& operator=(const BusClient&) = delete;

  int Descriptor() const { return descriptor_; }
  short PollEvents() const;

  // Takes what has arrived.
  void Receive();
  // Carries out what can be, and sends what can be sent.
  void Serve();

  // The time at which Serve has something to do although nothing arrives.
  std::optional<std::chrono::milliseconds> NextDue() const;

  // The other end is gone or broke a rule.
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
  std::string spoken_;  // over USB, of the command that is being written
  bool over_ = false;
};
