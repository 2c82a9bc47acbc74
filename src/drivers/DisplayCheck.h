#pragma once

namespace oriolemark {

// Exists while the toolkit opens the display. If the toolkit cannot, the process ends with code 1
// and one line on standard error. By itself the toolkit would abort.
class DisplayCheck {
 public:
  DisplayCheck();
  ~DisplayCheck();
  DisplayCheck(const DisplayCheck&) = delete;
  DisplayCheck& operator=(const DisplayCheck&) = delete;
};

}  // namespace oriolemark
