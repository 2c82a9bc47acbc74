#pragma once

#include <functional>
#include <memory>
#include <string>

#include "output/ExportFile.h"
#include "platform/Canvas.h"
#include "platform/PageReport.h"

namespace oriolemark {

// The parts of the desktop that a picture needs to leave the program.
struct PictureContext {
  ExportContext exporting;
  std::string handOverFile;  // UTF-8 path; holds the picture on its way to the page
  std::function<std::unique_ptr<PageReport>()> makeReport;
};

// Takes the picture of a window out of the program: into a bitmap file, or onto a letter page that
// is shown or printed.
class PictureOutput {
 public:
  explicit PictureOutput(PictureContext context) : context_(std::move(context)) {}

  // The window's report exists while the window is loaded.
  void Open() { report_ = context_.makeReport(); }
  void Close() { report_ = nullptr; }

  // Asks for a file and saves the picture as it is after the answer.
  void Export(const Canvas& picture) const;
  // The same for a picture that is drawn after the answer, and only if there is one.
  void Export(const std::function<std::unique_ptr<Canvas>()>& draw) const;
  // Both write the hand-over file and report a failure of that. Then they put on the page what the
  // file holds, and show or print the page. `restore` runs after that. At the end they report why
  // the page could not be printed.
  void Preview(
      const Canvas& picture, const std::function<void()>& restore = [] {}) const;
  void Print(
      const Canvas& picture, const std::function<void()>& restore = [] {}) const;

 private:
  using LastStep = std::optional<std::string> (PageReport::*)();
  void PutOnPage(const Canvas& picture, float left, LastStep lastStep,
                 const std::function<void()>& restore) const;

  PictureContext context_;
  std::shared_ptr<PageReport> report_;
};

}  // namespace oriolemark
