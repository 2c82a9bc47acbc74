// Reads a control file of any bytes, writes the settings, and reads them back. They must be equal.
#include <unistd.h>

#include <cstdlib>

#include "controller/records/ControlFile.h"
#include "platform/Files.h"
#include "support/RecordingPrompts.h"

using namespace oriolemark;

namespace {

constexpr std::size_t kLimit = std::size_t{1} << 20;
bool NoSync(std::FILE*) {
  return true;
}
const std::string kPath = "/tmp/fuzz" + std::to_string(getpid()) + ".cfx";

// Reads the file over these settings and writes it again. Returns its new text.
std::string Rewrite(CtrlSettings settings) {
  VirtualClock clock;
  RecordingPrompts prompts(clock);
  ReadControlFile(kPath, settings, prompts);
  WriteControlFile(kPath, settings, prompts, NoSync);
  return ReadFile(kPath, kLimit).bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  WriteFile(kPath, {reinterpret_cast<const char*>(data), std::min(size, kLimit / 2)}, NoSync);
  const std::string written = Rewrite({});
  if (Rewrite({.RunStop = "", .Grid = ""}) != written) std::abort();
  return 0;
}
