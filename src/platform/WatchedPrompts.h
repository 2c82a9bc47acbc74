#pragma once

#include "platform/Prompts.h"

namespace oriolemark {

// The system's prompts, which also know whether one of their windows is open.
class WatchedPrompts : public Prompts {
 public:
  explicit WatchedPrompts(Prompts& system) : system_(system) {}

  bool AnyOpen() const { return open_ > 0; }

  MessageAnswer Show(const Message& message) override {
    const Open open(open_);
    return system_.Show(message);
  }
  std::string AskFileName(const FileQuestion& question) override {
    const Open open(open_);
    return system_.AskFileName(question);
  }
  void ShowPrinterDialog(const std::string& title) override {
    const Open open(open_);
    system_.ShowPrinterDialog(title);
  }

 private:
  // One open window, to the end of the block.
  class Open {
   public:
    explicit Open(int& count) : count_(count) { ++count_; }
    ~Open() { --count_; }
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;

   private:
    int& count_;
  };

  Prompts& system_;
  int open_ = 0;
};

}  // namespace oriolemark
