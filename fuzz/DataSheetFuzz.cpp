// Reads a data sheet of any bytes and writes it. A text with a quote in it reads back cut, so what
// is written then must have as many lines. From there on all must stay equal.
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "datasheet/records/DataSheetFile.h"
#include "datasheet/records/ItemKinds.h"
#include "support/RecordingPrompts.h"

using namespace oriolemark;

namespace {

bool NoSync(std::FILE*) {
  return true;
}
const std::string kPath =
    std::filesystem::temp_directory_path() / ("fuzz" + std::to_string(getpid()) + ".orm");

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

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* input, std::size_t size) {
  // They are reused, because making them takes longer than filling them.
  static DataSheet first, second;
  first.WaveCount = first.MeasureCount = first.DataCount = 0;
  // Left-over samples of many slots would take most of the time.
  for (WaveRecord& wave : first.Waves) wave.HasData = false;
  for (DataRecord& data : first.Datas) data.HasData = false;
  // Few inputs would find the signature.
  const std::string bytes(reinterpret_cast<const char*>(input), size);
  const std::string written = Rewrite("Tavik Technologies TX5000 Data Sheet," + bytes, first);
  const std::string again = Rewrite(written, second);
  if (std::ranges::count(again, '\n') != std::ranges::count(written, '\n')) std::abort();
  if (Rewrite(again, first) != again) std::abort();
  return 0;
}
