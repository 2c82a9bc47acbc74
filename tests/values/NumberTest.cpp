#include "values/Number.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace oriolemark {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

using ReadRows = std::vector<std::pair<const char*, double>>;

TEST(NumberTest, LeadingPartIsReadWhateverFollowsButIsNoReply) {
  const ReadRows rows = {{"", 0},    {".", 0},        {"e5", 0},         {"inf", 0},
                         {"nan", 0}, {"0x1F", 0},     {"1,000", 1},      {"1.2.3", 1.2},
                         {"5E", 5},  {"2.5div", 2.5}, {"-3.04d", -3.04}, {"1e3s", 1000},
                         {"1\r", 1}};
  for (const auto& [text, leading] : rows) {
    EXPECT_EQ(LeadingNumber(text), leading) << text;
    EXPECT_FALSE(IsNumeric(text)) << text;
    EXPECT_EQ(NumberInReply(text), std::nullopt) << text;
  }
}

TEST(NumberTest, WholeTextIsANumberWithBlanksAroundIt) {
  const ReadRows rows = {{"1.", 1},
                         {".5", 0.5},
                         {"+.5", 0.5},
                         {" -1.5 ", -1.5},
                         {"1E-3", 0.001},
                         {"1e-999", 0},
                         {"1e-99999999999999999999", 0}};
  for (const auto& [text, number] : rows) {
    EXPECT_EQ(LeadingNumber(text), number) << text;
    EXPECT_TRUE(IsNumeric(text)) << text;
    EXPECT_EQ(NumberInReply(text), number) << text;
  }
}

TEST(NumberTest, TooLargeANumberIsTheLargestOneAndNoReply) {
  for (const char* text : {"1e999", "1e99999999999999999999", "123e307", "0.1e310"}) {
    EXPECT_EQ(LeadingNumber(text), kLargest) << text;
    EXPECT_EQ(LeadingNumber(std::string("-") + text), -kLargest) << text;
    EXPECT_EQ(NumberInReply(text), std::nullopt) << text;
  }
  EXPECT_EQ(LeadingNumber(std::string(400, '9')), kLargest);
  EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
}

TEST(NumberTest, WholeNumberIsRoundedToEvenBeforeItsRangeCounts) {
  const auto read = [](const char* text) { return WholeNumberInReply(text, -32768, 32767); };
  EXPECT_EQ(read("2.5"), 2);
  EXPECT_EQ(read("3.5"), 4);
  EXPECT_EQ(read("-0.5"), 0);
  EXPECT_EQ(read("32767.4"), 32767);
  EXPECT_EQ(read("32768"), std::nullopt);
  EXPECT_EQ(read("32767.5"), std::nullopt);
  EXPECT_EQ(read("-32769"), std::nullopt);
  EXPECT_EQ(read("1e300"), std::nullopt);
}

struct FormatRow {
  double value;
  int minimum;
  int maximum;
  const char* text;
};

const FormatRow kFormatRows[] = {
    {0, 3, 3, "0.000"},
    {-0.0, 1, 25, "0.0"},
    {-0.0004, 3, 3, "0.000"},
    {-0.0005, 3, 3, "-0.001"},
    {0.5, 0, 0, "1"},
    {2.5, 0, 0, "3"},
    {-2.5, 0, 0, "-3"},
    {0.49, 0, 0, "0"},
    {0.0096, 2, 2, "0.01"},
    {0.004, 2, 2, "0.00"},
    {1.005, 2, 2, "1.01"},
    {9.995, 2, 2, "10.00"},
    {999.9996, 3, 3, "1000.000"},
    {0.1 + 0.2, 1, 25, "0.3"},
    {100 / 1e6 * 1e6, 1, 25, "100.0"},
    {1e-7 * 1e6, 1, 25, "0.1"},
    {123456789012345678.0, 0, 2, "123456789012346000"},
    {1.0 / 3, 3, 14, "0.33333333333333"},
    {2.0 / 3, 1, 25, "0.666666666666667"},
    {std::numeric_limits<double>::quiet_NaN(), 2, 2, "0.00"},
};

TEST(NumberTest, FormatKeepsFifteenDigitsAndRoundsTiesAway) {
  for (const FormatRow& row : kFormatRows) {
    EXPECT_EQ(FormatFixed(row.value, row.minimum, row.maximum), row.text) << row.value;
  }
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::infinity(), 0, 0).substr(0, 6), "179769");
}

TEST(NumberTest, TextIsDecimalAndReadsBack) {
  EXPECT_EQ(NumberText(1000), "1000");
  EXPECT_EQ(NumberText(-0.25), "-0.25");
  EXPECT_EQ(NumberText(1000 / 1e9), "0.000001");
  EXPECT_EQ(NumberText(1e21), "1000000000000000000000");
  for (const double value : {1.5e-9, -123.456, 1e-320, 1.79e308}) {
    EXPECT_DOUBLE_EQ(LeadingNumber(NumberText(value)), value);
  }
}

}  // namespace
}  // namespace oriolemark
