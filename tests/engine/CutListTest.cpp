#include "CutList.h"
#include "CutCursor.h"

#include <gtest/gtest.h>

namespace {

TEST(CutList, roundsStartsAndLengthsToSixHundredthsAndSumsLengthsExactly)
{
    // 1.0004 s rounds to 600 ticks, its length 1.4999 s to 900; 4.0012 s to 2401 and the
    // length 1.9996 s to 1200, placed at the exact sum 900 however the second start rounds.
    const CutList list = CutList::fromKeeps({{1.0004, 2.5003}, {4.0012, 6.0008}});
    ASSERT_EQ(list.cuts().size(), 2u);
    EXPECT_EQ(list.cuts()[0], (Cut{600, 1500, 0}));
    EXPECT_EQ(list.cuts()[1], (Cut{2401, 3601, 900}));
    EXPECT_EQ(list.outputLength(), 2100);
    EXPECT_EQ(list.sourceEnd(), 3601);
}

TEST(CutList, dropsKeepsThatRoundToNothingAndClampsNegativeStarts)
{
    const CutList list = CutList::fromKeeps({{-0.5, 0.5}, {1.0, 1.0004}, {2.0, 3.0}});
    ASSERT_EQ(list.cuts().size(), 2u);
    EXPECT_EQ(list.cuts()[0], (Cut{0, 600, 0}));
    EXPECT_EQ(list.cuts()[1], (Cut{1200, 1800, 600}));
}

TEST(CutList, rescalesToSamplesWithoutDriftAtJoins)
{
    // At 44.1 kHz a 1/600 s tick is 73.5 samples: lengths rounded on their own would drift
    // by half a sample per cut; rounding output bounds keeps every join in place.
    std::vector<Segment> keeps;
    for (int i = 0; i < 200; ++i)
        keeps.push_back({i * 1.0, i * 1.0 + 1.0 / 600});
    const CutList samples = CutList::fromKeeps(keeps).rescaled({1, 44100}, 1000);
    ASSERT_EQ(samples.cuts().size(), 200u);
    for (std::size_t i = 0; i < samples.cuts().size(); ++i) {
        const Cut& cut = samples.cuts()[i];
        EXPECT_NEAR(double(cut.outputStart), i * 73.5, 0.5) << i;
        EXPECT_EQ(cut.sourceStart, 1000 + std::int64_t(i) * 44100) << i;
        if (i + 1 < samples.cuts().size()) {
            EXPECT_EQ(cut.outputEnd(), samples.cuts()[i + 1].outputStart) << i;
        }
    }
    EXPECT_EQ(samples.outputLength(), 14700);
}

// Cuts: source [100, 200) at 0 and [300, 400) at 100. Each row feeds its pieces in order.
TEST(CutCursor, keepsTheOverlapOfEachPieceWithTheCuts)
{
    const struct {
        std::vector<std::pair<int64_t, int64_t>> pieces;
        std::vector<std::vector<Cut>> expected; // kept parts of each piece
    } rows[] = {
        // Frames of forty ticks.
        {{{80, 120}, {120, 160}, {160, 200}, {200, 240}, {280, 320}, {360, 400}, {400, 440}},
         {{{100, 120, 0}},
          {{120, 160, 20}},
          {{160, 200, 60}},
          {},
          {{300, 320, 100}},
          {{360, 400, 160}},
          {}}},
        {{{0, 500}}, {{{100, 200, 0}, {300, 400, 100}}}},
        {{{210, 290}}, {{}}},               // inside the pause
        {{{199, 240}}, {{{199, 200, 99}}}}, // from the last tick of a cut
        {{{310, 320}}, {{{310, 320, 110}}}},
    };
    for (std::size_t r = 0; r < std::size(rows); ++r) {
        CutCursor cursor(CutList({1, 1000}, {{100, 200, 0}, {300, 400, 100}}));
        for (std::size_t i = 0; i < rows[r].pieces.size(); ++i) {
            const auto [start, end] = rows[r].pieces[i];
            EXPECT_EQ(cursor.keptParts(start, end), rows[r].expected[i]) << r << ", " << i;
        }
    }
}

TEST(CutCursor, isPastTheEndOnlyFromTheLastCutsEnd)
{
    const CutCursor cursor(CutList({1, 1000}, {{100, 200, 0}, {300, 400, 100}}));
    EXPECT_FALSE(cursor.pastEnd(399));
    EXPECT_TRUE(cursor.pastEnd(400));
}

} // namespace
