#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Files.h"
#include "platform/PageReport.h"
#include "values/Number.h"

namespace oriolemark {

// Notes the steps of all reports, each with the picture that the file holds at that time.
struct ReportLog {
  std::unique_ptr<PageReport> Make();

  std::vector<std::string> steps;
  std::string picture;
  std::optional<std::string> failure;          // of the next prints
  std::function<void()> whilePreview = [] {};  // serves events
};

class FakeReport : public PageReport {
 public:
  explicit FakeReport(ReportLog& log) : log_(log) {}
  void StartReport() override { log_.steps.emplace_back("report"); }
  void StartPage(float width, float height) override {
    log_.steps.push_back("page " + Inches(width) + Inches(height));
  }
  void AddPicture(const InchRect& place, const std::string& path) override {
    log_.steps.push_back("picture " + Inches(place.left) + Inches(place.top) + Inches(place.width) +
                         Inches(place.height));
    log_.picture = ReadFile(path, 1U << 24).bytes;
  }
  std::optional<std::string> ShowPreview() override {
    log_.steps.emplace_back("preview");
    log_.whilePreview();
    return log_.failure;
  }
  std::optional<std::string> SendToPrinter() override {
    log_.steps.emplace_back("print");
    return log_.failure;
  }

 private:
  static std::string Inches(float inches) { return FormatFixed(double{inches}, 2, 2) + " "; }

  ReportLog& log_;
};

inline std::unique_ptr<PageReport> ReportLog::Make() {
  return std::make_unique<FakeReport>(*this);
}

}  // namespace oriolemark
