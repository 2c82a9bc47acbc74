#include <QApplication>

#include "desktop/Program.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  return oriolemark::Program(application).Run();
}
