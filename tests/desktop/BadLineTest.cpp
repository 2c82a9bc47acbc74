#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSocketNotifier>
#include <ctime>
#include <thread>

#include "desktop/RunWindows.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtSerialPort.h"
#include "drivers/SerialSettings.h"
#include "link/SerialEvents.h"
#include "support/RecordingPrompts.h"
#include "support/Tables.h"

namespace oriolemark {
namespace {

// The instrument's end of a cable that the test may pull: it gives one answer to each command.
struct Cable {
  Cable() {
    ::grantpt(near);
    ::unlockpt(near);
    QObject::connect(&heard, &QSocketNotifier::activated, [this] { Hear(); });
  }
  ~Cable() { Pull(); }

  void Pull() {
    heard.setEnabled(false);
    ::close(std::exchange(near, -1));
  }
  void Hear() {
    char bytes[4096];
    const ssize_t count = ::read(near, bytes, sizeof(bytes));
    if (count <= 0 || bytes[count - 1] != '\r') return;
    // The line takes as much as the program reads meanwhile.
    speaker = std::jthread([near = near, said = answer] {
      EXPECT_EQ(::write(near, said.data(), said.size()), ssize_t(said.size()));
    });
  }

  int near = ::posix_openpt(O_RDWR | O_NOCTTY);
  QSocketNotifier heard{near, QSocketNotifier::Read};
  std::jthread speaker;
  const std::string path = ::ptsname(near);
  std::string answer = "1.00V\n";
};

// The link of the program over the real port and the real event loop.
struct Line {
  explicit Line(const std::string& path) : port([path](int) { return path; }) {
    ticks.SetEnabled(true);
  }
  // The share of the processor that this takes while events are served.
  double LoadOver(Milliseconds time) {
    const std::clock_t before = std::clock();
    bool over = false;
    QTimer::singleShot(time, [&over] { over = true; });
    waiting.WaitUntil([&over] { return over; });
    return double(std::clock() - before) / CLOCKS_PER_SEC * 1000 / double(time.count());
  }

  QtEventSource events;
  Waiting waiting{events};
  VirtualClock clock;  // of the user, who answers at once
  RecordingPrompts prompts{clock};
  QtSerialPort port;
  LinkSettings settings;
  LinkState state;
  RS232Func rs232{port, {settings, state, waiting, prompts}};
  SerialEvents serialEvents{port, rs232};
  Timer ticks{events, 100, [this] {
                ++state.SerialTicks;
                port.PollLines();
              }};
};

// A request with everything ready for its reply.
std::string Ask(Line& line) {
  line.rs232.RS232Send(":A:?");
  line.state.ReplyPending = true;
  return line.rs232.RS232Read();
}

struct BadLine : testing::Test, Application {};

Message Failure(const char* title, const std::string& systemText) {
  return {.systemText = systemText, .title = title, .icon = MessageIcon::Exclamation};
}

TEST_F(BadLine, APortThatVanishesIsToldAtEachSendAndTakesNoProcessor) {
  for (const std::string when : {"while idle", "in the middle of a reply", "unnoticed"}) {
    SCOPED_TRACE(when);
    Cable cable;
    Line line(cable.path);
    line.rs232.RS232Init();
    EXPECT_EQ(Ask(line), "1.00V");
    EXPECT_LT(line.LoadOver(Milliseconds(200)), 0.1);
    if (when == "in the middle of a reply") {
      cable.answer = "1.0";
      QTimer::singleShot(100, [&cable] { cable.Pull(); });
      EXPECT_EQ(Ask(line), "");
    } else {
      cable.Pull();
    }
    const std::size_t messages = when == "unnoticed" ? 1 : 0;
    if (messages > 0) line.rs232.RS232Send(":A:?");
    EXPECT_LT(line.LoadOver(Milliseconds(300)), 0.1);
    EXPECT_FALSE(line.port.IsOpen());
    EXPECT_EQ(line.prompts.shown.size(), messages);
    line.rs232.RS232Send(":A:?");
    const std::string why = "Input/output error\n\nCOM1 is " + cable.path +
                            ". It was disconnected. Plug it in and connect again.";
    EXPECT_EQ(line.prompts.shown, std::vector(messages + 1, Failure("RS232 Send Message", why)));
  }
}

TEST_F(BadLine, ALineOfTenMegabytesComesWholeAndTheNextOneToo) {
  Cable cable;
  Line line(cable.path);
  line.rs232.RS232Init();
  for (const std::size_t size : {10'000'000, 5}) {
    cable.answer = std::string(size, 'x') + "\n";
    EXPECT_EQ(Ask(line).size(), size);
  }
  EXPECT_TRUE(line.prompts.shown.empty());
}

TEST_F(BadLine, ALineIsGivenTheTimeOfItsSpeed) {
  // Bytes, baud rate and ms.
  const std::tuple<int, int, int> rows[] = {
      {-1, 9600, 0}, {1, 38400, 100}, {17, 300, 666}, {17, 0, 0}, {4096, 300, 136633}};
  for (const auto& [bytes, baud, time] : rows) EXPECT_EQ(TimeToSend(bytes, baud), time) << bytes;
}

TEST_F(BadLine, ALineThatTakesNothingIsClosedWithinTwoSecondsAndDropsWhatHasNotLeft) {
  Cable cable;
  cable.heard.setEnabled(false);
  Line line(cable.path);
  line.rs232.RS232Init();
  QElapsedTimer clock;
  do {
    clock.start();
  } while (!line.port.Write(std::string(1000, 'x')));
  line.port.Write(":KEY:LOCK:ENABLE\r");
  line.port.Close();
  EXPECT_LT(clock.elapsed(), 2000);
  ::fcntl(cable.near, F_SETFL, O_NONBLOCK);
  char bytes[20000];
  ssize_t came = 0, more = 0;
  while ((more = ::read(cable.near, bytes, sizeof(bytes))) > 0) came += more;
  EXPECT_LE(came, 4096) << "more than what the far end had: it would leave at another speed";
}

TEST_F(BadLine, APortThatDoesNotOpenNamesItselfAndTheCure) {
  // "$" is where the port is named.
  const auto expectRefusal = [](const std::string& path, const std::string& why,
                                const char* baud = "9600") {
    Line line(path);
    line.settings.BaudRate = baud;
    line.rs232.RS232Init();
    EXPECT_EQ(Bits(line.state.LinkOpened, line.port.IsOpen()), "00");
    const std::string text = Filled(why, '$', "\n\nCOM1 is " + path + ". ");
    EXPECT_EQ(line.prompts.shown, std::vector{Failure("RS232 Init", text)});
  };
  // Of this process alone: ports are locked by their names.
  expectRefusal("/dev/none" + std::to_string(::getpid()),
                "No such file or directory$Plug it in, or choose another port in the options.");
  Cable cable;
  expectRefusal(cable.path, "Invalid argument\n\nInvalid serial settings: fast,n,8,1.", "fast");
  {
    Line other(cable.path);
    other.rs232.RS232Init();
    expectRefusal(cable.path,
                  "Permission error while locking the device$"
                  "Close the other program that is using it. If the adapter was plugged in just "
                  "now, ModemManager may be trying it: wait half a minute, then connect again. A "
                  "udev rule keeps ModemManager away (the manual explains how under "
                  "Connecting).");
  }
  const std::string owner = QFileInfo(QString::fromStdString(cable.path)).group().toStdString();
  const std::string group = owner.empty() || owner == "root" ? "dialout" : owner;
  ::chmod(cable.path.c_str(), 0);
  // With the rights of somebody else, where the test has others to give up.
  const bool stranger = ::geteuid() == 0 && ::seteuid(65534) == 0;
  expectRefusal(cable.path, "Permission denied$To get access, join the group " + group +
                                ", then log in again.");
  EXPECT_EQ(stranger ? ::seteuid(0) : 0, 0);
}

}  // namespace
}  // namespace oriolemark
