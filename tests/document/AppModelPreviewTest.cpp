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
        ASSERT_TRUE(loadAndWait(DocumentFixtures::toneWithGaps()));
        ASSERT_EQ(m_model->phase(), Phase::ready);
        const std::vector<Segment>& keeps = m_model->analysis()->keeps;
        ASSERT_EQ(keeps.size(), 2u);
        ASSERT_NEAR(keeps[0].start, 1.0, 1e-9);
        ASSERT_NEAR(keeps[0].end, 4.0, 1e-9);
        ASSERT_NEAR(keeps[1].start, 6.0, 1e-9);
        ASSERT_NEAR(keeps[1].end, 9.0, 1e-9);
        ASSERT_NEAR(m_model->analysis()->duration, 30.0, 1e-3);
    }

    void startPlaying()
    {
        m_player->setPlaying(true);
        ASSERT_TRUE(waitUntil([this] { return m_model->isPlaying(); }));
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
        startPlaying();
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

TEST_F(PreviewTest, AnInvalidTimeIsIgnored)
{
    startPlaying();
    m_model->seek(2.0);
    m_player->seeks.clear();
    for (double invalid :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        m_player->report(invalid);
        EXPECT_EQ(m_model->playhead(), 2.0);
    }
    EXPECT_TRUE(m_player->seeks.empty());
    EXPECT_EQ(m_player->pauses, 0);
}

TEST_F(PreviewTest, WithoutSkippingTicksOnlyMoveThePlayhead)
{
    m_model->setSkipPausesInPreview(false);
    startPlaying();
    for (double t : {0.5, 4.05, 9.05}) {
        m_player->report(t);
        EXPECT_EQ(m_model->playhead(), t);
    }
    EXPECT_TRUE(m_player->seeks.empty());
    EXPECT_EQ(m_player->pauses, 0);
}

TEST_F(PreviewTest, WhilePausedTicksOnlyMoveThePlayhead)
{
    m_player->report(4.05);
    EXPECT_EQ(m_model->playhead(), 4.05);
    EXPECT_TRUE(m_player->seeks.empty());
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

TEST_F(PreviewTest, PlayNearTheEndStartsOverAtTheFirstKeptSpan)
{
    m_model->seek(29.95);
    m_player->seeks.clear();
    m_model->togglePlayback();
    EXPECT_EQ(m_model->playhead(), 1.0);
    ASSERT_EQ(m_player->seeks.size(), 1u);
    EXPECT_EQ(m_player->seeks.front(), 1.0);
    EXPECT_EQ(m_player->plays, 1);
}

TEST_F(PreviewTest, PlayFurtherFromTheEndPlaysOn)
{
    m_model->seek(29.8);
    m_player->seeks.clear();
    m_model->togglePlayback();
    EXPECT_EQ(m_model->playhead(), 29.8);
    EXPECT_TRUE(m_player->seeks.empty());
    EXPECT_EQ(m_player->plays, 1);
}

TEST_F(PreviewTest, TogglingWhilePlayingPauses)
{
    startPlaying();
    m_model->togglePlayback();
    EXPECT_EQ(m_player->pauses, 1);
    EXPECT_EQ(m_player->plays, 0);
}

TEST_F(PreviewTest, ASeekShowsOnThePlayheadAtOnce)
{
    m_model->seek(12.5);
    EXPECT_EQ(m_model->playhead(), 12.5);
    ASSERT_EQ(m_player->seeks.size(), 1u);
    EXPECT_EQ(m_player->seeks.front(), 12.5);
}

TEST_F(PreviewTest, AGivenBackPauseIsPlayedFromTheNextTick)
{
    startPlaying();
    m_model->toggleSilence(1);
    m_player->report(5.0);
    EXPECT_EQ(m_model->playhead(), 5.0);
    EXPECT_TRUE(m_player->seeks.empty());
    EXPECT_EQ(m_player->pauses, 0);
}

TEST_F(PreviewTest, ClearStopsThePreview)
{
    startPlaying();
    m_model->clear();
    EXPECT_GE(m_player->pauses, 1);
    EXPECT_EQ(m_player->clears, 1);
    ASSERT_TRUE(waitUntil([this] { return !m_model->isPlaying(); }));
}

} // namespace
