// Reads a data sheet of any bytes, writes it, and reads it back into other records. What is written
// then must be equal.
#include <unistd.h>

#include <cstdlib>

#include "datasheet/records/DataSheetFile.h"
#include "datasheet/records/ItemKinds.h"
#include "support/RecordingPrompts.h"

using namespace oriolemark;

namespace {

bool NoSync(std::FILE*) {
  return true;
}
const std::string kPath = "/tmp/fuzz" + std::to_string(getpid()) + ".orm";

// Reads these bytes over the sheet. Returns what it would save.
std::string Rewrite(std::string_view bytes, DataSheet& sheet) {
  static TransferScratch scratch;
  VirtualClock clock;
  RecordingPrompts prompts(clock);
  WriteFile(kPath, bytes, NoSync);
  ReadDataSheet(kPath, sheet, scratch, prompts);
  return DataSheetText(sheet);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  // They are reused, because making them takes longer than filling them.
  static DataSheet first, second;
  ForgetItems(first);
  // Few inputs would find the signature.
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::string written = Rewrite("Tavik Technologies TX5000 Data Sheet," + bytes, first);
  if (Rewrite(written, second) != written) std::abort();
  return 0;
}
