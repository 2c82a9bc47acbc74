// The least that any program of this toolkit shows: a window with one line of text.
#include <QLabel>

#include "start/Watch.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const Watch watch("QLabel", [] { return true; });
  QLabel window("One line of text");
  window.resize(800, 600);
  window.show();
  return application.exec();
}
