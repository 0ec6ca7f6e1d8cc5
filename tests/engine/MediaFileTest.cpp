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

struct FileCase {
    const char* name;
    QString (*fixture)();
    std::size_t audio;
    std::size_t video;
    const char* tag; // of the video track; "" when it is the container's own, as ffprobe says
    bool estimated;
};

void PrintTo(const FileCase& c, std::ostream* out)
{
    *out << c.name;
}

class MediaFileTracks : public testing::TestWithParam<FileCase> {};

// Tracks by kind in file order, the video format and the length as the container gives it.
TEST_P(MediaFileTracks, describeTheFileAsFfprobeDoes)
{
    const FileCase& c = GetParam();
    const QString path = c.fixture();
    const MediaFile file(path);
    EXPECT_EQ(file.audioStreams().size(), c.audio);
    EXPECT_EQ(file.videoStreams().size(), c.video);
    for (int index : file.audioStreams())
        EXPECT_EQ(file.context()->streams[index]->codecpar->codec_type, AVMEDIA_TYPE_AUDIO);
    EXPECT_TRUE(std::is_sorted(file.audioStreams().begin(), file.audioStreams().end()));
    EXPECT_NEAR(file.duration(), Fixtures::probeDuration(path), 1e-3);
    EXPECT_EQ(file.durationIsEstimated(), c.estimated);
    if (c.video == 0)
        return;
    QString tag = QString::fromLatin1(c.tag);
    for (const auto& stream : probedStreams(path)) {
        if (tag.isEmpty() && stream.toObject().value("codec_type").toString() == "video")
            tag = stream.toObject().value("codec_tag_string").toString();
    }
    EXPECT_EQ(file.codecTag(file.videoStreams().front()), tag);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MediaFileTracks,
    testing::Values(FileCase{"wav", tone, 1, 0, "", false},
                    FileCase{"h264Mp4", h264Mp4, 1, 1, "avc1", false},
                    FileCase{"h264Mov", h264Mov, 1, 1, "avc1", false},
                    FileCase{"hevcMp4", hevcMp4, 1, 1, "hvc1", false},
                    FileCase{"proresMov", proresMov, 1, 1, "", false},
                    FileCase{"twoTracks", twoTracks, 2, 0, "", false},
                    FileCase{"pictureOnly", videoWithoutSound, 0, 1, "avc1", false},
                    FileCase{"pictureLonger", pictureOutlastsSound, 1, 1, "avc1", false},
                    // ffprobe sees the cover as a video stream marked as attached.
                    FileCase{"mp3WithCover", mp3WithCover, 1, 0, "", false},
                    FileCase{"adts", adtsAac, 1, 0, "", true},
                    FileCase{"mp3WithoutHeader", headerlessMp3, 1, 0, "", true}),
    [](const auto& info) { return info.param.name; });

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

} // namespace
