#include "simulator/program/Console.h"

#include <algorithm>

using tx5000::Settings;

struct Console::Row {
  std::string_view name;
  std::string_view arguments;
  std::string_view effect;
  Answer (Console::*carryOut)(std::string_view rest);
};

std::span<const Console::Row> Console::Rows() {
  static constexpr Row kRows[] = {
      {"set", "PATH VALUE", "turns a setting: set :CHANNEL1:RANGE 2.00V", &Console::Set},
      {"get", "PATH", "shows a setting: get :TimeBase:RANGE", &Console::Get},
      {"press", "KEY", "presses a front key: press RUN", &Console::PressKey},
      {"scan", "on|off", "the rolling display", &Console::Scan},
      {"xy", "on|off", "one channel over the other", &Console::ShowXY},
      {"signal", "CH KIND [HZ [V]]",
       "connects sine, square, ramp, noise, burst, modulated, lissajous", &Console::ConnectSignal},
      {"samples", "N", "samples in a trace, 1 to 17000", &Console::SetSamples},
      {"fault", "NAME ...", "misbehaves, see below", &Console::AddFault},
      {"clear", "", "behaves again", &Console::ClearFaults},
      {"unplug", "", "the port goes away", &Console::Unplug},
      {"plug", "", "and comes back, under another name unless it has a link", &Console::PlugIn},
      {"count", "", "how many commands were not understood", &Console::CountUnknown},
      {"unknown", "", "lists the first hundred of them", &Console::ListUnknown},
      {"help", "", "shows these lines", &Console::ShowHelp},
      {"quit", "", "ends the simulator", &Console::Quit},
  };
  return kRows;
}

namespace {

const Console::Answer kDone{"ok"};

Console::Answer Refuse(std::string_view why) {
  return {"error: " + std::string(why)};
}

// Writes "\0" and the like for bytes that are not printable, so that each command stays on one
// line.
std::string MakePrintable(std::string_view text) {
  std::string shown;
  for (const char c : text) {
    if (c < ' ' || c > '~') {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      const auto byte = static_cast<unsigned char>(c);
      shown += "\\x";
      shown += kDigits[byte >> 4];
      shown += kDigits[byte & 15];
    } else {
      shown += c;
    }
  }
  return shown;
}

}  // namespace

Console::Answer Console::Execute(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.empty()) return {};
  const auto blank = std::min(line.find(' '), line.size());
  const std::string_view name = line.substr(0, blank);
  const std::string_view rest = line.substr(std::min(blank + 1, line.size()));
  const auto rows = Rows();
  const auto row =
      std::find_if(rows.begin(), rows.end(), [&](const Row& r) { return r.name == name; });
  if (row == rows.end()) return Refuse("no such command; \"help\" lists them");
  return (this->*row->carryOut)(rest);
}

std::string Console::HelpText() {
  std::string text;
  for (const Row& row : Rows()) {
    std::string head = "  " + std::string(row.name) + " " + std::string(row.arguments);
    head.resize(std::max<std::size_t>(26, head.size() + 1), ' ');
    text += head + std::string(row.effect) + "\n";
  }
  return text;
}

Console::Answer Console::Turn(std::string_view path, std::string_view value) {
  return instrument_.Turn(path, value) ? kDone : Refuse("the instrument does not take that");
}

Console::Answer Console::Set(std::string_view rest) {
  // Paths and values may contain blanks. The blank that follows the path of a setting separates
  // them.
  for (auto blank = rest.find(' '); blank != std::string_view::npos;
       blank = rest.find(' ', blank + 1)) {
    if (Settings::Find(rest.substr(0, blank))) {
      return Turn(rest.substr(0, blank), rest.substr(blank + 1));
    }
  }
  return Refuse("no such setting, or no value");
}

Console::Answer Console::Get(std::string_view rest) {
  const auto setting = Settings::Find(rest);
  return setting ? Answer{instrument_.GetSettings().Text(*setting)} : Refuse("no such setting");
}

Console::Answer Console::Switch(std::string_view rest, std::string_view path, std::string_view on,
                                std::string_view off) {
  if (rest != "on" && rest != "off") return Refuse("on or off?");
  return Turn(path, rest == "on" ? on : off);
}

Console::Answer Console::Scan(std::string_view rest) {
  return Switch(rest, Settings::Path(tx5000::Setting::kScan), "ON", "OFF");
}

Console::Answer Console::ShowXY(std::string_view rest) {
  return Switch(rest, Settings::Path(tx5000::Setting::kFormat), "X-Y", "Y-T");
}

Console::Answer Console::ConnectSignal(std::string_view rest) {
  if (rest.size() < 3 || rest[1] != ' ') return Refuse("signal CH KIND [HZ [V]]");
  return Turn("SIGNAL" + std::string(rest.substr(0, 1)), rest.substr(2));
}

Console::Answer Console::SetSamples(std::string_view rest) {
  return Turn(Settings::Path(tx5000::Setting::kWindowMemory), rest);
}

Console::Answer Console::PressKey(std::string_view rest) {
  return Turn(":KEY:" + std::string(rest), "");
}

Console::Answer Console::AddFault(std::string_view rest) {
  auto fault = tx5000::ParseFault(rest);
  if (!fault) return Refuse("no such fault; --help lists them");
  side_.GetFaults().Add(std::move(*fault));
  return kDone;
}

Console::Answer Console::ClearFaults(std::string_view) {
  side_.GetFaults().Clear();
  return kDone;
}

Console::Answer Console::CountUnknown(std::string_view) {
  return {std::to_string(instrument_.UnknownCommands())};
}

Console::Answer Console::ListUnknown(std::string_view) {
  std::string text;
  for (const std::string& command : instrument_.Unknown()) text += MakePrintable(command) + "\n";
  return {text + "ok"};
}

Console::Answer Console::Unplug(std::string_view) {
  return {"ok", Wish::kUnplug};
}

Console::Answer Console::PlugIn(std::string_view) {
  return {"ok", Wish::kPlugIn};
}

Console::Answer Console::ShowHelp(std::string_view) {
  return {HelpText() + "ok"};
}

Console::Answer Console::Quit(std::string_view) {
  return {"ok", Wish::kQuit};
}
