#pragma once

#include <chrono>
#include <deque>
#include <memory>
#include <string>

#include "simulator/Instrument.h"
#include "simulator/SerialSide.h"
#include "simulator/program/BusSocket.h"
#include "simulator/program/ByteLog.h"
#include "simulator/program/Console.h"
#include "simulator/program/Options.h"
#include "simulator/program/PseudoTerminal.h"

// One run of the program: the instrument behind its line, its socket or both, and the console on
// standard input. Everything runs on one thread, which sleeps until there is work.
class Session {
 public:
  explicit Session(Options options);
  ~Session();

  // Runs until "quit" or a signal to end. Returns the program's exit code.
  int Run();

 private:
  struct Outgoing {
    std::chrono::milliseconds due;
    std::string bytes;
  };

  bool Prepare();
  bool PlugIn();
  bool OpenLine();
  bool OpenSocket();
  void TellReady(const std::string& path);
  void Unplug();
  void PassTime();
  void WaitOnce();
  int MillisecondsToWait() const;
  bool IsSomethingDue() const;
  void ReceiveFromLine();
  void SendWhatIsDue();
  void ReadConsole();
  void CarryOut(const std::string& line);
  void NoteUnknown(int before);
  std::chrono::milliseconds Elapsed() const;

  Options options_;
  tx5000::Instrument instrument_;
  tx5000::SerialSide side_;
  Console console_;
  ByteLog log_;
  std::unique_ptr<PseudoTerminal> line_;
  std::unique_ptr<BusSocket> socket_;
  std::deque<Outgoing> outgoing_;
  std::size_t outgoingBytes_ = 0;
  std::string typed_;
  std::chrono::steady_clock::time_point begin_;
  int signals_ = -1;
  bool consoleOpen_ = true;
  bool ended_ = false;
};
