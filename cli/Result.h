#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "waveview/WaveSamples.h"

namespace oriolemark {

// How a call ends. Scripts rely on the numbers.
enum class ExitCode {
  Success = 0,
  VerdictFail = 1,
  Usage = 2,
  NoLink = 3,
  Refused = 4,
  File = 5,
  Interrupted = 130,
};

// One value of a result. Its texts are 8-bit, as the instrument sent them.
struct Value {
  std::string name;
  std::string text;  // for people
  // For programs: a number in this unit, if there is a unit. Nothing if the text holds no number.
  std::string unit{};
  std::optional<double> number{};
};

// One form of a result, for files with this extension: the bytes, or nothing if there are none.
struct FileForm {
  std::string extension;  // ".orm"; empty for all other names
  std::function<std::optional<std::string>()> makeBytes;
};

// The outcome of a verb. The rows of `columns` are samples.
struct Result {
  ExitCode code = ExitCode::Success;
  std::string name{};  // of an item of a sheet
  std::string text{};  // for people, instead of the values; 8-bit
  std::vector<Value> values{};
  std::vector<SampleColumn> columns{};
  std::vector<FileForm> files{};
  std::optional<std::vector<Result>> parts{};  // instead of values and columns
};

}  // namespace oriolemark
