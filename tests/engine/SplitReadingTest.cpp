#include "EngineFixtures.h"
#include "LevelReader.h"
#include "MediaFile.h"
#include "TidleError.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

namespace {

using namespace EngineFixtures;

LevelReading read(const QString& path, int parts,
                  const std::function<void(double)>& onProgress = {})
{
    MediaFile file(path);
    const std::atomic<bool> cancel{false};
    return readLevels(file, file.duration(), cancel, onProgress, parts);
}

TEST(SplitReading, givesTheLevelsOfOneReadingFromTheStart)
{
    const struct {
        const char* fixture;
        int parts;
        bool split; // false: the codec cannot start mid-file exactly; decoded ahead instead
    } rows[] = {
        {"speech-long.m4a", 2, false},    {"speech-long.mp3", 2, true},
        {"speech-long.mp3", 3, true},     {"speech-long.ogg", 2, true},
        {"speech-long-8k.wav", 2, true},  {"speech-long-6ch.flac", 2, true},
        {"speech-long-two.mov", 2, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.fixture << " in " << row.parts);
        const LevelReading whole = read(media(row.fixture), 1);
        ASSERT_EQ(whole.parts, 1);
        ASSERT_FALSE(whole.decodedAhead);
        ASSERT_GT(*std::max_element(whole.levels.begin(), whole.levels.end()), 0.02f);

        const LevelReading split = read(media(row.fixture), row.parts);
        if (row.split) {
            EXPECT_EQ(split.parts, row.parts);
        } else {
            EXPECT_EQ(split.parts, 1);
            EXPECT_EQ(split.decodedAhead, std::thread::hardware_concurrency() > 1);
        }
        EXPECT_EQ(split.sampleCount, whole.sampleCount);
        ASSERT_EQ(split.levels.size(), whole.levels.size());
        int differing = 0;
        for (std::size_t i = 0; i < whole.levels.size(); ++i) {
            const float a = whole.levels[i];
            const float b = split.levels[i];
            if (std::abs(a - b) > 1e-6f * std::max(std::abs(a), std::abs(b)) && differing++ < 5)
                ADD_FAILURE() << "level " << i << ": " << a << " read whole, " << b << " split";
        }
        EXPECT_EQ(differing, 0);
    }
}

// Reports count the levels of all stretches together, in steps of 20, and only rise.
TEST(SplitReading, progressRisesInStepsOfTwentyLevels)
{
    std::vector<double> reports;
    const QString path = media("speech-long.mp3");
    const LevelReading reading = read(path, 3, [&](double p) { reports.push_back(p); });
    ASSERT_EQ(reading.parts, 3);
    ASSERT_GE(reports.size(), 3u);
    const double expected = MediaFile(path).duration() * 20.0;
    for (std::size_t i = 0; i < reports.size(); ++i) {
        const double levels = reports[i] * expected;
        EXPECT_NEAR(levels, 20.0 * std::round(levels / 20.0), 1e-6) << "report " << i;
        if (i > 0) {
            EXPECT_GT(reports[i], reports[i - 1]);
        }
    }
    EXPECT_EQ(reports.front(), 0.0);
    EXPECT_LE(reports.back(), 1.0);
}

TEST(SplitReading, cancelStopsEveryStretch)
{
    MediaFile file(media("speech-long-8k.wav"));
    std::atomic<bool> cancel{false};
    try {
        readLevels(
            file, file.duration(), cancel,
            [&](double p) {
                if (p > 0.0)
                    cancel.store(true);
            },
            3);
        FAIL() << "the reading ran to its end";
    } catch (const TidleError& error) {
        EXPECT_EQ(error.kind(), TidleError::Kind::cancelled);
    }
}

} // namespace
