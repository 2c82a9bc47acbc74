#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/Files.h"

namespace oriolemark {

// The folder of safety copies: documents that were cleared or left with changes that are in no
// file. The newest ten are kept. Every failure is silent, because a copy must never hold up the
// command that goes on.
class RecoveredFiles {
 public:
  // `folder` is a UTF-8 path; it is made when first needed. `now` is the present time as a part of
  // a file's name.
  RecoveredFiles(std::string folder, std::function<std::string()> now, SyncFile sync);

  // Writes a copy under the title (UTF-8) and the time. Returns its path, or an empty text if it
  // could not be written. Trim then removes all but the newest ten.
  std::string Keep(const std::string& title, const std::string& extension, std::string_view bytes);
  void Trim() const;
  // Removes a copy that is not needed after all.
  static void Remove(const std::string& path);

 private:
  const std::string folder_;
  const std::function<std::string()> now_;
  const SyncFile sync_;
};

}  // namespace oriolemark
