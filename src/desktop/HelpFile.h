#pragma once

#include <QHelpEngine>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>
#include <optional>

namespace oriolemark {

// One compressed help file, opened with the help library. The library needs a collection file. It
// is in a temporary folder that is deleted with this object.
class HelpFile {
 public:
  explicit HelpFile(const QString& path);

  // The reason why the file cannot be shown. Nothing if it can be shown.
  const std::optional<QString>& Failure() const { return failure_; }

  QHelpEngine& Engine() { return engine_; }
  const QString& Path() const { return path_; }
  // The first page of the manual.
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
