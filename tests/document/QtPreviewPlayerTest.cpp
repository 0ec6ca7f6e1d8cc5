#include "QtPreviewPlayer.h"

#include "AppModel.h"
#include "DocumentTestSupport.h"
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

    player.setSource(QUrl::fromLocalFile(DocumentFixtures::toneWithGaps()));
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

using PreviewOnQtMultimedia = PreferenceSandboxTest;

// The application's own model and player: the preview skips the removed pause between the
// two tones and stops after the second.
TEST_F(PreviewOnQtMultimedia, PlaysTheKeptSpansOnly)
{
    EditorPreferences preferences;
    preferences.settings.padding = 0.0;
    Prefs::save(preferences);
    AppModel model;
    auto* player = qobject_cast<QtPreviewPlayer*>(model.player());
    ASSERT_NE(player, nullptr);
    if (!player->mediaPlayer()->isAvailable())
        GTEST_SKIP() << "no media backend on this machine";
    QString failure;
    QObject::connect(player->mediaPlayer(), &QMediaPlayer::errorOccurred, &model,
                     [&](QMediaPlayer::Error, const QString& text) { failure = text; });
    std::vector<double> playheads;
    QObject::connect(&model, &AppModel::playheadChanged, &model,
                     [&] { playheads.push_back(model.playhead()); });

    const QUrl tone = QUrl::fromLocalFile(DocumentFixtures::toneWithGaps());
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

} // namespace
