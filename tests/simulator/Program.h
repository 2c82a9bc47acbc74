#pragma once

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

// The simulator as its users have it: a process with a console and a line to open, or, with
// "--socket", a socket.
class Program : public testing::Test {
 protected:
  explicit Program(const char* place = "--link") : place_(place) {}

  void SetUp() override {
    folder_ = (std::filesystem::temp_directory_path() / "tx5000XXXXXX").string();
    ASSERT_NE(mkdtemp(folder_.data()), nullptr);
    link_ = folder_ + "/scope";
    setenv("TX5000SIM_SOCKET", link_.c_str(), 1);
    Start();
  }

  void Start() {
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    const std::string log = folder_ + "/log";
    process_ = fork();
    if (process_ == 0) {
      dup2(ends[1], STDIN_FILENO);
      dup2(ends[1], STDOUT_FILENO);
      execl(TX5000SIM_PATH, "tx5000sim", place_, link_.c_str(), "--log", log.c_str(), "--firmware",
            "03.01.15", nullptr);
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

  const char* place_;
  std::string folder_;
  std::string link_;
  pid_t process_ = -1;
  int console_ = -1;
  int line_ = -1;
};
