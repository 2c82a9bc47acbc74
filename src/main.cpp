#include <QApplication>

#include "desktop/Program.h"
#include "drivers/EndSignals.h"

int main(int argc, char** argv) {
  oriolemark::EndSignals endSignals;
  QApplication application(argc, argv);
  oriolemark::Program program(application);
  // As the user's close: it asks about what was changed.
  endSignals.Watch([&program] { program.Module().main.Close(); });
  return program.Run();
}
