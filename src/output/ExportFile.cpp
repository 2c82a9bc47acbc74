#include "output/ExportFile.h"

namespace oriolemark {

void SaveFile(const ExportContext& context, const std::string& path, std::string_view bytes) {
  if (const auto failure = WriteFile(path, bytes, context.sync)) {
    context.prompts.Show({.systemText = failure->text, .icon = MessageIcon::Critical});
  }
}

void ExportFile(const ExportContext& context, const ExportDialog& dialog,
                const std::function<std::optional<std::string>()>& makeBytes) {
  const std::string path = context.prompts.AskFileName(
      {.action = FileAction::Save, .title = dialog.title, .filter = dialog.filter});
  if (path.empty()) return;
  if (const auto bytes = makeBytes()) {
    SaveFile(context, path, *bytes);
  } else {
    context.prompts.Show({.text = "The picture is too large to be saved. Choose a smaller zoom.",
                          .icon = MessageIcon::Critical});
  }
}

}  // namespace oriolemark
