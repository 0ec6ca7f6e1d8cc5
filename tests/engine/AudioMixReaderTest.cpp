#include "AudioMixReader.h"
#include "EngineFixtures.h"
#include "MediaFile.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

namespace {

using namespace EngineFixtures;

struct Mix {
    std::vector<float> samples;
    std::size_t largestBuffer = 0;
    int64_t samplesRead = 0;
};

Mix mixOf(const QString& path)
{
    MediaFile file(path);
    const std::atomic<bool> cancel{false};
    AudioMixReader reader(file, cancel);
    Mix mix;
    const bool finished = reader.read([&](std::span<const float> buffer) {
        mix.samples.insert(mix.samples.end(), buffer.begin(), buffer.end());
        mix.largestBuffer = std::max(mix.largestBuffer, buffer.size());
    });
    EXPECT_TRUE(finished);
    mix.samplesRead = reader.samplesRead();
    return mix;
}

// RMS of the mix between two times, in seconds.
double rms(const std::vector<float>& samples, double from, double to)
{
    const auto first = std::size_t(from * AudioMixReader::sampleRate);
    const auto last = std::min(samples.size(), std::size_t(to * AudioMixReader::sampleRate));
    EXPECT_LT(first, last);
    double sum = 0.0;
    for (std::size_t i = first; i < last; ++i)
        sum += double(samples[i]) * samples[i];
    return std::sqrt(sum / double(last - first));
}

// Resampling and 16-bit storage leave a tone's level within a fraction of a percent.
constexpr double levelTolerance = 0.005;

// Tracks are averaged over the file's timeline: a silent track beside the tone halves its
// level, one that has ended leaves the others, one placed at 1 s joins there.
TEST(AudioMixReader, levelsFollowTheTracksThatPlay)
{
    const struct {
        const char* fixture;
        double seconds;
        std::vector<std::tuple<double, double, double>> levels; // from, to, level
    } rows[] = {
        {"tone.wav", 3.0, {{0.2, 2.8, toneLevel}}},
        {"two-tracks.mov", 3.0, {{0.2, 2.8, toneLevel / 2}}},
        {"two-tracks-unequal.mov", 4.0, {{0.2, 1.8, toneLevel / 2}, {2.2, 3.8, toneLevel}}},
        {"two-tracks-late.mov", 0.0, {{0.1, 0.9, toneLevel}, {1.1, 2.9, toneLevel / 2}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fixture);
        const Mix mix = mixOf(media(row.fixture));
        for (const auto& [from, to, level] : row.levels)
            EXPECT_NEAR(rms(mix.samples, from, to), level, levelTolerance) << from;
        EXPECT_EQ(mix.samplesRead, int64_t(mix.samples.size()));
        if (row.seconds > 0.0)
            EXPECT_NEAR(double(mix.samples.size()), row.seconds * 16000, 16.0);
    }
}

TEST(AudioMixReader, digitalSilenceIsExactlyZero)
{
    const Mix mix = mixOf(media("silence.wav"));
    ASSERT_NEAR(double(mix.samples.size()), 2.0 * 16000, 16.0);
    EXPECT_TRUE(
        std::all_of(mix.samples.begin(), mix.samples.end(), [](float x) { return x == 0.0f; }));
}

// The channels are averaged: one silent channel halves the level (a first-channel pick or
// the resampler's own downmix would not), and opposite channels cancel out.
TEST(AudioMixReader, averagesTheChannels)
{
    const double monoLevel = rms(mixOf(media("tone.wav")).samples, 0.2, 1.8);
    EXPECT_NEAR(rms(mixOf(media("tone-left.wav")).samples, 0.2, 1.8), monoLevel / 2, 1e-4);
    EXPECT_NEAR(rms(mixOf(media("tone-opposite.wav")).samples, 0.0, 2.0), 0.0, 1e-6);
}

// Mixed samples leave as soon as every track has them: buffers stay small, never a whole file.
TEST(AudioMixReader, handsOutSmallBuffers)
{
    EXPECT_LE(mixOf(media("two-tracks.mov")).largestBuffer, 8192u);
    EXPECT_LE(mixOf(media("tone.wav")).largestBuffer, 8192u);
}

TEST(AudioMixReader, cancelFlagStopsBeforeAnySample)
{
    MediaFile file(media("tone.wav"));
    const std::atomic<bool> cancel{true};
    AudioMixReader reader(file, cancel);
    std::size_t handedOut = 0;
    EXPECT_FALSE(reader.read([&](std::span<const float> buffer) { handedOut += buffer.size(); }));
    EXPECT_EQ(handedOut, 0u);
}

} // namespace
