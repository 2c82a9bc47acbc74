#include "drivers/QtSettingsStore.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace oriolemark {

namespace {

constexpr const char* kPlainSection = "General";

// The most bytes of a text: more than the longest path of the system.
constexpr std::size_t kLongest = 8192;

// No file can be here, so the settings stay in memory.
constexpr const char* kNowhere = "/dev/null/Oriolemark.ini";

// Reading a pipe or a device may never end. A folder in the lock's place is waited for without end.
QString SettingsFile() {
  const QString file = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                       QStringLiteral("/Oriolemark/Oriolemark.ini");
  const QFileInfo info(file);
  const bool readable = info.isFile() || !info.exists();
  const bool lockable = !QFileInfo(file + QStringLiteral(".lock")).isDir();
  return readable && lockable ? file : QString::fromLatin1(kNowhere);
}

// A text with an unquoted comma, which a user may have typed, is read as a list.
std::optional<std::string> TextOf(const QVariant& value) {
  if (!value.isValid()) return std::nullopt;
  if (value.typeId() == QMetaType::QStringList) {
    return value.toStringList().join(QLatin1Char(',')).toUtf8().toStdString();
  }
  if (!value.canConvert<QString>()) return std::nullopt;
  return value.toString().toUtf8().toStdString();
}

QString PathOf(const std::string& section, const std::string& key) {
  return QString::fromStdString(section) + QLatin1Char('/') + QString::fromStdString(key);
}

}  // namespace

QtSettingsStore::QtSettingsStore() : settings_(SettingsFile(), QSettings::IniFormat) {
  settings_.setFallbacksEnabled(false);
  // Every write writes the whole file, so texts that cannot be read are removed.
  for (const QString& key : settings_.allKeys()) {
    const auto text = TextOf(settings_.value(key));
    if (text && text->size() > kLongest) settings_.remove(key);
  }
}

std::optional<std::string> QtSettingsStore::Read(const std::string& section,
                                                 const std::string& key) {
  if (key.empty()) return std::nullopt;
  const auto own = TextOf(settings_.value(PathOf(section, key)));
  if (own || section != kPlainSection) return own;
  // The keys of a hand-written [General] have no section. The program writes [%General].
  return TextOf(settings_.value(QString::fromStdString(key)));
}

void QtSettingsStore::Write(const std::string& section, const std::string& key,
                            const std::string& value) {
  if (key.empty()) return;
  settings_.setValue(PathOf(section, key), QString::fromStdString(value));
  settings_.sync();
}

}  // namespace oriolemark
