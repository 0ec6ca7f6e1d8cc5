#include "PausePlanner.h"
#include "TidleEngine.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr float loud = 0.5f;
constexpr float quiet = 0.001f;

// Levels written one character a window: '#' loud, '.' quiet, 't' exactly at the threshold,
// 'b' just below it, 'n' not a number.
std::vector<float> levels(const std::string& windows)
{
    const float threshold = quietThreshold(-35.0);
    std::vector<float> result;
    for (char c : windows) {
        result.push_back(c == '#'   ? loud
                         : c == '.' ? quiet
                         : c == 't' ? threshold
                         : c == 'b' ? std::nextafter(threshold, 0.0f)
                                    : std::numeric_limits<float>::quiet_NaN());
    }
    return result;
}

TEST(FindSilences, findsQuietRunsOfAtLeastMinPause)
{
    const struct {
        const char* levels;
        double window, minPause, duration;
        std::vector<Segment> expected;
    } rows[] = {
        {"###....###", 0.1, 0.2, 1.0, {{0.3, 0.7}}},
        {"###....###", 0.1, 0.5, 1.0, {}},           // shorter than the minimum
        {"###....###", 0.5, 2.0, 5.0, {{1.5, 3.5}}}, // exactly the minimum
        {"###.###", 0.1, 0.2, 0.7, {}},              // one quiet window is too short
        {"##...", 0.1, 0.2, 0.47, {{0.2, 0.47}}},    // a trailing pause ends at the duration
        {"##...", 0.1, 0.3, 0.45, {}},               // and is measured to it
        {"..........", 0.1, 0.5, 1.0, {{0.0, 1.0}}},
        {"##..t..##", 0.1, 0.3, 0.9, {}},
        {"##..b..##", 0.1, 0.3, 0.9, {{0.2, 0.7}}},
        {"#...n...#", 0.1, 0.3, 0.9, {{0.1, 0.4}, {0.5, 0.8}}},
        {"", 0.05, 0.6, 10.0, {}},
        {"....#....#", 0.1, 0.3, 1.0, {{0.0, 0.4}, {0.5, 0.9}}},
    };
    for (std::size_t r = 0; r < std::size(rows); ++r) {
        SCOPED_TRACE(testing::Message() << "row " << r);
        const auto& row = rows[r];
        const auto found =
            findSilences(levels(row.levels), row.window, -35.0, row.minPause, row.duration);
        ASSERT_EQ(found.size(), row.expected.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_NEAR(found[i].start, row.expected[i].start, 1e-12) << "pause " << i;
            EXPECT_NEAR(found[i].end, row.expected[i].end, 1e-12) << "pause " << i;
        }
    }
}

TEST(FindSilencesTimes, areIndexTimesWindowWithoutDrift)
{
    // An hour of levels: adding 0.05 step by step would drift away from index × window.
    const std::size_t n = 72000;
    std::vector<float> levels(n, loud);
    const std::size_t start = 61237, end = 61260;
    std::fill(levels.begin() + start, levels.begin() + end, quiet);
    const auto found = findSilences(levels, 0.05, -35.0, 0.6, 3600.0);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].start, static_cast<double>(start) * 0.05);
    EXPECT_EQ(found[0].end, static_cast<double>(end) * 0.05);
}

TEST(QuietThreshold, isComputedInDoubleThenNarrowed)
{
    EXPECT_EQ(quietThreshold(-35.0), static_cast<float>(std::pow(10.0, -35.0 / 20.0)));
    EXPECT_NEAR(quietThreshold(-35.0), 0.0177828, 1e-7);
}

// Keeps are what the pauses leave once each is shrunk by the padding.
TEST(KeepSegments, keepTheComplementOfThePaddedCuts)
{
    const struct {
        std::vector<Segment> silences;
        double duration, padding;
        std::vector<Segment> expected;
        double minKeep = 0.05;
    } rows[] = {
        {{{3, 6}}, 10, 0, {{0, 3}, {6, 10}}},
        {{{3, 6}}, 10, 0.25, {{0, 3.25}, {5.75, 10}}},
        {{}, 10, 0.15, {{0, 10}}},
        {{{0, 10}}, 10, 0.15, {{0, 0.15}, {9.85, 10}}},
        {{{0, 10}}, 10, 0.02, {}}, // ends shorter than the shortest keep vanish
        {{{3, 3.5}}, 10, 0.25, {{0, 10}}},
        // A pause past the duration ends there, padding included.
        {{{8, 12}}, 10, 0, {{0, 8}}},
        {{{8, 12}}, 10, 0.25, {{0, 8.25}, {9.75, 10}}},
        {{{1, 2}, {2.03, 3}}, 10, 0, {{0, 1}, {3, 10}}},
        // Binary-exact lengths, so "exactly minKeep" is exact.
        {{{1, 2}, {2.25, 3}}, 10, 0, {{0, 1}, {2, 2.25}, {3, 10}}, 0.25},
        {{{1, 9.75}}, 10, 0, {{0, 1}, {9.75, 10}}, 0.25},
        {{{0, 4}}, 10, 0.25, {{0, 0.25}, {3.75, 10}}, 0.25},
        {{{1, 5}, {2, 3}}, 10, 0, {{0, 1}, {5, 10}}}, // the cursor never moves back
        {{}, 0.04, 0.15, {}},
    };
    for (std::size_t r = 0; r < std::size(rows); ++r) {
        SCOPED_TRACE(testing::Message() << "row " << r);
        const auto& row = rows[r];
        const auto keeps =
            TidleEngine::keepSegments(row.silences, row.duration, row.padding, row.minKeep);
        ASSERT_EQ(keeps.size(), row.expected.size());
        for (std::size_t i = 0; i < keeps.size(); ++i) {
            EXPECT_NEAR(keeps[i].start, row.expected[i].start, 1e-12) << "keep " << i;
            EXPECT_NEAR(keeps[i].end, row.expected[i].end, 1e-12) << "keep " << i;
        }
    }
}

} // namespace
