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
// that vanishes or talks nonsense is dropped; the others notice nothing.
class BusSocket {
 public:
  // A path that stands is replaced if it is a socket, and an error if it is anything else. Only
  // this user may connect. Null, and the reason in `error`, where the socket cannot be made.
  static std::unique_ptr<BusSocket> Open(const std::string& path, Bench bench, std::string& error);

  // Takes the path away, unless another simulator has taken it over.
  ~BusSocket();
  BusSocket(const BusSocket&) = delete;
  BusSocket& operator=(const BusSocket&) = delete;

  const std::string& Path() const { return path_; }

  // What poll has to wait for.
  void AddTo(std::vector<pollfd>& waiting) const;
  // Does what the results allow, and what has become due; `results` are the entries that AddTo
  // added, with their results.
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
  dev_t device_ = 0;  // which file at the path is ours
  ino_t file_ = 0;
  std::vector<std::unique_ptr<BusClient>> clients_;
};
