#include "EngineFixtures.h"
#include "Fixtures.h"
#include "Localization.h"
#include "MediaError.h"
#include "MediaFile.h"
#include "Sensitivity.h"
#include "TidleEngine.h"
#include "TidleError.h"
#include "UserMessage.h"

#include <future>
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

// The length of a file's sound as ffmpeg decodes it (through a WAV it writes).
double decodedSeconds(const QString& path, const QString& wavName)
{
    return Fixtures::probeDuration(Fixtures::makeWithFfmpeg(wavName, {"-i", path, "-vn"}));
}

struct PlanCase {
    const char* name;
    QString (*fixture)();
    bool frameAccurate;
    OutputContainer container;
    const char* extension;
    bool hasVideo;
};

void PrintTo(const PlanCase& c, std::ostream* out)
{
    *out << c.name;
}

class OutputPlan : public testing::TestWithParam<PlanCase> {};

TEST_P(OutputPlan, suitsTheVideoFormat)
{
    const PlanCase& c = GetParam();
    const Analysis analysis = analyze(c.fixture(), standard(c.frameAccurate));
    EXPECT_EQ(analysis.outputFileType, c.container);
    EXPECT_EQ(analysis.outputExtension, QString::fromLatin1(c.extension));
    EXPECT_EQ(analysis.hasVideo, c.hasVideo);
}

INSTANTIATE_TEST_SUITE_P(
    Table, OutputPlan,
    testing::Values(
        PlanCase{"wav", tone, false, OutputContainer::AppleM4A, "m4a", false},
        PlanCase{"mp3WithCover", mp3WithCover, false, OutputContainer::AppleM4A, "m4a", false},
        PlanCase{"mp3WithCoverFrameAccurate", mp3WithCover, true, OutputContainer::AppleM4A, "m4a",
                 false},
        PlanCase{"h264Mp4", h264Mp4, false, OutputContainer::MPEG4, "mp4", true},
        PlanCase{"h264Mov", h264Mov, false, OutputContainer::MPEG4, "mp4", true},
        PlanCase{"hevcMp4", hevcMp4, false, OutputContainer::MPEG4, "mp4", true},
        PlanCase{"proresMov", proresMov, false, OutputContainer::QuickTimeMovie, "mov", true},
        PlanCase{"h264Mp4FrameAccurate", h264Mp4, true, OutputContainer::MPEG4, "mp4", true},
        PlanCase{"proresMovFrameAccurate", proresMov, true, OutputContainer::MPEG4, "mp4", true}),
    [](const auto& info) { return info.param.name; });

TEST(Analyze, toneLevelsAreItsRms)
{
    const Analysis analysis = analyze(tone());
    EXPECT_EQ(analysis.levelWindow, 0.05);
    EXPECT_NEAR(analysis.duration, 3.0, 1e-6);
    ASSERT_GE(analysis.levels.size(), 60u);
    for (std::size_t i = 2; i < 58; ++i)
        EXPECT_NEAR(analysis.levels[i], toneLevel, 0.005) << "level " << i;
    EXPECT_TRUE(analysis.silences.empty());
    ASSERT_EQ(analysis.keeps.size(), 1u);
    EXPECT_EQ(analysis.keeps[0], (Segment{0.0, analysis.duration}));
}

// Pauses are found where the tone stops, to within one level window.
TEST(Analyze, findsPausesWhereTheSoundStops)
{
    const Analysis analysis = analyze(toneWithGaps());
    ASSERT_EQ(analysis.silences.size(), 2u);
    EXPECT_NEAR(analysis.silences[0].start, 2.0, 0.05);
    EXPECT_NEAR(analysis.silences[0].end, 3.5, 0.05);
    EXPECT_NEAR(analysis.silences[1].start, 5.0, 0.05);
    EXPECT_NEAR(analysis.silences[1].end, 6.0, 0.05);
    for (std::size_t i = 0; i < 160; ++i) {
        const double t = i * 0.05;
        const bool inGap = (t >= 2.05 && t < 3.45) || (t >= 5.05 && t < 5.95);
        if (inGap)
            EXPECT_EQ(analysis.levels[i], 0.0f) << "level " << i;
    }
    ASSERT_EQ(analysis.keeps.size(), 3u);
    EXPECT_DOUBLE_EQ(analysis.keeps[0].end, analysis.silences[0].start + 0.15);
    EXPECT_DOUBLE_EQ(analysis.keeps[1].start, analysis.silences[0].end - 0.15);
    EXPECT_DOUBLE_EQ(analysis.keeps[2].end, analysis.duration);
}

TEST(Analyze, quietFileKeepsThePaddingAtBothEnds)
{
    const Analysis analysis = analyze(silence());
    for (float level : analysis.levels)
        EXPECT_EQ(level, 0.0f);
    ASSERT_EQ(analysis.silences.size(), 1u);
    EXPECT_EQ(analysis.silences[0], (Segment{0.0, analysis.duration}));
    ASSERT_EQ(analysis.keeps.size(), 2u);
    EXPECT_NEAR(analysis.keeps[0].end, 0.15, 1e-12);
    EXPECT_NEAR(analysis.keeps[1].start, analysis.duration - 0.15, 1e-12);
}

TEST(Analyze, quietFileWithThinPaddingKeepsNothing)
{
    TidleSettings settings = standard();
    settings.padding = 0.02;
    TidleEngine engine;
    try {
        engine.analyze(silence(), settings);
        FAIL() << "a quiet file gave keeps";
    } catch (const TidleError& error) {
        EXPECT_EQ(error.kind(), TidleError::Kind::allSilent);
    }
}

// The mix counts every track: a silent track beside a tone halves its level.
TEST(Analyze, levelsMixAllTracks)
{
    const Analysis analysis = analyze(twoTracks());
    ASSERT_GE(analysis.levels.size(), 60u);
    for (std::size_t i = 2; i < 58; ++i)
        EXPECT_NEAR(analysis.levels[i], toneLevel / 2, 0.005) << "level " << i;
}

// espeak-ng speech, its own quiet trimmed, joined by placed pauses. Speech fades out through
// -35 dB a little before the -50 dB trim point and fades in likewise, and the windows quantise
// by 0.05 s, so the pauses found may reach 0.1 s into the speech on either side; they never
// start later or end earlier than placed by more than a window.
TEST(Analyze, findsPlacedPausesInSpeech)
{
    const Speech speech = speechWithPauses();
    const Analysis analysis = analyze(speech.file);
    ASSERT_EQ(analysis.silences.size(), speech.pauseStarts.size());
    for (std::size_t i = 0; i < analysis.silences.size(); ++i) {
        EXPECT_LE(analysis.silences[i].start, speech.pauseStarts[i] + 0.05) << "pause " << i;
        EXPECT_GE(analysis.silences[i].start, speech.pauseStarts[i] - 0.1) << "pause " << i;
        EXPECT_GE(analysis.silences[i].end, speech.pauseEnds[i] - 0.05) << "pause " << i;
        EXPECT_LE(analysis.silences[i].end, speech.pauseEnds[i] + 0.1) << "pause " << i;
    }
}

// A picture that goes on after the sound keeps its quiet tail: the length is the container's.
TEST(Analyze, durationIsTheContainersWhenPictureOutlastsSound)
{
    const QString path = pictureOutlastsSound();
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
    const Analysis analysis = analyze(soundStartsLate());
    ASSERT_GE(analysis.levels.size(), 39u);
    for (std::size_t i = 0; i < 10; ++i)
        EXPECT_EQ(analysis.levels[i], 0.0f) << "level " << i;
    for (std::size_t i = 11; i < 39; ++i)
        EXPECT_NEAR(analysis.levels[i], toneLevel, 0.005) << "level " << i;
}

struct EstimatedCase {
    const char* name;
    QString (*fixture)();
    const char* decodedName;
};

void PrintTo(const EstimatedCase& c, std::ostream* out)
{
    *out << c.name;
}

class EstimatedDuration : public testing::TestWithParam<EstimatedCase> {};

// Where FFmpeg guessed the length from the bitrate, the decoded sound's length replaces it.
TEST_P(EstimatedDuration, isReplacedByTheDecodedLength)
{
    const EstimatedCase& c = GetParam();
    const QString path = c.fixture();
    ASSERT_TRUE(MediaFile(path).durationIsEstimated());
    const double decoded = decodedSeconds(path, c.decodedName);

    const Analysis analysis = analyze(path);
    EXPECT_NEAR(analysis.duration, decoded, 0.005);
    ASSERT_FALSE(analysis.keeps.empty());
    EXPECT_LE(analysis.keeps.back().end, decoded + 0.005);
    // The quiet from 4 s to the end is found and cut up to the padding.
    ASSERT_EQ(analysis.silences.size(), 1u);
    EXPECT_NEAR(analysis.silences[0].start, 4.0, 0.1);
    EXPECT_EQ(analysis.silences[0].end, analysis.duration);
}

INSTANTIATE_TEST_SUITE_P(
    Table, EstimatedDuration,
    testing::Values(EstimatedCase{"adts", adtsAac, "engine-estimated-aac-decoded.wav"},
                    EstimatedCase{"mp3", headerlessMp3, "engine-estimated-mp3-decoded.wav"}),
    [](const auto& info) { return info.param.name; });

TEST(Analyze, adtsEstimateIsFarOffSoTheReplacementMatters)
{
    const double decoded = decodedSeconds(adtsAac(), "engine-estimated-aac-decoded.wav");
    EXPECT_GT(std::abs(MediaFile(adtsAac()).duration() - decoded), 0.5);
}

TEST(Analyze, soundWithoutSamplesKeepsTheWholeFile)
{
    const Analysis analysis = analyze(soundTrackWithoutSamples());
    EXPECT_TRUE(analysis.levels.empty());
    EXPECT_TRUE(analysis.silences.empty());
    ASSERT_EQ(analysis.keeps.size(), 1u);
    EXPECT_EQ(analysis.keeps[0], (Segment{0.0, analysis.duration}));
    EXPECT_NEAR(analysis.duration, 2.0, 0.05);
}

struct BadInputCase {
    const char* name;
    QString (*fixture)();
    std::optional<TidleError::Kind> kind; // none: FFmpeg's own error, unwrapped
    QString (*messagePart)();
};

void PrintTo(const BadInputCase& c, std::ostream* out)
{
    *out << c.name;
}

class BadInput : public testing::TestWithParam<BadInputCase> {};

TEST_P(BadInput, failsWithAClearMessage)
{
    const BadInputCase& c = GetParam();
    TidleEngine engine;
    try {
        engine.analyze(c.fixture(), standard());
        FAIL() << "analysis succeeded";
    } catch (const TidleError& error) {
        ASSERT_TRUE(c.kind.has_value()) << "TidleError: " << error.what();
        EXPECT_EQ(error.kind(), *c.kind);
        EXPECT_TRUE(userMessage(error).contains(c.messagePart())) << error.what();
    } catch (const MediaError& error) {
        ASSERT_FALSE(c.kind.has_value()) << "MediaError: " << error.what();
        EXPECT_TRUE(userMessage(error).contains(c.messagePart())) << error.what();
    }
    // The engine serves the next file as if nothing had happened.
    EXPECT_EQ(engine.analyze(tone(), standard()).keeps.size(), 1u);
}

QString missingFile()
{
    return Fixtures::path("engine-missing.mp3");
}

INSTANTIATE_TEST_SUITE_P(
    Table, BadInput,
    testing::Values(
        BadInputCase{"missingFile", missingFile, std::nullopt,
                     [] { return QStringLiteral("No such file or directory"); }},
        BadInputCase{"folder", Fixtures::directory, std::nullopt,
                     [] { return QStringLiteral("Is a directory"); }},
        BadInputCase{"emptyFile", emptyFile, TidleError::Kind::unreadable,
                     [] { return localized("diag.zeroDuration"); }},
        BadInputCase{"textNamedMp3", textNamedMp3, std::nullopt,
                     [] { return QStringLiteral("Invalid data found"); }},
        BadInputCase{"truncatedMp4", truncatedMp4, std::nullopt,
                     [] { return QStringLiteral("Invalid data found"); }},
        BadInputCase{"truncatedFaststartMp4", truncatedFaststartMp4, TidleError::Kind::unreadable,
                     [] { return localized("diag.truncated"); }},
        BadInputCase{"videoWithoutSound", videoWithoutSound, TidleError::Kind::noAudioTrack,
                     [] { return localized("error.noAudio"); }},
        BadInputCase{"zeroDuration", zeroDurationWav, TidleError::Kind::unreadable,
                     [] { return localized("diag.zeroDuration"); }},
        BadInputCase{"shorterThanTheShortestKeep", tinyTone, TidleError::Kind::allSilent,
                     [] { return localized("error.allSilent"); }},
        BadInputCase{"unknownSoundCodec", unknownSoundCodec, TidleError::Kind::unreadable,
                     [] { return localized("diag.audioRead"); }},
        BadInputCase{"hundredChannels", hundredChannelWav, TidleError::Kind::unreadable,
                     [] { return localized("diag.audioFormat"); }}),
    [](const auto& info) { return info.param.name; });

TEST(Analyze, progressRisesInStepsOfTwentyLevels)
{
    std::vector<double> reports;
    TidleEngine engine;
    const Analysis analysis =
        engine.analyze(toneWithGaps(), standard(), [&](double p) { reports.push_back(p); });
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

TEST(Analyze, resultIsTheSameWithoutProgress)
{
    TidleEngine engine;
    const Analysis with = engine.analyze(toneWithGaps(), standard(), [](double) {});
    const Analysis without = engine.analyze(toneWithGaps(), standard());
    EXPECT_EQ(with.levels, without.levels);
    EXPECT_EQ(with.silences, without.silences);
    EXPECT_EQ(with.keeps, without.keeps);
    EXPECT_EQ(with.duration, without.duration);
}

TEST(Analyze, cancelOnAnIdleEngineIsForgotten)
{
    TidleEngine engine;
    engine.cancel();
    EXPECT_EQ(engine.analyze(tone(), standard()).keeps.size(), 1u);
}

// The analysis pauses in its first progress report until another thread has cancelled, so
// the cancel surely lands mid-decoding of the ten minutes.
TEST(Analyze, cancelFromAnotherThreadStopsDecoding)
{
    const QString path = longTone();
    TidleEngine engine;
    std::promise<void> started;
    std::promise<void> cancelled;
    std::shared_future<void> cancelDone = cancelled.get_future().share();
    bool signalled = false;
    double lastReport = 0.0;
    std::thread canceller([&, startedFuture = started.get_future()]() mutable {
        startedFuture.wait();
        engine.cancel();
        cancelled.set_value();
    });

    std::optional<TidleError::Kind> outcome;
    try {
        engine.analyze(path, standard(), [&](double p) {
            lastReport = p;
            if (!signalled && p > 0.0) {
                signalled = true;
                started.set_value();
                cancelDone.wait();
            }
        });
    } catch (const TidleError& error) {
        outcome = error.kind();
    }
    if (!signalled)
        started.set_value();
    canceller.join();

    ASSERT_TRUE(signalled);
    ASSERT_TRUE(outcome.has_value()) << "the analysis ran to its end";
    EXPECT_EQ(*outcome, TidleError::Kind::cancelled);
    EXPECT_LT(lastReport, 0.5);
}

} // namespace
