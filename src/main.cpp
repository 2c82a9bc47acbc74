#include <QApplication>
#include <optional>

#include "desktop/Program.h"
#include "drivers/DisplayCheck.h"
#include "drivers/EndSignals.h"

int main(int argc, char** argv) {
  oriolemark::EndSignals endSignals;
  std::optional<QApplication> application;
  {
    const oriolemark::DisplayCheck check;
    application.emplace(argc, argv);
  }
  oriolemark::Program program(*application);
  // As the user's close: it asks about what was changed.
  endSignals.Watch([&program] { program.Module().main.Close(); });
  return program.Run();
}
