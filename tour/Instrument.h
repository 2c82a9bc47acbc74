#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <vector>

// The link between the program and the instrument.
struct Link {
  const char* name;
  int ioType;      // its value in the settings store
  int firstIndex;  // the index in the record of a block's first sample
};
inline constexpr Link kLinks[] = {{"serial", 2, 1}, {"gpib", 1, 0}, {"usb", 0, 0}};

// The simulated instrument as a separate program, controlled through its console.
class Instrument {
 public:
  // Starts it. Its line or socket is at `place`, and `log` records every byte.
  bool Start(const QString& program, const Link& link, const QString& place, const QString& log);
  // Sends one line to its console. Returns the answer.
  QString Do(const QString& line);
  // How often the command was received.
  int Count(const QString& command) const;
  // The last reply to a request, from its log. Line ends are written as \r and \n.
  QByteArray LastReply(const QString& request) const;
  // The bytes of a reply that is a block.
  std::vector<int> LastBlock(const QString& request) const;
  ~Instrument();

 private:
  QProcess process_;
  QString log_;
};
