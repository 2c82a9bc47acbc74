// The command-line program: the devices of this system, and one call.

#include <unistd.h>

#include <QBuffer>
#include <QDateTime>
#include <QGuiApplication>
#include <QImage>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <variant>

#include "cli/Arguments.h"
#include "cli/Names.h"
#include "cli/Rendering.h"
#include "cli/Runner.h"
#include "cli/program/SimulatedInstrument.h"
#include "drivers/ChosenColors.h"
#include "drivers/ChosenUsb.h"
#include "drivers/EndSignals.h"
#include "drivers/LibraryGpib.h"
#include "drivers/PictureText.h"
#include "drivers/ProgramFiles.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtSerialPort.h"
#include "drivers/QtSettingsStore.h"
#include "drivers/SystemDate.h"

namespace oriolemark {
namespace {

bool Write(std::FILE* file, std::string_view bytes) {
  return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
}

std::string Now() {
  const QDateTime now = QDateTime::currentDateTime();
  return now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODateWithMs).toStdString();
}

std::optional<std::string> EncodePng(std::span<const std::uint32_t> pixels, int width) {
  const int height = static_cast<int>(pixels.size()) / width;
  const QImage image(reinterpret_cast<const uchar*>(pixels.data()), width, height,
                     static_cast<qsizetype>(width) * 4, QImage::Format_RGB32);
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "PNG")) return std::nullopt;
  return buffer.data().toStdString();
}

Devices MakeDevices(QtEventSource& events, Waiting& waiting, SettingsStore& settings) {
  return {std::make_unique<QtSerialPort>([&settings](int number) {
            return settings.Read("Drivers", "COM" + std::to_string(number)).value_or("");
          }),
          std::make_unique<LibraryGpib>(settings),
          std::make_unique<ChosenUsb>(settings,
                                      MakeUsbTime(waiting, [&events] { return events.Turns(); })),
          std::make_unique<ChosenColors>(settings)};
}

// Texts in pictures need the toolkit's drawing library, with no screen behind it. Starting it takes
// longer than most calls.
std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv, bool draws) {
  if (!draws) return std::make_unique<QCoreApplication>(argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  return std::make_unique<QGuiApplication>(argc, argv);
}

// The instrument's own screen is a picture without texts of ours.
bool DrawsTexts(const Call& call) {
  return !call.channel.empty() && IsPicture(call.file);
}

int RunCall(QtEventSource& events, EndSignals& endSignals, Call call) {
  SimulatedInstrument simulated;
  if (call.sim) {
    if (const auto failure = simulated.Start(call.link)) {
      Write(stderr, ErrorLine(*failure));
      return static_cast<int>(ExitCode::NoLink);
    }
  }
  QtSettingsStore settings;
  const bool draws = DrawsTexts(call);
  const Desk desk{
      .events = events,
      .settings = settings,
      .makeDevices = [&events](Waiting& own,
                               SettingsStore& store) { return MakeDevices(events, own, store); },
      .today = SystemShortDate,
      .now = Now,
      .makeCanvas = [draws]() -> std::unique_ptr<Canvas> {
        if (draws) return MakeRasterCanvas();
        return std::make_unique<RasterCanvas>();
      },
      .encodePng = EncodePng,
      .syncFile = SyncToDisk,
      .fileExists =
          [](const std::string& path) {
            std::error_code error;
            return std::filesystem::exists(path, error);
          },
      .print = [](std::string_view bytes) { return Write(stdout, bytes); },
      .printError = [](std::string_view bytes) { Write(stderr, bytes); },
      .showsProgress = ::isatty(STDERR_FILENO) == 1,
      .version = ORIOLEMARK_VERSION,
  };
  Runner runner(desk);
  endSignals.Watch([&runner] { runner.Interrupt(); });
  return static_cast<int>(runner.Run(call));
}

// Calls the program with its arguments. The signals are those of the whole process.
int RunProgram(EndSignals& endSignals, int& argc, char** argv) {
  const auto read = ReadArguments({argv + 1, argv + argc}, ORIOLEMARK_VERSION);
  if (const auto* const answer = std::get_if<Answer>(&read)) {
    const bool asked = answer->code == ExitCode::Success;
    const bool written =
        asked ? Write(stdout, answer->text) : Write(stderr, ErrorLine(answer->text));
    return static_cast<int>(written ? answer->code : ExitCode::File);
  }
  const Call& call = std::get<Call>(read);
  const auto application = MakeApplication(argc, argv, DrawsTexts(call));
  QCoreApplication::setApplicationName(kApplicationTitle);
  QtEventSource events;
  return RunCall(events, endSignals, call);
}

}  // namespace
}  // namespace oriolemark

int main(int argc, char** argv) {
  // The toolkit's remarks, such as on a missing folder for run-time files, are not the user's.
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg) std::fprintf(stderr, "%s\n", qPrintable(text));
  });
  // A reader that has gone is a failed write.
  std::signal(SIGPIPE, SIG_IGN);
  oriolemark::EndSignals endSignals;
  return oriolemark::RunProgram(endSignals, argc, argv);
}
