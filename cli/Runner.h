#pragma once

#include <memory>
#include <string>

#include "cli/Call.h"
#include "cli/Desk.h"
#include "cli/Job.h"
#include "cli/Session.h"

namespace oriolemark {

// Runs calls.
class Runner {
 public:
  explicit Runner(const Desk& desk) : desk_(desk) {}

  // Runs the call, once or as a watch, and prints or writes its result.
  ExitCode Run(const Call& call);
  // The user has interrupted the program. Ends the run in order: the instrument is sent its closing
  // command, and files are whole. Call it from the event loop.
  void Interrupt();

 private:
  ExitCode RunOnce(const Call& call);
  ExitCode Watch(const Call& call);
  // Prints the line with this number, after as many tries as it takes.
  ExitCode PrintLine(const Call& call, int line);
  // Checks the arguments before the link is opened.
  ExitCode Prepare(const Call& call);
  // Opens a session if none is open. Returns false if the instrument does not answer.
  bool Connect(const Call& call);
  // The result of one run in the open session, its code being that of a failed link too.
  Result RunVerb(const Call& call);
  ExitCode CheckFile(const Call& call);
  ExitCode Deliver(const Call& call, const Result& result);
  Job JobOf(const Call& call) { return {desk_, call, session_.get(), limits_}; }
  // The same with the time, for the log of a watch.
  void Report(const std::string& text) { Explain(desk_.now() + " " + text); }
  void Explain(const std::string& text) { desk_.printError(ErrorLine(text)); }

  const Desk& desk_;
  Waiting idle_{desk_.events};  // between the readings of a watch
  std::unique_ptr<Session> session_;
  std::optional<Limits> limits_;
  bool interrupted_ = false;
};

}  // namespace oriolemark
