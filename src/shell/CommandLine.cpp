#include "shell/CommandLine.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace oriolemark {
namespace {

struct OptionRow {
  std::string_view name;
  std::string_view argument;  // empty if it takes none
  std::string_view effect;
};

constexpr std::size_t kHelp = 0, kVersion = 1, kFirstOfToolkit = 2;
// The toolkit takes its options by itself, but only once there is a display.
constexpr OptionRow kRows[] = {
    {"--help", "", "shows this text"},
    {"--version", "", "shows the version"},
    {"-style", "NAME", "draws the controls in this style, for instance fusion"},
    {"-stylesheet", "FILE", "changes the looks by the rules of this file"},
    {"-platform", "NAME", "shows the windows by xcb, wayland or another plugin"},
    {"-platformpluginpath", "FOLDER", "looks for such plugins here"},
    {"-platformtheme", "NAME", "takes fonts, colours and dialogs from this theme"},
    {"-plugin", "NAME", "loads this plugin for input devices"},
    {"-display", "NAME", "selects the X display, for instance :1"},
    {"-session", "ID", "resumes a session; for session managers"},
    {"-reverse", "", "lays the windows out from right to left"},
};

std::string_view WithoutDashes(std::string_view word) {
  for (int dashes = 0; dashes < 2 && word.starts_with('-'); ++dashes) word.remove_prefix(1);
  return word;
}

std::string HelpText() {
  std::string text =
      "usage: oriolemark [OPTION...] [FILE...]\n\n"
      "Works a TX5000 oscilloscope from this computer. Of the files, the first data sheet (.orm)\n"
      "and the first control file (.cfx) are opened.\n\n";
  constexpr std::size_t kColumn = 32;
  for (std::size_t row = 0; row < std::size(kRows); ++row) {
    if (row == kFirstOfToolkit) text += "\nOptions of the Qt toolkit\n";
    const auto& [name, argument, effect] = kRows[row];
    std::string line = "  " + std::string(name) + " " + std::string(argument);
    line.resize(std::max(kColumn, line.size() + 1), ' ');
    text += line + std::string(effect) + "\n";
  }
  return text + "\nA file whose name begins with a dash follows \"--\". F1 opens the manual.\n";
}

CommandLine Refusal(const std::string& reason) {
  return {CommandLine::Outcome::Refusal, "oriolemark: " + reason + "\n", {}};
}

}  // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& words, const std::string& version) {
  CommandLine line;
  for (std::size_t at = 0; at < words.size(); ++at) {
    const std::string& word = words[at];
    if (word == "--") {
      line.files.insert(line.files.end(), words.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                        words.end());
      break;
    }
    if (!word.starts_with('-')) {
      line.files.push_back(word);
      continue;
    }
    const auto* row = std::ranges::find(kRows, WithoutDashes(word),
                                        [](const OptionRow& r) { return WithoutDashes(r.name); });
    if (row == std::end(kRows)) {
      return Refusal("unknown option \"" + word + "\"; --help lists all options");
    }
    if (row == &kRows[kHelp]) return {CommandLine::Outcome::Answer, HelpText(), {}};
    if (row == &kRows[kVersion]) {
      return {CommandLine::Outcome::Answer, "oriolemark " + version + "\n", {}};
    }
    if (!row->argument.empty() && ++at == words.size()) {
      return Refusal(word + " needs a " + std::string(row->argument));
    }
  }
  return line;
}

}  // namespace oriolemark
