#pragma once

#include <poll.h>
#include <sys/types.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "simulator/program/BusClient.h"

// A Unix stream socket at which programs reach the instrument's GPIB and USB connectors. A program
// that vanishes or breaks the protocol is dropped, without effect on the others.
class BusSocket {
 public:
  // If the path exists already, a socket there is replaced and anything else is an error. Only this
  // user may connect. If the socket cannot be made, returns null and the reason in `error`.
  static std::unique_ptr<BusSocket> Open(const std::string& path, Bench bench, std::string& error);

  // Removes the path, unless another simulator has replaced it.
  ~BusSocket();
  BusSocket(const BusSocket&) = delete;
  BusSocket& operator=(const BusSocket&) = delete;

  const std::string& Path() const { return path_; }

  // Adds the descriptors that poll has to watch.
  void AddTo(std::vector<pollfd>& waiting) const;
  // Handles the results of poll and what has become due. `results` are the entries that AddTo
  // added.
  void Serve(const pollfd* results);
  std::optional<std::chrono::milliseconds> NextDue() const;

  // A fault has pulled the plug.
  bool HasVanished() const;

 private:
  BusSocket(std::string path, Bench bench) : path_(std::move(path)), bench_(bench) {}
  bool Listen();
  void Accept();

  std::string path_;
  Bench bench_;
  int listener_ = -1;
  dev_t device_ = 0;  // identify our own file at the path
  ino_t file_ = 0;
  std::vector<std::unique_ptr<BusClient>> clients_;
};
