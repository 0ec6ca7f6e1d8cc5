#include "ExportFixtures.h"
#include "ExportProbe.h"
#include "Fixtures.h"
#include "TidleEngine.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using ExportFixtures::toneFrequencyAt;

TidleSettings settings(bool frameAccurate)
{
    TidleSettings result;
    result.frameAccurate = frameAccurate;
    return result;
}

// Keeps 1.0-2.5 s and 4.0-6.0 s of the tone, in either mode; written once per test run.
QString exportedTones(bool frameAccurate)
{
    static QTemporaryDir folder;
    const QString output = folder.filePath(frameAccurate ? "accurate.m4a" : "fast.m4a");
    if (!QFile::exists(output)) {
        TidleEngine engine;
        engine.encode(ExportFixtures::tones(), output,
                      ExportFixtures::analysis({{1.0, 2.5}, {4.0, 6.0}}, 8.0, false,
                                               OutputContainer::AppleM4A),
                      settings(frameAccurate), [](double) {});
    }
    return output;
}

class AudioOnlyExport : public testing::TestWithParam<bool> {
protected:
    static QString output() { return exportedTones(GetParam()); }
};

TEST_P(AudioOnlyExport, writesAacLcInAnM4aThatDecodesCleanly)
{
    EXPECT_EQ(Fixtures::decodeErrors(output()), "");
    EXPECT_EQ(
        ExportProbe::format(output()).value("tags").toObject().value("major_brand").toString(),
        "M4A ");
    const auto sound = ExportProbe::streams(output(), "audio");
    ASSERT_EQ(sound.size(), 1u);
    EXPECT_EQ(sound[0].value("codec_name").toString(), "aac");
    EXPECT_EQ(sound[0].value("profile").toString(), "LC");
    EXPECT_EQ(sound[0].value("channels").toInt(), 1);
    EXPECT_EQ(sound[0].value("sample_rate").toString(), "48000");
    EXPECT_TRUE(ExportProbe::streams(output(), "video").empty());
}

TEST_P(AudioOnlyExport, lastsTheSumOfTheKeepsWithinOneAacFrame)
{
    EXPECT_NEAR(Fixtures::probeDuration(output()), 3.5, 1024.0 / 48000);
}

TEST_P(AudioOnlyExport, placesEachKeepsContentWhereItsKeepStarts)
{
    // Output time -> source time: 0-1.5 s is 1.0-2.5 s, 1.5-3.5 s is 4.0-6.0 s. Slices
    // close to the join would catch a cut that is off by more than a few milliseconds.
    const struct {
        double outputStart;
        double sourceTime;
    } slices[] = {{0.02, 1.1}, {1.42, 2.4}, {1.505, 4.1}, {3.40, 5.9}};
    for (const auto& slice : slices) {
        const auto samples = ExportProbe::decodeSound(output(), slice.outputStart, 0.075, 48000);
        const double expected = toneFrequencyAt(slice.sourceTime);
        EXPECT_NEAR(ExportProbe::toneFrequency(samples, 48000), expected, expected * 0.04)
            << "at " << slice.outputStart << " s";
    }
}

TEST_P(AudioOnlyExport, carriesTitleAndArtistOver)
{
    const QJsonObject tags = ExportProbe::format(output()).value("tags").toObject();
    EXPECT_EQ(tags.value("title").toString(), "Tones");
    EXPECT_EQ(tags.value("artist").toString(), "Hushpane Tests");
}

INSTANTIATE_TEST_SUITE_P(EitherMode, AudioOnlyExport, testing::Values(true, false),
                         [](const auto& info) { return info.param ? "frameAccurate" : "fast"; });

struct LayoutCase {
    const char* name;
    int channels;
    int rate;
    const char* extension;
    int expectedChannels;
};

void PrintTo(const LayoutCase& c, std::ostream* out)
{
    *out << c.name;
}

class AudioOnlyLayout : public testing::TestWithParam<LayoutCase> {};

TEST_P(AudioOnlyLayout, keepsChannelsUpToStereoAndTheSampleRate)
{
    const LayoutCase& c = GetParam();
    QTemporaryDir folder;
    const QString output = folder.filePath("out.m4a");
    TidleEngine engine;
    engine.encode(ExportFixtures::toneWithChannels(c.channels, c.rate, c.extension), output,
                  ExportFixtures::analysis({{0.25, 1.75}}, 2.0, false, OutputContainer::AppleM4A),
                  settings(true), [](double) {});
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    const auto sound = ExportProbe::streams(output, "audio");
    ASSERT_EQ(sound.size(), 1u);
    EXPECT_EQ(sound[0].value("channels").toInt(), c.expectedChannels);
    EXPECT_EQ(sound[0].value("sample_rate").toString().toInt(), c.rate);
    EXPECT_NEAR(Fixtures::probeDuration(output), 1.5, 1024.0 / c.rate);
    // The tone survives the channel mix at its pitch.
    EXPECT_NEAR(
        ExportProbe::toneFrequency(ExportProbe::decodeSound(output, 0.5, 0.5, c.rate), c.rate),
        440.0, 440.0 * 0.02);
}

INSTANTIATE_TEST_SUITE_P(Table, AudioOnlyLayout,
                         testing::Values(LayoutCase{"monoWav44k", 1, 44100, "wav", 1},
                                         LayoutCase{"stereoM4a48k", 2, 48000, "m4a", 2},
                                         LayoutCase{"fivePointOneDownmixed", 6, 48000, "m4a", 2},
                                         LayoutCase{"monoWav22k", 1, 22050, "wav", 1}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(AudioOnlyTracks, onlyTheFirstSoundTrackGoesOver)
{
    QTemporaryDir folder;
    const QString output = folder.filePath("out.m4a");
    TidleEngine engine;
    engine.encode(ExportFixtures::twoSoundTracks(), output,
                  ExportFixtures::analysis({{0.25, 1.75}}, 2.0, false, OutputContainer::AppleM4A),
                  settings(true), [](double) {});
    ASSERT_EQ(ExportProbe::streams(output, "audio").size(), 1u);
    EXPECT_NEAR(
        ExportProbe::toneFrequency(ExportProbe::decodeSound(output, 0.5, 0.5, 48000), 48000), 440.0,
        440.0 * 0.02);
}

} // namespace
