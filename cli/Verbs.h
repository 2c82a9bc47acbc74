#pragma once

#include <span>
#include <string>

#include "cli/Call.h"

namespace oriolemark {

struct Job;

// The arguments of a verb.
enum class Takes { Nothing, Names, NamesNeeded, InFile, OutFile, Channel, ChannelOrBoth };
enum class Needs { Nothing, Instrument };
// How a verb can be watched. Samples do not fit on one line of CSV.
enum class Watched { No, Yes, AsJson };

// One command of the program.
struct Verb {
  const char* name;
  Takes takes;
  Needs needs;
  Watched watched;
  const char* summary;
  const char* files;  // the extensions of the files that it writes; empty for any
  const char* help;   // behind the options in the help of the verb
  Result (*run)(Job& job);
  // Checks the arguments before the link is opened. Null if there is nothing to check.
  ExitCode (*prepare)(Job& job) = nullptr;
};

std::span<const Verb> Verbs();

}  // namespace oriolemark
