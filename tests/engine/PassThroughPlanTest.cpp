#include "PassThroughPlan.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

using Kind = VideoRun::Kind;

// A 10 fps stream in 1/1000 s: 100 ticks per frame, a keyframe (and restart point) every
// `gop` frames, and with `reorder` each P picture decoded before the B pictures it precedes
// on screen (decode order I P B B P B B ...).
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
        const bool key = decoded % gop == 0;
        packets.push_back({shown * 100, 100, key, key});
    }
    return packets;
}

CutList cuts(std::vector<Cut> list)
{
    return {{1, 1000}, std::move(list)};
}

// A plan's runs as "encode 1300-2000 10-19": the kind, the source span shown, and the first
// and last packet decoded.
QStringList runsOf(const PassThroughPlan& plan)
{
    QStringList runs;
    for (const VideoRun& r : plan.runs()) {
        runs << QString("%1 %2-%3 %4-%5")
                    .arg(r.kind == Kind::encode ? "encode" : "copy")
                    .arg(r.from)
                    .arg(r.to)
                    .arg(r.first)
                    .arg(r.last);
    }
    return runs;
}

// What every exact plan must hold: for each cut, runs that tile it without gap or overlap
// at the cut's own place on the output, copies that start at a restart point and hold no
// picture outside the cut, and decode times that rise and never pass a presentation time.
void expectExactPlan(const std::vector<VideoPacketTiming>& packets, const CutList& cutList)
{
    const PassThroughPlan plan(packets, cutList, true);
    EXPECT_EQ(plan.cutList().cuts(), cutList.cuts());
    std::size_t run = 0;
    int64_t lastDecode = std::numeric_limits<int64_t>::min();
    for (const Cut& cut : cutList.cuts()) {
        int64_t covered = cut.sourceStart;
        while (run < plan.runs().size() && plan.runs()[run].from < cut.sourceEnd) {
            const VideoRun& r = plan.runs()[run++];
            EXPECT_EQ(r.from, covered);
            EXPECT_EQ(r.shift, cut.outputStart - cut.sourceStart);
            covered = r.to;
            if (r.kind == Kind::encode) {
                lastDecode = std::max(lastDecode, r.to + r.shift - plan.decodeDelay() - 1);
                continue;
            }
            EXPECT_TRUE(packets[r.first].restart);
            std::size_t copied = 0;
            for (std::size_t i = r.first; i <= r.last; ++i) {
                if (packets[i].pts < r.skipBefore)
                    continue;
                const int64_t shown = std::max(packets[i].pts, r.from) + r.shift;
                EXPECT_LT(packets[i].pts, cut.sourceEnd);
                ASSERT_LT(copied, r.decodeTimes.size());
                EXPECT_GT(r.decodeTimes[copied], lastDecode);
                EXPECT_LE(r.decodeTimes[copied], shown);
                lastDecode = r.decodeTimes[copied++];
            }
            EXPECT_EQ(copied, r.decodeTimes.size());
        }
        EXPECT_EQ(covered, cut.sourceEnd) << "cut at " << cut.sourceStart;
    }
    EXPECT_EQ(run, plan.runs().size());
}

TEST(ExactPlan, tilesEveryCutWithRunsAndKeepsDecodeTimesInOrder)
{
    const struct {
        const char* what;
        bool reorder;
        std::vector<Cut> cuts;
    } rows[] = {
        {"on keyframes", false, {{1000, 2000, 0}, {4000, 6000, 1000}}},
        {"between keyframes", false, {{1300, 2250, 0}, {4100, 6070, 950}}},
        {"within one GOP", true, {{1300, 1700, 0}, {2100, 2150, 400}}},
        {"reordered", true, {{1300, 2250, 0}, {4100, 6070, 950}}},
        {"reordered, long", true, {{50, 5550, 0}, {6020, 9990, 5500}}},
        {"past the video", true, {{9550, 12000, 0}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        expectExactPlan(stream(100, 10, row.reorder), cuts(row.cuts));
    }
}

// Decoding starts at the keyframe shown at 1.0 s and ends with the picture at 1.9 s.
TEST(ExactPlan, reencodesFromTheCutToTheNextRestartPointThenCopies)
{
    const PassThroughPlan plan(stream(100, 10, false), cuts({{1300, 2200, 0}}), true);
    EXPECT_EQ(runsOf(plan), QStringList({"encode 1300-2000 10-19", "copy 2000-2200 20-21"}));
}

// Decode order 2.0, 2.3, 2.1, 2.2 s: ending at 2.25 s, the copy can only hold 2.0 s without
// the picture at 2.3 s; those at 2.1 and 2.2 s are re-encoded, decoded from the keyframe up
// to the last of them.
TEST(ExactPlan, reencodesTheEndThatAnAnchorShownLaterHoldsBack)
{
    const PassThroughPlan plan(stream(100, 10, true), cuts({{2000, 2250, 0}}), true);
    EXPECT_EQ(runsOf(plan), QStringList({"copy 2000-2100 20-20", "encode 2100-2250 20-23"}));
}

TEST(ExactPlan, copiesFromAKeyframeVisibleAtTheCutRaisingItToTheCut)
{
    const PassThroughPlan plan(stream(100, 10, false), cuts({{2050, 2500, 0}}), true);
    EXPECT_EQ(runsOf(plan), QStringList({"copy 2050-2500 20-24"}));
}

TEST(ExactPlan, reencodesAWholeSpanWithoutARestartPoint)
{
    // Keyframes that are no restart points, as an open-GOP H.264 stream's recovery points.
    auto packets = stream(100, 10, true);
    for (std::size_t i = 1; i < packets.size(); ++i)
        packets[i].restart = false;
    const PassThroughPlan plan(packets, cuts({{1300, 4200, 0}}), true);
    ASSERT_EQ(plan.runs().size(), 1u);
    EXPECT_EQ(plan.runs()[0].kind, Kind::encode);
    // Decoding may still start at the keyframe before the cut.
    EXPECT_EQ(plan.runs()[0].first, 10u);
    expectExactPlan(packets, cuts({{1300, 4200, 0}, {5000, 5100, 2900}}));
}

TEST(ExactPlan, leavesOutPicturesShownBeforeTheRestartPointTheyFollow)
{
    // Open GOP: two leading pictures decoded after the restart point at 1.0 s but shown
    // before it; they refer to the previous GOP, which is not copied, and go to the head.
    const std::vector<VideoPacketTiming> packets = {
        {0, 100, true, true},      {100, 100, false, false}, {200, 100, false, false},
        {300, 100, false, false},  {400, 100, false, false}, {500, 100, false, false},
        {600, 100, false, false},  {900, 100, false, false}, {1000, 100, true, true},
        {700, 100, false, false},  {800, 100, false, false}, {1100, 100, false, false},
        {1200, 100, false, false}, {1300, 100, false, false}};
    const PassThroughPlan plan(packets, cuts({{650, 1250, 0}}), true);
    ASSERT_EQ(plan.runs().size(), 2u);
    EXPECT_EQ(plan.runs()[0].kind, Kind::encode);
    EXPECT_EQ(plan.runs()[0].to, 1000);
    EXPECT_EQ(plan.runs()[0].last, 10u); // the picture at 0.8 s is decoded after the keyframe
    const VideoRun& copy = plan.runs()[1];
    EXPECT_EQ(copy.first, 8u);
    EXPECT_EQ(copy.skipBefore, 1000);
    EXPECT_EQ(copy.decodeTimes.size(), 3u); // 1.0, 1.1 and 1.2 s
    expectExactPlan(packets, cuts({{650, 1250, 0}}));
}

// Without exact cuts each span starts at the restart point at or before its cut, runs on
// until every picture before its end is shown, and overlapping spans become one.
TEST(SnappedPlan, snapsCutsToRestartPointsWithinTheVideo)
{
    const struct {
        const char* what;
        std::vector<VideoPacketTiming> packets;
        std::vector<Cut> cuts;
        std::vector<Cut> snapped;
        std::vector<std::pair<std::size_t, std::size_t>> runs; // first and last packet
    } rows[] = {
        {"back to the keyframe",
         stream(100, 10, false),
         {{1300, 2200, 0}, {4000, 6000, 900}},
         {{1000, 2200, 0}, {4000, 6000, 1200}},
         {{10, 21}, {40, 59}}},
        {"overlapping once snapped",
         stream(100, 10, false),
         {{1000, 2500, 0}, {2700, 3200, 1500}},
         {{1000, 3200, 0}},
         {{10, 31}}},
        // Ending at 2.2 s needs the B picture at 2.1 s, decoded after the anchor at 2.3 s.
        {"on to the anchor",
         stream(100, 10, true),
         {{1300, 2200, 0}},
         {{1000, 2400, 0}},
         {{10, 23}}},
        // Video for 2 s, sound longer: a cut at 5-6 s stays as it is and copies no video.
        {"past the video",
         stream(20, 10, false),
         {{500, 900, 0}, {5000, 6000, 400}},
         {{0, 900, 0}, {5000, 6000, 900}},
         {{0, 8}}},
        {"no video", {}, {{100, 200, 0}, {300, 400, 100}}, {{100, 200, 0}, {300, 400, 100}}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const PassThroughPlan plan(row.packets, cuts(row.cuts), false);
        EXPECT_EQ(plan.cutList().cuts(), row.snapped);
        ASSERT_EQ(plan.runs().size(), row.runs.size());
        for (std::size_t i = 0; i < row.runs.size(); ++i) {
            EXPECT_EQ(plan.runs()[i].first, row.runs[i].first) << "run " << i;
            EXPECT_EQ(plan.runs()[i].last, row.runs[i].second) << "run " << i;
        }
    }
}

} // namespace
