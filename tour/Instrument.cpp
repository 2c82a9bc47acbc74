#include "Instrument.h"

#include <QFile>
#include <QRegularExpression>

namespace {

constexpr int kPatience = 5000;  // ms

}  // namespace

bool Instrument::Start(const QString& program, const Link& link, const QString& place,
                       const QString& log) {
  log_ = log;
  process_.setProcessChannelMode(QProcess::MergedChannels);
  const bool serial = link.ioType == 2;
  process_.start(program, {serial ? "--link" : "--socket", place, "--log", log, "--seed", "7",
                           "--baud", "38400", "--firmware", "03.01.15"});
  if (!process_.waitForStarted(kPatience) || !process_.waitForReadyRead(kPatience)) return false;
  return process_.readAll().contains("ready");
}

QString Instrument::Do(const QString& line) {
  process_.write(line.toLatin1() + "\n");
  process_.waitForReadyRead(kPatience);
  return QString::fromLatin1(process_.readAll()).trimmed();
}

int Instrument::Count(const QString& command) const {
  QFile file(log_);
  if (!file.open(QIODevice::ReadOnly)) return 0;
  const QByteArray bare = "> \"" + command.toLatin1();
  int count = 0;
  for (const QByteArray& entry : file.readAll().split('\n')) {
    count += entry.endsWith(bare + "\"") || entry.endsWith(bare + "\\r\"") ? 1 : 0;
  }
  return count;
}

QByteArray Instrument::LastReply(const QString& request) const {
  QFile file(log_);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QByteArray whole;
  QByteArray line;
  bool ours = false;
  for (const QByteArray& entry : file.readAll().split('\n')) {
    const qsizetype quote = entry.indexOf('"');
    if (quote < 2) continue;
    const QByteArray payload = entry.mid(quote + 1, entry.size() - quote - 2);
    if (entry[quote - 2] == '>') {
      // On GPIB a command has no end character.
      ours = payload == request.toLatin1() || payload == request.toLatin1() + "\\r";
      line.clear();
    } else if (ours) {
      line += payload;
      if (payload.endsWith("\\n")) whole = line;
    }
  }
  return whole;
}

std::vector<int> Instrument::LastBlock(const QString& request) const {
  std::vector<int> bytes;
  for (const QByteArray& token : LastReply(request).split(' ')) {
    if (token.startsWith("0x")) bytes.push_back(token.mid(2).toInt(nullptr, 16));
  }
  return bytes;
}

Instrument::~Instrument() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.write("quit\n");
  if (!process_.waitForFinished(kPatience)) process_.kill();
}
