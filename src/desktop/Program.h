#pragma once

#include <memory>

#include "shell/MainModule.h"

class QApplication;

namespace oriolemark {

// The whole program on this system: drivers, the program itself, and its windows.
class Program {
 public:
  // Gives the application its name. One program an application.
  explicit Program(QApplication& application);
  ~Program();

  MainModule& Module();

  // From the splash to the last window; the program's exit code.
  int Run();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace oriolemark
