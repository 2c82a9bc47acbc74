#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

// The simulator as its users have it: a process with a console and a line to open, or, with
// "--socket", a socket.
class Program : public testing::Test {
 protected:
  explicit Program(const char* place = "--link") : place_(place) {
    folder_ = (std::filesystem::temp_directory_path() / "tx5000XXXXXX").string();
    EXPECT_NE(mkdtemp(folder_.data()), nullptr);
    link_ = folder_ + "/scope";
    setenv("TX5000SIM_SOCKET", link_.c_str(), 1);
    Start();
  }

  void Start() {
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    process_ = fork();
    if (process_ == 0) {
      dup2(ends[1], STDIN_FILENO);
      dup2(ends[1], STDOUT_FILENO);
      execl(TX5000SIM_PATH, "tx5000sim", place_, link_.c_str(), "--firmware", "03.01.15", nullptr);
      _exit(127);
    }
    close(ends[1]);
    close(console_);
    console_ = ends[0];
    ASSERT_EQ(ReadLine(console_), "ready " + link_);
  }

  void TearDown() override {
    End(SIGKILL);
    close(console_);
    close(line_);
    std::filesystem::remove_all(folder_);
  }

  void OpenLine() {
    close(line_);
    line_ = open(link_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(line_, 0);
  }

  static std::string ReadLine(int descriptor) {
    std::string text;
    pollfd waiting{descriptor, POLLIN, 0};
    char c = 0;
    while (poll(&waiting, 1, 5000) == 1 && read(descriptor, &c, 1) == 1 && c != '\n') text += c;
    return text;
  }

  static void Write(int descriptor, const std::string& text) {
    ASSERT_EQ(write(descriptor, text.data(), text.size()), ssize_t(text.size()));
  }

  std::string Ask(const std::string& command) {
    Write(line_, command + "\r");
    return ReadLine(line_);
  }

  std::string Type(const std::string& line) {
    Write(console_, line + "\n");
    return ReadLine(console_);
  }

  int End(int signal) {
    int status = -1;
    if (process_ > 0 && kill(process_, signal) == 0) waitpid(process_, &status, 0);
    process_ = -1;
    return status;
  }

  const char* place_;
  std::string folder_;
  std::string link_;
  pid_t process_ = -1;
  int console_ = -1;
  int line_ = -1;
};

TEST_F(Program, AnswersOnEachLineThatOpensTakesAHandAndEndsCleanlyWithoutItsConsole) {
  OpenLine();
  EXPECT_EQ(Ask("*IDN?"), "TAVIK TECHNOLOGIES,TX-5102CA,S1009837,03.01.15");
  EXPECT_EQ(Type("set :TRIGGER:PULSE MODE -LESS THAN"), "ok");
  EXPECT_EQ(Ask(":TRIGGER:PULSE MODE:?"), "-LESS THAN");
  Write(line_, ":run\r");
  OpenLine();
  EXPECT_EQ(Ask(":TRIGGER:STATUS:?"), "RUN");
  EXPECT_EQ(Type("count"), "1");

  EXPECT_EQ(Type("fault vanish next"), "ok");
  EXPECT_EQ(Ask("*IDN?"), "");
  EXPECT_FALSE(std::filesystem::is_symlink(link_));
  EXPECT_EQ(Type("plug"), "ok");
  EXPECT_EQ(ReadLine(console_), "ready " + link_);
  shutdown(console_, SHUT_WR);
  OpenLine();
  EXPECT_EQ(Ask(":DATA:WinMemSize:?"), "600");
  EXPECT_EQ(End(SIGTERM), 0);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(link_)));
}

// The simulator at its socket, and the GPIB library as a program loads it.
class Bus : public Program {
 protected:
  Bus() : Program("--socket") {}
  template <typename Result = int, typename... Arguments>
  static Result Call(const char* name, Arguments... arguments) {
    const auto bin = std::filesystem::path(TX5000SIM_PATH).parent_path();
    const std::string path = bin / "../lib/libtx5000gpib.so";
    void* function = dlsym(dlopen(path.c_str(), RTLD_NOW), name);
    return reinterpret_cast<Result (*)(Arguments...)>(function)(arguments...);
  }
  static int Open(int address) { return Call("ibdev", 0, address, 0, /* 100 ms */ 9, 1, 0); }
  // In the order of the calls.
  static std::string Join(std::initializer_list<std::string> replies) {
    std::string joined;
    for (const std::string& reply : replies) joined += reply + ";";
    return joined;
  }
  // The status after the command, and the error where it has one.
  static std::string Put(int device, const std::string& text) {
    const int sta = Call("ibwrt", device, static_cast<const void*>(text.data()), long(text.size()));
    if (sta == 0x100) return "sent";
    return sta == 0x8000 ? "dead" : "error " + std::to_string(Call("ThreadIberr"));
  }
  // What one read gives, with what the status words tell behind it.
  static std::string Get(int device, std::size_t count) {
    std::string bytes(count, '?');
    const int sta = Call("ibrd", device, static_cast<void*>(bytes.data()), long(count));
    if (sta == 0x8000) return "dead";
    bytes.resize(std::size_t(Call<long>("ThreadIbcntl")));
    return bytes + (sta == 0xC100 ? "|TIMO" : sta == 0x2100 ? "|END" : "");
  }
};

TEST_F(Bus, GpibRepliesComeInPiecesAndADeadHandleStaysDead) {
  const int device = Open(7);
  EXPECT_EQ(Join({Put(device, "*IDN?"), Get(device, 5)}), "sent;TAVIK;") << "no END yet";
  EXPECT_EQ(Get(device, 1024), " TECHNOLOGIES,TX-5102CA,S1009837,03.01.15\n|END");
  EXPECT_EQ(Join({Put(device, "*IDN?\r"), Get(device, 9)}), "sent;|TIMO;") << "not understood";
  Put(device, "*IDN?");
  EXPECT_EQ(Call("ibclr", device), 0x100);
  EXPECT_EQ(Get(device, 9), "|TIMO") << "cleared";
  EXPECT_EQ(Put(Open(9), "*IDN?"), "error 2") << "nobody is there";
  Put(device, "*IDN?");
  End(SIGKILL);
  EXPECT_EQ(Join({Get(device, 9), Put(device, "*IDN?")}), "|TIMO;error 2;");
  Start();
  EXPECT_EQ(Join({Put(device, ":TRIGGER:STATUS:?"), Get(device, 9)}), "sent;RUN\n|END;");
  Call("ibonl", device, 0);
  EXPECT_EQ(Join({Put(device, "*IDN?"), Get(device, 9)}), "dead;dead;");
}

}  // namespace
