#include "simulator/program/Options.h"

#include <algorithm>
#include <string_view>

#include "simulator/Faults.h"
#include "simulator/Values.h"
#include "simulator/program/Console.h"

namespace {

constexpr int kFastestBaud = 4000000;
constexpr int kHighestGpibAddress = 30;

struct OptionRow {
  std::string_view name;
  std::string_view argument;  // empty if it takes none
  std::string_view effect;
  bool (*apply)(Options&, const std::string&);
};

bool TakeNumber(const std::string& text, int highest, int& number) {
  const auto count = tx5000::ParseCount(text);
  if (count && *count <= highest) number = *count;
  return count && *count <= highest;
}

bool TakeSeed(Options& options, const std::string& text) {
  int number = 0;
  const bool taken = TakeNumber(text, 999999999, number);
  options.seed = static_cast<std::uint32_t>(number);
  return taken;
}

constexpr OptionRow kRows[] = {
    {"--link", "PATH", "links PATH to the line; removes the link at the end",
     [](Options& o, const std::string& text) {
       o.linkPath = text;
       return !text.empty();
     }},
    {"--socket", "PATH", "opens a GPIB and USB socket, see below; no serial line without --link",
     [](Options& o, const std::string& text) {
       o.socketPath = text;
       return !text.empty();
     }},
    {"--gpib-address", "N", "sets the instrument's GPIB address, 0 to 30 (default 7)",
     [](Options& o, const std::string& text) {
       return TakeNumber(text, kHighestGpibAddress, o.gpibAddress);
     }},
    {"--baud", "N", "sends replies at the pace of this baud rate (default 0: at once)",
     [](Options& o, const std::string& text) { return TakeNumber(text, kFastestBaud, o.baud); }},
    {"--maker", "TEXT", "sets the first field of the answer to *IDN?",
     [](Options& o, const std::string& text) {
       o.identity.maker = text;
       return true;
     }},
    {"--model", "TEXT", "sets the second field, for instance TX-5060 for a black and white screen",
     [](Options& o, const std::string& text) {
       o.identity.model = text;
       return true;
     }},
    {"--firmware", "TEXT", "sets the fourth field, in the form 01.02.05",
     [](Options& o, const std::string& text) {
       o.identity.firmware = text;
       return true;
     }},
    {"--seed", "N", "selects the noise; the same number gives the same noise", TakeSeed},
    {"--log", "FILE", "writes every byte with time and direction",
     [](Options& o, const std::string& text) {
       o.logPath = text;
       return !text.empty();
     }},
    {"--fault", "FAULT", "sets a fault at the start, see below; may be repeated",
     [](Options& o, const std::string& text) {
       o.faults.push_back(text);
       return tx5000::ParseFault(text).has_value();
     }},
    {"--do", "LINE", "carries out a console line at the start; may be repeated",
     [](Options& o, const std::string& text) {
       o.lines.push_back(text);
       return true;
     }},
    {"--help", "", "shows this text",
     [](Options& o, const std::string&) {
       o.help = true;
       return true;
     }},
};

std::string Padded(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size() + 1), ' ');
  return text;
}

constexpr std::string_view kIntroduction = R"(tx5000sim - a TX5000 oscilloscope without the hardware

Answers on a pseudo-terminal as the instrument answers on its serial line. It has input signals and
can simulate faults. A socket offers the same over GPIB and USB. Prints "ready PATH" when a program
can open the line or the socket at PATH, then reads commands from standard input until "quit".

  tx5000sim --link /tmp/scope              the line is /tmp/scope
  tx5000sim --link /tmp/scope --baud 9600  at the pace of a real line
  tx5000sim --fault "delay 1500 next"      the first reply comes 1.5 s late
  tx5000sim --socket /tmp/scope.sock       over GPIB and USB

Options
)";

constexpr std::string_view kSocketText = R"(
GPIB and USB: a program that loads libtx5000gpib.so for the NI-488.2 calls, or libtx5000usb.so for
the instrument's USB calls, uses the simulator at the socket that TX5000SIM_SOCKET names. Several
paths, separated by colons, are several instruments. The log marks each piece with "gpib" or "usb",
and with END if END came with the last byte.
)";

constexpr std::string_view kFaultHead = R"(
Faults: NAME [MS] [all | next | for COMMAND]. Without the last part the fault affects all replies.
)";

}  // namespace

std::optional<Options> ParseOptions(int count, char** arguments, std::string& error) {
  Options options;
  for (int i = 1; i < count; ++i) {
    const std::string name = arguments[i];
    const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                  [&](const OptionRow& r) { return r.name == name; });
    if (row == std::end(kRows)) {
      error = "unknown option \"" + name + "\"; --help lists all options";
      return std::nullopt;
    }
    std::string value;
    if (!row->argument.empty()) {
      if (++i == count) {
        error = name + " needs a " + std::string(row->argument);
        return std::nullopt;
      }
      value = arguments[i];
    }
    if (!row->apply(options, value)) {
      error = name + " does not accept \"" + value + "\"";
      return std::nullopt;
    }
  }
  return options;
}

std::string HelpText() {
  std::string text(kIntroduction);
  for (const OptionRow& row : kRows) {
    text += "  " + Padded(std::string(row.name) + " " + std::string(row.argument), 20);
    text += std::string(row.effect) + "\n";
  }
  text += kSocketText;
  text += "\nOn standard input, a line each\n" + Console::HelpText() + std::string(kFaultHead);
  for (const tx5000::FaultRow& row : tx5000::FaultTable()) {
    text += "  " + Padded(std::string(row.name), 18) + std::string(row.effect) + "\n";
  }
  return text;
}
