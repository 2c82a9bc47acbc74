#include "values/Number.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace oriolemark {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

// A text, what it begins with, and whether it is a number to its end, and so a reply.
const std::tuple<const char*, double, bool> kReadRows[] = {
    {"", 0, false},           {".", 0, false},     {"e5", 0, false},
    {"inf", 0, false},        {"0x1F", 0, false},  {"1,000", 1, false},
    {"1.2.3", 1.2, false},    {"5E", 5, false},    {"2.5div", 2.5, false},
    {"-3.04d", -3.04, false}, {"1\r", 1, false},   {"1.", 1, true},
    {".5", 0.5, true},        {"+.5", 0.5, true},  {" -1.5 ", -1.5, true},
    {"1E-3", 0.001, true},    {"1e-999", 0, true}, {"1e-99999999999", 0, true},
};

TEST(NumberTest, LeadingPartIsReadWhateverFollowsAndOnlyAWholeNumberIsAReply) {
  for (const auto& [text, leading, whole] : kReadRows) {
    EXPECT_EQ(LeadingNumber(text), leading) << text;
    EXPECT_EQ(IsNumeric(text), whole) << text;
    EXPECT_EQ(NumberInReply(text), whole ? std::optional(leading) : std::nullopt) << text;
  }
}

TEST(NumberTest, TooLargeANumberIsTheLargestOneAndNoReply) {
  for (const char* text : {"1e999", "1e99999999999999999999", "123e307", "0.1e310"}) {
    EXPECT_EQ(LeadingNumber(text), kLargest) << text;
    EXPECT_EQ(LeadingNumber(std::string("-") + text), -kLargest) << text;
    EXPECT_EQ(NumberInReply(text), std::nullopt) << text;
  }
  EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
}

TEST(NumberTest, WholeNumberIsRoundedToEvenBeforeItsRangeCounts) {
  const auto read = [](const char* text) { return WholeNumberInReply(text, -32768, 32767); };
  const std::pair<const char*, std::optional<int>> rows[] = {
      {"2.5", 2},    {"3.5", 4},      {"-0.5", 0},    {"32767.4", 32767},
      {"32768", {}}, {"32767.5", {}}, {"-32769", {}}, {"1e300", {}}};
  for (const auto& [text, number] : rows) EXPECT_EQ(read(text), number) << text;
}

const std::tuple<double, int, int, const char*> kFormatRows[] = {
    {0, 3, 3, "0.000"},           {-0.0, 1, 25, "0.0"},      {-0.0004, 3, 3, "0.000"},
    {-0.0005, 3, 3, "-0.001"},    {0.5, 0, 0, "1"},          {2.5, 0, 0, "3"},
    {-2.5, 0, 0, "-3"},           {0.49, 0, 0, "0"},         {0.0096, 2, 2, "0.01"},
    {0.004, 2, 2, "0.00"},        {1.005, 2, 2, "1.01"},     {9.995, 2, 2, "10.00"},
    {999.9996, 3, 3, "1000.000"}, {0.1 + 0.2, 1, 25, "0.3"}, {1e-7 * 1e6, 1, 25, "0.1"},
};

TEST(NumberTest, FormatKeepsFifteenDigitsAndRoundsTiesAway) {
  for (const auto& [value, minimum, maximum, text] : kFormatRows) {
    EXPECT_EQ(FormatFixed(value, minimum, maximum), text) << value;
  }
  EXPECT_EQ(FormatFixed(123456789012345678.0, 0, 2), "123456789012346000");
  EXPECT_EQ(NumberText(1000 / 1e9), "0.000001");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::quiet_NaN(), 2, 2), "0.00");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::infinity(), 0, 0).substr(0, 6), "179769");
}

}  // namespace
}  // namespace oriolemark
