#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <span>

#include "support/RecordingCanvas.h"
#include "support/Tables.h"
#include "waveview/CursorReadout.h"
#include "waveview/DrawCursors.h"
#include "waveview/DrawGrid.h"
#include "waveview/DrawStatus.h"
#include "waveview/DrawTraces.h"
#include "waveview/WaveDescription.h"

namespace oriolemark {
namespace {

using Calls = RecordingCanvas::Calls;

WaveSurface On(Canvas& canvas, double zoom, bool colorOn = true) {
  static TracePlans plans;
  return {canvas, zoom, ColorsOf(colorOn), plans};
}

TEST(DrawScrGrid, FrameTicksAndBrandAreDrawnInOrderAndBlackOnWhite) {
  RecordingCanvas canvas;
  DrawScrGrid(On(canvas, 1.0), GridDots::Hidden);
  EXPECT_EQ(canvas.calls.front(), "clear 000000");
  EXPECT_EQ(canvas.CallsOf("line "),
            (Calls{"25,25 325,25 C0C0C0 width 2", "25,25 25,225 C0C0C0 width 2",
                   "25,225 325,225 C0C0C0 width 2", "325,225 325,25 C0C0C0 width 2",
                   "25,125 325,125 C0C0C0", "175,25 175,225 C0C0C0"}));
  EXPECT_EQ(canvas.calls.back(), "text 25,10 FF8000 bold TAVIK");
  // The short ticks go on in the second row from the left edge, the long ones in the first too.
  EXPECT_EQ(canvas.CallsOf("pixel 30,"),
            (Calls{"26 C0C0C0", "124 C0C0C0", "126 C0C0C0", "223 C0C0C0"}));
  for (const char* x : {"26", "174", "176", "323"}) {
    EXPECT_EQ(canvas.CallsOf(std::string("pixel ") + x + ",").size(), 41) << x;
  }
  DrawScrGrid(On(canvas, 1.0, false), GridDots::Shown);
  EXPECT_EQ(canvas.calls.front(), "clear FFFFFF");
  for (const auto& call : std::span(canvas.calls).subspan(1)) {
    EXPECT_NE(call.find(" 000000"), call.npos) << call;
  }
}

TEST(DrawScrGrid, TicksThickenWithTheZoomAndDotsDoNotDependOnIt) {
  constexpr int kRound = 4 * (61 + 13) + 4 * (41 + 9);  // short and long ticks, rows and columns
  constexpr int kGridDots = 9 * 61 + 13 * 41;
  for (const auto& [zoom, count] : std::map<double, int>{
           {0.01, 0}, {0.75, 0}, {0.99, 0}, {1, 1}, {1.19, 2}, {1.5, 6}, {2, 11}, {5, 41}}) {
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

TEST(DrawTraces, TheCountSpreadsTheSamplesAndIsNoLimit) {
  constexpr int kMost = std::numeric_limits<int>::max();
  // The count, the lines of a trace, the last of them, and the dots of an X-Y figure.
  const std::tuple<int, std::size_t, std::string, std::size_t> rows[] = {
      {0, 1, "25,26 26,27", 0},
      {-kMost - 1, 1, "25,26 26,27", 0},
      {1, 2, "26,27 26,28", 0},  // the walk starts at point 2 again, with sample 3
      {1000, 998, "324.5,73 324.8,74", 999},
      {kMost, 16999, "26.002374314,114 26.002374453,115", 17000}};  // ends with the array
  for (const auto& [count, lines, last, dots] : rows) {
    RecordingCanvas canvas;
    for (const double zoom : {0.013, 3.7, 1.0}) {
      canvas.calls.clear();
      DrawXYDots(On(canvas, zoom), Saw(), Saw(), count);
      EXPECT_EQ(canvas.calls.size(), dots) << count << " at " << zoom;
      DrawTrace(On(canvas, zoom), Saw(), count);
      EXPECT_EQ(canvas.calls.size(), dots + lines) << count << " at " << zoom;
    }
    EXPECT_EQ(canvas.calls.back(), "line " + last + " 000000");
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
  }
}

TEST(DrawChannelStatus, TheMarkerStandsAtTheGroundLevelInsideTheGrid) {
  // The offset, and where the digit stands, empty without a marker.
  for (const auto& row : Rows(R"(
4.00div | - || -4.00div | - || -99div | - || 3.96div | 10,20 || 0.00div | 10,119 || div | 10,119
- | 10,119 || x4div | 10,119
)")) {
    RecordingCanvas canvas;
    DrawChannelStatus(On(canvas, 1.0), "CH2", row[0], "5V");
    Calls texts;
    if (!row[1].empty()) texts = {row[1] + " 000000 plain 2", "100,229 000000 bold CH2 5V"};
    EXPECT_EQ(canvas.CallsOf("text "), texts) << row[0];
    EXPECT_EQ(canvas.CallsOf("line ").empty(), texts.empty()) << row[0];
  }
}

TEST(DrawTimeStatus, TriggerMarksStandInsideTheGridOnly) {
  // The time base, the delay, and where the "T" stands, empty without marks.
  for (const auto& row : Rows(R"(
1ms | 0.0000s | 172,31 || 1ms | 2ms | 122,31 || 1ms | -5.99ms | 322,31 || 1ms | 6ms | -
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

// A record whose traces are one line each: to the rows 10 and 11, 20 and 21. The letters of its
// kind are Data, Time, Envelope, Rolling, Spectrum, Black on white, and Marks inside the grid.
WaveRecord Record(std::string_view kind, int channels = 3) {
  const auto is = [kind](char letter) { return kind.find(letter) != kind.npos; };
  WaveRecord record;
  record.HasData = is('D');
  record.IsYT = is('T');
  record.Envelope = is('E');
  record.IsScan = is('R');
  record.FFTOn = is('S');
  record.ColorOn = !is('B');
  record.Channels = channels;
  record.CH1Offset = record.CH2Offset = is('M') ? "0div" : "5.00div";
  record.CH1Range = "1.00V";
  record.CH2Range = "2mV";
  record.TimeRange = "1ms";
  record.TriggerDelay = is('M') ? "0s" : "1s";
  record.CH1Data.Store(2, 10);
  record.CH1Min.Store(2, 11);
  record.CH2Data.Store(2, 20);
  record.CH2Min.Store(2, 21);
  record.FFTData.Store(2, 255);
  record.Count = record.IsYT ? 0 : 3;
  return record;
}

TEST(DrawOSC, EachKindOfRecordHasItsTracesAndTextsInTheirOrderAndColours) {
  const std::string scale = "225,229 FF8000 plain Delay:1s; 175,229 FFFFFF bold 1ms; ";
  // The kind, the channels, the ends of the traces, the dots and the texts.
  const std::tuple<const char*, int, std::string> rows[] = {
      {"DTE", 3, "35 FFFF00; 36 FFFF00; 45 00FFFF; 46 00FFFF; " + scale},
      {"DTER", 3, "35 FFFF00; 45 00FFFF; " + scale},  // a rolling display has no envelope
      {"DT", 2, "45 00FFFF; " + scale},
      {"TE", 3, ""},  // earlier contents of the slot stay hidden
      {"DTS", 0, "280 00FF00; " + scale},
      {"DTM", 3,
       "10,119 FFFF00 plain 1; 25,229 FFFF00 bold CH1 1.00V; 35 FFFF00; 10,119 00FFFF plain 2; "
       "100,229 00FFFF bold CH2 2mV; 45 00FFFF; 172,31 FF8000 plain T; "
       "225,229 FF8000 plain Delay:0s; 175,229 FFFFFF bold 1ms; "},
      // Black on white the texts of both channels come before the data, and the spectrum is green.
      {"DTMSB", 3,
       "10,119 000000 plain 1; 25,229 000000 bold CH1 1.00V; 10,119 000000 plain 2; "
       "100,229 000000 bold CH2 2mV; 35 000000; 45 000000; 280 00FF00; 172,31 000000 plain T; "
       "225,229 000000 plain Delay:0s; 175,229 000000 bold 1ms; "},
      {"DMS", 3,
       "274,25 00FF00; 264,45 00FF00; 135,10 00FF00 bold X-Y Mode; 25,229 FFFF00 bold CH1 1.00V; "
       "100,229 00FFFF bold CH2 2mV; "},
      {"DMB", 3,
       "274,25 000000; 264,45 000000; 135,10 000000 bold X-Y Mode; 25,229 000000 bold CH1 1.00V; "
       "100,229 000000 bold CH2 2mV; "}};
  for (const auto& [kind, channels, expected] : rows) {
    const WaveRecord record = Record(kind, channels);
    RecordingCanvas canvas;
    DrawOSC(On(canvas, 1.0, record.ColorOn), record);
    std::string drawn;
    for (const std::string& call : canvas.calls) {
      const bool isTrace = call.starts_with("line 25,25 26,");
      if (call.starts_with("line") && !isTrace) continue;  // a mark's
      drawn += call.substr(isTrace ? 14 : call.find(' ') + 1) + "; ";
    }
    EXPECT_EQ(drawn, expected) << kind << channels;
  }
}

TEST(CursorReadout, TextsOfVoltsTimesAndFrequencies) {
  const std::pair<std::string (*)(double), const char*> readouts[] = {
      {ConvertVoltToStr,
       "0 | 0.0mV || 0.99999 | 1000.0mV || 1 | 1.0V || 1.25 | 1.3V || -2 | -2000.0mV\n"
       "1234.56 | 1234.6V"},
      {ConvertTimeToStr,
       "0 | 0.000s || 1 | 1.00s || 0.99999 | 999.99ms || 0.001 | 1.00ms || 1e-6 | 1.00us\n"
       "1e-9 | 1.00ns || 1e-12 | 1.00ps || 9e-13 | -"},
      {ConvertFreqToStr,
       "0.5 | 0.50Hz || 999.994 | 999.99Hz || 1000 | 1.00KHz || 1e6 | 1.00MHz\n"
       "2.5e9 | 2.50GHz || 999999 | 1000.00KHz"}};
  for (const auto& [convert, table] : readouts) {
    for (const auto& row : Rows(table)) {
      const double value = std::stod(row[0]);
      EXPECT_EQ(convert(value), row[1]);
      if (convert != ConvertTimeToStr) continue;
      EXPECT_DOUBLE_EQ(GetTimeVlu(row[1]), row[1].empty() ? 0 : value) << "reads back";
    }
  }
}

// The cursors of a view over Record(), with the pairs of these letters on.
struct View {
  explicit View(std::string_view pairs = "XY", double atZoom = 1.0) : zoom(atZoom) {
    PlaceCursors(cursors);
    cursors.CursorXOn = pairs.find('X') != pairs.npos;
    cursors.CursorYOn = pairs.find('Y') != pairs.npos;
    Texts();
  }

  Calls Texts() {
    canvas.Clear({});
    FollowZoom(cursors, zoom);
    DrawCursors(On(canvas, zoom), record, cursors);
    return canvas.CallsOf("text ");
  }

  double zoom;
  RecordingCanvas canvas;
  WaveRecord record = Record("DT");
  WaveCursors cursors;
};

TEST(DrawCursors, LinesComeBeforeMarksAndTextsFollow) {
  View view;
  // Of each pair the two lines come first, then the marks of each.
  const Calls lines = view.canvas.CallsOf("line ");
  ASSERT_EQ(lines.size(), 28);
  EXPECT_EQ(Calls(lines.begin(), lines.begin() + 8),
            (Calls{"75,30 75,220 0080C8 dotted", "275,30 275,220 0080C8 dotted",
                   "70,25 80,25 0080C8", "80,25 75,30 0080C8", "75,30 70,25 0080C8",
                   "70,225 80,225 0080C8", "80,225 75,220 0080C8", "75,220 70,225 0080C8"}));
  EXPECT_EQ(lines[14], "30,75 320,75 0080C8 dotted");
  EXPECT_TRUE((view.canvas.calls.end() - 5)->starts_with("line ")) << "before the texts";
}

TEST(DrawCursors, ReadoutsStackByWhatIsShownInAColumnThatFollowsTheZoom) {
  // The zoom, the pairs shown, the channels, the time base, and the places of the texts. A small
  // picture has no texts.
  for (const auto& row : Rows(R"(
1 | Y | 3 | 1ms | 205,30 FFFF00;205,50 00FFFF; || 1 | XY | 1 | - | 205,30 FFFF00;
1 | XY | 2 | 1ms | 205,30 FF00FF;205,50 FF00FF;205,70 00FFFF; || 0.39 | X | 3 | 1ms | -
0.4 | X | 3 | 1ms | 25,30 FF00FF;25,50 FF00FF; || 1.2 | X | 3 | 1ms | 275,30 FF00FF;275,50 FF00FF;
1.19 | X | 3 | 1ms | 262,30 FF00FF;262,50 FF00FF;
)")) {
    View view(row[1], std::stod(row[0]));
    view.record.Channels = std::stoi(row[2]);
    view.record.TimeRange = row[3];
    std::string found;
    for (const std::string& text : view.Texts()) found += text.substr(0, text.find(" b")) + ";";
    EXPECT_EQ(found, row[4]) << row[0] << row[1] << row[2];
  }
}

TEST(DrawCursors, ReadoutsTellWhatCanBeMade) {
  // How far X2 is from X1, the ranges, and the read-outs: frequency, time, and volts of each.
  for (const auto& row : Rows(R"(
200 | 1.00V | 10mV | 125.00Hz | 8.00ms | |Y1-Y2|  =4.0V | |Y1-Y2|  =40.0mV
0 | >5V | - | ???.? Hz | 0.000s | |Y1-Y2|  =0.0mV | -
)")) {
    View view;
    view.cursors.X2Base = view.cursors.X1Base + std::stod(row[0]);
    view.record.CH1Range = row[1];
    view.record.CH2Range = row[2];
    EXPECT_EQ(
        view.Texts(),
        (Calls{"205,30 FF00FF bold 1/|X1-X2|=" + row[3], "205,50 FF00FF bold |X1-X2|   =" + row[4],
               "205,70 FFFF00 bold " + row[5], "205,90 00FFFF bold " + row[6]}));
  }
}

TEST(DescribeWave, WordsWhatIsShown) {
  // The kind, the channels, the pairs of cursors that are on, and the words.
  const std::string scales = " CH1 1.00V per division, CH2 2mV per division.";
  const std::string time = " Time 1ms per division, delay 1s.";
  const std::tuple<const char*, int, const char*, std::string> rows[] = {
      {"D", 3, "", "X-Y figure." + scales},
      {"DT", 3, "X", "Waveform." + scales + time + " X cursors apart: 8.00ms, 125.00Hz."},
      {"DTR", 2, "Y",
       "Rolling waveform. CH2 2mV per division." + time + " Y cursors apart: CH2 8.0mV."}};
  for (const auto& [kind, channels, pairs, words] : rows) {
    View view(pairs);
    EXPECT_EQ(DescribeWave(Record(kind, channels), view.cursors, view.zoom), words);
  }
}

TEST(DrawCursors, ACursorBeyondTheGridIsDrawnAndMeasuredAtTheClamp) {
  View view("XY", 2.0);
  view.cursors.X1Base = -50;
  view.cursors.X2Base = 1000;
  view.cursors.Y1Base = -1;
  view.cursors.Y2Base = 400;
  const Calls texts = view.Texts();
  EXPECT_EQ(texts[1], "475,50 FF00FF bold |X1-X2|   =11.92ms");
  EXPECT_EQ(texts[2], "475,70 FFFF00 bold |Y1-Y2|  =7.9V");
  EXPECT_EQ(view.canvas.CallsOf("line ")[0], "27,30 27,420 0080C8 dotted");
}

TEST(SeizeCursors, TakesWhatIsWithinThreePixels) {
  // Which pairs are on, the mouse (cursors stand at 75 and 275 across, 75 and 175 down), which of
  // X1, X2, Y1 and Y2 is seized, and the pointer there.
  using enum MousePointer;
  const std::tuple<const char*, const char*, Point, const char*, MousePointer> rows[] = {
      {"just within reach", "X", {277.9, 100}, "0100", WestEast},
      {"just out of reach", "X", {278, 100}, "0000", Arrow},
      {"one of each pair", "XY", {75, 175}, "1001", NorthSouth},
      {"off the grid, though an arrow", "XY", {75, 20}, "1000", Arrow},
      {"left of the grid", "Y", {25, 75}, "0010", Arrow},
      {"just inside the grid", "Y", {25.5, 75}, "0010", NorthSouth}};
  for (const auto& [name, pairs, mouse, held, hover] : rows) {
    WaveCursors cursors = View(pairs).cursors;
    EXPECT_EQ(PointerOver(cursors, mouse, 1.0), hover) << name;
    SeizeCursors(cursors, mouse);
    EXPECT_EQ(Bits(cursors.DragX1, cursors.DragX2, cursors.DragY1, cursors.DragY2), held) << name;
  }
}

TEST(DragCursor, HoldsOneCursorAcrossBeforeOneDown) {
  View view("XY", 2.0);
  WaveCursors& cursors = view.cursors;
  cursors.X2Base = cursors.X1Base;
  view.Texts();
  SeizeCursors(cursors, {125, 125});
  EXPECT_TRUE(DragCursor(cursors, {225, 325}, 2.0));
  EXPECT_EQ(std::pair(cursors.X1Base, cursors.X2Base), std::pair(100.0, 50.0)) << "the first";
  EXPECT_EQ(cursors.Y1Base, 50) << "held too, and yet not moved";
  EXPECT_EQ(PointerOver(cursors, {0, 0}, 2.0), MousePointer::WestEast);
  ReleaseCursors(cursors);
  EXPECT_FALSE(DragCursor(cursors, {400, 400}, 2.0));

  view.Texts();
  SeizeCursors(cursors, {50, 325});
  EXPECT_TRUE(DragCursor(cursors, {50, 126}, 2.0));
  EXPECT_EQ(cursors.Y2Base, 50) << "101 / 2, a tie, to even";
  DragCursor(cursors, {50, 1e6}, 2.0);
  EXPECT_EQ(cursors.Y2Base, 50) << "beyond 16 bits";
}

}  // namespace
}  // namespace oriolemark
