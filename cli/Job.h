#pragma once

#include <array>
#include <optional>

#include "cli/Call.h"
#include "cli/Desk.h"
#include "cli/Rendering.h"
#include "cli/Session.h"

namespace oriolemark {

// The limits that judge, by the indexes of MeasureRecord::Values.
using Limits = std::array<MeasureValue, kMeasureValues>;

// One run of a verb.
struct Job {
  const Desk& desk;
  const Call& call;
  Session* session;               // connected; null for a verb that needs no instrument
  std::optional<Limits>& limits;  // read before the link is opened

  // Prints a message of ours.
  void Explain(const std::string& text) const { desk.printError(ErrorLine(text)); }
  // The same, as the end of the verb.
  Result Refuse(ExitCode code, const std::string& text) const {
    Explain(text);
    return {.code = code};
  }
};

// The verbs that are more than a few lines, in files of their own. SettingVerbs.cpp:
ExitCode CheckGet(Job& job);
Result RunGet(Job& job);
ExitCode CheckSet(Job& job);
Result RunSet(Job& job);
Result RunDownload(Job& job);
ExitCode CheckUpload(Job& job);
Result RunUpload(Job& job);
Result RunRun(Job& job);
Result RunStop(Job& job);
// ReadingVerbs.cpp:
ExitCode CheckWave(Job& job);
Result RunWave(Job& job);
Result RunSamples(Job& job);
ExitCode CheckMeasure(Job& job);
Result RunMeasure(Job& job);
ExitCode CheckScreen(Job& job);
Result RunScreen(Job& job);
Result RunConvert(Job& job);

}  // namespace oriolemark
