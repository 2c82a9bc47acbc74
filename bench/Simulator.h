#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <cstdlib>

namespace oriolemark {

// A simulated instrument with 17000 samples, in a process and a folder of its own.
class Simulator {
 public:
  Simulator() {
    process_.start(SIMULATOR, {"--link", Line(), "--socket", Socket(), "--do", "samples 17000"});
    if (!process_.waitForReadyRead(20000)) std::abort();
  }
  ~Simulator() {
    process_.write("quit\n");
    process_.waitForFinished();
  }
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  QString Folder() const { return folder_.path(); }
  QString Line() const { return folder_.filePath("line"); }
  QString Socket() const { return folder_.filePath("socket"); }

 private:
  QTemporaryDir folder_;
  QProcess process_;
};

}  // namespace oriolemark
