#include "CutEvent.h"

#include <gtest/gtest.h>
#include <random>

TEST(CutEvent, leavesOutKeepsThatRoundToNoFrame)
{
    const std::vector<CutEvent> events =
        CutEvent::fromKeeps({{0.0, 1.0}, {2.0, 2.01}, {3.0, 4.0}}, {25, false});
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[1], (CutEvent{75, 100, 25, 50}));
}

TEST(CutEvent, neighboursNeverOverlapAndTheRecordSideHasNoGaps)
{
    std::mt19937 random(17);
    std::uniform_real_distribution<double> step(0.01, 0.7);
    for (const TimecodeRate rate :
         {TimecodeRate{30, true}, TimecodeRate{24, true}, TimecodeRate{10, false}}) {
        std::vector<Segment> keeps;
        double t = 0.0;
        for (int i = 0; i < 400; ++i) {
            const double start = t + step(random);
            const double end = start + step(random);
            keeps.push_back({start, end});
            t = end;
        }
        const std::vector<CutEvent> events = CutEvent::fromKeeps(keeps, rate);
        qint64 record = 0;
        qint64 sourceEnd = 0;
        for (const CutEvent& event : events) {
            EXPECT_GT(event.length(), 0);
            EXPECT_GE(event.sourceIn, sourceEnd);
            EXPECT_EQ(event.recordIn, record);
            EXPECT_EQ(event.recordOut - event.recordIn, event.length());
            record = event.recordOut;
            sourceEnd = event.sourceOut;
        }
    }
}
