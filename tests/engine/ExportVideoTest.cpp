#include "ExportFixtures.h"
#include "ExportProbe.h"
#include "Fixtures.h"
#include "TidleEngine.h"

#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using ExportFixtures::toneFrequencyAt;

// Frame-accurate keeps lie on frame bounds at 25 fps; fast-mode keeps lie between the
// keyframes (one a second), so the copy has to reach back.
const std::vector<Segment> accurateKeeps = {{1.0, 2.2}, {4.0, 6.0}};
const std::vector<Segment> fastKeeps = {{1.3, 2.2}, {4.1, 6.0}};

double rotationOf(const QJsonObject& stream)
{
    for (const QJsonValue& data : stream.value("side_data_list").toArray()) {
        if (data.toObject().value("side_data_type").toString() == "Display Matrix")
            return data.toObject().value("rotation").toDouble();
    }
    return 0;
}

// Exports fixture `input`, 8 s long unless said, once per test run into a folder of the
// run: tests that look at the same export share it.
QString exported(const QString& input, const QString& name, const std::vector<Segment>& keeps,
                 bool frameAccurate, OutputContainer container = OutputContainer::MPEG4,
                 double duration = 8.0)
{
    static QTemporaryDir folder;
    const QString output = folder.filePath(name);
    if (!QFile::exists(output)) {
        TidleSettings settings;
        settings.frameAccurate = frameAccurate;
        TidleEngine engine;
        engine.encode(ExportFixtures::media(input), output,
                      ExportFixtures::analysis(keeps, duration, true, container), settings,
                      [](double) {});
    }
    return output;
}

// The rich video or the flash, cut with the keeps of either mode.
QString inMode(const QString& input, bool frameAccurate)
{
    return exported(input, (frameAccurate ? "accurate-" : "fast-") + input,
                    frameAccurate ? accurateKeeps : fastKeeps, frameAccurate);
}

class VideoExport : public testing::TestWithParam<bool> {
protected:
    static QString rich() { return inMode("rich.mp4", GetParam()); }
    static QString flash() { return inMode("flash.mp4", GetParam()); }
    static double keptSeconds() { return GetParam() ? 3.2 : 2.8; }
};

// One picture and one sound track, the first (48 kHz, not the second's 44.1 kHz), with the
// source's rotation, colour tags and metadata.
TEST_P(VideoExport, decodesCleanlyAndCarriesTheFirstTracksAndTagsOver)
{
    EXPECT_EQ(Fixtures::decodeErrors(rich()), "");
    const QJsonObject tags = ExportProbe::format(rich()).value("tags").toObject();
    EXPECT_EQ(tags.value("major_brand").toString(), "isom");
    EXPECT_EQ(tags.value("title").toString(), "Rich Video");
    EXPECT_EQ(tags.value("artist").toString(), "Hushpane Tests");
    EXPECT_TRUE(tags.value("creation_time").toString().startsWith("2020-01-02T03:04:05"));
    const auto video = ExportProbe::streams(rich(), "video");
    const auto sound = ExportProbe::streams(rich(), "audio");
    ASSERT_EQ(video.size(), 1u);
    ASSERT_EQ(sound.size(), 1u);
    EXPECT_TRUE(ExportProbe::streams(rich(), "subtitle").empty());
    EXPECT_EQ(video[0].value("codec_name").toString(), "h264");
    EXPECT_EQ(video[0].value("pix_fmt").toString(), "yuv420p");
    EXPECT_EQ(sound[0].value("codec_name").toString(), "aac");
    EXPECT_EQ(sound[0].value("sample_rate").toString(), "48000");
    const double sourceRotation =
        rotationOf(ExportProbe::streams(ExportFixtures::media("rich.mp4"), "video").at(0));
    ASSERT_NE(sourceRotation, 0);
    EXPECT_EQ(rotationOf(video[0]), sourceRotation);
    for (const char* key : {"color_primaries", "color_transfer", "color_space"})
        EXPECT_EQ(video[0].value(key).toString(), "smpte170m") << key;
}

// Sound and pictures as long as each other, and a flash and a beep together across the join:
// within one picture (40 ms) and the sound probe's resolution.
TEST_P(VideoExport, keepsSoundAndPicturesInSyncAndTheSameLength)
{
    const double video = ExportProbe::streamDuration(ExportProbe::streams(rich(), "video").at(0));
    const double sound = ExportProbe::streamDuration(ExportProbe::streams(rich(), "audio").at(0));
    EXPECT_NEAR(video, sound, 0.05);
    EXPECT_GE(Fixtures::probeDuration(rich()), keptSeconds() - 0.001);
    const double picture = ExportProbe::firstBrightPicture(flash());
    const double beep = ExportProbe::firstLoudSound(flash());
    ASSERT_GE(picture, 0.0);
    ASSERT_GE(beep, 0.0);
    EXPECT_NEAR(picture, beep, 0.045);
}

INSTANTIATE_TEST_SUITE_P(EitherMode, VideoExport, testing::Values(true, false),
                         [](const auto& info) { return info.param ? "frameAccurate" : "fast"; });

TEST(FrameAccurateExport, holdsExactlyThePicturesOfTheKeeps)
{
    const QString output = inMode("rich.mp4", true);
    // 1.2 s and 2.0 s at 25 fps.
    EXPECT_EQ(ExportProbe::countVideoFrames(output), 30 + 50);
    EXPECT_NEAR(ExportProbe::streamDuration(ExportProbe::streams(output, "video").at(0)), 3.2,
                0.001);
    EXPECT_NEAR(ExportProbe::streamDuration(ExportProbe::streams(output, "audio").at(0)), 3.2,
                1024.0 / 48000);
}

TEST(FrameAccurateExport, placesEachKeepsSoundWhereItsPicturesStart)
{
    const QString output = inMode("rich.mp4", true);
    const struct {
        double outputStart;
        double sourceTime;
    } slices[] = {{0.02, 1.1}, {1.12, 2.1}, {1.205, 4.1}, {3.10, 5.9}};
    for (const auto& slice : slices) {
        const auto samples = ExportProbe::decodeSound(output, slice.outputStart, 0.075, 48000);
        const double expected = toneFrequencyAt(slice.sourceTime);
        EXPECT_NEAR(ExportProbe::toneFrequency(samples, 48000), expected, expected * 0.04)
            << "at " << slice.outputStart << " s";
    }
}

TEST(FastExport, cutsWhereTheKeepsSay)
{
    const QString output = inMode("rich.mp4", false);
    // Whole pictures at 25 fps, nearest the keeps' bounds: 1.28-2.16 s and 4.12-5.96 s.
    EXPECT_EQ(ExportProbe::countVideoFrames(output), 23 + 47);
    EXPECT_NEAR(ExportProbe::streamDuration(ExportProbe::streams(output, "video").at(0)), 2.8,
                0.04);
}

TEST(FastExport, copiesThePicturesFromTheFirstKeyframeInAKeepBitForBit)
{
    const QString output = inMode("rich.mp4", false);
    const auto source = ExportProbe::videoPacketHashes(ExportFixtures::media("rich.mp4"));
    const auto copied = ExportProbe::videoPacketHashes(output);
    // The second keep, 4.1-6.0 s, lands at 0.9 s: from the keyframe at 5.0 s on, the
    // packets are the source's own, except the last few a later anchor holds back.
    int matched = 0;
    for (const auto& packet : source) {
        if (packet.time < 5.0 - 0.001 || packet.time > 5.8 + 0.001)
            continue;
        const auto found = std::find_if(copied.begin(), copied.end(),
                                        [&](const auto& out) { return out.hash == packet.hash; });
        ASSERT_NE(found, copied.end()) << "source packet at " << packet.time;
        EXPECT_NEAR(found->time, packet.time - 4.1 + 0.9, 0.001);
        ++matched;
    }
    EXPECT_EQ(matched, 21);
    // The head of the keep, 4.1-5.0 s, is new.
    const auto opening = std::find_if(source.begin(), source.end(), [](const auto& packet) {
        return std::abs(packet.time - 4.12) < 0.001;
    });
    ASSERT_NE(opening, source.end());
    EXPECT_TRUE(std::none_of(copied.begin(), copied.end(),
                             [&](const auto& out) { return out.hash == opening->hash; }));
}

TEST(FastExport, copiesProResAndPcmIntoAQuickTimeMovie)
{
    const QString output = exported("prores.mov", "prores.mov", {{0.5, 1.5}}, false,
                                    OutputContainer::QuickTimeMovie, 4.0);
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    EXPECT_EQ(ExportProbe::format(output).value("tags").toObject().value("major_brand").toString(),
              "qt  ");
    EXPECT_EQ(ExportProbe::streams(output, "video").at(0).value("codec_name").toString(), "prores");
    EXPECT_EQ(ExportProbe::streams(output, "audio").at(0).value("codec_name").toString(),
              "pcm_s16le");
    // Every ProRes picture is a keyframe, so the copy is cut where the keep says: 1 s.
    EXPECT_EQ(ExportProbe::countVideoFrames(output), 25);
}

TEST(FastExport, reencodesSoundTheContainerCannotHoldAndCopiesThePictures)
{
    const QString output = exported("h264-pcm.mov", "pcm.mp4", {{1.3, 2.2}, {2.6, 3.6}}, false,
                                    OutputContainer::MPEG4, 4.0);
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    const auto video = ExportProbe::streams(output, "video");
    const auto sound = ExportProbe::streams(output, "audio");
    ASSERT_EQ(video.size(), 1u);
    ASSERT_EQ(sound.size(), 1u);
    EXPECT_EQ(sound[0].value("codec_name").toString(), "aac");
    EXPECT_NEAR(ExportProbe::streamDuration(video[0]), 1.9, 0.04);
    EXPECT_NEAR(ExportProbe::streamDuration(video[0]), ExportProbe::streamDuration(sound[0]), 0.05);
    // The keyframe shown at 2.0 s goes over as it is, to 0.7 s within half a picture.
    const auto source = ExportProbe::videoPacketHashes(ExportFixtures::media("h264-pcm.mov"));
    const auto copied = ExportProbe::videoPacketHashes(output);
    const auto keyframe = std::find_if(source.begin(), source.end(), [](const auto& packet) {
        return std::abs(packet.time - 2.0) < 0.001;
    });
    ASSERT_NE(keyframe, source.end());
    const auto found = std::find_if(copied.begin(), copied.end(),
                                    [&](const auto& out) { return out.hash == keyframe->hash; });
    ASSERT_NE(found, copied.end());
    EXPECT_NEAR(found->time, 0.7, 0.021);
}

TEST(FrameAccurateExport, convertsTenBitFourTwoTwoProResToEightBitFourTwoZero)
{
    const QString output =
        exported("prores.mov", "prores.mp4", {{0.5, 1.5}}, true, OutputContainer::MPEG4, 4.0);
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    const QJsonObject video = ExportProbe::streams(output, "video").at(0);
    EXPECT_EQ(video.value("codec_name").toString(), "h264");
    EXPECT_EQ(video.value("pix_fmt").toString(), "yuv420p");
    // The picture on screen at 0.5 s (shown from 0.48 s) opens the keep, then 25 more.
    EXPECT_EQ(ExportProbe::countVideoFrames(output), 26);
    EXPECT_NEAR(ExportProbe::streamDuration(video), 1.0, 0.001);
}

TEST(FrameAccurateExport, trimsOddSizesToEvenOnes)
{
    const QString output =
        exported("odd.mp4", "odd.mp4", {{0.2, 1.2}}, true, OutputContainer::MPEG4, 4.0);
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    const QJsonObject video = ExportProbe::streams(output, "video").at(0);
    EXPECT_EQ(video.value("width").toInt(), 160);
    EXPECT_EQ(video.value("height").toInt(), 120);
    EXPECT_EQ(video.value("pix_fmt").toString(), "yuv420p");
    EXPECT_EQ(ExportProbe::countVideoFrames(output), 25);
}

} // namespace
