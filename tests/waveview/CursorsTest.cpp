#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "support/RecordingCanvas.h"
#include "waveview/CursorReadout.h"
#include "waveview/DrawCursors.h"

namespace oriolemark {
namespace {

using Calls = RecordingCanvas::Calls;

TEST(CursorReadout, TextsOfVoltsTimesAndFrequencies) {
  const std::pair<double, const char*> volts[] = {
      {0, "0.0mV"},   {0.99999, "1000.0mV"}, {1.0, "1.0V"},
      {1.25, "1.3V"}, {-2, "-2000.0mV"},     {1234.56, "1234.6V"},
  };
  for (const auto& [value, text] : volts) EXPECT_EQ(ConvertVoltToStr(value), text);
  const std::pair<double, const char*> times[] = {
      {0, "0.000s"},    {1, "1.00s"},     {0.99999, "999.99ms"}, {0.001, "1.00ms"},
      {1e-6, "1.00us"}, {1e-9, "1.00ns"}, {1e-12, "1.00ps"},     {9e-13, ""},
  };
  for (const auto& [value, text] : times) {
    EXPECT_EQ(ConvertTimeToStr(value), text);
    EXPECT_DOUBLE_EQ(GetTimeVlu(text), *text == '\0' ? 0 : value) << "reads back";
  }
  const std::pair<double, const char*> frequencies[] = {
      {0.5, "0.50Hz"},  {999.994, "999.99Hz"}, {1000, "1.00KHz"},
      {1e6, "1.00MHz"}, {2.5e9, "2.50GHz"},    {999999, "1000.00KHz"},
  };
  for (const auto& [value, text] : frequencies) EXPECT_EQ(ConvertFreqToStr(value), text);
}

struct View {
  explicit View(double atZoom = 1.0) : zoom(atZoom) {
    record.Channels = 3;
    record.TimeRange = "1ms";
    record.CH1Range = "1.00V";
    record.CH2Range = "10mV";
    PlaceCursors(cursors);
    cursors.CursorXOn = true;
    cursors.CursorYOn = true;
  }

  Calls Texts() {
    canvas.Clear({});
    FollowZoom(cursors, zoom);
    DrawCursors({canvas, zoom, kOnBlack}, record, cursors);
    return canvas.CallsOf("text ");
  }

  double zoom;
  RecordingCanvas canvas;
  WaveRecord record;
  WaveCursors cursors;
};

TEST(DrawCursors, LinesAndMarksComeFromACopyAndTextsFollow) {
  View view;
  view.Texts();
  const Calls& drawn = view.canvas.calls;
  // Of each pair the two lines come first, then the marks of each.
  const Calls lines = view.canvas.CallsOf("line ");
  ASSERT_EQ(lines.size(), 28);
  EXPECT_EQ(Calls(lines.begin(), lines.begin() + 8),
            (Calls{"75,30 75,220 0080C8 dotted", "275,30 275,220 0080C8 dotted",
                   "70,25 80,25 0080C8", "80,25 75,30 0080C8", "75,30 70,25 0080C8",
                   "70,225 80,225 0080C8", "80,225 75,220 0080C8", "75,220 70,225 0080C8"}));
  EXPECT_EQ(Calls(lines.end() - 14, lines.end() - 6),
            (Calls{"30,75 320,75 0080C8 dotted", "30,175 320,175 0080C8 dotted",
                   "25,70 25,80 0080C8", "25,80 30,75 0080C8", "30,75 25,70 0080C8",
                   "325,70 325,80 0080C8", "325,80 320,75 0080C8", "320,75 325,70 0080C8"}));
  EXPECT_EQ(
      Calls(drawn.end() - 5, drawn.end()),
      (Calls{"copied", "text 205,30 FF00FF bold 1/|X1-X2|=125.00Hz",
             "text 205,50 FF00FF bold |X1-X2|   =8.00ms", "text 205,70 FFFF00 bold |Y1-Y2|  =4.0V",
             "text 205,90 00FFFF bold |Y1-Y2|  =40.0mV"}));
}

TEST(DrawCursors, ReadoutsStackByWhatIsShownInAColumnThatFollowsTheZoom) {
  // The zoom, the pairs shown, the channels, the time base, and where the texts stand.
  const std::tuple<double, std::string, int, const char*, const char*> rows[] = {
      {1.0, "Y", 3, "1ms", "205,30 FFFF00;205,50 00FFFF;"},
      {1.0, "XY", 2, "1ms", "205,30 FF00FF;205,50 FF00FF;205,70 00FFFF;"},
      {1.0, "XY", 1, "", "205,30 FFFF00;"},
      {1.0, "", 3, "1ms", ""},
      {0.39, "X", 3, "1ms", ""},  // too small for texts
      {0.4, "X", 3, "1ms", "25,30 FF00FF;25,50 FF00FF;"},
      {1.19, "X", 3, "1ms", "262,30 FF00FF;262,50 FF00FF;"},
      {1.2, "X", 3, "1ms", "275,30 FF00FF;275,50 FF00FF;"},
  };
  for (const auto& [zoom, pairs, channels, timeRange, places] : rows) {
    View view(zoom);
    view.cursors.CursorXOn = pairs.find('X') != std::string::npos;
    view.cursors.CursorYOn = pairs.find('Y') != std::string::npos;
    view.record.Channels = channels;
    view.record.TimeRange = timeRange;
    std::string found;
    for (const std::string& text : view.Texts()) found += text.substr(0, text.find(" b")) + ";";
    EXPECT_EQ(found, places) << zoom << pairs << channels << timeRange;
    EXPECT_EQ(view.canvas.CallsOf("line ").empty(), pairs.empty()) << zoom;
  }
}

TEST(DrawCursors, ReadoutsThatCannotBeMade) {
  const std::tuple<const char*, double, std::string, std::string> rows[] = {
      // The time base, the distance of the pair, its frequency and its time.
      {"1ms", 0, "???.? Hz", "0.000s"},
      {"1ms", 1.0 / 3, "75.02KHz", "13.33us"}};  // the frequency is of the text
  for (const auto& [timeRange, apart, frequency, time] : rows) {
    View view;
    view.record.TimeRange = timeRange;
    view.cursors.X2Base = view.cursors.X1Base + apart;
    view.record.CH1Range = ">5V";
    view.record.CH2Range = "";
    EXPECT_EQ(view.Texts(), (Calls{"205,30 FF00FF bold 1/|X1-X2|=" + frequency,
                                   "205,50 FF00FF bold |X1-X2|   =" + time,
                                   "205,70 FFFF00 bold |Y1-Y2|  =0.0mV", "205,90 00FFFF bold "}));
  }
}

TEST(DrawCursors, ACursorBeyondTheGridIsDrawnAndMeasuredAtTheClamp) {
  View view(2.0);
  view.cursors.X1Base = -50;
  view.cursors.X2Base = 1000;
  view.cursors.Y1Base = -1;
  view.cursors.Y2Base = 400;
  const Calls texts = view.Texts();
  EXPECT_EQ(texts[1], "475,50 FF00FF bold |X1-X2|   =11.92ms");
  EXPECT_EQ(texts[2], "475,70 FFFF00 bold |Y1-Y2|  =7.9V");
  EXPECT_EQ(view.canvas.CallsOf("line ")[0], "27,30 27,420 0080C8 dotted");
  EXPECT_EQ(view.cursors.X2Base, 1000) << "the base stays";
}

TEST(SeizeCursors, TakesWhatIsWithinThreePixels) {
  // Which pairs are on, the mouse (cursors stand at 75 and 275 across, 75 and 175 down), what is
  // seized, and the pointer there.
  const std::tuple<const char*, bool, bool, Point, const char*, MousePointer> rows[] = {
      {"just within reach", true, false, {277.9, 100}, "X2 ", MousePointer::WestEast},
      {"just out of reach", true, false, {278, 100}, "", MousePointer::Arrow},
      {"one of each pair", true, true, {75, 175}, "X1 Y2 ", MousePointer::NorthSouth},
      {"seized off the grid, though an arrow", true, true, {75, 20}, "X1 ", MousePointer::Arrow},
      {"left of the grid", false, true, {25, 75}, "Y1 ", MousePointer::Arrow},
      {"just inside the grid", false, true, {25.5, 75}, "Y1 ", MousePointer::NorthSouth},
  };
  for (const auto& [name, xOn, yOn, mouse, expected, hover] : rows) {
    View view;
    view.Texts();
    WaveCursors& cursors = view.cursors;
    cursors.CursorXOn = xOn;
    cursors.CursorYOn = yOn;
    EXPECT_EQ(PointerOver(cursors, mouse, 1.0), hover) << name;
    SeizeCursors(cursors, mouse);
    std::string seized = cursors.DragX1 ? "X1 " : "";
    if (cursors.DragX2) seized += "X2 ";
    if (cursors.DragY1) seized += "Y1 ";
    if (cursors.DragY2) seized += "Y2 ";
    EXPECT_EQ(seized, expected) << name;
  }
}

TEST(DragCursor, HoldsOneCursorAcrossBeforeOneDown) {
  View view(2.0);
  WaveCursors& cursors = view.cursors;
  cursors.X2Base = cursors.X1Base;
  view.Texts();
  SeizeCursors(cursors, {125, 125});
  EXPECT_TRUE(DragCursor(cursors, {225, 325}, 2.0));
  EXPECT_EQ(cursors.X1Base, 100) << "the first of two on one pixel";
  EXPECT_EQ(cursors.X2Base, 50);
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
