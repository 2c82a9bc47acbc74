#include "simulator/Screen.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace tx5000 {
namespace {

constexpr int kTraceWidth = 300;
constexpr int kTraceHeight = 200;
constexpr int kDivision = 25;
constexpr int kLowestSample = 26;
constexpr int kHighestSample = 225;
constexpr int kCentreSample = 125;
constexpr int kMenuWidth = 56;

// Three by five dots. Each octal digit is one row.
struct Glyph {
  char letter;
  int rows;
};
constexpr Glyph kGlyphs[] = {
    {'0', 075557}, {'1', 026227}, {'2', 071747}, {'3', 071717}, {'4', 055711}, {'5', 074717},
    {'6', 074757}, {'7', 071111}, {'8', 075757}, {'9', 075717}, {'A', 025755}, {'B', 065656},
    {'C', 074447}, {'D', 065556}, {'E', 074747}, {'F', 074744}, {'G', 074557}, {'H', 055755},
    {'I', 072227}, {'J', 011157}, {'K', 055655}, {'L', 044447}, {'M', 057755}, {'N', 065555},
    {'O', 075557}, {'P', 075744}, {'Q', 075571}, {'R', 075655}, {'S', 074717}, {'T', 072222},
    {'U', 055557}, {'V', 055552}, {'W', 055775}, {'X', 055255}, {'Y', 055222}, {'Z', 071247},
    {'.', 000002}, {'-', 000700}, {'+', 002720}, {':', 002020}, {'%', 051245}, {'/', 011244},
};

int RowOf(int sample) {
  return kTraceTop + std::clamp(sample, kLowestSample, kHighestSample) - kLowestSample;
}

bool IsShown(const Settings& settings, Channel channel) {
  return settings.Is(OfChannel(Setting::kDisplay1, channel), "ON");
}

class Painter {
 public:
  Painter(const Settings& settings, const Inputs& inputs, const Record& record)
      : settings_(settings), inputs_(inputs), record_(record), pixels_(kScreenBytes) {}

  void DrawGrid();
  void DrawTraces();
  void DrawReadouts(bool running);
  void DrawMenu();
  std::vector<std::uint8_t> Take() { return std::move(pixels_); }

 private:
  void Dot(int x, int y, Ink ink) { pixels_[static_cast<std::size_t>(y * kScreenWidth + x)] = ink; }
  void Fill(int left, int top, int right, int bottom, Ink ink);  // includes both ends
  void Write(int x, int y, std::string_view text, Ink ink);
  std::vector<std::uint8_t> Samples(Channel channel, Trace trace) {
    return TakeSamples(settings_, inputs_, record_, channel, trace);
  }
  void DrawFigure();
  void DrawTrace(Channel channel, Ink ink);
  void DrawEnvelope(Channel channel, Ink ink);

  const Settings& settings_;
  const Inputs& inputs_;
  const Record& record_;
  std::vector<std::uint8_t> pixels_;
};

void Painter::Fill(int left, int top, int right, int bottom, Ink ink) {
  for (int y = top; y <= bottom; ++y) {
    for (int x = left; x <= right; ++x) Dot(x, y, ink);
  }
}

void Painter::Write(int x, int y, std::string_view text, Ink ink) {
  constexpr int kAdvance = 8;  // three dots and a gap, each two pixels wide and high
  for (char c : text) {
    if (x + kAdvance > kScreenWidth) return;
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    const auto glyph = std::find_if(std::begin(kGlyphs), std::end(kGlyphs),
                                    [&](const Glyph& g) { return g.letter == c; });
    for (int bit = 0; glyph != std::end(kGlyphs) && bit < 15; ++bit) {
      if ((glyph->rows >> (14 - bit) & 1) == 0) continue;
      const int left = x + bit % 3 * 2;
      const int top = y + bit / 3 * 2;
      Fill(left, top, left + 1, top + 1, ink);
    }
    x += kAdvance;
  }
}

void Painter::DrawGrid() {
  constexpr int kRight = kTraceLeft + kTraceWidth;
  constexpr int kBottom = kTraceTop + kTraceHeight;
  Fill(kTraceLeft - 1, kTraceTop - 1, kRight, kTraceTop - 1, kGridInk);
  Fill(kTraceLeft - 1, kBottom, kRight, kBottom, kGridInk);
  Fill(kTraceLeft - 1, kTraceTop, kTraceLeft - 1, kBottom, kGridInk);
  Fill(kRight, kTraceTop, kRight, kBottom, kGridInk);
  if (settings_.Is(Setting::kGrid, "NONE")) return;
  const bool full = settings_.Is(Setting::kGrid, "FULL");
  constexpr int kDotDistance = 5;
  const int centreRow = RowOf(kCentreSample);
  const int centreColumn = kTraceLeft + kTraceWidth / 2;
  for (int x = kTraceLeft; x < kRight; ++x) {
    for (int y = kTraceTop; y < kBottom; ++y) {
      const int right = x - centreColumn;
      const int down = y - centreRow;
      const bool onRow = full ? down % kDivision == 0 : down == 0;
      const bool onColumn = full ? right % kDivision == 0 : right == 0;
      const bool dotted =
          (onRow && right % kDotDistance == 0) || (onColumn && down % kDotDistance == 0);
      if (dotted) Dot(x, y, kGridInk);
    }
  }
}

void Painter::DrawTraces() {
  if (settings_.Is(Setting::kFormat, "X-Y")) {
    DrawFigure();
    return;
  }
  const bool envelope =
      settings_.Is(Setting::kAcquisition, "ENVELOPE") && !settings_.Is(Setting::kScan, "ON");
  // Channel 1 is drawn last, in front.
  for (const auto& [channel, ink] :
       {std::pair(Channel::k2, kChannel2Ink), std::pair(Channel::k1, kChannel1Ink)}) {
    if (!IsShown(settings_, channel)) continue;
    if (envelope) {
      DrawEnvelope(channel, ink);
    } else {
      DrawTrace(channel, ink);
    }
  }
}

void Painter::DrawFigure() {
  const auto across = Samples(Channel::k1, Trace::kPlain);
  const auto upwards = Samples(Channel::k2, Trace::kPlain);
  for (std::size_t i = 0; i < std::min(across.size(), upwards.size()); ++i) {
    const int x = kTraceLeft + kTraceWidth / 2 + kCentreSample - across[i];
    Dot(std::clamp(x, kTraceLeft, kTraceLeft + kTraceWidth - 1), RowOf(upwards[i]), kChannel1Ink);
  }
}

void Painter::DrawTrace(Channel channel, Ink ink) {
  const auto samples = Samples(channel, Trace::kPlain);
  const bool joined = settings_.Is(Setting::kType, "VECT");
  const RollingGap gap = GapOf(settings_, record_);
  int before = -1;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const int column = static_cast<int>(i * kTraceWidth / samples.size());
    const int row = RowOf(samples[i]);
    const bool blank = column >= gap.start && column < gap.start + gap.width;
    if (!blank) {
      const int from = joined && before >= 0 ? before : row;
      const int x = kTraceLeft + column;
      Fill(x, std::min(from, row), x, std::max(from, row), ink);
    }
    before = blank ? -1 : row;
  }
}

void Painter::DrawEnvelope(Channel channel, Ink ink) {
  const auto upper = Samples(channel, Trace::kUpper);
  const auto lower = Samples(channel, Trace::kLower);
  for (std::size_t i = 0; i < upper.size(); ++i) {
    const int x = kTraceLeft + static_cast<int>(i * kTraceWidth / upper.size());
    Fill(x, RowOf(upper[i]), x, RowOf(lower[i]), ink);
  }
}

void Painter::DrawReadouts(bool running) {
  constexpr int kTopLine = 4;
  constexpr int kBottomLine = 225;
  const auto text = [&](Setting setting) { return settings_.Text(setting); };
  Write(kTraceLeft, kTopLine, running ? "RUN" : "STOP", kTextInk);
  Write(60, kTopLine, text(Setting::kDelay), kTextInk);
  Write(160, kTopLine, text(Setting::kMethod) + " " + text(Setting::kSource), kTextInk);
  Write(250, kTopLine, text(Setting::kLevel), kTextInk);
  Write(240, kBottomLine, text(Setting::kTimeRange), kTextInk);
  if (IsShown(settings_, Channel::k1)) {
    Write(kTraceLeft, kBottomLine, "CH1 " + text(Setting::kRange1), kChannel1Ink);
  }
  if (IsShown(settings_, Channel::k2)) {
    Write(120, kBottomLine, "CH2 " + text(Setting::kRange2), kChannel2Ink);
  }
}

void Painter::DrawMenu() {
  constexpr int kKeys = 5;
  constexpr int kKeyHeight = kTraceHeight / kKeys;
  const int left = kTraceLeft + kTraceWidth - kMenuWidth;
  const int right = left + kMenuWidth - 1;
  Fill(left, kTraceTop, right, kTraceTop + kTraceHeight - 1, kDarkInk);
  for (int key = 0; key < kKeys; ++key) {
    const int top = kTraceTop + key * kKeyHeight;
    Fill(left, top, right, top + kKeyHeight - 2, kGridInk);
    Fill(left + 1, top + 1, right - 1, top + kKeyHeight - 3, kDarkInk);
    Write(left + 20, top + 14, "F" + std::to_string(key + 1), kTextInk);
  }
}

}  // namespace

std::vector<std::uint8_t> DrawScreen(const Settings& settings, const Inputs& inputs,
                                     const Record& record, ScreenState state) {
  Painter painter(settings, inputs, record);
  painter.DrawGrid();
  painter.DrawTraces();
  painter.DrawReadouts(state.running);
  if (state.menuShown) painter.DrawMenu();
  return painter.Take();
}

}  // namespace tx5000
