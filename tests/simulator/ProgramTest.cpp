#include <fcntl.h>
#include <poll.h>

#include <QProcess>

#include "drivers/LibraryGpib.h"
#include "support/FileFolder.h"
#include "support/ProgramBench.h"

namespace oriolemark {
namespace {

// The simulator as its users have it: a process with a console and a line to open, or, with
// "--socket", a socket.
struct Program : FileFolder, ::testing::Test {
  explicit Program(const char* option = "--link") : place(option) {
    setenv("TX5000SIM_SOCKET", link.c_str(), 1);
    Start();
  }
  ~Program() override {
    Kill();
    close(line);
  }

  void Start() {
    process.start(TX5000SIM_PATH, {place, link.c_str(), "--firmware", "03.01.15"});
    ASSERT_EQ(ConsoleLine(), "ready " + link);
  }
  void Kill() {
    process.kill();
    process.waitForFinished();
  }

  std::string ConsoleLine() {
    while (!process.canReadLine() && process.waitForReadyRead(5000)) continue;
    return process.readLine().trimmed().toStdString();
  }
  std::string Type(const std::string& text) {
    process.write((text + "\n").c_str());
    return ConsoleLine();
  }

  void OpenLine() {
    close(line);
    line = open(link.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(line, 0);
  }
  void Send(const std::string& command) const {
    ASSERT_EQ(write(line, (command + "\r").data(), command.size() + 1), command.size() + 1);
  }
  std::string Ask(const std::string& command) const {
    Send(command);
    std::string text;
    pollfd waiting{line, POLLIN, 0};
    char c = 0;
    while (poll(&waiting, 1, 5000) == 1 && read(line, &c, 1) == 1 && c != '\n') text += c;
    return text;
  }

  const char* place;
  const std::string link = folder + "/scope";
  QProcess process;
  int line = -1;
};

TEST_F(Program, AnswersOnEachLineThatOpensTakesAHandAndEndsCleanlyWithoutItsConsole) {
  OpenLine();
  EXPECT_EQ(Ask("*IDN?"), "TAVIK TECHNOLOGIES,TX-5102CA,S1009837,03.01.15");
  EXPECT_EQ(Type("set :TRIGGER:PULSE MODE -LESS THAN"), "ok");
  EXPECT_EQ(Ask(":TRIGGER:PULSE MODE:?"), "-LESS THAN");
  Send(":run");
  OpenLine();
  EXPECT_EQ(Ask(":TRIGGER:STATUS:?"), "RUN");
  EXPECT_EQ(Type("count"), "1");

  EXPECT_EQ(Type("fault vanish next"), "ok");
  EXPECT_EQ(Ask("*IDN?"), "");
  EXPECT_FALSE(std::filesystem::is_symlink(link));
  EXPECT_EQ(Type("plug"), "ok");
  EXPECT_EQ(ConsoleLine(), "ready " + link);
  process.closeWriteChannel();
  OpenLine();
  EXPECT_EQ(Ask(":DATA:WinMemSize:?"), "600");
  process.terminate();
  EXPECT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitStatus() + process.exitCode(), 0);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(link)));
}

// The simulator at its socket, and the GPIB library as a program loads it.
struct Bus : Program {
  Bus() : Program("--socket") { store.Write("Drivers", "GpibLibrary", TX5000GPIB_PATH); }

  int Open(int address) { return gpib.ibdev(0, address, 0, /* 100 ms */ 9, 1, 0); }
  // The status after the command, and the error where it has one.
  std::string Put(int device, const std::string& text) {
    gpib.ibwrt(device, text);
    const auto& [sta, error, unused, count] = gpib.Status();
    return sta == 0x100 ? "sent" : sta == 0x8000 ? "dead" : "error " + std::to_string(error);
  }
  // What one read gives, with what the status words tell behind it.
  std::string Get(int device, std::size_t count) {
    std::string bytes(count, '?');
    gpib.ibrd(device, bytes);
    const int sta = gpib.Status().ibsta;
    if (sta == 0x8000) return "dead";
    bytes.resize(static_cast<std::size_t>(gpib.Status().ibcntl));
    return bytes + (sta == 0xC100 ? "|TIMO" : sta == 0x2100 ? "|END" : "");
  }
  std::string Ask(int device, const std::string& text, std::size_t count) {
    const std::string put = Put(device, text);
    return put + ";" + Get(device, count);
  }

  MemoryStore store;
  LibraryGpib gpib{store};
};

TEST_F(Bus, GpibRepliesComeInPiecesAndADeadHandleStaysDead) {
  const int device = Open(7);
  EXPECT_EQ(Ask(device, "*IDN?", 5), "sent;TAVIK") << "no END yet";
  EXPECT_EQ(Get(device, 1024), " TECHNOLOGIES,TX-5102CA,S1009837,03.01.15\n|END");
  EXPECT_EQ(Ask(device, "*IDN?\r", 9), "sent;|TIMO") << "not understood";
  Put(device, "*IDN?");
  gpib.ibclr(device);
  EXPECT_EQ(gpib.Status().ibsta, 0x100);
  EXPECT_EQ(Get(device, 9), "|TIMO") << "cleared";
  EXPECT_EQ(Put(Open(9), "*IDN?"), "error 2") << "nobody is there";
  Put(device, "*IDN?");
  Kill();
  EXPECT_EQ(Get(device, 9), "|TIMO");
  EXPECT_EQ(Put(device, "*IDN?"), "error 2");
  Start();
  EXPECT_EQ(Ask(device, ":TRIGGER:STATUS:?", 9), "sent;RUN\n|END");
  gpib.ibonl(device, 0);
  EXPECT_EQ(Ask(device, "*IDN?", 9), "dead;dead");
}

}  // namespace
}  // namespace oriolemark
