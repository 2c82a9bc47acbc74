#pragma once

#include <optional>
#include <string>

namespace oriolemark {

// A place on a page, in inches from the paper's top left corner, whatever margins a printer claims.
struct InchRect {
  float left = 0;
  float top = 0;
  float width = 0;
  float height = 0;
  bool operator==(const InchRect&) const = default;
};

// A report of one page. It is built in the order of the operations below.
class PageReport {
 public:
  virtual ~PageReport() = default;
  // Drops the page of the last report.
  virtual void StartReport() = 0;
  // Starts an upright page of this size in inches.
  virtual void StartPage(float width, float height) = 0;
  // Stretches the picture in the file (UTF-8 path) over the place. Leaves the page as it is if the
  // file holds no picture.
  virtual void AddPicture(const InchRect& place, const std::string& path) = 0;
  // Shows the page in a window in front of all others. Returns when the user has closed the window
  // or the program is closing. Returns the reason (UTF-8) if the user had the page printed there
  // and it could not be.
  virtual std::optional<std::string> ShowPreview() = 0;
  // Returns the reason (UTF-8) if the page could not be printed.
  virtual std::optional<std::string> SendToPrinter() = 0;
};

}  // namespace oriolemark
