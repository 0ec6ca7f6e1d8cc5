#include "ExportFixtures.h"
#include "ExportProbe.h"
#include "Fixtures.h"
#include "TidleEngine.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// AAC LC in an .m4a as long as the keeps, to within one AAC frame, with the title and artist.
// Output time -> source time: 0-1.5 s is 1.0-2.5 s, 1.5-3.5 s is 4.0-6.0 s. Slices close to
// the join would catch a cut that is off by more than a few milliseconds.
TEST(AudioOnlyExport, writesAacLcWithEachKeepsContentWhereItsKeepStarts)
{
    QTemporaryDir folder;
    const QString output = folder.filePath("out.m4a");
    TidleEngine engine;
    engine.encode(
        ExportFixtures::media("tones.m4a"), output,
        ExportFixtures::analysis({{1.0, 2.5}, {4.0, 6.0}}, 8.0, false, OutputContainer::AppleM4A),
        TidleSettings{}, [](double) {});
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    const QJsonObject tags = ExportProbe::format(output).value("tags").toObject();
    EXPECT_EQ(tags.value("major_brand").toString(), "M4A ");
    EXPECT_EQ(tags.value("title").toString(), "Tones");
    EXPECT_EQ(tags.value("artist").toString(), "Hushpane Tests");
    const auto sound = ExportProbe::streams(output, "audio");
    ASSERT_EQ(sound.size(), 1u);
    EXPECT_EQ(sound[0].value("codec_name").toString(), "aac");
    EXPECT_EQ(sound[0].value("profile").toString(), "LC");
    EXPECT_EQ(sound[0].value("channels").toInt(), 1);
    EXPECT_EQ(sound[0].value("sample_rate").toString(), "48000");
    EXPECT_TRUE(ExportProbe::streams(output, "video").empty());
    EXPECT_NEAR(Fixtures::probeDuration(output), 3.5, 1024.0 / 48000);
    const std::pair<double, double> slices[] = {
        {0.02, 1.1}, {1.42, 2.4}, {1.505, 4.1}, {3.40, 5.9}};
    for (const auto [outputStart, sourceTime] : slices) {
        const auto samples = ExportProbe::decodeSound(output, outputStart, 0.075, 48000);
        const double expected = ExportFixtures::toneFrequencyAt(sourceTime);
        EXPECT_NEAR(ExportProbe::toneFrequency(samples, 48000), expected, expected * 0.04)
            << "at " << outputStart << " s";
    }
}

// Channels up to stereo and the sample rate are kept; of two sound tracks only the first
// (440 Hz, not 1000 Hz) goes over. The tone survives the channel mix at its pitch.
TEST(AudioOnlyLayout, keepsChannelsUpToStereoAndTheSampleRate)
{
    const struct {
        QString input;
        int rate;
        int channels;
    } rows[] = {
        {ExportFixtures::toneWithChannels(1, 44100, "wav"), 44100, 1},
        {ExportFixtures::toneWithChannels(2, 48000, "m4a"), 48000, 2},
        {ExportFixtures::toneWithChannels(6, 48000, "m4a"), 48000, 2},
        {ExportFixtures::toneWithChannels(1, 22050, "wav"), 22050, 1},
        {ExportFixtures::media("two-tracks.m4a"), 48000, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.input.toStdString());
        QTemporaryDir folder;
        const QString output = folder.filePath("out.m4a");
        TidleEngine engine;
        engine.encode(
            row.input, output,
            ExportFixtures::analysis({{0.25, 1.75}}, 2.0, false, OutputContainer::AppleM4A),
            TidleSettings{}, [](double) {});
        EXPECT_EQ(Fixtures::decodeErrors(output), "");
        const auto sound = ExportProbe::streams(output, "audio");
        ASSERT_EQ(sound.size(), 1u);
        EXPECT_EQ(sound[0].value("channels").toInt(), row.channels);
        EXPECT_EQ(sound[0].value("sample_rate").toString().toInt(), row.rate);
        EXPECT_NEAR(Fixtures::probeDuration(output), 1.5, 1024.0 / row.rate);
        EXPECT_NEAR(ExportProbe::toneFrequency(ExportProbe::decodeSound(output, 0.5, 0.5, row.rate),
                                               row.rate),
                    440.0, 440.0 * 0.02);
    }
}

} // namespace
