#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <optional>
#include <string>

#include "cli/Call.h"

namespace oriolemark {

// The simulated instrument as a process of its own, which ends with this object. It does not see
// the terminal's interrupt, so that it answers to the end.
class SimulatedInstrument {
 public:
  SimulatedInstrument() = default;
  ~SimulatedInstrument();
  SimulatedInstrument(const SimulatedInstrument&) = delete;
  SimulatedInstrument& operator=(const SimulatedInstrument&) = delete;

  // Starts it on a link of this kind, RS232 if none is chosen. Then the choice names its device.
  // Returns why it could not be started.
  std::optional<std::string> Start(std::optional<LinkChoice>& link);

 private:
  QTemporaryDir folder_;
  QProcess process_;
};

}  // namespace oriolemark
