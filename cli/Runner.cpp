#include "cli/Runner.h"

#include <algorithm>

#include "cli/Names.h"
#include "cli/Rendering.h"
#include "cli/Verbs.h"
#include "platform/Timer.h"

namespace oriolemark {
namespace {

constexpr int kFirstPause = 1000;  // ms
constexpr int kLongestPause = 60000;

std::string Rendered(const Result& result, Format format) {
  switch (format) {
    case Format::Csv:
      return CsvHead(result) + CsvRows(result);
    case Format::Json:
      return JsonOf(result);
    case Format::Text:
      break;
  }
  return TextOf(result);
}

// The bytes of the file. Nothing for a picture that is too large.
std::optional<std::string> BytesOf(const Result& result, const std::string& extension) {
  const bool hasData = !result.values.empty() || !result.columns.empty() || result.parts;
  if (extension == ".csv" && hasData) return Rendered(result, Format::Csv);
  if (extension == ".json" && hasData) return Rendered(result, Format::Json);
  for (const FileForm& form : result.files) {
    if (form.extension.empty() || form.extension == extension) return form.makeBytes();
  }
  return std::nullopt;
}

}  // namespace

void Runner::Interrupt() {
  interrupted_ = true;
  if (session_) session_->End();
  idle_.BeginClosing();
}

ExitCode Runner::Run(const Call& call) {
  const ExitCode code = call.every ? Watch(call) : RunOnce(call);
  session_ = nullptr;
  // Serves an interrupt that came while nothing else was.
  idle_.DoEvents();
  return interrupted_ ? ExitCode::Interrupted : code;
}

ExitCode Runner::CheckFile(const Call& call) {
  if (call.file.empty()) return ExitCode::Success;
  const std::string files = std::string(call.verb->files) + " ";
  const std::string extension = ExtensionOf(call.file);
  if (files != " " && (extension.empty() || files.find(extension + " ") == std::string::npos)) {
    Explain("\"" + call.file + "\" needs one of these extensions: " + call.verb->files);
    return ExitCode::Usage;
  }
  if (call.overwrite || !desk_.fileExists(call.file)) return ExitCode::Success;
  Explain("\"" + call.file + "\" exists. Give --overwrite to replace it.");
  return ExitCode::File;
}

bool Runner::Connect(const Call& call) {
  if (session_ && !session_->Failed()) return true;
  session_ = nullptr;
  session_ = std::make_unique<Session>(desk_, call);
  return session_->Connect();
}

ExitCode Runner::Prepare(const Call& call) {
  Job job = JobOf(call);
  return call.verb->prepare == nullptr ? ExitCode::Success : call.verb->prepare(job);
}

Result Runner::RunVerb(const Call& call) {
  Job job = JobOf(call);
  Result result = call.verb->run(job);
  if (session_) session_->ClearProgress();
  const bool failed = session_ && session_->Failed();
  if (failed && result.code != ExitCode::Refused) result.code = ExitCode::NoLink;
  return result;
}

ExitCode Runner::RunOnce(const Call& call) {
  if (const ExitCode code = CheckFile(call); code != ExitCode::Success) return code;
  if (call.verb->needs == Needs::Instrument) {
    session_ = std::make_unique<Session>(desk_, call);
    if (const ExitCode code = Prepare(call); code != ExitCode::Success) return code;
    if (!session_->Connect()) return ExitCode::NoLink;
  }
  const Result result = RunVerb(call);
  // A reading that is not whole is not delivered.
  if (session_ && session_->Failed()) return result.code;
  if (result.code != ExitCode::Success && result.values.empty()) return result.code;
  const ExitCode delivered = Deliver(call, result);
  return delivered == ExitCode::Success ? result.code : delivered;
}

ExitCode Runner::Deliver(const Call& call, const Result& result) {
  if (call.file.empty()) {
    if (desk_.print(Rendered(result, call.format))) return ExitCode::Success;
    Explain("The result could not be printed.");
    return ExitCode::File;
  }
  const std::optional<std::string> bytes = BytesOf(result, ExtensionOf(call.file));
  if (!bytes) {
    if (result.code == ExitCode::Success) Explain("There is nothing to write.");
    return ExitCode::File;
  }
  const auto failure = WriteFile(call.file, *bytes, desk_.syncFile);
  if (!failure) return ExitCode::Success;
  Explain("\"" + call.file + "\": " + failure->text);
  return ExitCode::File;
}

ExitCode Runner::Watch(const Call& call) {
  session_ = std::make_unique<Session>(desk_, call);
  if (const ExitCode code = Prepare(call); code != ExitCode::Success) return code;
  if (!session_->Connect()) return ExitCode::NoLink;
  int due = 1;
  bool late = false;
  Timer schedule(desk_.events, static_cast<int>(call.every->count()), [&due] { ++due; });
  schedule.SetEnabled(true);
  ExitCode worst = ExitCode::Success;
  for (int line = 0; call.count == 0 || line < call.count; ++line) {
    if (!idle_.WaitUntil([&due] { return due > 0; })) break;
    // Said once, until a reading keeps its time again.
    if (due > 1 && !late) {
      Report("Readings are left out: the last one took longer than --every, or the link was lost.");
    }
    late = due > 1;
    due = 0;
    const ExitCode code = PrintLine(call, line);
    if (code == ExitCode::VerdictFail) worst = code;
    if (code != ExitCode::Success && code != ExitCode::VerdictFail) return code;
  }
  return worst;
}

ExitCode Runner::PrintLine(const Call& call, int line) {
  for (int pause = kFirstPause; !interrupted_; pause = std::min(2 * pause, kLongestPause)) {
    const std::string time = desk_.now();
    const bool reopened = !session_ || session_->Failed();
    const bool connected = Connect(call);
    if (connected) {
      const Result result = RunVerb(call);
      if (!session_->Failed()) {
        if (reopened) Report("The link is back.");
        const std::string head = line == 0 ? "time," + CsvHead(result) : "";
        const bool printed =
            desk_.print(call.format == Format::Json ? JsonOf(result, time)
                                                    : head + time + "," + CsvRows(result));
        if (!printed) Explain("The line could not be printed.");
        return printed ? result.code : ExitCode::File;
      }
    }
    if (interrupted_) break;
    Report(std::string(connected ? "The reading failed." : "The link is lost.") +
           " The next try is in " + std::to_string(pause / 1000) + " s.");
    session_ = nullptr;
    bool rested = false;
    Timer rest(desk_.events, pause, [&rested] { rested = true; });
    rest.SetEnabled(true);
    idle_.WaitUntil([&rested] { return rested; });
  }
  return ExitCode::Interrupted;
}

}  // namespace oriolemark
