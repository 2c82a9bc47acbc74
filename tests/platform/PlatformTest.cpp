#include "platform/RasterCanvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <tuple>

#include "platform/Form.h"
#include "platform/Timer.h"
#include "platform/TreeView.h"
#include "support/Tables.h"
#include "support/VirtualClock.h"

namespace oriolemark {
namespace {

RasterCanvas Blank(int width, int height) {
  RasterCanvas canvas;
  canvas.SetSize(width, height);
  canvas.Clear({});
  canvas.SetColor({255, 255, 255});
  return canvas;
}

// Rows of what the canvas keeps, or of a part of it, '#' where a pixel is set, joined by '/'.
std::string Show(const RasterCanvas& canvas, std::optional<PixelRect> only = {}) {
  const PixelRect part = only.value_or(PixelRect{0, 0, canvas.Width(), canvas.Height()});
  std::string shown;
  for (int i = 0; i < part.width * part.height; ++i) {
    if (i > 0 && i % part.width == 0) shown += '/';
    const int x = part.left + i % part.width, y = part.top + i / part.width;
    shown += canvas.Pixels()[y * canvas.Width() + x] == 0xFFFFFFFF ? '#' : '.';
  }
  return shown;
}

TEST(RasterCanvas, LinesSetTheirPixels) {
  using enum PenStyle;
  // The ends, the width and style of the pen, and the picture.
  const std::tuple<const char*, Point, Point, int, PenStyle, const char*> rows[] = {
      {"both ends", {4, 1}, {1, 1}, 1, Solid, "....../.####./......"},
      {"ties go to even", {0.5, 1.5}, {2.5, 1.5}, 1, Solid, "....../....../###..."},
      {"steep, upwards", {1, 2}, {2, -1}, 1, Solid, "..#.../.#..../.#...."},
      {"flat, cut at both sides", {-3, -1}, {9, 4}, 1, Solid, "#...../.##.../...###"},
      {"steep, cut above and below", {1, -4}, {4, 7}, 1, Solid, "..#.../..#.../...#.."},
      {"across from very far", {-1e12, 1}, {1e12, 1}, 1, Solid, "....../######/......"},
      {"two wide covers left and above", {2, 2}, {4, 2}, 2, Solid, "....../.####./.####."},
      {"two wide from below the edge", {0, 3}, {6, 3}, 2, Solid, "....../....../######"},
      {"dots count from the line's own start", {-3, 1}, {5, 1}, 1, Dotted, "....../.##..#/......"},
  };
  for (const auto& [name, from, to, width, style, shown] : rows) {
    RasterCanvas canvas = Blank(6, 3);
    canvas.SetLineWidth(width);
    canvas.SetPenStyle(style);
    canvas.Line(from, to);
    EXPECT_EQ(Show(canvas), shown) << name;
  }
}

TEST(RasterCanvas, AWholeFrameIsTakenOnlyInItsOwnSize) {
  RasterCanvas canvas = Blank(3, 2);
  const std::vector<std::uint32_t> frame{0xFFFFFF, 0, 0, 0, 0, 0xFFFFFF, 0};
  canvas.SetPixels(frame);
  EXPECT_EQ(Show(canvas), ".../...");
  canvas.SetPixels(std::span(frame).first(6));
  EXPECT_EQ(Show(canvas), "#../..#");
}

TEST(RasterCanvas, MemoryIsHeldForTheSizeItHasAndNoMore) {
  RasterCanvas canvas;
  for (const int width : {10, 11, 3500, 1200, 1199, 0}) {
    canvas.SetSize(width, 2);
    EXPECT_EQ(canvas.Capacity(), 2 * width);
  }
}

TEST(RasterCanvas, WildCoordinatesCostNothingAndStayOutside) {
  constexpr int kMany = std::numeric_limits<int>::max();
  using Limits = std::numeric_limits<double>;
  for (const double wild : {1e5, 2147483648.0, -3e9, 1e18, Limits::max(), Limits::lowest(),
                            Limits::infinity(), Limits::quiet_NaN()}) {
    RasterCanvas canvas = Blank(8, 2);
    canvas.Line({wild, wild}, {wild, -wild});
    canvas.Line({wild, 1}, {wild, 0});
    canvas.Pixel({wild, 1});
    canvas.PixelRow({-kMany - 9.0, 1}, wild, kMany);
    canvas.PixelRow({1, wild}, 1, kMany);
    canvas.PixelColumn({wild, 0}, 1e-9, kMany);
    canvas.Trace(TracePlan({wild, wild, wild}), 0, {std::vector{0, 5, 1}, 1, 0});
    canvas.Trace(TracePlan({0, 1, 2, 2, 2, 2}), 0, {std::vector{0, 0, 0, 0, 1, 0}, wild, wild});
    canvas.Text({wild, wild}, "T");
    EXPECT_EQ(Show(canvas), "......../........") << wild;
  }
}

// Rows of a trace. The kinds are noise, long level runs, single spikes, a slope, and rows that no
// picture reaches.
std::vector<std::int32_t> RandomRows(int kind, std::size_t count, std::mt19937& random) {
  std::vector<std::int32_t> rows(count);
  for (std::size_t i = 0; i < count; ++i) {
    const bool same = i > 0 && random() % 64 != 0;
    const int any = static_cast<int>(random() % 256) - 26;
    const int kinds[] = {any, same ? rows[i - 1] : any, same ? 100 : any, static_cast<int>(i % 997),
                         same ? any : any << 23};
    rows[i] = kinds[kind];
  }
  return rows;
}

TEST(RasterCanvas, RunsAreTheirSingleCallsInAnyPart) {
  std::mt19937 random(4);
  const int counts[] = {2, 3, 17, 60, 150, 400, 1000, 4000, 17000};
  for (int trial = 0; trial < 540; ++trial) {
    const std::size_t count = counts[trial % 9];
    const double zoom = std::exp2(static_cast<int>(random() % 1000) / 100.0 - 6.6);  // 0.01 to 10
    const double left = random() % 4 == 0 ? -60 * zoom : static_cast<int>(random() % 50) / 2.0;
    const double spacing = 99 * zoom / static_cast<int>(count);
    std::vector<double> x{left};
    while (x.size() < count) x.push_back(left + zoom + static_cast<int>(x.size() - 1) * spacing);
    const TracePlan plan(x);
    const std::vector<std::int32_t> rows = RandomRows(trial % 5, count, random);
    const std::size_t first = trial % 4 == 0 ? random() % (count - 1) : 0;
    RasterCanvas single = Blank(70, 50 + trial % 3);
    single.SetLineWidth(trial % 17 == 0 ? 2 : 1);
    single.SetPenStyle(trial % 19 == 0 ? PenStyle::Dotted : PenStyle::Solid);
    RasterCanvas run = single;
    const PixelRect part =
        trial % 3 == 0 ? single.Part() : PixelRect{trial % 37, trial % 29, 33, 21};
    run.SetPart(single.Width(), single.Height(), part);
    run.Clear({});
    const bool overlaid = trial % 7 == 0;
    if (overlaid) run.BeginOverlay();
    const TraceRows trace{std::span(rows).subspan(first), zoom, trial % 2 == 0 ? 0.0 : -90 * zoom};
    run.Trace(plan, first, trace);
    single.Canvas::Trace(plan, first, trace);
    // At halves, which go to even, steps of exactly one miss pixels.
    const Point at{trial % 3 == 0 ? 0.5 - trial % 20 : left, trial % 43 / 3.0};
    const double step = trial % 5 == 0 ? trial % 4 - 1.0 : zoom - 1;
    const double lines[] = {at.y, at.y + 0.3, at.y - 0.3, at.y - 1};
    run.PixelRows(at.x, lines, step, trial % 61);
    run.PixelColumns(lines, at.y, step, trial % 41);
    for (const double line : lines) {
      single.Canvas::PixelRow({at.x, line}, step, trial % 61);
      single.Canvas::PixelColumn({line, at.y}, step, trial % 41);
    }
    for (RasterCanvas* canvas : {&run, &single}) canvas->Line({-9e8, 20.0 + trial}, {at.y, at.x});
    ASSERT_EQ(Show(run), Show(single, part)) << trial << ": " << count << " at " << zoom;
    ASSERT_EQ(run.DropOverlay(), overlaid);
    ASSERT_TRUE(!overlaid || Show(run).find('#') == std::string::npos) << trial;
  }
}

TEST(RasterCanvas, AClearLeavesNothingOfWhatWasDrawn) {
  std::mt19937 random(7);
  RasterCanvas canvas = Blank(300, 200);
  const auto any = [&] { return static_cast<double>(random() % 340) - 20; };
  std::vector<double> x(2000);
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i) / 7;
  const TracePlan plan(x);
  for (int trial = 0; trial < 400; ++trial) {
    canvas.SetColor({255, static_cast<std::uint8_t>(trial), 255});
    canvas.SetLineWidth(trial % 11 == 0 ? 2 : 1);
    canvas.SetPenStyle(trial % 13 == 0 ? PenStyle::Dotted : PenStyle::Solid);
    if (trial % 6 == 0) {
      const std::vector<std::int32_t> rows = RandomRows(trial % 4, random() % 300 + 2, random);
      canvas.Trace(plan, random() % 1000, {rows, trial % 5 / 2.0, any()});
    }
    for (int i = trial % 9; i > 0; --i) {
      canvas.Line({any(), any()}, {any(), any()});
      canvas.PixelRow({any(), any()}, 7, 9);
      if (random() % 16 == 0) canvas.BeginOverlay();
      if (random() % 16 == 0) canvas.DropOverlay();
    }
    if (trial % 37 == 0) canvas.SetPixels(std::vector<std::uint32_t>(60000, 5));
    if (trial % 41 == 0) canvas.SetSize(trial % 2 == 0 ? 200 : 300, trial % 2 == 0 ? 300 : 200);
    const std::uint8_t ground = trial % 8 == 0 ? 200 : 0;
    canvas.Clear({0, 0, ground});
    ASSERT_EQ(std::ranges::count(canvas.Pixels(), 0xFF000000U | ground), 60000) << trial;
  }
}

TEST(RasterCanvas, AnOverlayOfACopyLeavesNoTrace) {
  RasterCanvas canvas([](std::string_view text, bool bold) {
    static constexpr RasterCanvas::TextDash kDashes[] = {{-1, 0, 2}, {0, 1, 1}};
    return text == "T" && bold ? std::span(kDashes) : std::span(kDashes).first(0);
  });
  canvas.SetSize(5, 4);
  canvas.Clear({1, 2, 3});
  canvas.SetColor({9, 9, 9});
  canvas.Line({0, 0}, {4, 3});
  const std::unique_ptr<Canvas> copy = canvas.MakeCopy();
  EXPECT_FALSE(copy->DropOverlay());
  copy->BeginOverlay();
  for (const int shade : {254, 255}) {
    copy->SetColor({255, static_cast<std::uint8_t>(shade), 255});
    copy->SetBold(true);
    copy->Text({0.6, 1.4}, "T");
    copy->Line({0, 0}, {4, 3});
    copy->Line({4, 0}, {4, 3});
    copy->Trace(TracePlan({3, 3, 3, 3}), 0, {std::vector{0, 3, 1, 2}, 1, 0});
  }
  const auto& drawn = dynamic_cast<RasterCanvas&>(*copy);
  EXPECT_EQ(Show(drawn), "#..##/##.##/.####/...##");
  EXPECT_TRUE(copy->DropOverlay());
  EXPECT_TRUE(std::ranges::equal(drawn.Pixels(), canvas.Pixels()));
  EXPECT_FALSE(copy->DropOverlay());
  copy->BeginOverlay();
  copy->Clear({});
  EXPECT_FALSE(copy->DropOverlay()) << "nothing is below it";
  copy->BeginOverlay();
  copy->SetPixels(std::vector<std::uint32_t>(20));
  EXPECT_FALSE(copy->DropOverlay()) << "nor below a whole frame";
}

using Ms = Milliseconds;

TEST(Timer, NeverTicksInsideItsOwnHandler) {
  VirtualClock clock;
  std::vector<Ms> begun;
  Timer timer(clock, 100, [&] {
    begun.push_back(clock.Now());
    clock.Run(Ms(350));
  });
  timer.SetEnabled(true);
  clock.Run(Ms(600));
  EXPECT_EQ(begun, (std::vector<Ms>{Ms(100), Ms(500)})) << "what came due meanwhile is dropped";
}

TEST(Form, ASecondOpeningOfAModalWindowReturnsAtOnce) {
  VirtualClock clock;
  Form form;
  clock.UserAfter(Ms(100), [&] {
    form.ShowModal(clock.waiting);
    EXPECT_EQ(clock.Now(), Ms(100));
  });
  clock.UserAfter(Ms(200), [&] { form.Unload(); });
  form.ShowModal(clock.waiting);
  EXPECT_EQ(clock.Now(), Ms(200));
  EXPECT_EQ(Bits(form.Loaded(), form.Modal()), "00");
}

TEST(TreeView, ATreeBuiltAnewIsEnteredWhereItWasLeft) {
  TreeView tree;
  TreeNode group = kNoNode;
  const auto build = [&](bool expanded, const std::string& label) {
    tree.Clear();
    const TreeNode root = tree.Add(kNoNode, "TX5000", 1);
    group = tree.Add(root, "Trigger", 2);
    tree.Add(group, "Mode [1]", 3);
    tree.SetExpanded(root, true);
    tree.SetExpanded(group, expanded);
    return tree.Add(group, label, 3);
  };
  tree.Select(build(true, "Level [1]"));
  const TreeNode row = build(true, "Level [2]");
  EXPECT_EQ(tree.ReturnToPlace(), row);
  EXPECT_EQ(tree.Selected(), row) << "a value in brackets is no part of the place";
  build(false, "Level [2]");
  EXPECT_EQ(tree.ReturnToPlace(), group) << "the nearest that shows";
  build(true, "Slope [2]");
  EXPECT_EQ(tree.ReturnToPlace(), group) << "the row has gone";
  EXPECT_EQ(tree.Selected(), kNoNode);
}

}  // namespace
}  // namespace oriolemark
