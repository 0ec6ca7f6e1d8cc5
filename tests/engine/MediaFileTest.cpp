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

// Tracks by kind in file order, the video format and the length as the container gives it.
TEST(MediaFile, describesTheFileAsFfprobeDoes)
{
    const struct {
        const char* fixture;
        std::size_t audio;
        std::size_t video;
        const char* tag; // of the video track; "" when it is the container's own, as ffprobe says
        bool estimated;
    } rows[] = {
        {"tone.wav", 1, 0, "", false},
        {"h264.mp4", 1, 1, "avc1", false},
        {"h264.mov", 1, 1, "avc1", false},
        {"hevc.mp4", 1, 1, "hvc1", false},
        {"prores.mov", 1, 1, "", false},
        {"two-tracks.mov", 2, 0, "", false},
        {"picture-only.mp4", 0, 1, "avc1", false},
        {"picture-outlasts-sound.mp4", 1, 1, "avc1", false},
        // ffprobe sees the cover as a video stream marked as attached.
        {"cover.mp3", 1, 0, "", false},
        {"estimated.aac", 1, 0, "", true},
    };
    for (const auto& row : rows) {
        const QString path = media(row.fixture);
        SCOPED_TRACE(path.toStdString());
        const MediaFile file(path);
        EXPECT_EQ(file.audioStreams().size(), row.audio);
        EXPECT_EQ(file.videoStreams().size(), row.video);
        for (int index : file.audioStreams())
            EXPECT_EQ(file.context()->streams[index]->codecpar->codec_type, AVMEDIA_TYPE_AUDIO);
        EXPECT_TRUE(std::is_sorted(file.audioStreams().begin(), file.audioStreams().end()));
        EXPECT_NEAR(file.duration(), Fixtures::probeDuration(path), 1e-3);
        EXPECT_EQ(file.durationIsEstimated(), row.estimated);
        if (row.video == 0)
            continue;
        QString tag = QString::fromLatin1(row.tag);
        for (const auto& stream : probedStreams(path)) {
            if (tag.isEmpty() && stream.toObject().value("codec_type").toString() == "video")
                tag = stream.toObject().value("codec_tag_string").toString();
        }
        EXPECT_EQ(file.codecTag(file.videoStreams().front()), tag);
    }
}

TEST(MediaFile, rotationIsClockwiseFromTheDisplayMatrix)
{
    const QString path = media("rotated.mp4");
    // ffprobe reports the matrix's counter-clockwise angle.
    int probed = 0;
    for (const auto& stream : probedStreams(path))
        for (const auto& side : stream.toObject().value("side_data_list").toArray())
            if (side.toObject().contains("rotation"))
                probed = side.toObject().value("rotation").toInt();
    ASSERT_EQ(probed, -90);

    const MediaFile rotated(path);
    EXPECT_EQ(rotated.rotation(rotated.videoStreams().front()), 90);
    const MediaFile upright(media("h264.mp4"));
    EXPECT_EQ(upright.rotation(upright.videoStreams().front()), 0);
}

// Without care a relative name with a colon reads as a protocol ("odd:" here).
TEST(MediaFile, opensARelativePathWithAColon)
{
    const QString odd = Fixtures::path("engine-odd:name.wav");
    if (!QFile::exists(odd))
        ASSERT_TRUE(QFile::copy(media("tone.wav"), odd));
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
