#include <iostream>

#include "simulator/program/Options.h"
#include "simulator/program/Session.h"

int main(int argumentCount, char** arguments) {
  std::string error;
  const auto options = ParseOptions(argumentCount, arguments, error);
  if (!options) {
    std::cerr << "tx5000sim: " << error << std::endl;
    return 2;
  }
  if (options->help) {
    std::cout << HelpText();
    return 0;
  }
  return Session(*options).Run();
}
