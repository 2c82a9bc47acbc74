#pragma once

#include <string>

// The orders for a test library, and the calls it got. It exports one as `Script`.
struct LibraryScript {
  std::string calls = {};    // GPIB calls and numbers, each with a blank behind it, and USB bytes
  std::string failing = {};  // the call that fails, over GPIB with 0x8100 and error 6
  int ibsta = 0x100;         // of the GPIB calls that succeed
  std::string reply = {};
};
