#include "MediaFile.h"
#include "EngineFixtures.h"
#include "Fixtures.h"
#include "MediaError.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace {

using namespace EngineFixtures;

QJsonArray probedStreams(const QString& file)
{
    return Fixtures::probe(file).value("streams").toArray();
}

struct StreamCase {
    const char* name;
    QString (*fixture)();
    std::size_t audio;
    std::size_t video;
};

void PrintTo(const StreamCase& c, std::ostream* out)
{
    *out << c.name;
}

class MediaFileStreams : public testing::TestWithParam<StreamCase> {};

TEST_P(MediaFileStreams, listsTracksByKindInFileOrder)
{
    const StreamCase& c = GetParam();
    const MediaFile file(c.fixture());
    EXPECT_EQ(file.audioStreams().size(), c.audio);
    EXPECT_EQ(file.videoStreams().size(), c.video);
    for (int index : file.audioStreams())
        EXPECT_EQ(file.context()->streams[index]->codecpar->codec_type, AVMEDIA_TYPE_AUDIO);
    EXPECT_TRUE(std::is_sorted(file.audioStreams().begin(), file.audioStreams().end()));
}

INSTANTIATE_TEST_SUITE_P(Table, MediaFileStreams,
                         testing::Values(StreamCase{"wav", tone, 1, 0},
                                         StreamCase{"h264Mp4", h264Mp4, 1, 1},
                                         StreamCase{"twoTracks", twoTracks, 2, 0},
                                         StreamCase{"pictureOnly", videoWithoutSound, 0, 1}),
                         [](const auto& info) { return info.param.name; });

TEST(MediaFile, coverPictureIsNotAVideoTrack)
{
    const QString path = mp3WithCover();
    // ffprobe sees the picture as a video stream marked as attached.
    bool probedCover = false;
    for (const auto& stream : probedStreams(path)) {
        const QJsonObject object = stream.toObject();
        if (object.value("codec_type").toString() == "video")
            probedCover = object.value("disposition").toObject().value("attached_pic").toInt() == 1;
    }
    ASSERT_TRUE(probedCover);

    const MediaFile file(path);
    EXPECT_EQ(file.audioStreams().size(), 1u);
    EXPECT_TRUE(file.videoStreams().empty());
}

struct TagCase {
    const char* name;
    QString (*fixture)();
    const char* expected; // nullptr: the container's own tag, as ffprobe reports it
};

void PrintTo(const TagCase& c, std::ostream* out)
{
    *out << c.name;
}

class MediaFileCodecTag : public testing::TestWithParam<TagCase> {};

TEST_P(MediaFileCodecTag, namesTheVideoFormat)
{
    const TagCase& c = GetParam();
    const QString path = c.fixture();
    const MediaFile file(path);
    ASSERT_EQ(file.videoStreams().size(), 1u);
    QString expected = c.expected ? QString::fromLatin1(c.expected) : QString();
    if (!c.expected) {
        for (const auto& stream : probedStreams(path))
            if (stream.toObject().value("codec_type").toString() == "video")
                expected = stream.toObject().value("codec_tag_string").toString();
    }
    EXPECT_EQ(file.codecTag(file.videoStreams().front()), expected);
}

INSTANTIATE_TEST_SUITE_P(Table, MediaFileCodecTag,
                         testing::Values(TagCase{"h264InMp4", h264Mp4, "avc1"},
                                         TagCase{"h264InMov", h264Mov, "avc1"},
                                         TagCase{"hevcInMp4", hevcMp4, "hvc1"},
                                         TagCase{"proresInMov", proresMov, nullptr}),
                         [](const auto& info) { return info.param.name; });

TEST(MediaFile, proresIsNotAnMpeg4Format)
{
    const MediaFile file(proresMov());
    const QString tag = file.codecTag(file.videoStreams().front());
    EXPECT_TRUE(tag.startsWith("ap")) << tag.toStdString(); // apch, apcn, ap4h, ...
}

TEST(MediaFile, rotationIsClockwiseFromTheDisplayMatrix)
{
    const QString path = rotatedMp4();
    // ffprobe reports the matrix's counter-clockwise angle.
    int probed = 0;
    for (const auto& stream : probedStreams(path))
        for (const auto& side : stream.toObject().value("side_data_list").toArray())
            if (side.toObject().contains("rotation"))
                probed = side.toObject().value("rotation").toInt();
    ASSERT_EQ(probed, -90);

    const MediaFile rotated(path);
    EXPECT_EQ(rotated.rotation(rotated.videoStreams().front()), 90);
    const MediaFile upright(h264Mp4());
    EXPECT_EQ(upright.rotation(upright.videoStreams().front()), 0);
}

struct DurationCase {
    const char* name;
    QString (*fixture)();
    bool estimated;
};

void PrintTo(const DurationCase& c, std::ostream* out)
{
    *out << c.name;
}

class MediaFileDuration : public testing::TestWithParam<DurationCase> {};

TEST_P(MediaFileDuration, isTheContainersAndSaysWhenEstimated)
{
    const DurationCase& c = GetParam();
    const QString path = c.fixture();
    const MediaFile file(path);
    EXPECT_NEAR(file.duration(), Fixtures::probeDuration(path), 1e-3);
    EXPECT_EQ(file.durationIsEstimated(), c.estimated);
}

INSTANTIATE_TEST_SUITE_P(Table, MediaFileDuration,
                         testing::Values(DurationCase{"wav", tone, false},
                                         DurationCase{"mp4", h264Mp4, false},
                                         DurationCase{"pictureLonger", pictureOutlastsSound, false},
                                         DurationCase{"mp3WithHeader", mp3WithCover, false},
                                         DurationCase{"adts", adtsAac, true},
                                         DurationCase{"mp3WithoutHeader", headerlessMp3, true}),
                         [](const auto& info) { return info.param.name; });

// Without care a relative name with a colon reads as a protocol ("odd:" here).
TEST(MediaFile, opensARelativePathWithAColon)
{
    const QString odd = Fixtures::path("engine-odd:name.wav");
    if (!QFile::exists(odd))
        ASSERT_TRUE(QFile::copy(tone(), odd));
    const QString previous = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(Fixtures::directory()));
    try {
        const MediaFile file("engine-odd:name.wav");
        EXPECT_EQ(file.audioStreams().size(), 1u);
    } catch (const MediaError& error) {
        ADD_FAILURE() << error.what();
    }
    QDir::setCurrent(previous);
}

TEST(MediaFile, failsWithFfmpegsMessage)
{
    try {
        MediaFile file(Fixtures::path("engine-no-such-file.wav"));
        FAIL() << "opened a missing file";
    } catch (const MediaError& error) {
        EXPECT_EQ(error.message(), QStringLiteral("No such file or directory"));
    }
}

} // namespace
