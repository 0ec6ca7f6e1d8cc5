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
        expectSegmentsNear(m_model->analysis()->keeps, {{1.0, 4.0}, {6.0, 9.0}});
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

// While playing with skipping on, a tick in a removed pause moves on to the next kept span, or
// pauses after the last; any other tick only moves the playhead.
TEST_F(PreviewTest, TicksWhilePlayingSkipTheRemovedPauses)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    // clang-format off
    const struct {
        bool playing;
        bool skip;
        int givenBack;
        double time;
        double playhead;
        std::optional<double> seek;
        bool pauses;
    } rows[] = {
        {true,  true,  -1, 0.5,       1.0,   1.0, false}, // before the first kept span
        {true,  true,  -1, 0.975,     0.975, {},  false}, // within the tolerance before a start
        {true,  true,  -1, 2.5,       2.5,   {},  false},
        {true,  true,  -1, 4.02,      4.02,  {},  false}, // within the tolerance after an end
        {true,  true,  -1, 4.05,      6.0,   6.0, false}, // past it: on to the next kept span
        {true,  true,  -1, 5.98,      5.98,  {},  false},
        {true,  true,  -1, 9.02,      9.02,  {},  false},
        {true,  true,  -1, 9.05,      9.05,  {},  true},  // after the last kept span
        {true,  true,  -1, 29.0,      29.0,  {},  true},
        {false, true,  -1, 4.05,      4.05,  {},  false}, // paused
        {true,  false, -1, 0.5,       0.5,   {},  false}, // not skipping
        {true,  false, -1, 4.05,      4.05,  {},  false},
        {true,  false, -1, 9.05,      9.05,  {},  false},
        {true,  true,  1,  5.0,       5.0,   {},  false}, // the pause given back
        {true,  true,  -1, nan,       2.0,   {},  false}, // a time that is no time
        {true,  true,  -1, infinity,  2.0,   {},  false},
        {true,  true,  -1, -infinity, 2.0,   {},  false},
    };
    // clang-format on
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << "row " << &row - rows);
        m_model->setSkipPausesInPreview(row.skip);
        m_model->resetSilenceOverrides();
        if (row.givenBack >= 0)
            m_model->toggleSilence(row.givenBack);
        m_model->seek(2.0);
        setPlaying(row.playing);
        m_player->report(row.time);
        EXPECT_DOUBLE_EQ(m_model->playhead(), row.playhead);
        ASSERT_EQ(m_player->seeks.size(), row.seek ? 1u : 0u);
        if (row.seek)
            EXPECT_DOUBLE_EQ(m_player->seeks.front(), *row.seek);
        EXPECT_EQ(m_player->pauses, row.pauses ? 1 : 0);
    }
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

// The play state follows the player one turn later. The engine stays for a later save; without
// an analysis, play starts where the player stands.
TEST_F(PreviewTest, ClearStopsThePreviewAndReturnsToTheEmptyState)
{
    const auto engine = m_model->engine();
    m_model->seek(3.0);
    m_player->setPlaying(true);
    EXPECT_FALSE(m_model->isPlaying());
    ASSERT_TRUE(waitUntil([this] { return m_model->isPlaying(); }));
    m_model->clear();
    EXPECT_GE(m_player->pauses, 1);
    EXPECT_EQ(m_player->clears, 1);
    ASSERT_TRUE(waitUntil([this] { return !m_model->isPlaying(); }));
    EXPECT_EQ(m_model->phase(), Phase::idle);
    EXPECT_TRUE(m_model->inputURL().isEmpty());
    EXPECT_FALSE(m_model->analysis());
    EXPECT_EQ(m_model->playhead(), 0.0);
    EXPECT_TRUE(m_player->source.isEmpty());
    EXPECT_EQ(m_model->engine(), engine);
    m_model->analyze();
    EXPECT_EQ(m_model->phase(), Phase::idle);

    m_player->seeks.clear();
    m_model->seek(29.95);
    m_model->togglePlayback();
    EXPECT_EQ(m_player->seeks, std::vector<double>{29.95});
    EXPECT_EQ(m_player->plays, 1);
    EXPECT_EQ(m_model->playhead(), 29.95);
}

} // namespace
