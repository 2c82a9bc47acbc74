#include "output/ExportFile.h"

namespace oriolemark {

void ExportFile(const ExportContext& context, const ExportDialog& dialog,
                const std::function<std::string()>& makeBytes) {
  const std::string path = context.prompts.AskFileName(
      {.action = FileAction::Save, .title = dialog.title, .filter = dialog.filter});
  if (path.empty()) return;
  if (const auto failure = WriteFile(path, makeBytes(), context.sync)) {
    context.prompts.Show({.systemText = failure->text, .icon = MessageIcon::Critical});
  }
}

}  // namespace oriolemark
