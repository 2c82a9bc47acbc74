#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "support/Tables.h"
#include "values/Number.h"
#include "values/StringFunc.h"

namespace oriolemark {
namespace {

TEST(NumberTest, LeadingPartIsReadWhateverFollowsAndOnlyAWholeNumberIsAReply) {
  // A text, what it begins with, and whether it is a number to its end, and so a reply.
  for (const auto& row : Rows(R"(
- | 0 | no || . | 0 | no || e5 | 0 | no || inf | 0 | no || 0x1F | 0 | no || 1,000 | 1 | no
1.2.3 | 1.2 | no || 5E | 5 | no || 2.5div | 2.5 | no || -3.04d | -3.04 | no
1. | 1 | yes || .5 | 0.5 | yes || +.5 | 0.5 | yes ||  -1.5  | -1.5 | yes || 1E-3 | 0.001 | yes
1e-999 | 0 | yes || 1e-99999999999 | 0 | yes
)")) {
    const double leading = std::stod(row[1]);
    const bool whole = row[2] == "yes";
    EXPECT_EQ(LeadingNumber(row[0]), leading) << row[0];
    EXPECT_EQ(IsNumeric(row[0]), whole) << row[0];
    EXPECT_EQ(NumberInReply(row[0]), whole ? std::optional(leading) : std::nullopt) << row[0];
  }
  EXPECT_EQ(LeadingNumber("1\r"), 1);
  EXPECT_EQ(NumberInReply("1\r"), std::nullopt);
}

TEST(NumberTest, TooLargeANumberIsNoReplyAndAWholeOneIsRoundedBeforeItsRangeCounts) {
  for (const char* text : {"1e999", "1e99999999999999999999", "123e307", "0.1e310"}) {
    EXPECT_EQ(LeadingNumber(text), std::numeric_limits<double>::max()) << text;
    EXPECT_EQ(LeadingNumber("-" + std::string(text)), std::numeric_limits<double>::lowest());
    EXPECT_EQ(NumberInReply(text), std::nullopt) << text;
  }
  EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
  const std::pair<const char*, std::optional<int>> rows[] = {
      {"2.5", 2},    {"3.5", 4},      {"-0.5", 0},    {"32767.4", 32767},
      {"32768", {}}, {"32767.5", {}}, {"-32769", {}}, {"1e300", {}}};
  for (const auto& [text, number] : rows) {
    EXPECT_EQ(WholeNumberInReply(text, -32768, 32767), number) << text;
  }
}

TEST(NumberTest, FormatKeepsFifteenDigitsAndRoundsTiesAway) {
  // The number, its least and most decimals, and the text.
  for (const auto& row : Rows(R"(
0 | 3 | 3 | 0.000 || -0.0 | 1 | 25 | 0.0 || -0.0004 | 3 | 3 | 0.000 || -0.0005 | 3 | 3 | -0.001
0.5 | 0 | 0 | 1 || 2.5 | 0 | 0 | 3 || -2.5 | 0 | 0 | -3 || 0.49 | 0 | 0 | 0
0.0096 | 2 | 2 | 0.01 || 0.004 | 2 | 2 | 0.00 || 1.005 | 2 | 2 | 1.01 || 9.995 | 2 | 2 | 10.00
999.9996 | 3 | 3 | 1000.000 || 0.30000000000000004 | 1 | 25 | 0.3
0.09999999999999999 | 1 | 25 | 0.1
)")) {
    EXPECT_EQ(FormatFixed(std::stod(row[0]), std::stoi(row[1]), std::stoi(row[2])), row[3]);
  }
  EXPECT_EQ(FormatFixed(123456789012345678.0, 0, 2), "123456789012346000");
  EXPECT_EQ(NumberText(1000 / 1e9), "0.000001");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::quiet_NaN(), 2, 2), "0.00");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::infinity(), 0, 0).substr(0, 6), "179769");
}

// Texts, and their numbers; "no" for what is refused.
const std::pair<Converted (*)(std::string_view), const char*> kUnitTexts[] = {
    {ConvertStrToVolt, R"(
- | no || 5 | no || V | no || 10xV | no || 5.V | no || 5V< | no || **** | no || 5V | 5 || mV | 0
100uV | 1e-4 || 1.5MV | 1.5e6 || 2.000 mV | 0.002 || - 3 u V | -3e-6
)"},
    {ConvertStrToFreq, ">1.0MHz | no || 1uHz | no || 1mHz | 0.001 || 1MHz | 1e6 || 1.0kHz | 1000"},
    {ConvertStrToTime,
     "<10ns | no || 1Ms | no || 500us | 5e-4 || 20ps | 2e-11 || -1.5ns | -1.5e-9"},
    {ConvertStrToPercent, "25 | no || *% | no || % | 0 || 25.0% | 0.25 || - 5 %x | -0.05"}};

TEST(StringFuncTest, UnitTextBecomesANumberOrIsRefusedAsZero) {
  for (const auto& [convert, table] : kUnitTexts) {
    for (const auto& row : Rows(table)) {
      const bool refused = row[1] == "no";
      EXPECT_EQ(convert(row[0]).ConvertValid, !refused) << row[0];
      EXPECT_EQ(convert(row[0]).value, refused ? 0 : std::stod(row[1])) << row[0];
    }
  }
}

TEST(StringFuncTest, TimeBecomesTheExponentFormAndAHexByteIsItsLastTwoCharacters) {
  for (const auto& row : Rows("5 | - || <5ns | - || 5s | 5.000 || 0.0123 ns | 0.0123E-9")) {
    EXPECT_EQ(ConvertTimeStrToExp(row[0]), row[1]) << row[0];
  }
  for (const auto& row : Rows("- | 0 || B | 11 || g | 0 || 0x7D | 125 || x5 | 85 || 5x | 80")) {
    EXPECT_EQ(ConvertHexByteToNum(row[0]), std::stoi(row[1])) << row[0];
  }
}

using Show = std::function<std::string(double)>;

// The text of a unit box, and the entry of its unit list.
Show InBox(UnitBoxText (*toBox)(double)) {
  return [toBox](double value) {
    const UnitBoxText box = toBox(value);
    return box.text + " " + std::to_string(box.index);
  };
}

const std::pair<Show, const char*> kShown[] = {
    {InBox(SetVoltToUnitBox), R"(
1.1e9 | ???.? 2 || 1e9 | 1000.000 0 || 1e6 | 1.000 0 || 1000 | 1.000 1 || 1 | 1.000 2
0.001 | 1.000 3 || 0 | 0.000 4 || -0.0009 | -900.000 4 || -0.001 | -1.000 3 || -1 | -1.000 2
-1000 | -1.000 1 || -1e6 | -1.000 0 || -1e9 | ???.? 2
)"},
    {InBox(SetFreqToUnitBox), R"(
2e12 | ???.? 3 || 1e12 | 1000.000 0 || 1e9 | 1.000 0 || 1e6 | 1.000 1 || 1000 | 1.000 2
1 | 1.000 3 || 0 | 0.000 4 || -1 | ???.? 0
)"},
    {InBox(SetTimeToUnitBox), R"(
1000 | ???.? 4 || 1 | 1.000 4 || 0.001 | 1.000 3 || 1e-6 | 1.000 2 || 1e-9 | 1.000 1
1e-12 | 1.000 0 || -9e-10 | -900.000 0 || -1e-9 | -1.000 1 || -1e-6 | -1.000 2
-0.001 | -1.000 3 || -1 | -1.000 4 || -1000 | ???.? 0
)"},
    {InBox(SetPercentToUnitBox), "0.25 | 25.000 0 || -1.5 | -150.000 0"},
    // The unit changes behind the edge.
    {ConvertTimeToUnitStr, R"(
0 | 0.0ns || -1 | -1000000000.0ns || 1e-9 | 1.0ns || 1.5e-9 | 0.0015us || 1e-7 | 0.1us
1e-6 | 1.0us || 2e-5 | 0.02ms || 0.0005 | 0.5ms || 0.001 | 1.0ms || 0.0015 | 0.0015s || 2 | 2.0s
)"},
    {ConvertNumToExp2, R"(
0 | 0.00E+00 || -0.5 | -5.00E-01 || 2500000 | 25.00E+05 || 100000 | 1.00E+05
99999.9 | 10.00E+04 || 0.00001 | 1.00E-05 || 0.000001 | 0.00E+00 || -1e-10 | 0.00E+00
)"},
    {ConvertNumToExp4, R"(
1234.5 | 1.2345E+03 || 0.000001 | 1.0000E-06 || -1e-10 | -1.0000E-10 || 9e-11 | 0.0000E+00
)"}};

TEST(StringFuncTest, ANumberIsShownInTheUnitOfItsRange) {
  for (const auto& [show, table] : kShown) {
    for (const auto& row : Rows(table)) EXPECT_EQ(show(std::stod(row[0])), row[1]) << row[0];
  }
}

TEST(StringFuncTest, TriggerDelayStaysWithinTheLimitsOfTheTimeBase) {
  // The time base, the delay, and what is sent.
  for (const auto& row : Rows(R"(
- | -1 | 0.0ns || - | 1 | 1s || 20.00ms | 2 | 1s || 50.00ms | 0.4 | 0.3s || 1.000s | 1 | 1.0s
1.000us | -1 | -14000.0ns || 1.000us | -5e-6 | -5000.0ns || 50.00ms | -0.4 | -300000000.0ns
)")) {
    const auto answer = [&row](std::string_view command) {
      EXPECT_EQ(command, ":TimeBase:RANGE:?");
      return row[0];
    };
    EXPECT_EQ(ConvertTrigOffsetToStr(std::stod(row[1]), answer), row[2]) << row[0] << row[1];
  }
}

}  // namespace
}  // namespace oriolemark
