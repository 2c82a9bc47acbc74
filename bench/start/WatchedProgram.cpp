// The program as its users have it, watched while it starts.
#include "desktop/Program.h"
#include "start/Watch.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  oriolemark::Program program(application, {});
  const Watch watch("QMainWindow", [&] { return program.Module().Link().ScopeConnected; });
  return program.Run();
}
