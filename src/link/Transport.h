#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace oriolemark {

// One way for commands and replies to travel. Each way shows its own messages when it fails; the
// caller gets an empty text and goes on.
class Transport {
 public:
  // What differs between the ways beyond the wire itself.
  struct Traits {
    int firstSample;       // index of the first sample of a waveform's block; 0 is never shown
    bool marksBusy;        // CommBusy is set while a command or a question is under way
    bool progressByTimer;  // a timer shows how far a block is, and not each of its pieces
  };
  // Gets the number of characters that have arrived. May serve events.
  using Progress = std::function<void(std::size_t received)>;

  explicit Transport(Traits ways) : traits(ways) {}
  virtual ~Transport() = default;
  Transport(const Transport&) = delete;
  Transport& operator=(const Transport&) = delete;

  const Traits traits;

  // Opens the way anew. A failure clears LinkOpened.
  virtual void Open() = 0;
  // Writes one command.
  virtual void Send(std::string_view command) = 0;
  // The reply to the command that was sent last, without its line end.
  virtual std::string ReadReply() = 0;
  // The same for the long reply that holds samples. Events are served meanwhile. Ends with what has
  // come so far when the program is closing.
  virtual std::string ReadBlock(const Progress& progress) = 0;

 protected:
  // Twelve times the longest block there is: where no line end comes, a read stops here.
  static constexpr std::size_t kLongestBlock = std::size_t{1} << 20;
};

}  // namespace oriolemark
