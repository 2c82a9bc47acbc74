#pragma once

#include <map>
#include <string>
#include <tuple>

#include "transfers/TransferState.h"

namespace oriolemark {

// The system's prompts, for use during transfers. When a message comes again in the same transfer,
// the user can mute it until the transfer ends. So a dead line does not need a click at each step.
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
  // By the number of the transfer. False: shown, and not muted.
  std::map<int, std::map<Words, bool>> muted_;
};

}  // namespace oriolemark
