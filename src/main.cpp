#include <QApplication>
#include <cstdio>
#include <optional>

#include "desktop/Program.h"
#include "drivers/DisplayCheck.h"
#include "drivers/EndSignals.h"
#include "shell/CommandLine.h"

int main(int argc, char** argv) {
  // Before the toolkit, which cannot start without a display.
  using enum oriolemark::CommandLine::Outcome;
  const auto line =
      oriolemark::ReadCommandLine({argv + (argc > 0 ? 1 : 0), argv + argc}, ORIOLEMARK_VERSION);
  if (line.outcome != Open) std::fputs(line.text.c_str(), line.outcome == Answer ? stdout : stderr);
  if (line.outcome != Open) return line.outcome == Answer ? 0 : 2;
  oriolemark::EndSignals endSignals;
  std::optional<QApplication> application;
  {
    const oriolemark::DisplayCheck check;
    application.emplace(argc, argv);
  }
  oriolemark::Program program(*application, line.files);
  // As the user's close: it asks about what was changed.
  endSignals.Watch([&program] { program.Module().main.Close(); });
  return program.Run();
}
