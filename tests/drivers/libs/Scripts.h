#pragma once

#include <string>

// What the test libraries are told to do and what was asked of them. Each exports one as `Script`.
struct GpibScript {
  std::string calls = {};    // each with a blank behind it
  std::string failing = {};  // the call that ends in 0x8100 and error 6
  int ibsta = 0x100;         // of the calls that succeed
  std::string reply = {};
};

struct UsbScript {
  std::string written = {};
  std::string reply = {};
  std::string failing = {};  // the operation that fails
  std::string controls = {};
};
