#pragma once

#include <map>
#include <string>
#include <tuple>

#include "transfers/TransferState.h"

namespace oriolemark {

// The prompts of the system, but a dead line does not ask for a click at each step of a transfer: a
// message that comes again during the same transfer can be muted until the transfer ends.
class TransferPrompts : public Prompts {
 public:
  TransferPrompts(Prompts& system, const TransferState& transfer)
      : system_(system), transfer_(transfer) {}

  MessageAnswer Show(const Message& message) override;
  std::string AskFileName(const FileQuestion& question) override {
    return system_.AskFileName(question);
  }
  void ShowPrinterDialog(const std::string& title) override { system_.ShowPrinterDialog(title); }

 private:
  using Words = std::tuple<std::string, std::string, std::string>;

  Prompts& system_;
  const TransferState& transfer_;
  int runNumber_ = 0;            // of the transfer that these were shown in
  std::map<Words, bool> muted_;  // false: shown, and to be shown again
};

}  // namespace oriolemark
