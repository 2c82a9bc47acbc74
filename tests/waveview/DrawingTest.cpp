#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "support/RecordingCanvas.h"
#include "support/Tables.h"
#include "waveview/DrawGrid.h"
#include "waveview/DrawStatus.h"
#include "waveview/DrawTraces.h"

namespace oriolemark {
namespace {

using Calls = RecordingCanvas::Calls;

WaveSurface On(Canvas& canvas, double zoom, bool colorOn = true) {
  return {canvas, zoom, ColorsOf(colorOn)};
}

TEST(DrawScrGrid, DrawsFrameTicksAndBrandInOrder) {
  RecordingCanvas canvas;
  DrawScrGrid(On(canvas, 1.0), GridDots::Hidden);
  EXPECT_EQ(canvas.calls.front(), "clear 000000");
  EXPECT_EQ(canvas.CallsOf("line "),
            (Calls{"25,25 325,25 C0C0C0 width 2", "25,25 25,225 C0C0C0 width 2",
                   "25,225 325,225 C0C0C0 width 2", "325,225 325,25 C0C0C0 width 2",
                   "25,125 325,125 C0C0C0", "175,25 175,225 C0C0C0"}));
  EXPECT_EQ(canvas.calls.back(), "text 25,10 FF8000 bold TAVIK");
}

TEST(DrawScrGrid, TicksThickenWithTheZoomAndDotsDoNotDependOnIt) {
  constexpr int kRound = 4 * (61 + 13) + 4 * (41 + 9);  // short and long ticks, rows and columns
  constexpr int kGridDots = 9 * 61 + 13 * 41;
  const std::pair<double, int> rounds[] = {{0.01, 0}, {0.75, 0}, {0.99, 0}, {1.0, 1},
                                           {1.19, 2}, {1.5, 6},  {2.0, 11}, {5.0, 41}};
  for (const auto& [zoom, count] : rounds) {
    RecordingCanvas canvas;
    DrawScrGrid(On(canvas, zoom), GridDots::Hidden);
    EXPECT_EQ(canvas.CallsOf("pixel").size(), count * kRound) << zoom;
    DrawScrGrid(On(canvas, zoom), GridDots::Shown);
    EXPECT_EQ(canvas.CallsOf("pixel").size(), count * kRound + kGridDots) << zoom;
  }
}

// Samples 1, 2, 3, ... hold the rows 1, 2, 3, ... up to 190, again and again.
SampleArray Saw() {
  SampleArray samples;
  for (int i = 1; i <= kLastSample; ++i) samples.Store(i, 1 + (i - 1) % 190);
  return samples;
}

TEST(DrawTrace, TheCountSpreadsTheSamplesAndIsNoLimit) {
  constexpr int kMost = std::numeric_limits<int>::max();
  const std::tuple<int, std::size_t, const char*> rows[] = {
      {0, 1, "25,26 26,27 000000"},
      {-kMost - 1, 1, "25,26 26,27 000000"},
      {1, 2, "26,27 26,28 000000"},  // the walk starts at point 2 again, with sample 3
      {600, 600, "324.5,55 325,56 000000"},
      {1000, 998, "324.5,73 324.8,74 000000"},
      {kMost, 16999, "26.002374314,114 26.002374453,115 000000"}};  // ends with the array
  for (const auto& [count, lines, last] : rows) {
    for (const double zoom : {0.013, 3.7, 1.0}) {
      RecordingCanvas canvas;
      DrawTrace(On(canvas, zoom), Saw(), count);
      ASSERT_EQ(canvas.calls.size(), lines) << count << " at " << zoom;
      if (zoom == 1.0) {
        EXPECT_EQ(canvas.calls.back(), std::string("line ") + last) << count;
      }
    }
  }
}

TEST(DrawScanTrace, TheGapIsBlankWithBothItsEnds) {
  // With 6 samples on the screen the steps stand at 1, 51, 101, 151, 201 and 251 units.
  const Calls lines{"-24,27 26,28",  "26,28 76,29",   "76,29 126,30",
                    "126,30 176,31", "176,31 226,32", "226,32 276,33"};
  const std::tuple<int, int, const char*> rows[] = {
      // start, width, which of these lines
      {-10, 0, "######"}, {51, 50, "#..###"},   {52, 48, "######"}, {151, 0, "###.##"},
      {0, 300, "......"}, {251, 100, "#####."}, {60, -5, "######"}};
  for (const auto& [start, width, drawn] : rows) {
    Calls expected{"25,26 26,27 000000"};
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (drawn[i] == '#') expected.push_back(lines[i] + " 000000");
    }
    RecordingCanvas canvas;
    DrawScanTrace(On(canvas, 1.0), Saw(), 6, start, width);
    EXPECT_EQ(canvas.CallsOf("line "), expected) << start << " + " << width;
    canvas.calls.clear();
    DrawScanTrace(On(canvas, 0.77), Saw(), 6, start, width);
    EXPECT_EQ(canvas.calls.size(), expected.size()) << "the zoom changes no comparison";
  }
}

TEST(DrawXYDots, AnyCountEndsWithTheArray) {
  constexpr int kMost = std::numeric_limits<int>::max();
  for (const auto& [count, dots] : {std::pair(1, 0), {0, 0}, {-kMost - 1, 0}, {kMost, 17000}}) {
    RecordingCanvas canvas;
    DrawXYDots(On(canvas, 1.0), Saw(), Saw(), count);
    EXPECT_EQ(canvas.calls.size(), dots) << count;
  }
}

TEST(DrawChannelStatus, TheMarkerStandsAtTheGroundLevelInsideTheGrid) {
  const std::pair<const char*, const char*> digits[] = {
      {"4.00div", ""},       {"-4.00div", ""},  {"-99div", ""}, {"3.96div", "10,20"},
      {"0.00div", "10,119"}, {"div", "10,119"}, {"", "10,119"}, {"x4div", "10,119"}};
  for (const auto& [offset, digit] : digits) {
    RecordingCanvas canvas;
    DrawChannelStatus(On(canvas, 1.0), "CH2", offset, "5V");
    Calls texts;
    if (*digit != '\0')
      texts = {digit + std::string(" 000000 plain 2"), "100,229 000000 bold CH2 5V"};
    EXPECT_EQ(canvas.CallsOf("text "), texts) << offset;
    EXPECT_EQ(canvas.CallsOf("line ").empty(), texts.empty()) << offset;
  }
}

TEST(DrawTimeStatus, TriggerMarksStandInsideTheGridOnly) {
  // The time base, the delay, and where the "T" stands, empty without marks.
  for (const auto& row : Rows(R"(
1ms | 0.0000s | 172,31 || 1ms | 2ms | 122,31 || 1ms | -5.99ms | 321.75,31 || 1ms | 6ms | -
1ms | -6ms | - || 0s | 1ms | - || 0s | 0s | - || - | 1ms | - || 1ms | - | 172,31
1ms | >1s | 172,31
)")) {
    const std::string &timeBase = row[0], &delay = row[1], &tag = row[2];
    RecordingCanvas canvas;
    DrawTimeStatus(On(canvas, 1.0), timeBase, delay);
    Calls texts{"225,229 FF8000 plain Delay:" + delay, "175,229 FFFFFF bold " + timeBase};
    if (!tag.empty()) texts.insert(texts.begin(), tag + " FF8000 plain T");
    EXPECT_EQ(canvas.CallsOf("text "), texts) << timeBase << " " << delay;
    EXPECT_EQ(canvas.CallsOf("line ").size(), tag.empty() ? 0 : 8) << delay;
  }
}

// A record whose traces are one line each: to the rows 10 and 11, 20 and 21.
WaveRecord Record() {
  WaveRecord record;
  record.HasData = record.IsYT = true;
  record.Channels = 3;
  record.CH1Offset = record.CH2Offset = "5.00div";
  record.CH1Range = "1.00V";
  record.CH2Range = "2mV";
  record.TimeRange = "1ms";
  record.TriggerDelay = "1s";
  record.CH1Data.Store(2, 10);
  record.CH1Min.Store(2, 11);
  record.CH2Data.Store(2, 20);
  record.CH2Min.Store(2, 21);
  return record;
}

TEST(DrawOSC, TracesFollowInOrderOfChannelsMaximumFirst) {
  // The channels, envelope, rolling, and the rows and colours that the lines end in.
  const std::tuple<int, bool, bool, Calls> rows[] = {
      {3, true, false, {"35 FFFF00", "36 FFFF00", "45 00FFFF", "46 00FFFF"}},
      {3, true, true, {"35 FFFF00", "45 00FFFF"}},  // a rolling display has no envelope
      {1, true, false, {"35 FFFF00", "36 FFFF00"}},
      {2, false, false, {"45 00FFFF"}},
      {0, true, false, {}}};
  for (const auto& [channels, envelope, scan, lines] : rows) {
    WaveRecord record = Record();
    record.Channels = channels;
    record.Envelope = envelope;
    record.IsScan = scan;
    RecordingCanvas canvas;
    DrawOSC(On(canvas, 1.0), record);
    EXPECT_EQ(canvas.CallsOf("line 25,25 26,"), lines) << channels;
    EXPECT_EQ(canvas.CallsOf("line ").size(), lines.size()) << channels;
    EXPECT_EQ(canvas.CallsOf("text ").size(), 2) << "delay and time base";
  }
}

TEST(DrawOSC, XYHasDotsAndItsOwnTextsOnly) {
  WaveRecord record = Record();
  record.IsYT = false;
  record.Count = 3;
  RecordingCanvas canvas;
  DrawOSC(On(canvas, 1.0), record);
  EXPECT_EQ(canvas.calls,
            (Calls{"pixel 274,25 00FF00", "pixel 264,45 00FF00", "text 135,10 00FF00 bold X-Y Mode",
                   "text 25,229 FFFF00 bold CH1 1.00V", "text 100,229 00FFFF bold CH2 2mV"}));
}

TEST(DrawOSC, BlackOnWhiteIsBlackThroughoutAndNoDataIsNothing) {
  WaveRecord record = Record();
  record.CH1Offset = record.CH2Offset = "0div";
  record.TriggerDelay = "0s";
  for (const bool isYT : {true, false}) {
    record.IsYT = isYT;
    record.HasData = true;
    RecordingCanvas canvas;
    DrawScrGrid(On(canvas, 1.0, false), GridDots::Shown);
    EXPECT_EQ(canvas.calls.front(), "clear FFFFFF");
    DrawOSC(On(canvas, 1.0, false), record);
    for (std::size_t i = 1; i < canvas.calls.size(); ++i) {
      ASSERT_NE(canvas.calls[i].find(" 000000"), std::string::npos) << canvas.calls[i];
    }
    const std::size_t drawn = canvas.calls.size();
    record.HasData = false;
    DrawOSC(On(canvas, 1.0, false), record);
    EXPECT_EQ(canvas.calls.size(), drawn) << "earlier contents of the slot stay hidden";
  }
}

}  // namespace
}  // namespace oriolemark
