#include "PausePlanner.h"
#include "TidleEngine.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr float loud = 0.5f;
constexpr float quiet = 0.001f;

std::vector<float> series(std::initializer_list<std::pair<float, int>> runs)
{
    std::vector<float> levels;
    for (auto [level, count] : runs)
        levels.insert(levels.end(), count, level);
    return levels;
}

struct SilenceCase {
    const char* name;
    std::vector<float> levels;
    double window;
    double minPause;
    double duration;
    std::vector<Segment> expected;
};

void PrintTo(const SilenceCase& c, std::ostream* out)
{
    *out << c.name;
}

class FindSilences : public testing::TestWithParam<SilenceCase> {};

TEST_P(FindSilences, findsQuietRunsOfAtLeastMinPause)
{
    const SilenceCase& c = GetParam();
    const auto found = findSilences(c.levels, c.window, -35.0, c.minPause, c.duration);
    ASSERT_EQ(found.size(), c.expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_NEAR(found[i].start, c.expected[i].start, 1e-12) << "pause " << i;
        EXPECT_NEAR(found[i].end, c.expected[i].end, 1e-12) << "pause " << i;
    }
}

const float threshold = quietThreshold(-35.0);
const float belowThreshold = std::nextafter(threshold, 0.0f);
const float nan = std::numeric_limits<float>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Table, FindSilences,
    testing::Values(
        SilenceCase{
            "middleRun", series({{loud, 3}, {quiet, 4}, {loud, 3}}), 0.1, 0.2, 1.0, {{0.3, 0.7}}},
        SilenceCase{"runShorterThanMinPause",
                    series({{loud, 3}, {quiet, 4}, {loud, 3}}),
                    0.1,
                    0.5,
                    1.0,
                    {}},
        SilenceCase{"runExactlyMinPauseCounts",
                    series({{loud, 3}, {quiet, 4}, {loud, 3}}),
                    0.5,
                    2.0,
                    5.0,
                    {{1.5, 3.5}}},
        SilenceCase{"singleQuietWindowTooShort",
                    series({{loud, 3}, {quiet, 1}, {loud, 3}}),
                    0.1,
                    0.2,
                    0.7,
                    {}},
        SilenceCase{"trailingRunEndsAtDuration",
                    series({{loud, 2}, {quiet, 3}}),
                    0.1,
                    0.2,
                    0.47,
                    {{0.2, 0.47}}},
        SilenceCase{
            "trailingRunTooShortForDuration", series({{loud, 2}, {quiet, 3}}), 0.1, 0.3, 0.45, {}},
        SilenceCase{"wholeSeriesQuiet", series({{quiet, 10}}), 0.1, 0.5, 1.0, {{0.0, 1.0}}},
        SilenceCase{"levelEqualToThresholdIsLoud",
                    series({{loud, 2}, {quiet, 2}, {threshold, 1}, {quiet, 2}, {loud, 2}}),
                    0.1,
                    0.3,
                    0.9,
                    {}},
        SilenceCase{"levelJustBelowThresholdIsQuiet",
                    series({{loud, 2}, {quiet, 2}, {belowThreshold, 1}, {quiet, 2}, {loud, 2}}),
                    0.1,
                    0.3,
                    0.9,
                    {{0.2, 0.7}}},
        SilenceCase{"notANumberIsLoud",
                    series({{loud, 1}, {quiet, 3}, {nan, 1}, {quiet, 3}, {loud, 1}}),
                    0.1,
                    0.3,
                    0.9,
                    {{0.1, 0.4}, {0.5, 0.8}}},
        SilenceCase{"emptySeries", {}, 0.05, 0.6, 10.0, {}},
        SilenceCase{"twoPausesSeparatedByOneLoudWindow",
                    series({{quiet, 4}, {loud, 1}, {quiet, 4}, {loud, 1}}),
                    0.1,
                    0.3,
                    1.0,
                    {{0.0, 0.4}, {0.5, 0.9}}}),
    [](const testing::TestParamInfo<SilenceCase>& info) { return std::string(info.param.name); });

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

struct KeepCase {
    const char* name;
    std::vector<Segment> silences;
    double duration;
    double padding;
    std::vector<Segment> expected;
    double minKeep = 0.05;
};

void PrintTo(const KeepCase& c, std::ostream* out)
{
    *out << c.name;
}

class KeepSegments : public testing::TestWithParam<KeepCase> {};

TEST_P(KeepSegments, keepTheComplementOfThePaddedCuts)
{
    const KeepCase& c = GetParam();
    const auto keeps = TidleEngine::keepSegments(c.silences, c.duration, c.padding, c.minKeep);
    ASSERT_EQ(keeps.size(), c.expected.size());
    for (std::size_t i = 0; i < keeps.size(); ++i) {
        EXPECT_NEAR(keeps[i].start, c.expected[i].start, 1e-12) << "keep " << i;
        EXPECT_NEAR(keeps[i].end, c.expected[i].end, 1e-12) << "keep " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, KeepSegments,
    testing::Values(
        KeepCase{"noPadding", {{3, 6}}, 10, 0, {{0, 3}, {6, 10}}},
        KeepCase{"paddingShrinksCut", {{3, 6}}, 10, 0.25, {{0, 3.25}, {5.75, 10}}},
        KeepCase{"noPausesKeepsAll", {}, 10, 0.15, {{0, 10}}},
        KeepCase{"wholeFilePauseKeepsPaddedEnds", {{0, 10}}, 10, 0.15, {{0, 0.15}, {9.85, 10}}},
        KeepCase{"endsShorterThanMinKeepVanish", {{0, 10}}, 10, 0.02, {}},
        KeepCase{"pauseOfTwicePaddingCutsNothing", {{3, 3.5}}, 10, 0.25, {{0, 10}}},
        KeepCase{"pauseBeyondDurationEndsAtDuration", {{8, 12}}, 10, 0, {{0, 8}}},
        KeepCase{"paddingOfAPauseBeyondDurationCountsFromDuration",
                 {{8, 12}},
                 10,
                 0.25,
                 {{0, 8.25}, {9.75, 10}}},
        KeepCase{"shortScrapBetweenPausesIsRemoved", {{1, 2}, {2.03, 3}}, 10, 0, {{0, 1}, {3, 10}}},
        // Binary-exact lengths, so "exactly minKeep" is exact.
        KeepCase{"scrapOfExactlyMinKeepIsKept",
                 {{1, 2}, {2.25, 3}},
                 10,
                 0,
                 {{0, 1}, {2, 2.25}, {3, 10}},
                 0.25},
        KeepCase{"tailOfExactlyMinKeepIsKept", {{1, 9.75}}, 10, 0, {{0, 1}, {9.75, 10}}, 0.25},
        KeepCase{"headOfExactlyMinKeepIsKept", {{0, 4}}, 10, 0.25, {{0, 0.25}, {3.75, 10}}, 0.25},
        KeepCase{"cursorNeverMovesBack", {{1, 5}, {2, 3}}, 10, 0, {{0, 1}, {5, 10}}},
        KeepCase{"emptyFileKeepsNothing", {}, 0.04, 0.15, {}}),
    [](const testing::TestParamInfo<KeepCase>& info) { return std::string(info.param.name); });

TEST(KeepSegmentsReplanning, givingBackAPauseRestoresItsSpan)
{
    auto removed = [](const std::vector<Segment>& keeps) {
        double kept = 0;
        for (const Segment& k : keeps)
            kept += k.length();
        return 20.0 - kept;
    };
    EXPECT_NEAR(removed(TidleEngine::keepSegments({{3, 6}, {12, 16}}, 20, 0, 0.05)), 7.0, 1e-9);
    EXPECT_NEAR(removed(TidleEngine::keepSegments({{12, 16}}, 20, 0, 0.05)), 4.0, 1e-9);
}

} // namespace
