#include "Program.h"

#include <fstream>

namespace {

TEST_F(Program, AnswersEachTimeTheLineIsOpenedAndTakesAHand) {
  for (int round = 0; round < 2; ++round) {
    OpenLine();
    EXPECT_EQ(Ask("*IDN?"), "TAVIK TECHNOLOGIES,TX-5102CA,S1009837,03.01.15");
  }
  EXPECT_EQ(Type("set :TRIGGER:PULSE MODE -LESS THAN"), "ok");
  EXPECT_EQ(Ask(":TRIGGER:PULSE MODE:?"), "-LESS THAN");
  EXPECT_EQ(Type("set :TRIGGER:PULSE MODE less"), "error: the instrument does not take that");
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
