#include "ModelTestFixture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>

namespace {

using Phase = AppModel::Phase;

// The tone fixture with no padding: kept spans (1, 4) and (6, 9) of 30 s.
class PreviewTest : public ModelTest {
protected:
    void SetUp() override
    {
        ModelTest::SetUp();
        makeModel(withPadding(0.0));
        ASSERT_TRUE(loadAndWait(Recordings::toneWithGaps()));
        ASSERT_EQ(m_model->phase(), Phase::ready);
        const std::vector<Segment>& keeps = m_model->analysis()->keeps;
        ASSERT_EQ(keeps.size(), 2u);
        ASSERT_NEAR(keeps[0].start, 1.0, 1e-9);
        ASSERT_NEAR(keeps[0].end, 4.0, 1e-9);
        ASSERT_NEAR(keeps[1].start, 6.0, 1e-9);
        ASSERT_NEAR(keeps[1].end, 9.0, 1e-9);
        ASSERT_NEAR(m_model->analysis()->duration, 30.0, 1e-3);
    }

    // The player plays or not, and the model has heard of it.
    void setPlaying(bool playing)
    {
        m_player->setPlaying(playing);
        ASSERT_TRUE(waitUntil([&] { return m_model->isPlaying() == playing; }));
        m_player->seeks.clear();
        m_player->pauses = 0;
    }
};

struct TickCase {
    double time;
    double playhead;
    std::optional<double> seek;
    bool pauses;
};

TEST_F(PreviewTest, TicksWhilePlayingSkipTheRemovedPauses)
{
    // clang-format off
    const TickCase cases[] = {
        {0.5,   1.0,   1.0, false}, // before the first kept span
        {0.975, 0.975, {},  false}, // within the tolerance before a start
        {2.5,   2.5,   {},  false},
        {4.02,  4.02,  {},  false}, // within the tolerance after an end
        {4.05,  6.0,   6.0, false}, // past it: on to the next kept span
        {5.98,  5.98,  {},  false},
        {9.02,  9.02,  {},  false},
        {9.05,  9.05,  {},  true},  // after the last kept span
        {29.0,  29.0,  {},  true},
    };
    // clang-format on
    for (const TickCase& c : cases) {
        setPlaying(true);
        m_player->report(c.time);
        EXPECT_DOUBLE_EQ(m_model->playhead(), c.playhead) << c.time;
        if (c.seek) {
            ASSERT_EQ(m_player->seeks.size(), 1u) << c.time;
            EXPECT_DOUBLE_EQ(m_player->seeks.front(), *c.seek) << c.time;
        } else {
            EXPECT_TRUE(m_player->seeks.empty()) << c.time;
        }
        EXPECT_EQ(m_player->pauses, c.pauses ? 1 : 0) << c.time;
    }
}

// Ticks that only move the playhead: while paused, with skipping off, a pause given back, or
// a time that is no time.
TEST_F(PreviewTest, OtherTicksOnlyMoveThePlayhead)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* what;
        bool playing;
        bool skip;
        int givenBack;
        double time;
        double playhead;
    } rows[] = {
        {"paused", false, true, -1, 4.05, 4.05},
        {"not skipping", true, false, -1, 0.5, 0.5},
        {"not skipping, between spans", true, false, -1, 4.05, 4.05},
        {"not skipping, after the last", true, false, -1, 9.05, 9.05},
        {"given back", true, true, 1, 5.0, 5.0},
        {"not a number", true, true, -1, nan, 2.0},
        {"infinite", true, true, -1, infinity, 2.0},
        {"minus infinite", true, true, -1, -infinity, 2.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        m_model->setSkipPausesInPreview(row.skip);
        m_model->resetSilenceOverrides();
        if (row.givenBack >= 0)
            m_model->toggleSilence(row.givenBack);
        m_model->seek(2.0);
        setPlaying(row.playing);
        m_player->report(row.time);
        EXPECT_EQ(m_model->playhead(), row.playhead);
        EXPECT_TRUE(m_player->seeks.empty());
        EXPECT_EQ(m_player->pauses, 0);
    }
}

TEST_F(PreviewTest, ThePlayStateFollowsThePlayerOneTurnLater)
{
    EXPECT_FALSE(m_model->isPlaying());
    m_player->setPlaying(true);
    EXPECT_FALSE(m_model->isPlaying());
    ASSERT_TRUE(waitUntil([this] { return m_model->isPlaying(); }));
    m_player->setPlaying(false);
    ASSERT_TRUE(waitUntil([this] { return !m_model->isPlaying(); }));
}

// Play from near the end starts over at the first kept span; anywhere else it plays on, and
// while playing it pauses. A seek shows on the playhead at once.
TEST_F(PreviewTest, PlayStartsOverOnlyNearTheEnd)
{
    const struct {
        double from;
        bool playing;
        std::vector<double> seeks;
        int plays;
        int pauses;
    } rows[] = {
        {29.95, false, {1.0}, 1, 0},
        {29.8, false, {}, 1, 0},
        {12.5, true, {}, 0, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.from);
        m_model->seek(row.from);
        EXPECT_EQ(m_model->playhead(), row.from);
        EXPECT_EQ(m_player->seeks.back(), row.from);
        setPlaying(row.playing);
        m_player->plays = 0;
        m_player->pauses = 0;
        m_model->togglePlayback();
        EXPECT_EQ(m_player->seeks, row.seeks);
        EXPECT_EQ(m_model->playhead(), row.seeks.empty() ? row.from : row.seeks.front());
        EXPECT_EQ(m_player->plays, row.plays);
        EXPECT_EQ(m_player->pauses, row.pauses);
    }
}

TEST_F(PreviewTest, ClearStopsThePreview)
{
    setPlaying(true);
    m_model->clear();
    EXPECT_GE(m_player->pauses, 1);
    EXPECT_EQ(m_player->clears, 1);
    ASSERT_TRUE(waitUntil([this] { return !m_model->isPlaying(); }));
}

} // namespace
