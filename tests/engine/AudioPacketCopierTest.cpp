#include "AudioPacketCopier.h"

#include <gtest/gtest.h>

namespace {

// Packets of 100 ticks; spans [1000, 2000) at 0 and [3050, 4000) at 1000.
AudioPacketCopier copier()
{
    return AudioPacketCopier(CutList({1, 1000}, {{1000, 2000, 0}, {3050, 4000, 1000}}));
}

TEST(AudioPacketCopier, takesThePacketsWhoseMiddleLiesInASpan)
{
    AudioPacketCopier sound = copier();
    EXPECT_FALSE(sound.place(900, 100));
    EXPECT_EQ(sound.place(1000, 100), 0);
    EXPECT_EQ(sound.place(1900, 100), 900);
    EXPECT_FALSE(sound.place(2000, 100));
    // Middle 3050: in. Middle 2950: out.
    EXPECT_FALSE(sound.place(2900, 100));
    EXPECT_EQ(sound.place(3000, 100), 1000);
}

TEST(AudioPacketCopier, keepsDistanceToTheSpanStartAndShiftsOnlyToAvoidOverlap)
{
    AudioPacketCopier sound = copier();
    // Packets on a grid offset by 40: the first span's last packet (1940) ends at 1040 on
    // the output; the second span's first packet (3040, middle 3090) would start at 990,
    // so the span moves later by 50, and only that span.
    for (int64_t pts = 1040; pts < 2000; pts += 100)
        sound.place(pts, 100);
    EXPECT_EQ(sound.place(3040, 100), 1040);
    EXPECT_EQ(sound.place(3140, 100), 1140);
}

TEST(AudioPacketCopier, endsAfterTheLastSpan)
{
    const AudioPacketCopier sound = copier();
    EXPECT_FALSE(sound.pastEnd(3999));
    EXPECT_TRUE(sound.pastEnd(4000));
}

} // namespace
