#include "TimelineGeometry.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace TimelineGeometry;

namespace {

constexpr double H = 44.0;
// Half the strip less the inset: a bar at the peak level.
constexpr double full = H / 2.0 - 3.0;

double curve(double fraction)
{
    return std::max(full * std::pow(fraction, 0.6), 1.5);
}

TEST(TimelineGeometry, BarHeightsFollowTheLevelsUnderEachBar)
{
    const std::vector<float> quiet(600, 0.0f);
    std::vector<float> oneLoud(20, 0.1f);
    oneLoud[1] = 0.9f;
    oneLoud[19] = 0.45f;
    const struct {
        const char* what;
        double width, duration;
        std::vector<float> levels;
        double levelWindow;
        std::size_t bars;
        std::vector<std::pair<int, double>> halves; // bar index, expected half height
    } cases[] = {
        // Two pixels still hold one bar, and it reads the whole recording.
        {"narrow", 2, 0.2, {0.1f, 0.2f, 1.0f, 0.3f}, 0.05, 1, {{0, full}}},
        // Silence everywhere: the peak floor keeps the division finite, bars stay visible.
        {"quiet", 600, 30, quiet, 0.05, 200, {{0, 1.5}, {100, 1.5}, {199, 1.5}}},
        // 200 bars over two half-second windows: bars inside one window read only it.
        {"within", 600, 1.0, {0.25f, 1.0f}, 0.5, 200, {{0, curve(0.25)}, {150, full}, {199, full}}},
        // Levels stop after 0.2 s of 10 s; later bars keep reading the last window.
        {"past", 300, 10.0, {0.0f, 0.0f, 0.0f, 0.5f}, 0.05, 100, {{0, 1.5}, {1, full}, {99, full}}},
        // A bar spanning many windows takes their loudest.
        {"many", 30, 1.0, oneLoud, 0.05, 10, {{0, full}, {1, curve(0.1 / 0.9)}, {9, curve(0.5)}}},
        {"no duration", 600, 0.0, {0.5f}, 0.05, 0, {}},
        {"no levels", 600, 30.0, {}, 0.05, 0, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto heights =
            barHalfHeights(c.width, H, c.duration, c.levels, c.levelWindow, peakLevel(c.levels));
        ASSERT_EQ(heights.size(), c.bars);
        for (const auto& [bar, half] : c.halves)
            EXPECT_NEAR(heights[static_cast<std::size_t>(bar)], half, 1e-5) << "bar " << bar;
    }
}

TEST(TimelineGeometry, BarCountIsAThirdOfTheWidth)
{
    const std::vector<std::pair<double, int>> cases = {{0, 1},   {2, 1},     {5, 1},    {6, 2},
                                                       {8.9, 2}, {600, 200}, {601, 200}};
    for (const auto& [width, bars] : cases)
        EXPECT_EQ(barCount(width), bars) << width;
}

TEST(TimelineGeometry, BarKindsPreferGivenBackThenKeptThenCut)
{
    // 100 bars over 10 s: bar i covers 0.1 i .. 0.1 i + 0.1, decided at its middle.
    const std::vector<Segment> silences = {{3.0, 4.0}, {6.0, 7.0}};
    const std::vector<Segment> keeps = {{0.0, 3.2}, {3.8, 6.2}, {6.8, 10.0}};
    // The pause at 3..4 is given back; after re-planning its keep runs straight through it.
    const std::vector<Segment> replanned = {{0.0, 6.2}, {6.8, 10.0}};
    const auto givenBackSpan = givenBackSpans(silences, {0});
    using enum BarKind;
    const std::pair<std::size_t, BarKind> expected[] = {
        {10, kept}, {30, givenBack}, {35, givenBack}, {39, givenBack}, {40, kept},
        {62, cut},  {67, cut},       {68, kept},      {99, kept}};
    for (const auto& plan : {keeps, replanned}) {
        const auto kinds = barKinds(300, 10.0, plan, givenBackSpan);
        ASSERT_EQ(kinds.size(), 100u);
        for (const auto& [bar, kind] : expected)
            EXPECT_EQ(kinds[bar], kind) << bar;
    }
}

TEST(TimelineGeometry, BarKindsHandleManyShortSpansInOnePass)
{
    // Spans much shorter than a bar: the cursor must skip the ones a bar's middle passed.
    // Bar middles fall at 0.5, 1.5, ...: inside the spans centred on every 0.01 s, between
    // the spans shifted by half a step.
    std::vector<Segment> centred;
    std::vector<Segment> shifted;
    for (int i = 0; i < 1000; ++i) {
        centred.push_back({i * 0.01 - 0.002, i * 0.01 + 0.002});
        shifted.push_back({i * 0.01 + 0.003, i * 0.01 + 0.007});
    }
    const auto kept = barKinds(30, 10.0, centred, {});
    const auto cut = barKinds(30, 10.0, shifted, {});
    ASSERT_EQ(kept.size(), 10u);
    ASSERT_EQ(cut.size(), 10u);
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(kept[i], BarKind::kept) << i;
        EXPECT_EQ(cut[i], BarKind::cut) << i;
    }
    EXPECT_EQ(barKinds(30, 0.0, centred, {}).size(), 0u);
}

TEST(TimelineGeometry, GivenBackSpansAreInTimeOrderAndIgnoreStaleIndices)
{
    const std::vector<Segment> silences = {{1, 2}, {3, 4}, {5, 6}};
    const auto spans = givenBackSpans(silences, {2, 0, 7, -1});
    EXPECT_EQ(spans, (std::vector<Segment>{{1, 2}, {5, 6}}));
}

TEST(TimelineGeometry, PauseTargetsAreAtLeastEightWideAndStartAtThePause)
{
    // 400 px for 100 s: 4 px a second.
    const std::vector<Segment> silences = {{10.0, 10.5}, {50.0, 60.0}, {99.9, 100.0}};
    const auto rects = pauseHitRects(silences, 100.0, 400.0, H);
    ASSERT_EQ(rects.size(), 3u);
    EXPECT_DOUBLE_EQ(rects[0].width(), 8.0);
    EXPECT_DOUBLE_EQ(rects[0].center().x(), 40.0 + 4.0);
    EXPECT_DOUBLE_EQ(rects[1].width(), 40.0);
    EXPECT_DOUBLE_EQ(rects[1].center().x(), 220.0);
    EXPECT_DOUBLE_EQ(rects[1].top(), 0.0);
    EXPECT_DOUBLE_EQ(rects[1].height(), H);
    // The last one reaches past the strip's end rather than shrinking.
    EXPECT_NEAR(rects[2].left(), 399.6, 1e-9);
    EXPECT_DOUBLE_EQ(rects[2].width(), 8.0);
    EXPECT_TRUE(pauseHitRects(silences, 0.0, 400.0, H).empty());
}

TEST(TimelineGeometry, PauseLookupAgreesWithAScanOverThousandsOfPauses)
{
    // 2,500 pauses of varied length over three hours on 600 px: most targets overlap.
    std::vector<Segment> silences;
    double t = 0.3;
    for (int i = 0; i < 2500; ++i) {
        const double length = 0.3 + (i * 37 % 17) * 0.1;
        silences.push_back({t, t + length});
        t += length + 0.5 + (i * 13 % 7);
    }
    const auto rects = pauseHitRects(silences, t + 1.0, 600.0, H);
    for (double x = -1.0; x < 602.0; x += 0.37) {
        int scanned = -1;
        for (std::size_t i = 0; i < rects.size(); ++i)
            if (rects[i].left() <= x && x < rects[i].right())
                scanned = static_cast<int>(i);
        ASSERT_EQ(pauseAt(rects, x), scanned) << x;
    }
    EXPECT_EQ(pauseAt({}, 10.0), -1);
}

TEST(TimelineGeometry, PlayheadStaysInsideTheStrip)
{
    struct Case {
        double playhead, duration, width, x;
    };
    const std::vector<Case> cases = {{0, 10, 300, 0},    {5, 10, 300, 150},  {9.95, 10, 300, 297},
                                     {10, 10, 300, 297}, {25, 10, 300, 297}, {-2, 10, 300, 0},
                                     {5, 0, 300, 0},     {1, 10, 2, 0}};
    for (const Case& c : cases) {
        EXPECT_DOUBLE_EQ(playheadX(c.playhead, c.duration, c.width), c.x)
            << c.playhead << " of " << c.duration << " on " << c.width;
        const QRectF head = playheadRect(c.playhead, c.duration, c.width, H);
        EXPECT_DOUBLE_EQ(head.width(), 3.0);
        EXPECT_DOUBLE_EQ(head.height(), H);
    }
}

TEST(TimelineGeometry, DragNeedsTenPixelsAndSeeksWithinTheRecording)
{
    EXPECT_FALSE(isDrag({100, 20}, {109.9, 20}));
    EXPECT_FALSE(isDrag({100, 20}, {100, 20}));
    EXPECT_TRUE(isDrag({100, 20}, {110, 20}));
    EXPECT_TRUE(isDrag({100, 20}, {94, 28}));
    const std::vector<std::pair<double, double>> fractions = {
        {-20, 0.0}, {0, 0.0}, {150, 0.25}, {600, 1.0}, {900, 1.0}};
    for (const auto& [x, fraction] : fractions)
        EXPECT_DOUBLE_EQ(dragFraction(x, 600), fraction) << x;
    EXPECT_DOUBLE_EQ(dragFraction(10, 0), 0.0);
}

} // namespace
