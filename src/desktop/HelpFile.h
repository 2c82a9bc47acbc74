#pragma once

#include <QHelpEngine>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>
#include <optional>

namespace oriolemark {

// One compressed help file, opened with the help library. The library wants a collection file of
// its own; it stands in a temporary folder that goes with this object.
class HelpFile {
 public:
  explicit HelpFile(const QString& path);

  // Why the file cannot be shown; nothing if it can.
  const std::optional<QString>& Failure() const { return failure_; }

  QHelpEngine& Engine() { return engine_; }
  const QString& Path() const { return path_; }
  // The page that the manual begins with.
  QUrl StartPage() const;

 private:
  std::optional<QString> Register();

  QString path_;
  QString namespace_;
  QTemporaryDir folder_;
  QHelpEngine engine_;
  std::optional<QString> failure_;
};

}  // namespace oriolemark
