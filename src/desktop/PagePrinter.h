#pragma once

#include <QPrinter>
#include <memory>
#include <optional>
#include <string>

#include "platform/PageReport.h"
#include "platform/Waiting.h"

namespace oriolemark {

// The program's only printer. The choices of a printer dialog stay in it until the program ends.
// It is made at the first use, because that asks the print server. A server that refuses the
// connection costs no time, one that does not answer at all costs the print system's own time
// limit.
class PagePrinter {
 public:
  explicit PagePrinter(Waiting& waiting) : waiting_(waiting) {}

  QPrinter& Printer();
  // Shows the dialog in which the user chooses the printer.
  void ShowDialog(const std::string& title);
  // This object outlives the report.
  std::unique_ptr<PageReport> MakeReport();

 private:
  Waiting& waiting_;
  std::unique_ptr<QPrinter> printer_;
};

}  // namespace oriolemark
