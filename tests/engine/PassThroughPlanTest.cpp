#include "PassThroughPlan.h"

#include <gtest/gtest.h>

namespace {

// A 10 fps stream in 1/1000 s: 100 ticks per frame, a keyframe every `gop` frames, and
// with `reorder` each P picture decoded before the B pictures it precedes on screen
// (decode order I P B B P B B ..., dts running `reorder` frames behind pts).
std::vector<VideoPacketTiming> stream(int frames, int gop, bool reorder)
{
    std::vector<VideoPacketTiming> packets;
    for (int decoded = 0; decoded < frames; ++decoded) {
        int shown = decoded;
        if (reorder && decoded % gop != 0) {
            // Within a GOP: decode order 0, 3, 1, 2, 6, 4, 5, ...
            const int inGop = decoded % gop;
            const int group = (inGop - 1) / 3;
            const int position = (inGop - 1) % 3;
            const int base = decoded - inGop;
            const int anchor = std::min(base + group * 3 + 3, base + gop - 1);
            shown = position == 0 ? anchor : anchor - 3 + position;
        }
        const int64_t delay = reorder ? 200 : 0;
        packets.push_back({decoded * 100 - delay, shown * 100, 100, decoded % gop == 0});
    }
    return packets;
}

CutList cuts(std::vector<Cut> list)
{
    return {{1, 1000}, std::move(list)};
}

TEST(PassThroughPlan, startsEachSpanAtTheKeyframeAtOrBeforeTheCut)
{
    // Keyframes every 1 s; cuts at 1.3-2.2 s and 4.0-6.0 s (the second on a keyframe).
    const auto packets = stream(100, 10, false);
    const PassThroughPlan plan(packets, cuts({{1300, 2200, 0}, {4000, 6000, 900}}));
    ASSERT_EQ(plan.spans().size(), 2u);
    EXPECT_EQ(plan.spans()[0].cut, (Cut{1000, 2200, 0}));
    EXPECT_EQ(plan.spans()[1].cut, (Cut{4000, 6000, 1200}));
    EXPECT_EQ(plan.spans()[0].firstDts, 1000);
    EXPECT_EQ(plan.spans()[0].lastDts, 2100);
    EXPECT_EQ(plan.spans()[1].firstDts, 4000);
    EXPECT_EQ(plan.spans()[1].lastDts, 5900);
}

TEST(PassThroughPlan, mergesSpansThatOverlapOnceSnapped)
{
    // The second cut snaps back to 2.0 s, inside the first span.
    const auto packets = stream(100, 10, false);
    const PassThroughPlan plan(packets, cuts({{1000, 2500, 0}, {2700, 3200, 1500}}));
    ASSERT_EQ(plan.spans().size(), 1u);
    EXPECT_EQ(plan.spans()[0].cut, (Cut{1000, 3200, 0}));
    EXPECT_EQ(plan.spans()[0].lastDts, 3100);
}

TEST(PassThroughPlan, stretchesTheEndOverPicturesDecodedBeforeIt)
{
    // With reordering the P picture shown at 2.3 s is decoded before the B pictures shown
    // at 2.1 and 2.2 s; cutting at 2.2 s needs it, and the span runs until it has been shown.
    const auto packets = stream(100, 10, true);
    const PassThroughPlan plan(packets, cuts({{1300, 2200, 0}}));
    ASSERT_EQ(plan.spans().size(), 1u);
    const CopySpan& span = plan.spans()[0];
    EXPECT_EQ(span.cut.sourceStart, 1000);
    int64_t shownEnd = 0;
    for (const auto& packet : packets) {
        if (span.copiesVideoPacket(packet.dts, packet.pts))
            shownEnd = std::max(shownEnd, packet.pts + packet.duration);
        // Every picture shown before the cut's end is copied.
        if (packet.pts >= 1000 && packet.pts < 2200) {
            EXPECT_TRUE(span.copiesVideoPacket(packet.dts, packet.pts)) << packet.pts;
        }
    }
    EXPECT_EQ(span.cut.sourceEnd, shownEnd);
    EXPECT_GE(span.cut.sourceEnd, 2200);
}

TEST(PassThroughPlan, neverLeavesAHoleAmongThePicturesItCopies)
{
    // A B-pyramid: the picture shown at 0.4 s is decoded second, then 0.2, 0.1 and 0.3 s.
    // A cut ending at 0.15 s takes the packets decoded before then (0, 0.4, 0.2, 0.1 s);
    // without 0.3 s the copy would show 0.2 s, skip a picture and show 0.4 s.
    const std::vector<VideoPacketTiming> packets = {{-200, 0, 100, true},   {-100, 400, 100, false},
                                                    {0, 200, 100, false},   {100, 100, 100, false},
                                                    {200, 300, 100, false}, {300, 500, 100, true},
                                                    {400, 600, 100, false}};
    const PassThroughPlan plan(packets, cuts({{0, 150, 0}}));
    ASSERT_EQ(plan.spans().size(), 1u);
    const CopySpan& span = plan.spans()[0];
    EXPECT_EQ(span.lastDts, 200);
    EXPECT_EQ(span.cut.sourceEnd, 500);
    EXPECT_FALSE(span.copiesVideoPacket(300, 500));
}

TEST(PassThroughPlan, dropsPicturesShownBeforeTheKeyframeTheyFollow)
{
    // Open GOP: two leading B pictures decoded after the keyframe at 1.0 s but shown
    // before it; they reference the previous GOP, which is not copied.
    std::vector<VideoPacketTiming> packets = {
        {0, 0, 100, true},       {100, 100, 100, false},  {200, 200, 100, false},
        {300, 300, 100, false},  {400, 400, 100, false},  {500, 500, 100, false},
        {600, 600, 100, false},  {700, 900, 100, false},  {800, 1000, 100, true},
        {900, 700, 100, false},  {1000, 800, 100, false}, {1100, 1100, 100, false},
        {1200, 1200, 100, false}};
    const PassThroughPlan plan(packets, cuts({{1050, 1200, 0}}));
    ASSERT_EQ(plan.spans().size(), 1u);
    const CopySpan& span = plan.spans()[0];
    EXPECT_EQ(span.cut.sourceStart, 1000);
    EXPECT_TRUE(span.copiesVideoPacket(800, 1000));
    EXPECT_FALSE(span.copiesVideoPacket(900, 700));
    EXPECT_FALSE(span.copiesVideoPacket(1000, 800));
    EXPECT_TRUE(span.copiesVideoPacket(1100, 1100));
    EXPECT_FALSE(span.copiesVideoPacket(1200, 1200));
}

TEST(PassThroughPlan, doesNotSnapBeyondTheEndOfTheVideo)
{
    // Video for 2 s, sound longer: a cut at 5-6 s stays as it is and copies no video.
    const auto packets = stream(20, 10, false);
    const PassThroughPlan plan(packets, cuts({{500, 900, 0}, {5000, 6000, 400}}));
    ASSERT_EQ(plan.spans().size(), 2u);
    EXPECT_EQ(plan.spans()[0].cut, (Cut{0, 900, 0}));
    EXPECT_EQ(plan.spans()[1].cut, (Cut{5000, 6000, 900}));
    EXPECT_TRUE(plan.spans()[0].hasVideo());
    EXPECT_FALSE(plan.spans()[1].hasVideo());
}

TEST(PassThroughPlan, withoutVideoKeepsTheCutsAsTheyAre)
{
    const PassThroughPlan plan({}, cuts({{100, 200, 0}, {300, 400, 100}}));
    EXPECT_EQ(plan.cutList().cuts(), (std::vector<Cut>{{100, 200, 0}, {300, 400, 100}}));
}

TEST(PassThroughPlan, outputPositionsAreTheRunningSumOfSpanLengths)
{
    const auto packets = stream(100, 10, false);
    const PassThroughPlan plan(packets,
                               cuts({{1300, 2200, 0}, {4100, 5000, 900}, {7500, 8000, 1800}}));
    const CutList list = plan.cutList();
    ASSERT_EQ(list.cuts().size(), 3u);
    EXPECT_EQ(list.cuts()[0].outputStart, 0);
    EXPECT_EQ(list.cuts()[1].outputStart, list.cuts()[0].length());
    EXPECT_EQ(list.cuts()[2].outputStart, list.cuts()[1].outputEnd());
}

} // namespace
