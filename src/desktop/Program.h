#pragma once

#include <memory>
#include <string>
#include <vector>

#include "shell/MainModule.h"

class QApplication;

namespace oriolemark {

// The whole program on this system: drivers, the program itself, and its windows.
class Program {
 public:
  // Sets the application's name. An application has one program. It opens the first data sheet and
  // the first control file of `files`, which are paths in the system's own encoding.
  explicit Program(QApplication& application, const std::vector<std::string>& files = {});
  ~Program();

  MainModule& Module();

  // Runs from the splash to the last window. Returns the exit code.
  int Run();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace oriolemark
