#include "values/StringFunc.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace oriolemark {
namespace {

using ReadRows = std::vector<std::pair<const char*, double>>;
using UnitCase = std::tuple<Converted (*)(std::string_view), std::vector<const char*>, ReadRows>;

TEST(StringFuncTest, UnitTextBecomesANumberOrIsRefusedAsZero) {
  const ReadRows volts = {{"5V", 5},        {"mV", 0},           {"100uV", 100 / 1e6},
                          {"1.5MV", 1.5e6}, {"2.000 mV", 0.002}, {"- 3 u V", -3 / 1e6}};
  const ReadRows frequencies = {{"1mHz", 0.001}, {"1MHz", 1e6}, {"1.00kHz", 1000}};
  const ReadRows times = {{"500us", 500 / 1e6}, {"20ps", 20 / 1e12}, {"-1.5ns", -1.5 / 1e9}};
  const ReadRows percents = {{"%", 0}, {"25.0%", 0.25}, {"- 5 %x", -0.05}};
  const UnitCase cases[] = {{ConvertStrToVolt, {"", "5", "V", "10xV", "5.V", "5V<", "****"}, volts},
                            {ConvertStrToFreq, {">1.0MHz", "1uHz"}, frequencies},
                            {ConvertStrToTime, {"<10.00ns", "1Ms"}, times},
                            {ConvertStrToPercent, {"25", "*%"}, percents}};
  for (const auto& [convert, refused, read] : cases) {
    for (const char* text : refused) {
      EXPECT_FALSE(convert(text).ConvertValid) << text;
      EXPECT_EQ(convert(text).value, 0) << text;
    }
    for (const auto& [text, value] : read) {
      EXPECT_TRUE(convert(text).ConvertValid) << text;
      EXPECT_EQ(convert(text).value, value) << text;
    }
  }
}

TEST(StringFuncTest, TimeBecomesTheExponentFormOfTheInstrument) {
  const std::pair<const char*, const char*> rows[] = {
      {"5", ""}, {"<5ns", ""}, {"5s", "5.000"}, {"500us", "500.000E-6"}, {"0.0123 ns", "0.0123E-9"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(ConvertTimeStrToExp(text), expected) << text;
}

TEST(StringFuncTest, HexByteReadsTheLastTwoCharactersAndDiagnosesNothing) {
  const std::vector<std::pair<const char*, int>> rows = {{"", 0},      {"B", 11},     {"g", 0},
                                                         {"1F", 31},   {"0x7D", 125}, {"x5", 0x55},
                                                         {"5x", 0x50}, {"aF", 0xFF},  {"Fa", 0xF0}};
  for (const auto& [text, value] : rows) EXPECT_EQ(ConvertHexByteToNum(text), value) << text;
}

const std::tuple<UnitBoxText (*)(double), double, const char*, int> kBoxRows[] = {
    {SetVoltToUnitBox, 1.1e9, "???.?", 2},      {SetVoltToUnitBox, 1e9, "1000.000", 0},
    {SetVoltToUnitBox, 1e6, "1.000", 0},        {SetVoltToUnitBox, 1000, "1.000", 1},
    {SetVoltToUnitBox, 1, "1.000", 2},          {SetVoltToUnitBox, 0.001, "1.000", 3},
    {SetVoltToUnitBox, 0, "0.000", 4},          {SetVoltToUnitBox, -0.0009, "-900.000", 4},
    {SetVoltToUnitBox, -0.001, "-1.000", 3},    {SetVoltToUnitBox, -1, "-1.000", 2},
    {SetVoltToUnitBox, -1000, "-1.000", 1},     {SetVoltToUnitBox, -1e6, "-1.000", 0},
    {SetVoltToUnitBox, -1e9, "???.?", 2},       {SetFreqToUnitBox, 2e12, "???.?", 3},
    {SetFreqToUnitBox, 1e12, "1000.000", 0},    {SetFreqToUnitBox, 1e9, "1.000", 0},
    {SetFreqToUnitBox, 1e6, "1.000", 1},        {SetFreqToUnitBox, 1000, "1.000", 2},
    {SetFreqToUnitBox, 1, "1.000", 3},          {SetFreqToUnitBox, 0, "0.000", 4},
    {SetFreqToUnitBox, -1, "???.?", 0},         {SetTimeToUnitBox, 1000, "???.?", 4},
    {SetTimeToUnitBox, 1, "1.000", 4},          {SetTimeToUnitBox, 0.001, "1.000", 3},
    {SetTimeToUnitBox, 1e-6, "1.000", 2},       {SetTimeToUnitBox, 1e-9, "1.000", 1},
    {SetTimeToUnitBox, 1e-12, "1.000", 0},      {SetTimeToUnitBox, -9e-10, "-900.000", 0},
    {SetTimeToUnitBox, -1e-9, "-1.000", 1},     {SetTimeToUnitBox, -1e-6, "-1.000", 2},
    {SetTimeToUnitBox, -0.001, "-1.000", 3},    {SetTimeToUnitBox, -1, "-1.000", 4},
    {SetTimeToUnitBox, -1000, "???.?", 0},      {SetPercentToUnitBox, 0.25, "25.000", 0},
    {SetPercentToUnitBox, -1.5, "-150.000", 0},
};

TEST(StringFuncTest, UnitBoxTakesTheUnitOfTheRange) {
  for (const auto& [show, value, text, index] : kBoxRows) {
    EXPECT_EQ(show(value).text, text) << value;
    EXPECT_EQ(show(value).index, index) << value;
  }
}

TEST(StringFuncTest, TimeTextChangesItsUnitBehindTheEdge) {
  const std::vector<std::pair<double, const char*>> rows = {
      {0, "0.0ns"},     {-1, "-1000000000.0ns"}, {1e-9, "1.0ns"},  {1.5e-9, "0.0015us"},
      {1e-7, "0.1us"},  {1e-6, "1.0us"},         {2e-5, "0.02ms"}, {0.0005, "0.5ms"},
      {0.001, "1.0ms"}, {0.0015, "0.0015s"},     {2, "2.0s"}};
  for (const auto& [seconds, text] : rows) EXPECT_EQ(ConvertTimeToUnitStr(seconds), text);
}

TEST(StringFuncTest, TriggerDelayStaysWithinTheLimitsOfTheTimeBase) {
  const std::tuple<std::string, double, const char*> rows[] = {
      {"", -1, "0.0ns"},
      {"", 1, "1s"},
      {"20.00ms", 2, "1s"},
      {"50.00ms", 0.4, "0.3s"},
      {"1.000us", -1, "-14000.0ns"},
      {"1.000us", -5e-6, "-5000.0ns"},
      {"50.00ms", -0.4, "-300000000.0ns"},
      {"1.000s", 1, "1.0s"},
  };
  for (const auto& [timeBase, delay, expected] : rows) {
    const auto answer = [&base = timeBase](std::string_view command) {
      EXPECT_EQ(command, ":TimeBase:RANGE:?");
      return base;
    };
    EXPECT_EQ(ConvertTrigOffsetToStr(delay, answer), expected) << timeBase << " " << delay;
  }
}

const std::tuple<double, const char*, const char*> kExponentRows[] = {
    {0, "0.00E+00", "0.0000E+00"},        {1234.5, "1.23E+03", "1.2345E+03"},
    {-0.5, "-5.00E-01", "-5.0000E-01"},   {2500000, "25.00E+05", "25.0000E+05"},
    {100000, "1.00E+05", "1.0000E+05"},   {99999.9, "10.00E+04", "10.0000E+04"},
    {1, "1.00E+00", "1.0000E+00"},        {0.00001, "1.00E-05", "1.0000E-05"},
    {0.000001, "0.00E+00", "1.0000E-06"}, {-1e-10, "0.00E+00", "-1.0000E-10"},
    {9e-11, "0.00E+00", "0.0000E+00"},
};

TEST(StringFuncTest, ExponentTextEndsAtItsLastLine) {
  for (const auto& [value, two, four] : kExponentRows) {
    EXPECT_EQ(ConvertNumToExp2(value), two);
    EXPECT_EQ(ConvertNumToExp4(value), four);
  }
}

}  // namespace
}  // namespace oriolemark
