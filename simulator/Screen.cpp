#include "simulator/Screen.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "simulator/Font.h"
#include "simulator/Values.h"

namespace tx5000 {
namespace {

constexpr int kTraceWidth = 300;
constexpr int kTraceHeight = 200;
constexpr int kRight = kTraceLeft + kTraceWidth;  // the frame's lines
constexpr int kBottom = kTraceTop + kTraceHeight;
constexpr int kDivision = 25;
constexpr int kLowestSample = 26;
constexpr int kHighestSample = 225;
constexpr int kCentreSample = 125;
constexpr int kCentreColumn = kTraceLeft + kTraceWidth / 2;
constexpr int kDotDistance = 5;

constexpr Ink kInks[] = {kChannel1Ink, kChannel2Ink};

Ink InkOf(Channel channel) {
  return kInks[channel == Channel::k1 ? 0 : 1];
}

int RowOf(int sample) {
  return kTraceTop + std::clamp(sample, kLowestSample, kHighestSample) - kLowestSample;
}

// The row of a height in divisions above the middle.
int RowAt(double divisions) {
  return RowOf(static_cast<int>(std::lround(kCentreSample - kDivision * divisions)));
}

int ColumnAt(double divisions) {
  const double column = kCentreColumn + kDivision * std::clamp(divisions, -99.0, 99.0);
  return std::clamp(static_cast<int>(std::lround(column)), kTraceLeft, kRight - 1);
}

bool IsShown(const Settings& settings, Channel channel) {
  return settings.Is(OfChannel(Setting::kDisplay1, channel), "ON");
}

class Painter {
 public:
  Painter(const Settings& settings, const Inputs& inputs, const Record& record, const Panel& panel)
      : settings_(settings), inputs_(inputs), record_(record), panel_(panel) {}

  void DrawGrid();
  void DrawTraces();
  void DrawCursors();
  void DrawMarks();
  void WriteStatus(const ScreenState& state);
  void WriteChannel(Channel channel, int x);
  void WriteTrigger();
  void DrawMenu(const MenuTexts& menu);
  std::vector<std::uint8_t> Take() { return bitmap_.Take(); }

 private:
  using Samples = std::vector<std::uint8_t>;

  bool Is(Setting setting, std::string_view value) const { return settings_.Is(setting, value); }
  const std::string& Text(Setting setting) const { return settings_.Text(setting); }
  Samples Read(Channel channel) const {
    return TakeSamples(settings_, inputs_, record_, channel, Trace::kPlain);
  }
  void DrawFigure();
  void DrawTrace(const Samples& samples, Ink ink);
  void DrawEnvelope(Channel channel, Ink ink);
  Samples Calculate() const;
  void DrawZero(Channel channel);

  const Settings& settings_;
  const Inputs& inputs_;
  const Record& record_;
  const Panel& panel_;
  Bitmap bitmap_;
};

void Painter::DrawGrid() {
  for (const int y : {kTraceTop - 1, kBottom}) bitmap_.Fill(kTraceLeft - 1, y, kRight, y, kGridInk);
  for (const int x : {kTraceLeft - 1, kRight}) bitmap_.Fill(x, kTraceTop, x, kBottom, kGridInk);
  if (Is(Setting::kGrid, "NONE")) return;
  const int lines = Is(Setting::kGrid, "FULL") ? kDivision : kTraceWidth;
  // Dots along each line, in step with the middle, where the lines of a half grid are.
  const int centreRow = RowOf(kCentreSample);
  for (int x = kCentreColumn % lines; x < kRight; x += lines) {
    if (x < kTraceLeft) continue;
    for (int y = centreRow % kDotDistance; y < kBottom; y += kDotDistance) {
      if (y >= kTraceTop) bitmap_.Dot(x, y, kGridInk);
    }
  }
  for (int y = centreRow % lines; y < kBottom; y += lines) {
    if (y < kTraceTop) continue;
    for (int x = kCentreColumn % kDotDistance; x < kRight; x += kDotDistance) {
      if (x >= kTraceLeft) bitmap_.Dot(x, y, kGridInk);
    }
  }
}

void Painter::DrawTraces() {
  if (Is(Setting::kFormat, "X-Y")) {
    DrawFigure();
    return;
  }
  if (panel_.At(Option::kReferenceShown) != 0) DrawTrace(panel_.reference, kReferenceInk);
  if (panel_.Operation() != Math::kOff) DrawTrace(Calculate(), kMathInk);
  const bool envelope = Is(Setting::kAcquisition, "ENVELOPE") && !Is(Setting::kScan, "ON");
  // Channel 1 is drawn last, in front.
  for (const Channel channel : {Channel::k2, Channel::k1}) {
    if (!IsShown(settings_, channel)) continue;
    if (envelope) {
      DrawEnvelope(channel, InkOf(channel));
    } else {
      DrawTrace(Read(channel), InkOf(channel));
    }
  }
}

void Painter::DrawFigure() {
  const auto across = Read(Channel::k1);
  const auto upwards = Read(Channel::k2);
  for (std::size_t i = 0; i < std::min(across.size(), upwards.size()); ++i) {
    const int x = kCentreColumn + kCentreSample - across[i];
    bitmap_.Dot(std::clamp(x, kTraceLeft, kRight - 1), RowOf(upwards[i]), kChannel1Ink);
  }
}

void Painter::DrawTrace(const Samples& samples, Ink ink) {
  const bool joined = Is(Setting::kType, "VECT");
  const RollingGap gap = GapOf(settings_, record_);
  int before = -1;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const int column = static_cast<int>(i * kTraceWidth / samples.size());
    const int row = RowOf(samples[i]);
    const bool blank = column >= gap.start && column < gap.start + gap.width;
    if (!blank) {
      const int from = joined && before >= 0 ? before : row;
      const int x = kTraceLeft + column;
      bitmap_.Fill(x, std::min(from, row), x, std::max(from, row), ink);
    }
    before = blank ? -1 : row;
  }
}

void Painter::DrawEnvelope(Channel channel, Ink ink) {
  const auto [upper, lower] = TakeEnvelope(settings_, inputs_, record_, channel);
  for (std::size_t i = 0; i < upper.size(); ++i) {
    const int x = kTraceLeft + static_cast<int>(i * kTraceWidth / upper.size());
    bitmap_.Fill(x, RowOf(upper[i]), x, RowOf(lower[i]), ink);
  }
}

// The sum or the difference, around the middle and in the scale of channel 1.
Painter::Samples Painter::Calculate() const {
  Samples result = Read(Channel::k1);
  const Samples other = Read(Channel::k2);
  const auto zero = [&](Setting offset) {
    return kCentreSample - kDivision * settings_.Divisions(offset);
  };
  const double zero1 = zero(Setting::kOffset1);
  const double zero2 = zero(Setting::kOffset2);
  const double sign = panel_.Operation() == Math::kSum ? 1 : -1;
  const double factor =
      sign * settings_.VoltsPerDivision(Channel::k2) / settings_.VoltsPerDivision(Channel::k1);
  for (std::size_t i = 0; i < result.size(); ++i) {
    const double counts = kCentreSample + (result[i] - zero1) + factor * (other[i] - zero2);
    result[i] = static_cast<std::uint8_t>(std::lround(std::clamp(counts, 0.0, 255.0)));
  }
  return result;
}

void Painter::DrawCursors() {
  if (panel_.ShownCursors() == Cursors::kOff) return;
  const bool level = panel_.ShownCursors() == Cursors::kVolt;
  for (const Option cursor : {Option::kCursor1, Option::kCursor2}) {
    const int divisions = panel_.DivisionsOf(cursor);
    if (level) {
      for (int x = kTraceLeft; x < kRight; x += 4) {
        bitmap_.Fill(x, RowAt(divisions), x + 1, RowAt(divisions), kCursorInk);
      }
    } else {
      for (int y = kTraceTop; y < kBottom; y += 4) {
        bitmap_.Fill(ColumnAt(divisions), y, ColumnAt(divisions), y + 1, kCursorInk);
      }
    }
  }
}

// The channel's number and an arrow at the row of its 0 V, in the left margin.
void Painter::DrawZero(Channel channel) {
  const int row = RowAt(settings_.Divisions(OfChannel(Setting::kOffset1, channel)));
  const std::string_view number = channel == Channel::k1 ? "1" : "2";
  bitmap_.Fill(0, row - 4, kTraceLeft - 2, row + 4, kDarkInk);
  bitmap_.Write(0, row - kGlyphHeight / 2, number, InkOf(channel));
  for (int size = 0; size < 3; ++size) {
    bitmap_.Fill(8 - size, row - size, 8 - size, row + size, InkOf(channel));
  }
}

// Zero of the channels, moment of the trigger, and its level at the right end of what can be seen.
void Painter::DrawMarks() {
  if (Is(Setting::kFormat, "X-Y")) return;
  for (const Channel channel : {Channel::k2, Channel::k1}) {
    if (IsShown(settings_, channel)) DrawZero(channel);
  }
  const int moment =
      ColumnAt(-settings_.Seconds(Setting::kDelay) / settings_.Seconds(Setting::kTimeRange));
  const std::string_view source = Text(Setting::kSource);
  const bool levelled = source.starts_with("CH") && !Is(Setting::kMethod, "VIDEO");
  const Setting offset = source == "CH2" ? Setting::kOffset2 : Setting::kOffset1;
  const int row = RowAt(settings_.Divisions(offset) + settings_.Divisions(Setting::kLevel));
  const int end = (panel_.menuShown ? kMenuLeft : kScreenWidth) - 6;
  for (int size = 0; size < 4; ++size) {
    bitmap_.Fill(moment - size, 17 - size, moment + size, 17 - size, kTriggerInk);
    if (levelled) bitmap_.Fill(end + size, row - size, end + size, row + size, kTriggerInk);
  }
}

void Painter::WriteStatus(const ScreenState& state) {
  constexpr int kLine = 4;
  const std::string delay = FormatSeconds(settings_.Seconds(Setting::kDelay));
  const bool average = Is(Setting::kAcquisition, "AVERAGE");
  const std::string acquisition = Is(Setting::kScan, "ON") ? "ROLL" : Text(Setting::kAcquisition);
  if (state.running) {
    bitmap_.Write(2, kLine, "RUN", kTextInk);
  } else {
    bitmap_.WriteInverse(2, kLine, "STOP", kTextInk);
  }
  bitmap_.Write(40, kLine, "M " + Text(Setting::kTimeRange), kTextInk);
  bitmap_.Write(104, kLine, "D " + delay, kTriggerInk);
  bitmap_.Write(176, kLine, acquisition + (average ? " " + Text(Setting::kAverages) : ""),
                kTextInk);
  bitmap_.Write(kMenuLeft + 10, kLine, state.model, kTextInk);
}

void Painter::WriteChannel(Channel channel, int x) {
  constexpr int kLine = 223;
  if (!IsShown(settings_, channel)) return;
  const auto of = [&](Setting first) { return OfChannel(first, channel); };
  const auto mark = [&](Setting first, std::string_view text) {
    return Is(of(first), "ON") ? " " + std::string(text) : "";
  };
  const std::string name = channel == Channel::k1 ? "CH1" : "CH2";
  if (channel == panel_.selected) {
    bitmap_.WriteInverse(x, kLine, name, InkOf(channel));
  } else {
    bitmap_.Write(x, kLine, name, InkOf(channel));
  }
  bitmap_.Write(x + 4 * kGlyphAdvance, kLine,
                Text(of(Setting::kRange1)) + " " + Text(of(Setting::kCoupling1)) +
                    mark(Setting::kBandwidth1, "B") + mark(Setting::kInvert1, "I") + " " +
                    Text(of(Setting::kOffset1)),
                InkOf(channel));
}

void Painter::WriteTrigger() {
  constexpr int kLine = 232;
  const std::string method = Text(Setting::kMethod);
  std::string text = method + " " + Text(Setting::kSource) + " ";
  if (method == "VIDEO") {
    text += Text(Setting::kStandard) + " " + Text(Setting::kSync) + " " + Text(Setting::kPolarity);
  } else {
    text += method == "EDGE" ? Text(Setting::kSlope)
                             : Text(Setting::kPulseMode) + " " + Text(Setting::kPulseWidth);
    text += " " + Text(Setting::kLevel) + " " + Text(Setting::kTrigMode);
  }
  bitmap_.Write(2, kLine, text, kTriggerInk);
}

void Painter::DrawMenu(const MenuTexts& menu) {
  const int height = kTraceHeight / static_cast<int>(menu.entries.size());
  constexpr int kLast = kScreenWidth - 1;
  const auto write = [&](std::string_view text, int y, Ink ink) {
    constexpr std::size_t kMostLetters = (kScreenWidth - kMenuLeft) / kGlyphAdvance;
    text = text.substr(0, kMostLetters);
    bitmap_.Write(kMenuLeft + (kScreenWidth - kMenuLeft - WidthOf(text)) / 2, y, text, ink);
  };
  bitmap_.Fill(kMenuLeft, 0, kLast, kBottom, kDarkInk);
  bitmap_.Fill(kMenuLeft, 2, kLast, 14, kTextInk);
  write(menu.title, 5, kDarkInk);
  int top = kTraceTop;
  for (const auto& [label, value] : menu.entries) {
    bitmap_.Fill(kMenuLeft, top, kLast, top + height - 2, kGridInk);
    bitmap_.Fill(kMenuLeft + 1, top + 1, kLast - 1, top + height - 3, kDarkInk);
    write(label, top + 8, kTextInk);
    write(value, top + 22, kChannel1Ink);
    top += height;
  }
}

}  // namespace

std::vector<std::uint8_t> DrawScreen(const Settings& settings, const Inputs& inputs,
                                     const Record& record, const Panel& panel,
                                     const ScreenState& state) {
  Painter painter(settings, inputs, record, panel);
  painter.DrawGrid();
  painter.DrawTraces();
  painter.DrawCursors();
  painter.DrawMarks();
  painter.WriteStatus(state);
  painter.WriteChannel(Channel::k1, 2);
  painter.WriteChannel(Channel::k2, 165);
  painter.WriteTrigger();
  if (panel.menuShown) painter.DrawMenu(state.menu);
  return painter.Take();
}

}  // namespace tx5000
