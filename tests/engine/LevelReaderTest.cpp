#include "LevelReader.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace {

std::vector<float> run(std::initializer_list<std::pair<float, int>> runs)
{
    std::vector<float> samples;
    for (auto [value, count] : runs)
        samples.insert(samples.end(), std::size_t(count), value);
    return samples;
}

std::vector<float> levelsOf(const std::vector<float>& samples)
{
    LevelReader reader(samples.size() / 16000.0);
    reader.add(samples);
    return reader.finish();
}

TEST(LevelReader, givesOneRmsPerWindowAndAPartialLast)
{
    const struct {
        std::vector<float> samples;
        std::vector<float> expected; // exact
    } rows[] = {
        {run({{0.5f, 16000}}), std::vector<float>(20, 0.5f)},
        // The last window covers 160 samples and is averaged over them, not over 800.
        {run({{0.5f, 1600}, {0.25f, 160}}), {0.5f, 0.5f, 0.25f}},
        {run({{0.0f, 4000}}), std::vector<float>(5, 0.0f)},
        {run({{-0.5f, 400}, {0.5f, 400}}), {0.5f}}, // the sign does not matter
        {run({{0.5f, 799}}), {0.5f}},
        {{}, {}},
        {run({{0.0f, 800}, {1.0f, 800}, {0.0f, 800}}), {0.0f, 1.0f, 0.0f}},
    };
    for (std::size_t r = 0; r < std::size(rows); ++r)
        EXPECT_EQ(levelsOf(rows[r].samples), rows[r].expected) << "row " << r;
}

std::vector<float> noise(std::size_t count)
{
    std::vector<float> samples(count);
    uint32_t state = 12345;
    for (float& x : samples) {
        state = state * 1664525u + 1013904223u;
        x = float(int32_t(state >> 8) - (1 << 23)) / float(1 << 23) * 0.8f;
    }
    return samples;
}

TEST(LevelReader, windowAcrossBuffersEqualsOneBuffer)
{
    const std::vector<float> samples = noise(5003);
    const std::vector<float> whole = levelsOf(samples);

    LevelReader pieces(1.0);
    const std::size_t cuts[] = {0, 333, 1333, 1334, 1800, 4000, 5003};
    for (std::size_t i = 0; i + 1 < std::size(cuts); ++i)
        pieces.add(std::span<const float>(samples).subspan(cuts[i], cuts[i + 1] - cuts[i]));
    EXPECT_EQ(pieces.finish(), whole);
}

// Levels are single precision from square to root, summed in sample order; a double
// accumulator gives visibly different values on the same samples.
TEST(LevelReader, accumulatesInSinglePrecision)
{
    const std::vector<float> samples = noise(8000);
    const std::vector<float> levels = levelsOf(samples);
    ASSERT_EQ(levels.size(), 10u);
    int differsFromDouble = 0;
    for (std::size_t w = 0; w < levels.size(); ++w) {
        float sum = 0.0f;
        double wide = 0.0;
        for (std::size_t i = w * 800; i < (w + 1) * 800; ++i) {
            sum += samples[i] * samples[i];
            wide += double(samples[i]) * double(samples[i]);
        }
        EXPECT_EQ(levels[w], std::sqrt(sum / 800.0f)) << "window " << w;
        if (float(std::sqrt(wide / 800.0)) != levels[w])
            ++differsFromDouble;
    }
    EXPECT_GT(differsFromDouble, 0);
}

TEST(LevelReader, expectsTwentyLevelsPerSecondAndAtLeastOne)
{
    EXPECT_DOUBLE_EQ(LevelReader(10.0).expectedLevels(), 200.0);
    EXPECT_DOUBLE_EQ(LevelReader(0.01).expectedLevels(), 1.0);
}

} // namespace
