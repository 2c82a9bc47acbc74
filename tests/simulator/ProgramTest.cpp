#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

// The simulator as its users have it: a process with a line to open and a console.
class Program : public testing::Test {
 protected:
  void SetUp() override {
    std::string name = (std::filesystem::temp_directory_path() / "tx5000XXXXXX").string();
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    folder_ = name;
  }

  void TearDown() override {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
    for (const int descriptor : {toConsole_, fromConsole_, line_}) {
      if (descriptor >= 0) close(descriptor);
    }
    std::filesystem::remove_all(folder_);
  }

  void Start() {
    int in[2], out[2];
    ASSERT_EQ(pipe2(in, O_CLOEXEC) | pipe2(out, O_CLOEXEC), 0);
    const std::string link = Link(), log = folder_ + "/log";
    process_ = fork();
    if (process_ == 0) {
      dup2(in[0], STDIN_FILENO);
      dup2(out[1], STDOUT_FILENO);
      execl(TX5000SIM_PATH, "tx5000sim", "--link", link.c_str(), "--log", log.c_str(), "--firmware",
            "03.01.15", nullptr);
      _exit(127);
    }
    close(in[0]);
    close(out[1]);
    toConsole_ = in[1];
    fromConsole_ = out[0];
    ASSERT_EQ(ReadLine(fromConsole_), "ready " + link);
  }

  std::string Link() const { return folder_ + "/scope"; }

  void OpenLine() {
    if (line_ >= 0) close(line_);
    line_ = open(Link().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(line_, 0);
  }

  static std::string ReadLine(int descriptor) {
    std::string text;
    pollfd waiting{descriptor, POLLIN, 0};
    while (!text.ends_with('\n') && poll(&waiting, 1, 5000) == 1) {
      char c = 0;
      if (read(descriptor, &c, 1) != 1) break;
      text += c;
    }
    if (text.ends_with('\n')) text.pop_back();
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
    Write(toConsole_, line + "\n");
    return ReadLine(fromConsole_);
  }

  int WaitForEnd() {
    int status = -1;
    waitpid(process_, &status, 0);
    process_ = -1;
    return status;
  }

  std::string folder_;
  pid_t process_ = -1;
  int toConsole_ = -1;
  int fromConsole_ = -1;
  int line_ = -1;
};

TEST_F(Program, AnswersEachTimeTheLineIsOpenedAndTakesAHand) {
  Start();
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
  Start();
  OpenLine();
  EXPECT_EQ(Type("fault vanish next"), "ok");
  EXPECT_EQ(Ask("*IDN?"), "");
  EXPECT_FALSE(std::filesystem::is_symlink(Link()));
  EXPECT_EQ(Type("plug"), "ok");
  EXPECT_EQ(ReadLine(fromConsole_), "ready " + Link());
  OpenLine();
  EXPECT_EQ(Ask(":TRIGGER:STATUS:?"), "RUN");
}

TEST_F(Program, OutlivesItsConsoleAndEndsCleanlyOnASignal) {
  Start();
  close(toConsole_);
  toConsole_ = -1;
  OpenLine();
  EXPECT_EQ(Ask(":DATA:WinMemSize:?"), "600");
  kill(process_, SIGTERM);
  EXPECT_EQ(WaitForEnd(), 0);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(Link())));
  std::ifstream log(folder_ + "/log");
  const std::string text(std::istreambuf_iterator<char>(log), {});
  EXPECT_NE(text.find(" < \"600\\n\""), std::string::npos) << text;
}

}  // namespace
