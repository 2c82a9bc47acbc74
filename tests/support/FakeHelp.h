#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/HelpViewer.h"

namespace oriolemark {

// A viewer of help files that only notes what it is asked to open.
class FakeHelp : public HelpViewer {
 public:
  std::optional<std::string> Open(const std::string& path, HelpCommand command) override {
    opened.emplace_back(path, command);
    return error;
  }

  std::vector<std::pair<std::string, HelpCommand>> opened;
  std::optional<std::string> error;
};

}  // namespace oriolemark
