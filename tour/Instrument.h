#pragma once

#include <QProcess>
#include <QString>
#include <vector>

// The simulated instrument as a program of its own, with a hand at its front panel.
class Instrument {
 public:
  // Starts it; its line appears under `link` and every byte in `log`.
  bool Start(const QString& program, const QString& link, const QString& log);
  // One line of its console; gives what it answers.
  QString Do(const QString& line);
  // The bytes of the last block that it sent for a request, as its log tells them.
  std::vector<int> LastBlock(const QString& request) const;
  ~Instrument();

 private:
  QProcess process_;
  QString log_;
};
