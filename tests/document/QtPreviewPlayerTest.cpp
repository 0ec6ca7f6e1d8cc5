#include "QtPreviewPlayer.h"

#include "DocumentTestSupport.h"

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

} // namespace
