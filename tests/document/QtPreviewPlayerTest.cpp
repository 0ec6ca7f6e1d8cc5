#include "QtPreviewPlayer.h"

#include "AppModel.h"
#include "DocumentTestSupport.h"
#include "Fixtures.h"
#include "PreferenceSandbox.h"
#include "Prefs.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace {

// Plays a real file through the platform's media backend. GStreamer plays on without a sound
// server; a machine where the backend cannot play at all skips the test and says why.
TEST(QtPreviewPlayerTest, ReportsAdvancingPositionsAndLandsSeeks)
{
    QtPreviewPlayer player;
    if (!player.mediaPlayer()->isAvailable())
        GTEST_SKIP() << "no media backend on this machine";
    QString failure;
    QObject::connect(player.mediaPlayer(), &QMediaPlayer::errorOccurred, &player,
                     [&](QMediaPlayer::Error, const QString& text) { failure = text; });
    std::vector<double> positions;
    QObject::connect(&player, &PreviewPlayer::positionReported, &player,
                     [&](double seconds) { positions.push_back(seconds); });
    bool playing = false;
    QObject::connect(&player, &PreviewPlayer::playingChanged, &player,
                     [&](bool value) { playing = value; });

    player.setSource(QUrl::fromLocalFile(Recordings::toneWithGaps()));
    player.play();
    const bool advanced = waitUntil(
        [&] { return !failure.isEmpty() || (!positions.empty() && positions.back() > 0.5); },
        20000);
    if (!failure.isEmpty())
        GTEST_SKIP() << "the media backend cannot play here: " << failure.toStdString();
    ASSERT_TRUE(advanced);
    EXPECT_TRUE(playing);
    EXPECT_TRUE(player.isPlaying());
    EXPECT_TRUE(std::is_sorted(positions.begin(), positions.end()));

    player.seek(20.0);
    ASSERT_TRUE(waitUntil([&] { return positions.back() >= 20.0; }, 20000));
    EXPECT_LT(positions.back(), 22.0);

    player.pause();
    ASSERT_TRUE(waitUntil([&] { return !playing; }, 10000));
    EXPECT_FALSE(player.isPlaying());

    // Paused, a seek still reports where it landed.
    player.seek(7.5);
    ASSERT_TRUE(waitUntil([&] { return std::abs(positions.back() - 7.5) < 0.1; }, 20000));
}

// The application's own model and player, from stored preferences; any error of the media
// backend is kept in m_failure.
class PreviewOnQtMultimedia : public PreferenceSandboxTest {
protected:
    // False when this machine's backend cannot play at all.
    bool makeModel(const EditorPreferences& preferences)
    {
        Prefs::save(preferences);
        m_model = std::make_unique<AppModel>();
        auto* player = qobject_cast<QtPreviewPlayer*>(m_model->player());
        if (!player || !player->mediaPlayer()->isAvailable())
            return false;
        QObject::connect(player->mediaPlayer(), &QMediaPlayer::errorOccurred, m_model.get(),
                         [this](QMediaPlayer::Error, const QString& text) { m_failure = text; });
        return true;
    }

    std::unique_ptr<AppModel> m_model;
    QString m_failure;
};

// The application's own model and player: the preview skips the removed pause between the
// two tones and stops after the second.
TEST_F(PreviewOnQtMultimedia, PlaysTheKeptSpansOnly)
{
    EditorPreferences preferences;
    preferences.settings.padding = 0.0;
    if (!makeModel(preferences))
        GTEST_SKIP() << "no media backend on this machine";
    AppModel& model = *m_model;
    auto* player = qobject_cast<QtPreviewPlayer*>(model.player());
    const QString& failure = m_failure;
    std::vector<double> playheads;
    QObject::connect(&model, &AppModel::playheadChanged, &model,
                     [&] { playheads.push_back(model.playhead()); });

    const QUrl tone = QUrl::fromLocalFile(Recordings::toneWithGaps());
    model.load(tone);
    EXPECT_EQ(player->mediaPlayer()->source(), tone);
    ASSERT_TRUE(waitUntil([&] { return model.phase() != AppModel::Phase::analyzing; }));
    ASSERT_EQ(model.phase(), AppModel::Phase::ready);
    model.togglePlayback();
    ASSERT_TRUE(waitUntil([&] { return !failure.isEmpty() || model.isPlaying(); }, 20000));
    if (!failure.isEmpty())
        GTEST_SKIP() << "the media backend cannot play here: " << failure.toStdString();
    ASSERT_TRUE(waitUntil([&] { return !model.isPlaying(); }, 30000));

    ASSERT_FALSE(playheads.empty());
    EXPECT_GT(playheads.back(), 9.0);
    EXPECT_LT(playheads.back(), 9.5);
    // The first ticks land before the first kept span and jump to it; of the pause between
    // the spans nothing is played beyond the tolerance and a tick or two.
    EXPECT_TRUE(std::find(playheads.begin(), playheads.end(), 1.0) != playheads.end());
    EXPECT_TRUE(std::find(playheads.begin(), playheads.end(), 6.0) != playheads.end());
    for (double t : playheads) {
        EXPECT_FALSE(t > 0.2 && t < 0.9) << t;
        EXPECT_FALSE(t > 4.2 && t < 5.9) << t;
    }
}

// Played to its end, the preview stops there with the playhead at the end, so the next play
// starts over at the first kept span.
TEST_F(PreviewOnQtMultimedia, PlayingToTheEndStopsAtTheEndAndRestartsAtTheFirstKeep)
{
    EditorPreferences preferences;
    preferences.settings.padding = 0.0;
    preferences.skipPausesInPreview = false;
    if (!makeModel(preferences))
        GTEST_SKIP() << "no media backend on this machine";
    AppModel& model = *m_model;
    const QString& failure = m_failure;

    // 2 s of silence, then 1.5 s of tone: the only kept span starts at 2 s.
    model.load(QUrl::fromLocalFile(Fixtures::makeWithFfmpeg(
        "document-quiet-then-tone.wav",
        {"-f", "lavfi", "-i", "aevalsrc='0.5*sin(2*PI*440*t)*gte(t,2)':s=16000:d=3.5", "-c:a",
         "pcm_s16le"})));
    ASSERT_TRUE(waitUntil([&] { return model.phase() != AppModel::Phase::analyzing; }));
    ASSERT_EQ(model.phase(), AppModel::Phase::ready);
    ASSERT_NEAR(model.analysis()->keeps.front().start, 2.0, 0.06);

    model.togglePlayback();
    ASSERT_TRUE(waitUntil([&] { return !failure.isEmpty() || model.isPlaying(); }, 20000));
    if (!failure.isEmpty())
        GTEST_SKIP() << "the media backend cannot play here: " << failure.toStdString();
    ASSERT_TRUE(waitUntil([&] { return !model.isPlaying(); }, 30000));
    EXPECT_NEAR(model.playhead(), model.analysis()->duration, 0.01);

    model.togglePlayback();
    EXPECT_DOUBLE_EQ(model.playhead(), model.analysis()->keeps.front().start);
}

} // namespace
