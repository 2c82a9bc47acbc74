#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "link/LinkState.h"
#include "platform/Prompts.h"
#include "platform/Waiting.h"

namespace oriolemark {

// What the link and each of its transports work on.
struct LinkContext {
  const LinkSettings& settings;
  LinkState& state;
  Waiting& waiting;
  Prompts& prompts;
};

// A transport for commands and replies. It shows its own messages when it fails; the caller gets an
// empty text and goes on.
class Transport {
 public:
  // The differences between the transports, apart from the wire itself.
  struct Traits {
    // Index of a block's first sample. A sample at index 0 is never drawn.
    int firstSample;
    // CommBusy is set during a command or a query.
    bool marksBusy;
    // True: the transfer window's Timer2 moves the bar. False: each piece moves it and serves
    // events.
    bool progressByTimer;
  };
  // Receives the number of characters that have arrived. May serve events. Over GPIB it has to.
  using Progress = std::function<void(std::size_t received)>;

  Transport(Traits ways, const LinkContext& context)
      : traits(ways),
        settings_(context.settings),
        state_(context.state),
        waiting_(context.waiting),
        prompts_(context.prompts) {}
  virtual ~Transport() = default;
  Transport(const Transport&) = delete;
  Transport& operator=(const Transport&) = delete;

  const Traits traits;

  // Opens the transport again. A failure clears LinkOpened.
  virtual void Open() = 0;
  // Writes one command.
  virtual void Send(std::string_view command) = 0;
  // Returns the reply to the last command, without its line end.
  virtual std::string ReadReply() = 0;
  // The same for the long reply that holds samples. RS232 and USB serve events while they wait.
  // GPIB blocks for each piece; there `progress` must serve them. If the program is closing,
  // returns what has come so far, or nothing.
  virtual std::string ReadBlock(const Progress& progress) = 0;

 protected:
  // Limit for a block that comes in pieces without a line end: twelve times the longest block.
  static constexpr std::size_t kLongestBlock = std::size_t{1} << 20;

  const LinkSettings& settings_;
  LinkState& state_;
  Waiting& waiting_;
  Prompts& prompts_;
};

}  // namespace oriolemark
