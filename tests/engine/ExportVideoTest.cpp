#include "ExportFixtures.h"
#include "ExportProbe.h"
#include "Fixtures.h"
#include "TidleEngine.h"

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

// Each export is written once per test run and shared by the tests that look at it.
class ExportedVideos {
public:
    static const ExportedVideos& instance()
    {
        static const ExportedVideos videos;
        return videos;
    }
    QString path(const QString& name, bool frameAccurate) const
    {
        return m_folder.filePath(name + (frameAccurate ? "-accurate.mp4" : "-fast.mp4"));
    }

private:
    ExportedVideos()
    {
        for (bool frameAccurate : {true, false}) {
            TidleSettings settings;
            settings.frameAccurate = frameAccurate;
            const auto& keeps = frameAccurate ? accurateKeeps : fastKeeps;
            TidleEngine engine;
            engine.encode(ExportFixtures::richVideo(), path("rich", frameAccurate),
                          ExportFixtures::analysis(keeps, 8.0, true, OutputContainer::MPEG4),
                          settings, [](double) {});
            engine.encode(ExportFixtures::flash(), path("flash", frameAccurate),
                          ExportFixtures::analysis(keeps, 8.0, true, OutputContainer::MPEG4),
                          settings, [](double) {});
        }
    }

    QTemporaryDir m_folder;
};

class VideoExport : public testing::TestWithParam<bool> {
protected:
    static QString rich() { return ExportedVideos::instance().path("rich", GetParam()); }
    static QString flash() { return ExportedVideos::instance().path("flash", GetParam()); }
    static double keptSeconds() { return GetParam() ? 3.2 : 2.8; }
};

TEST_P(VideoExport, decodesCleanlyWithOneVideoAndOneSoundTrackOnly)
{
    EXPECT_EQ(Fixtures::decodeErrors(rich()), "");
    EXPECT_EQ(ExportProbe::format(rich()).value("tags").toObject().value("major_brand").toString(),
              "isom");
    const auto video = ExportProbe::streams(rich(), "video");
    const auto sound = ExportProbe::streams(rich(), "audio");
    ASSERT_EQ(video.size(), 1u);
    ASSERT_EQ(sound.size(), 1u);
    EXPECT_TRUE(ExportProbe::streams(rich(), "subtitle").empty());
    EXPECT_EQ(video[0].value("codec_name").toString(), "h264");
    EXPECT_EQ(video[0].value("pix_fmt").toString(), "yuv420p");
    // The first sound track (48 kHz), not the second (44.1 kHz).
    EXPECT_EQ(sound[0].value("codec_name").toString(), "aac");
    EXPECT_EQ(sound[0].value("sample_rate").toString(), "48000");
}

TEST_P(VideoExport, keepsSoundAndPicturesTheSameLength)
{
    const double video = ExportProbe::streamDuration(ExportProbe::streams(rich(), "video").at(0));
    const double sound = ExportProbe::streamDuration(ExportProbe::streams(rich(), "audio").at(0));
    EXPECT_NEAR(video, sound, 0.05);
    EXPECT_GE(Fixtures::probeDuration(rich()), keptSeconds() - 0.001);
}

TEST_P(VideoExport, keepsSoundInSyncWithPicturesAcrossTheJoin)
{
    const double picture = ExportProbe::firstBrightPicture(flash());
    const double sound = ExportProbe::firstLoudSound(flash());
    ASSERT_GE(picture, 0.0);
    ASSERT_GE(sound, 0.0);
    // Within one picture (40 ms) and the sound probe's resolution.
    EXPECT_NEAR(picture, sound, 0.045);
}

TEST_P(VideoExport, carriesRotationColourTagsAndMetadataOver)
{
    const QJsonObject video = ExportProbe::streams(rich(), "video").at(0);
    const double sourceRotation =
        rotationOf(ExportProbe::streams(ExportFixtures::richVideo(), "video").at(0));
    ASSERT_NE(sourceRotation, 0);
    EXPECT_EQ(rotationOf(video), sourceRotation);
    EXPECT_EQ(video.value("color_primaries").toString(), "smpte170m");
    EXPECT_EQ(video.value("color_transfer").toString(), "smpte170m");
    EXPECT_EQ(video.value("color_space").toString(), "smpte170m");
    const QJsonObject tags = ExportProbe::format(rich()).value("tags").toObject();
    EXPECT_EQ(tags.value("title").toString(), "Rich Video");
    EXPECT_EQ(tags.value("artist").toString(), "Hushpane Tests");
    EXPECT_TRUE(tags.value("creation_time").toString().startsWith("2020-01-02T03:04:05"));
}

INSTANTIATE_TEST_SUITE_P(EitherMode, VideoExport, testing::Values(true, false),
                         [](const auto& info) { return info.param ? "frameAccurate" : "fast"; });

TEST(FrameAccurateExport, holdsExactlyThePicturesOfTheKeeps)
{
    const QString output = ExportedVideos::instance().path("rich", true);
    // 1.2 s and 2.0 s at 25 fps.
    EXPECT_EQ(ExportProbe::countVideoFrames(output), 30 + 50);
    EXPECT_NEAR(ExportProbe::streamDuration(ExportProbe::streams(output, "video").at(0)), 3.2,
                0.001);
    EXPECT_NEAR(ExportProbe::streamDuration(ExportProbe::streams(output, "audio").at(0)), 3.2,
                1024.0 / 48000);
}

TEST(FrameAccurateExport, placesEachKeepsSoundWhereItsPicturesStart)
{
    const QString output = ExportedVideos::instance().path("rich", true);
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

TEST(FastExport, copiesTheVideoFromTheKeyframeBeforeEachKeep)
{
    const QString output = ExportedVideos::instance().path("rich", false);
    const auto source = ExportProbe::packets(ExportFixtures::richVideo(), "v");
    const auto copied = ExportProbe::packets(output, "v");
    ASSERT_FALSE(copied.empty());
    // The keyframe shown at 1.0 s opens the output, byte for byte the same size.
    const auto keyframe = std::find_if(source.begin(), source.end(), [](const auto& packet) {
        return packet.key && std::abs(packet.time - 1.0) < 0.001;
    });
    ASSERT_NE(keyframe, source.end());
    EXPECT_TRUE(copied.front().key);
    EXPECT_EQ(copied.front().size, keyframe->size);
    // Never more than a keyframe interval and a few reordered pictures per keep.
    EXPECT_LE(Fixtures::probeDuration(output), 2.8 + 2 * (1.0 + 0.2));
}

QString exportOnce(const QString& input, const QString& name, std::vector<Segment> keeps,
                   OutputContainer container, bool frameAccurate)
{
    static QTemporaryDir folder;
    const QString output = folder.filePath(name);
    TidleSettings settings;
    settings.frameAccurate = frameAccurate;
    TidleEngine engine;
    engine.encode(input, output, ExportFixtures::analysis(std::move(keeps), 4.0, true, container),
                  settings, [](double) {});
    return output;
}

TEST(FastExport, copiesProResAndPcmIntoAQuickTimeMovie)
{
    const QString output = exportOnce(ExportFixtures::proresMovie(), "prores.mov", {{0.5, 1.5}},
                                      OutputContainer::QuickTimeMovie, false);
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    EXPECT_EQ(ExportProbe::format(output).value("tags").toObject().value("major_brand").toString(),
              "qt  ");
    EXPECT_EQ(ExportProbe::streams(output, "video").at(0).value("codec_name").toString(), "prores");
    EXPECT_EQ(ExportProbe::streams(output, "audio").at(0).value("codec_name").toString(),
              "pcm_s16le");
    // Every ProRes picture is a keyframe: the span starts at the picture shown at 0.5 s
    // (0.48 s) and runs to 1.5 s.
    EXPECT_EQ(ExportProbe::countVideoFrames(output), 26);
}

TEST(FastExport, reencodesSoundTheContainerCannotHoldAndCopiesThePictures)
{
    const QString output = exportOnce(ExportFixtures::h264WithPcm(), "pcm.mp4",
                                      {{1.3, 2.2}, {2.6, 3.6}}, OutputContainer::MPEG4, false);
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    const auto video = ExportProbe::streams(output, "video");
    const auto sound = ExportProbe::streams(output, "audio");
    ASSERT_EQ(video.size(), 1u);
    ASSERT_EQ(sound.size(), 1u);
    EXPECT_EQ(sound[0].value("codec_name").toString(), "aac");
    EXPECT_NEAR(ExportProbe::streamDuration(video[0]), ExportProbe::streamDuration(sound[0]), 0.05);
    const auto source = ExportProbe::packets(ExportFixtures::h264WithPcm(), "v");
    const auto copied = ExportProbe::packets(output, "v");
    const auto keyframe = std::find_if(source.begin(), source.end(), [](const auto& packet) {
        return packet.key && std::abs(packet.time - 1.0) < 0.001;
    });
    ASSERT_NE(keyframe, source.end());
    ASSERT_FALSE(copied.empty());
    EXPECT_EQ(copied.front().size, keyframe->size);
}

TEST(FrameAccurateExport, convertsTenBitFourTwoTwoProResToEightBitFourTwoZero)
{
    const QString output = exportOnce(ExportFixtures::proresMovie(), "prores.mp4", {{0.5, 1.5}},
                                      OutputContainer::MPEG4, true);
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
    const QString output = exportOnce(ExportFixtures::oddSizedVideo(), "odd.mp4", {{0.2, 1.2}},
                                      OutputContainer::MPEG4, true);
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    const QJsonObject video = ExportProbe::streams(output, "video").at(0);
    EXPECT_EQ(video.value("width").toInt(), 160);
    EXPECT_EQ(video.value("height").toInt(), 120);
    EXPECT_EQ(video.value("pix_fmt").toString(), "yuv420p");
    EXPECT_EQ(ExportProbe::countVideoFrames(output), 25);
}

} // namespace
