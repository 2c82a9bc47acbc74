#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "desktop/RunWindows.h"
#include "drivers/QtEventSource.h"
#include "drivers/QtSerialPort.h"
#include "link/SerialEvents.h"
#include "link/TX5000Cmd.h"
#include "platform/Timer.h"

namespace oriolemark {
namespace {

// Of this process alone: ports are locked by their names.
const std::string kNoDevice = "/dev/none" + std::to_string(::getpid());

using Ms = Milliseconds;

// The instrument's end of a cable that the test may pull: it gives one answer to each command.
class Cable {
 public:
  Cable() : near_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    ::grantpt(near_);
    ::unlockpt(near_);
    path = ::ptsname(near_);
    heard_ = std::make_unique<QSocketNotifier>(near_, QSocketNotifier::Read);
    QObject::connect(heard_.get(), &QSocketNotifier::activated, [this] { Hear(); });
  }
  ~Cable() { Pull(); }

  void Pull() {
    heard_.reset();
    if (near_ >= 0) ::close(near_);
    near_ = -1;
  }
  void Say(std::string bytes) {
    saying_ += std::move(bytes);
    Pour();
  }

  std::string path;
  std::string answer = "1.00V\n";

 private:
  void Hear() {
    char bytes[4096];
    const ssize_t count = ::read(near_, bytes, sizeof(bytes));
    for (ssize_t i = 0; i < count; ++i) {
      if (bytes[i] == '\r') Say(answer);
    }
  }
  void Pour() {
    if (near_ < 0 || saying_.empty()) return;
    const ssize_t count =
        ::write(near_, saying_.data(), std::min<std::size_t>(saying_.size(), 65536));
    if (count > 0) saying_.erase(0, static_cast<std::size_t>(count));
    if (!saying_.empty()) QTimer::singleShot(0, [this] { Pour(); });
  }

  int near_;
  std::unique_ptr<QSocketNotifier> heard_;
  std::string saying_;
};

class NotedPrompts : public Prompts {
 public:
  MessageAnswer Show(const Message& message) override {
    texts.push_back(message.title + ": " + message.systemText);
    return MessageAnswer::Ok;
  }
  std::string AskFileName(const FileQuestion&) override { return {}; }
  void ShowPrinterDialog(const std::string&) override {}
  std::vector<std::string> texts;
};

// The link of the program over the real port and the real event loop.
struct Line {
  explicit Line(const std::string& path) : port([path](int) { return path; }) {
    settings.ScopeIOType = kLinkRS232;
    ticks.SetEnabled(true);
  }
  // The share of the processor that this takes while events are served.
  double LoadOver(Ms time) {
    const std::clock_t before = std::clock();
    Serve(time);
    return double(std::clock() - before) / CLOCKS_PER_SEC * 1000 / double(time.count());
  }
  void Serve(Ms time) {
    bool over = false;
    QTimer::singleShot(time, [&over] { over = true; });
    waiting.WaitUntil([&over] { return over; });
  }

  QtEventSource events;
  Waiting waiting{events};
  NotedPrompts prompts;
  QtSerialPort port;
  LinkSettings settings;
  LinkState state;
  RS232Func rs232{port, settings, state, waiting, prompts};
  SerialEvents serialEvents{port, rs232};
  Timer ticks{events, 100, [this] {
                ++state.SerialTicks;
                port.PollLines();
              }};
};

const char* const kGone = "It has gone: plug it in and connect again.";

// A request with everything ready for its reply.
std::string Ask(Line& line) {
  line.rs232.RS232Send(":A:?");
  line.state.ReplyPending = true;
  return line.rs232.RS232Read();
}

TEST(BadLine, APortThatVanishesIsToldAtEachSendAndTakesNoProcessor) {
  // When it goes, and how many messages are shown by then.
  const std::tuple<const char*, std::function<void(Cable&, Line&)>, std::size_t> rows[] = {
      {"while idle",
       [](Cable& cable, Line& line) {
         cable.Pull();
         line.Serve(Ms(100));
       },
       0},
      {"in the middle of a reply",
       [](Cable& cable, Line& line) {
         cable.answer = "1.0";
         QTimer::singleShot(100, [&cable] { cable.Pull(); });
         EXPECT_EQ(Ask(line), "");
       },
       0},
      {"before a send, unnoticed",
       [](Cable& cable, Line& line) {
         cable.Pull();
         line.rs232.RS232Send(":A:?");
       },
       1},
  };
  Application application;
  for (const auto& [name, happens, messages] : rows) {
    SCOPED_TRACE(name);
    Cable cable;
    Line line(cable.path);
    line.rs232.RS232Init();
    EXPECT_EQ(Ask(line), "1.00V");
    EXPECT_LT(line.LoadOver(Ms(300)), 0.1);
    happens(cable, line);
    EXPECT_EQ(line.prompts.texts.size(), messages);
    EXPECT_LT(line.LoadOver(Ms(300)), 0.1);
    EXPECT_FALSE(line.port.IsOpen());
    line.rs232.RS232Send(":A:?");
    EXPECT_EQ(line.prompts.texts.size(), messages + 1);
    EXPECT_EQ(line.prompts.texts.back(),
              "RS232 Send Message: Input/output error\nCOM1 is " + cable.path + ". " + kGone);
  }
}

TEST(BadLine, ALineOfTenMegabytesComesWholeAndTheNextOneToo) {
  Application application;
  Cable cable;
  Line line(cable.path);
  line.rs232.RS232Init();
  cable.answer = std::string(10'000'000, 'x') + "\n";
  EXPECT_EQ(Ask(line).size(), 10'000'000u);
  cable.answer = "1.00V\n";
  EXPECT_EQ(Ask(line), "1.00V");
  EXPECT_TRUE(line.prompts.texts.empty());
}

std::string GroupName(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0 || status.st_gid == 0) return "dialout";
  const auto* const entry = ::getgrgid(status.st_gid);
  return entry != nullptr ? entry->gr_name : "dialout";
}

// The rights of somebody else for as long as it lives; nothing where the test has none to give up.
class Stranger {
 public:
  Stranger() {
    if (::geteuid() == 0) changed_ = ::seteuid(65534) == 0;
  }
  ~Stranger() {
    if (changed_ && ::seteuid(0) != 0) ADD_FAILURE() << "cannot take the own rights back";
  }

 private:
  bool changed_ = false;
};

TEST(BadLine, APortThatDoesNotOpenNamesItselfAndTheCure) {
  Application application;
  QTemporaryDir folder;
  const std::string plain = folder.path().toStdString() + "/plain";
  ::close(::open(plain.c_str(), O_CREAT | O_RDWR, 0644));
  const auto opening = [](const std::string& path, const std::string& baud) {
    Line line(path);
    line.settings.BaudRate = baud;
    line.rs232.RS232Init();
    EXPECT_FALSE(line.state.LinkOpened || line.port.IsOpen());
    return line.prompts.texts.empty() ? "" : line.prompts.texts.front();
  };
  Cable cable;
  const std::string is = "\nCOM1 is " + cable.path + ". ";
  EXPECT_EQ(opening(kNoDevice, "9600"), "RS232 Init: No such file or directory\nCOM1 is " +
                                            kNoDevice +
                                            ". Plug it in, or choose another "
                                            "port in the options.");
  EXPECT_EQ(opening(plain, "9600"), "RS232 Init: Inappropriate ioctl for device\nCOM1 is " + plain +
                                        ". It cannot be used as a serial line at 9600,n,8,1.");
  EXPECT_EQ(opening(cable.path, "fast"),
            "RS232 Init: Invalid argument\nNo serial line can be set to fast,n,8,1.");
  {
    Line other(cable.path);
    other.rs232.RS232Init();
    EXPECT_EQ(opening(cable.path, "9600"), "RS232 Init: Permission error while locking the device" +
                                               is + "Close the other program that is using it.");
  }
  ::chmod(cable.path.c_str(), 0);
  const Stranger stranger;
  EXPECT_EQ(opening(cable.path, "9600"), "RS232 Init: Permission denied" + is + "Join the group " +
                                             GroupName(cable.path) +
                                             ", which may use it, and log in again.");
}

}  // namespace
}  // namespace oriolemark
