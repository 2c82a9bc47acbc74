#include "desktop/HelpFile.h"

#include <QFile>

namespace oriolemark {

HelpFile::HelpFile(const QString& path)
    : path_(path), engine_(folder_.filePath("collection.qhc")), failure_(Register()) {
  if (failure_) failure_ = "Cannot open the help file " + path_ + "\n" + *failure_;
}

QUrl HelpFile::StartPage() const {
  return QUrl("qthelp://" + namespace_ + "/manual/index.html");
}

std::optional<QString> HelpFile::Register() {
  // The library would create a missing file, and report every other failure in the same words.
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly)) return file.errorString();
  if (!folder_.isValid()) return folder_.errorString();
  namespace_ = QHelpEngineCore::namespaceName(path_);
  if (namespace_.isEmpty()) return "It is not a help file.";
  engine_.setReadOnly(false);
  if (!engine_.setupData() || !engine_.registerDocumentation(path_)) return engine_.error();
  // A truncated file may still have its index.
  if (engine_.fileData(StartPage()).isEmpty()) return "It is damaged.";
  return std::nullopt;
}

}  // namespace oriolemark
