#pragma once

#include <QProcess>
#include <QString>
#include <vector>

// The link between the program and the instrument.
struct Link {
  const char* name;
  int ioType;      // as the settings store has it
  int firstIndex;  // of a record's samples: where the first one of a block lands
};
inline constexpr Link kLinks[] = {{"serial", 2, 1}, {"gpib", 1, 0}, {"usb", 0, 0}};

// The simulated instrument as a program of its own, with a hand at its front panel.
class Instrument {
 public:
  // Starts it; its line or its socket appears under `place` and every byte in `log`.
  bool Start(const QString& program, const Link& link, const QString& place, const QString& log);
  // One line of its console; gives what it answers.
  QString Do(const QString& line);
  // The bytes of the last block that it sent for a request, as its log tells them.
  std::vector<int> LastBlock(const QString& request) const;
  ~Instrument();

 private:
  QProcess process_;
  QString log_;
};
