#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

// The simulator as its users have it: a process with a line to open and a console.
class Program : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = (std::filesystem::temp_directory_path() / "tx5000XXXXXX").string();
    int ends[2];
    ASSERT_TRUE(mkdtemp(folder_.data()) != nullptr &&
                socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0);
    const std::string log = folder_ + "/log";
    link_ = folder_ + "/scope";
    process_ = fork();
    if (process_ == 0) {
      dup2(ends[1], STDIN_FILENO);
      dup2(ends[1], STDOUT_FILENO);
      execl(TX5000SIM_PATH, "tx5000sim", "--link", link_.c_str(), "--log", log.c_str(),
            "--firmware", "03.01.15", nullptr);
      _exit(127);
    }
    close(ends[1]);
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
    if (line_ >= 0) close(line_);
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

  std::string folder_;
  std::string link_;
  pid_t process_ = -1;
  int console_ = -1;
  int line_ = -1;
};

TEST_F(Program, AnswersEachTimeTheLineIsOpenedAndTakesAHand) {
  for (int round = 0; round < 2; ++round) {
    OpenLine();
    EXPECT_EQ(Ask("*IDN?"), "TAVIK TECHNOLOGIES,TX-5102CA,S1009837,03.01.15");
  }
  EXPECT_EQ(Type("set :TRIGGER:PULSE MODE -LESS THAN"), "ok");
  EXPECT_EQ(Ask(":TRIGGER:PULSE MODE:?"), "-LESS THAN");
  EXPECT_EQ(Type("samples 17000"), "ok");
  EXPECT_EQ(Ask(":DATA:CHANNEL1").size(), 85000u);
  EXPECT_EQ(Type("set :TRIGGER:PULSE MODE less"), "error: the instrument does not take that");
  EXPECT_EQ(Type("mumble"), "error: no such command; \"help\" lists them");
  EXPECT_EQ(Type("count"), "0");
  Write(line_, ":run\r");
  EXPECT_EQ(Ask(":TRIGGER:STATUS:?"), "RUN");
  EXPECT_EQ(Type("count"), "1");
}

TEST_F(Program, ComesBackUnderItsLinkAfterThePortHasVanished) {
  OpenLine();
  EXPECT_EQ(Type("fault vanish next"), "ok");
  EXPECT_EQ(Ask("*IDN?"), "");
  EXPECT_FALSE(std::filesystem::is_symlink(link_));
  EXPECT_EQ(Type("plug"), "ok");
  EXPECT_EQ(ReadLine(console_), "ready " + link_);
  OpenLine();
  EXPECT_EQ(Ask(":TRIGGER:STATUS:?"), "RUN");
}

TEST_F(Program, OutlivesItsConsoleAndEndsCleanlyOnASignal) {
  shutdown(console_, SHUT_WR);
  OpenLine();
  EXPECT_EQ(Ask(":DATA:WinMemSize:?"), "600");
  EXPECT_EQ(End(SIGTERM), 0);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(link_)));
  std::ifstream log(folder_ + "/log");
  const std::string text(std::istreambuf_iterator<char>(log), {});
  EXPECT_NE(text.find(" < \"600\\n\""), std::string::npos) << text;
}

}  // namespace
