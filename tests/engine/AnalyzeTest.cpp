#include "EngineFixtures.h"
#include "Fixtures.h"
#include "Localization.h"
#include "MediaError.h"
#include "MediaFile.h"
#include "Sensitivity.h"
#include "TidleEngine.h"
#include "TidleError.h"
#include "UserMessage.h"

#include <gtest/gtest.h>
#include <optional>
#include <thread>

namespace {

using namespace EngineFixtures;

TidleSettings standard(bool frameAccurate = false)
{
    TidleSettings settings;
    SensitivityPresets::applyNumbers(Sensitivity::standard, settings);
    settings.frameAccurate = frameAccurate;
    return settings;
}

Analysis analyze(const QString& path, const TidleSettings& settings = standard())
{
    TidleEngine engine;
    return engine.analyze(path, settings);
}

TEST(Analyze, outputPlanSuitsTheVideoFormat)
{
    const struct {
        const char* fixture;
        bool frameAccurate;
        OutputContainer container;
        const char* extension;
        bool hasVideo;
    } rows[] = {
        {"tone.wav", false, OutputContainer::AppleM4A, "m4a", false},
        {"cover.mp3", false, OutputContainer::AppleM4A, "m4a", false},
        {"cover.mp3", true, OutputContainer::AppleM4A, "m4a", false},
        {"h264.mp4", false, OutputContainer::MPEG4, "mp4", true},
        {"h264.mov", false, OutputContainer::MPEG4, "mp4", true},
        {"hevc.mp4", false, OutputContainer::MPEG4, "mp4", true},
        {"prores.mov", false, OutputContainer::QuickTimeMovie, "mov", true},
        {"h264.mp4", true, OutputContainer::MPEG4, "mp4", true},
        {"prores.mov", true, OutputContainer::MPEG4, "mp4", true},
    };
    for (const auto& row : rows) {
        const QString path = media(row.fixture);
        SCOPED_TRACE(testing::Message() << path.toStdString() << " " << row.frameAccurate);
        const Analysis analysis = analyze(path, standard(row.frameAccurate));
        EXPECT_EQ(analysis.outputFileType, row.container);
        EXPECT_EQ(analysis.outputExtension, QString::fromLatin1(row.extension));
        EXPECT_EQ(analysis.hasVideo, row.hasVideo);
    }
}

// Pauses are found where the tone stops, to within one level window.
TEST(Analyze, findsPausesWhereTheSoundStops)
{
    const Analysis analysis = analyze(media("tone-gaps.wav"));
    ASSERT_EQ(analysis.silences.size(), 2u);
    EXPECT_NEAR(analysis.silences[0].start, 2.0, 0.05);
    EXPECT_NEAR(analysis.silences[0].end, 3.5, 0.05);
    EXPECT_NEAR(analysis.silences[1].start, 5.0, 0.05);
    EXPECT_NEAR(analysis.silences[1].end, 6.0, 0.05);
    ASSERT_EQ(analysis.keeps.size(), 3u);
    EXPECT_DOUBLE_EQ(analysis.keeps[0].end, analysis.silences[0].start + 0.15);
    EXPECT_DOUBLE_EQ(analysis.keeps[1].start, analysis.silences[0].end - 0.15);
    EXPECT_DOUBLE_EQ(analysis.keeps[2].end, analysis.duration);
}

// A picture that goes on after the sound keeps its quiet tail: the length is the container's.
TEST(Analyze, durationIsTheContainersWhenPictureOutlastsSound)
{
    const QString path = media("picture-outlasts-sound.mp4");
    const Analysis analysis = analyze(path);
    EXPECT_NEAR(analysis.duration, Fixtures::probeDuration(path), 1e-3);
    EXPECT_NEAR(analysis.duration, 5.0, 0.05);
    EXPECT_LE(analysis.levels.size(), 42u); // the sound's 2 s only
    ASSERT_FALSE(analysis.keeps.empty());
    EXPECT_EQ(analysis.keeps.back().end, analysis.duration);
}

// Levels sit on the file's timeline: sound that starts at 0.5 s leaves ten silent windows.
TEST(Analyze, levelsLineUpWithTheFilesTimeline)
{
    const Analysis analysis = analyze(media("sound-starts-late.mov"));
    ASSERT_GE(analysis.levels.size(), 39u);
    for (std::size_t i = 0; i < 10; ++i)
        EXPECT_EQ(analysis.levels[i], 0.0f) << "level " << i;
    for (std::size_t i = 11; i < 39; ++i)
        EXPECT_NEAR(analysis.levels[i], toneLevel, 0.005) << "level " << i;
}

// Where FFmpeg guessed the length from the bitrate, here far off, the decoded sound's length
// replaces it.
TEST(Analyze, estimatedDurationIsReplacedByTheDecodedLength)
{
    const QString path = media("estimated.aac");
    ASSERT_TRUE(MediaFile(path).durationIsEstimated());
    const double decoded = decodedSeconds(path);
    EXPECT_GT(std::abs(MediaFile(path).duration() - decoded), 0.5);

    const Analysis analysis = analyze(path);
    EXPECT_NEAR(analysis.duration, decoded, 0.005);
    ASSERT_FALSE(analysis.keeps.empty());
    EXPECT_LE(analysis.keeps.back().end, decoded + 0.005);
    // The quiet from 4 s to the end is found and cut up to the padding.
    ASSERT_EQ(analysis.silences.size(), 1u);
    EXPECT_NEAR(analysis.silences[0].start, 4.0, 0.1);
    EXPECT_EQ(analysis.silences[0].end, analysis.duration);
}

TEST(Analyze, soundWithoutSamplesKeepsTheWholeFile)
{
    const Analysis analysis = analyze(media("no-samples.mkv"));
    EXPECT_TRUE(analysis.levels.empty());
    EXPECT_TRUE(analysis.silences.empty());
    ASSERT_EQ(analysis.keeps.size(), 1u);
    EXPECT_EQ(analysis.keeps[0], (Segment{0.0, analysis.duration}));
    EXPECT_NEAR(analysis.duration, 2.0, 0.05);
}

TEST(Analyze, badInputFailsWithAClearMessage)
{
    const struct {
        QString path;
        std::optional<TidleError::Kind> kind; // none: FFmpeg's own error, unwrapped
        QString messagePart;
    } rows[] = {
        {Fixtures::path("engine-missing.mp3"), std::nullopt, "No such file or directory"},
        {Fixtures::directory(), std::nullopt, "Is a directory"},
        {media("empty.mp3"), TidleError::Kind::unreadable, localized("diag.zeroDuration")},
        {media("text.mp3"), std::nullopt, "Invalid data found"},
        {media("truncated.mp4"), std::nullopt, "Invalid data found"},
        {media("truncated-faststart.mp4"), TidleError::Kind::unreadable,
         localized("diag.truncated")},
        {media("picture-only.mp4"), TidleError::Kind::noAudioTrack, localized("error.noAudio")},
        {media("zero.wav"), TidleError::Kind::unreadable, localized("diag.zeroDuration")},
        // Shorter than the shortest keep.
        {media("tiny-tone.wav"), TidleError::Kind::allSilent, localized("error.allSilent")},
        {media("unknown-codec.mov"), TidleError::Kind::unreadable, localized("diag.audioRead")},
        {media("hundred-channels.wav"), TidleError::Kind::unreadable,
         localized("diag.audioFormat")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        TidleEngine engine;
        try {
            engine.analyze(row.path, standard());
            ADD_FAILURE() << "analysis succeeded";
        } catch (const TidleError& error) {
            EXPECT_TRUE(row.kind.has_value()) << "TidleError: " << error.what();
            EXPECT_EQ(error.kind(), row.kind.value_or(error.kind()));
            EXPECT_TRUE(userMessage(error).contains(row.messagePart)) << error.what();
        } catch (const MediaError& error) {
            EXPECT_FALSE(row.kind.has_value()) << "MediaError: " << error.what();
            EXPECT_TRUE(userMessage(error).contains(row.messagePart)) << error.what();
        }
        // The engine serves the next file as if nothing had happened.
        EXPECT_EQ(engine.analyze(media("tone.wav"), standard()).keeps.size(), 1u);
    }
}

TEST(Analyze, progressRisesInStepsOfTwentyLevels)
{
    std::vector<double> reports;
    TidleEngine engine;
    const Analysis analysis =
        engine.analyze(media("tone-gaps.wav"), standard(), [&](double p) { reports.push_back(p); });
    ASSERT_FALSE(reports.empty());
    EXPECT_EQ(reports.front(), 0.0);
    const double expected = analysis.duration / 0.05;
    for (std::size_t i = 0; i < reports.size(); ++i) {
        EXPECT_GE(reports[i], 0.0);
        EXPECT_LE(reports[i], 1.0);
        if (i > 0)
            EXPECT_GE(reports[i], reports[i - 1]);
        const double levels = reports[i] * expected;
        EXPECT_NEAR(levels, 20.0 * std::round(levels / 20.0), 1e-6) << "report " << i;
    }
    // One report per multiple of 20 levels reached, 0 to 140 of the 160.
    std::vector<double> distinct = reports;
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    EXPECT_GE(distinct.size(), 7u);
}

TEST(Analyze, cancelOnAnIdleEngineIsForgotten)
{
    TidleEngine engine;
    engine.cancel();
    EXPECT_EQ(engine.analyze(media("tone.wav"), standard()).keeps.size(), 1u);
}

// The cancel comes from another thread while the first progress report waits for it, so it
// surely lands mid-decoding of the ten minutes.
TEST(Analyze, cancelFromAnotherThreadStopsDecoding)
{
    const QString path = media("long-tone.wav");
    TidleEngine engine;
    double lastReport = 0.0;
    try {
        engine.analyze(path, standard(), [&](double p) {
            if (p > 0.0 && lastReport == 0.0)
                std::thread([&] { engine.cancel(); }).join();
            lastReport = p;
        });
        ADD_FAILURE() << "the analysis ran to its end";
    } catch (const TidleError& error) {
        EXPECT_EQ(error.kind(), TidleError::Kind::cancelled);
    }
    EXPECT_GT(lastReport, 0.0);
    EXPECT_LT(lastReport, 0.5);
}

} // namespace
