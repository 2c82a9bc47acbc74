#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>

#include "simulator/Values.h"
#include "support/ProgramBench.h"
#include "values/StringFunc.h"

namespace oriolemark {
namespace {

// The program linked to an instrument that has stopped. The screen shows a whole signal that the
// test knows, and at least one period of it.
struct Picture : LinkedBench {
  explicit Picture(unsigned seed) : random(seed) {
    const std::string range = Any({"5.00mV", "200mV", "1.00V", "5.00V"});
    const std::string time = Any({"5.000ns", "20.00us", "500.0us", "200.0ms"});
    const int offset = std::uniform_int_distribution(-30, 30)(random);
    const double screen = 12 * ConvertStrToTime(time).value;
    rows = std::uniform_real_distribution(20.0, 65.0)(random);
    period = screen / std::uniform_real_distribution(1.6, 20.0)(random);
    channel = Any({"1", "2"});
    kind = Any({"sine", "square", "ramp"});
    const double peak = rows * ConvertStrToVolt(range).value / 25;
    instrument.Turn("SIGNAL" + channel,
                    kind + " " + std::to_string(1 / period) + " " + std::to_string(peak));
    instrument.Turn(":DATA:WinMemSize", Any({"600", "600", "600", "600", "600", "600", "17000"}));
    const std::string root = ":CHANNEL" + channel;
    for (const std::string& command : {std::string(":RUN"), root + ":RANGE:" + range,
                                       root + ":OFFSET:" + tx5000::FormatDivisions(offset * 4),
                                       ":TimeBase:RANGE:" + time, ":TRIGGER:Source:CH" + channel}) {
      instrument.Execute(command);
    }
    rolls = time == "200.0ms" && random() % 2 == 0;
    if (rolls) instrument.Turn(":TimeBase:SCAN", "ON");
    instrument.Advance(std::chrono::milliseconds(random() % 9000));
    instrument.Execute(":STOP");
    EXPECT_EQ(instrument.UnknownCommands(), 0);
    Add(ItemKind::Data, 1);
    Add(ItemKind::Measure, 1);
    Read(*sheet.MeasureViews[0]);
    Read(*sheet.DataViews[0]);
    const DataRecord& record = sheet.Datas[0];
    row = record.VoltRange / 25;
    step = 12 * record.TimeRange / record.Count;
    for (int i = 1; i <= record.Count; ++i) {
      const int byte = std::stoi(record.Samples.at(static_cast<std::size_t>(i)), nullptr, 16);
      trace.push_back((125 - byte) * row - record.VoltOffset);
    }
  }
  std::string Any(std::vector<const char*> texts) { return texts[random() % texts.size()]; }
  void Read(ItemView& item) {
    auto& view = dynamic_cast<ReadingView&>(item);
    view.OptionCH.Select(channel == "1" ? 0 : 1);
    view.cmdRefresh.Click();
  }
  // The seconds for which the trace is high and low. A flip is halfway through a band in the
  // middle, where single rows come and go. A rolling record has a seam, where no pulse ends. There
  // the signal's own times are returned.
  std::pair<double, double> Pulses(double low, double high) {
    std::vector<double> flips;
    int side = 0;          // 1 above the band, -1 below
    std::size_t left = 0;  // the last sample outside the band
    for (std::size_t i = 0; i < trace.size() && flips.size() < 3; ++i) {
      const double place = (trace[i] - low) / (high - low) - 0.5;
      if (std::abs(place) < 1.0 / 16) continue;
      const int now = place > 0 ? 1 : -1;
      if (side == -now) flips.push_back(double(left + i) / 2 * step);
      left = i;
      side = now;
    }
    if (rolls || flips.size() < 3) return {period / 2, period / 2};
    const double first = flips[1] - flips[0], second = flips[2] - flips[1];
    return side > 0 ? std::pair(first, second) : std::pair(second, first);
  }

  std::mt19937 random;
  std::string kind, channel;
  double rows, row;     // from the middle to the peak, and volts of one
  double period, step;  // seconds, and those between two samples of the table
  bool rolls;
  std::vector<double> trace;  // volts of the samples of the table
};

TEST(Agreement, OfMeasuresWithTheTableWithinOneRowOrOneSample) {
  for (unsigned seed = 1; seed <= 50; ++seed) {
    Picture p(seed);
    ASSERT_FALSE(p.trace.empty());
    const auto [low, high] = std::ranges::minmax(p.trace);
    const double count = double(p.trace.size());
    const double squares = std::inner_product(p.trace.begin(), p.trace.end(), p.trace.begin(), 0.0);
    const double mean = std::accumulate(p.trace.begin(), p.trace.end(), 0.0) / count;
    // How far the time of a height is uncertain, for one sample and for one row of a slow edge.
    const double blur = p.step + p.period / (3 * p.rows);
    const double rise = p.kind == "sine" ? 0.2952 : p.kind == "ramp" ? 0.8 : 0.0102;
    const double fall = p.kind == "ramp" ? 0 : rise;
    const double percent = 1 / (2 * p.rows);  // of one row
    const auto [up, down] = p.Pulses(low, high);
    const struct {
      std::string_view name;
      double expected, tolerance;
    } rows[] = {
        {"Vpp", high - low, p.row / 5},
        {"Vmax", high, p.row / 5},
        {"Vmin", low, p.row / 5},
        {"Vtop", high, p.row * 1.1},
        {"Vbase", low, p.row * 1.1},
        {"Vamp", high - low, p.row * 2.1},
        {"Vavg", mean, p.row / 5},
        {"Vrms", std::sqrt(squares / count), p.row / 5},
        {"Vover", 0, percent * 1.1},
        {"Vpre", 0, percent * 1.1},
        {"Period", p.period, p.step},
        {"Period", up + down, 2 * blur},
        {"Frequency", 1 / p.period, p.step / p.period / p.period},
        {"+Pulse Width", p.period / 2, blur},
        {"+Pulse Width", up, 2 * blur},
        {"-Pulse Width", p.period / 2, blur},
        {"-Pulse Width", down, 2 * blur},
        {"+Duty", up / (up + down), 3 * blur / p.period},
        {"-Duty", down / (up + down), 3 * blur / p.period},
        {"Rise Time", rise * p.period, 2 * blur},
        {"Fall Time", fall * p.period, 2 * blur},
    };
    for (const auto& [name, expected, tolerance] : rows) {
      const Quantity& quantity = *QuantityNamed(name);
      const std::string& text = p.sheet.Measures[0].Values[quantity.index].Text;
      const bool bound = text.starts_with('<');
      const auto [value, valid] = quantity.family.toNumber(text.substr(bound ? 1 : 0));
      EXPECT_TRUE(valid) << name << text;
      EXPECT_NEAR(value, expected, tolerance) << name << " " << text << " of " << seed;
      EXPECT_TRUE(!bound || (name.ends_with("Time") && value < p.step * 1.01)) << name << text;
    }
  }
}

}  // namespace
}  // namespace oriolemark
