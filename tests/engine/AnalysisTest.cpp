#include "Analysis.h"

#include <gtest/gtest.h>

TEST(Analysis, keptSecondsSumTheKeepsAndRemovedSecondsAreNeverNegative)
{
    const struct {
        double duration;
        std::vector<Segment> keeps;
        double kept;
        double removed;
    } rows[] = {
        {10.0, {{0.0, 3.0}, {6.0, 10.0}}, 7.0, 3.0},
        {10.0, {{0.0, 10.0}}, 10.0, 0.0},
        {10.0, {}, 0.0, 10.0},
        // Keeps a little past a length that was only estimated.
        {10.0, {{0.0, 10.5}}, 10.5, 0.0},
    };
    for (const auto& row : rows) {
        Analysis analysis;
        analysis.duration = row.duration;
        analysis.keeps = row.keeps;
        EXPECT_DOUBLE_EQ(analysis.keptSeconds(), row.kept) << row.kept;
        EXPECT_DOUBLE_EQ(analysis.removedSeconds(), row.removed) << row.kept;
    }
}
