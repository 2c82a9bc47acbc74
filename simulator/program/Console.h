#pragma once

#include <span>
#include <string>
#include <string_view>

#include "simulator/SerialSide.h"

// The commands that a person or a script types to the simulator. They work the instrument's front
// panel and its cable.
class Console {
 public:
  enum class Wish { kNone, kQuit, kUnplug, kPlugIn };

  struct Answer {
    std::string text;  // one or more lines without the last line end; empty for an empty line
    Wish wish = Wish::kNone;
  };

  // Both must outlive the console.
  Console(tx5000::Instrument& instrument, tx5000::SerialSide& side)
      : instrument_(instrument), side_(side) {}

  // Carries out one line. If it cannot, answers with "error: " and the reason.
  Answer Execute(std::string_view line);

  static std::string HelpText();

 private:
  struct Row;
  static std::span<const Row> Rows();

  Answer Turn(std::string_view path, std::string_view value);
  Answer Set(std::string_view rest);
  Answer Get(std::string_view rest);
  Answer Switch(std::string_view rest, std::string_view path, std::string_view on,
                std::string_view off);
  Answer Scan(std::string_view rest);
  Answer ShowXY(std::string_view rest);
  Answer ConnectSignal(std::string_view rest);
  Answer SetSamples(std::string_view rest);
  Answer PressKey(std::string_view rest);
  Answer AddFault(std::string_view rest);
  Answer ClearFaults(std::string_view rest);
  Answer CountUnknown(std::string_view rest);
  Answer ListUnknown(std::string_view rest);
  Answer Unplug(std::string_view rest);
  Answer PlugIn(std::string_view rest);
  Answer ShowHelp(std::string_view rest);
  Answer Quit(std::string_view rest);

  tx5000::Instrument& instrument_;
  tx5000::SerialSide& side_;
};
