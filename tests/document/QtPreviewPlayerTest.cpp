#include "QtPreviewPlayer.h"

#include "Fixtures.h"
#include "ModelTestFixture.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace {

// The application's own model and player, through the platform's media backend: the preview
// jumps to the first kept span, skips the removed pause between the two tones and stops at the
// end, so the next play starts over. GStreamer plays on without a sound server; a machine where
// the backend cannot play at all skips the test and says why.
using PreviewOnQtMultimedia = PreferenceSandboxTest;

TEST_F(PreviewOnQtMultimedia, PlaysTheKeptSpansOnlyAndStopsAtTheEnd)
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

    // Quiet to 1 s, a tone to 2 s, quiet to 3.5 s and a tone to the end at 4.5 s.
    const QUrl tones = QUrl::fromLocalFile(Fixtures::makeWithFfmpeg(
        "document-two-tones.wav",
        {"-f", "lavfi", "-i",
         "aevalsrc='0.5*sin(2*PI*440*t)*(between(t,1,2)+gte(t,3.5))':s=16000:d=4.5", "-c:a",
         "pcm_s16le"}));
    model.load(tones);
    EXPECT_EQ(player->mediaPlayer()->source(), tones);
    ASSERT_TRUE(waitUntil([&] { return model.phase() != AppModel::Phase::analyzing; }));
    ASSERT_EQ(model.phase(), AppModel::Phase::ready);
    expectSegmentsNear(model.analysis()->keeps, {{1.0, 2.0}, {3.5, 4.5}}, 0.06);
    model.togglePlayback();
    ASSERT_TRUE(waitUntil([&] { return !failure.isEmpty() || model.isPlaying(); }, 20000));
    if (!failure.isEmpty())
        GTEST_SKIP() << "the media backend cannot play here: " << failure.toStdString();
    ASSERT_TRUE(waitUntil([&] { return !model.isPlaying(); }, 30000));

    EXPECT_NEAR(model.playhead(), model.analysis()->duration, 0.01);
    const std::vector<Segment>& keeps = model.analysis()->keeps;
    // Of the quiet parts nothing is played beyond the tolerance and a tick or two.
    EXPECT_TRUE(std::find(playheads.begin(), playheads.end(), keeps[0].start) != playheads.end());
    EXPECT_TRUE(std::find(playheads.begin(), playheads.end(), keeps[1].start) != playheads.end());
    for (double t : playheads) {
        EXPECT_FALSE(t > 0.2 && t < keeps[0].start - 0.1) << t;
        EXPECT_FALSE(t > keeps[0].end + 0.2 && t < keeps[1].start - 0.1) << t;
    }
    model.togglePlayback();
    EXPECT_DOUBLE_EQ(model.playhead(), keeps[0].start);
    ASSERT_TRUE(waitUntil([&] { return model.isPlaying(); }, 20000));

    // Paused, a seek still reports where it landed.
    model.togglePlayback();
    ASSERT_TRUE(waitUntil([&] { return !model.isPlaying(); }, 10000));
    EXPECT_FALSE(player->isPlaying());
    double reported = -1.0;
    QObject::connect(player, &PreviewPlayer::positionReported, &model,
                     [&](double seconds) { reported = seconds; });
    model.seek(4.0);
    EXPECT_TRUE(waitUntil([&] { return std::abs(reported - 4.0) < 0.1; }, 20000)) << reported;
}

} // namespace
