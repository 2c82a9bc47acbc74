#include "simulator/SerialSide.h"

#include <gtest/gtest.h>

#include "Bench.h"

namespace {

using std::chrono::milliseconds;

struct Line {
  tx5000::Instrument instrument;
  tx5000::SerialSide side{instrument};

  std::string Receive(std::string_view bytes) {
    std::string all;
    for (const auto& chunk : side.Receive(bytes)) all += chunk.bytes;
    return all;
  }

  void Break(std::string_view fault) {
    auto parsed = tx5000::ParseFault(fault);
    ASSERT_TRUE(parsed) << fault;
    side.GetFaults().Add(*parsed);
  }
};

TEST(SerialSideTest, ACommandEndsAtItsReturnHoweverItComes) {
  Line line;
  EXPECT_EQ(line.Receive(":TimeBase:RAN"), "");
  EXPECT_EQ(line.Receive("GE:?"), "");
  EXPECT_EQ(line.Receive("\r"), "200.0us\n");
  EXPECT_EQ(line.Receive(":STOP\r:TRIGGER:STATUS:?\r:RUN\r"), "STOP\n");
  EXPECT_EQ(line.instrument.UnknownCommands(), 0);
  EXPECT_EQ(line.Receive("\r"), "");
  EXPECT_EQ(line.Receive("\n*IDN?\r"), "") << "a line feed is part of what follows it";
  EXPECT_EQ(line.instrument.UnknownCommands(), 2);
}

TEST(SerialSideTest, NonsenseIsCountedAndKeptWithinBounds) {
  Line line;
  for (int i = 0; i < 100; ++i) line.Receive(std::string(1000, 'x'));
  EXPECT_EQ(line.Receive("\r"), "");
  EXPECT_EQ(line.instrument.UnknownCommands(), 1);
  EXPECT_LT(line.instrument.Unknown().front().size(), 300u);
  EXPECT_EQ(line.Receive(":DATA:WinMemSize:?\r"), "600\n");
  for (int i = 0; i < 250; ++i) line.Receive(":NONSENSE\r");
  EXPECT_EQ(line.instrument.UnknownCommands(), 251);
  EXPECT_EQ(line.instrument.Unknown().size(), 100u);
}

TEST(SerialSideTest, RepliesTakeTheTimeOfTheirBitsAndQueue) {
  Line line;
  line.side.SetBaud(9600);
  const auto block = line.side.Receive(":DATA:CHANNEL1\r");
  EXPECT_EQ(block.back().after, milliseconds(3127));  // 3001 bytes of ten bits
  EXPECT_LT(block.front().after, milliseconds(25));
  line.instrument.Advance(milliseconds(1000));
  const auto behind = line.side.Receive(":DATA:WinMemSize:?\r");
  EXPECT_EQ(behind.back().after, milliseconds(3127 - 1000 + 4));
}

// Of a block of two samples.
TEST(SerialSideTest, EachFaultSpoilsAReplyInItsOwnWay) {
  using namespace std::string_literals;
  const std::pair<const char*, std::string> cases[] = {
      {"silence", ""s},
      {"cut", "0xFF \n"s},
      {"double", "0xFF 0xFF \n0xFF 0xFF \n"s},
      {"no-lf", "0xFF 0xFF "s},
      {"die", "0xFF "s},
      {"vanish", ""s},
      {"nul", "0xF\0F 0\0xFF\0 \n"s},
      {"high", "0xF\xE4\x46 0\xE4xFF\xE4 \n"s},
      {"bare-tokens", "FF FF \n"s},
      {"wide-tokens", "0x00FF 0x00FF \n"s},
      {"comma-tokens", "0xFF,0xFF,\n"s},
      {"two-blanks", "0xFF  0xFF  \n"s},
      {"lower-tokens", "0xff 0xff \n"s},
      {"no-last-blank", "0xFF 0xFF\n"s},
      {"short-block", "0xFF \n"s},
  };
  for (const auto& [fault, reply] : cases) {
    SCOPED_TRACE(fault);
    Line line;
    line.instrument.Turn(":DATA:WinMemSize", "2");
    line.instrument.Turn("SIGNAL1", "sine 1000 0");
    line.instrument.Turn(":CHANNEL1:OFFSET", "-12.00div");
    line.Break(std::string(fault) + " next");
    EXPECT_EQ(line.Receive(":DATA:CHANNEL1\r"), reply);
  }
}

TEST(SerialSideTest, AFaultHitsWhatItsScopeNames) {
  Line line;
  line.Break("silence for :DATA:WinMemSize:?");
  EXPECT_EQ(line.Receive("*IDN?\r:DATA:WinMemSize:?\r").size(), 47u);
  line.side.GetFaults().Clear();
  line.Break("silence next");
  EXPECT_EQ(line.Receive(":STOP\r"), "");
  EXPECT_EQ(line.Receive(":DATA:WinMemSize:?\r"), "") << "a command without reply uses up nothing";
  EXPECT_EQ(line.Receive(":DATA:WinMemSize:?\r"), "600\n");
  line.Break("delay 80");
  EXPECT_EQ(line.side.Receive("*IDN?\r").front().after, milliseconds(80));
}

TEST(SerialSideTest, AFaultTextIsNotGuessedAt) {
  for (const char* text : {"", "mumble", "silence twice", "silence for", "silence for ", "cut  all",
                           "delay -5", "delay 5 6"}) {
    EXPECT_FALSE(tx5000::ParseFault(text)) << text;
  }
}

}  // namespace
