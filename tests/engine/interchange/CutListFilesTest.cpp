#include "CutListFiles.h"

#include "CutListSource.h"
#include "Fixtures.h"
#include "MediaError.h"
#include "TidleError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

// 3 s of 29.97 fps video with stereo sound, stamped with a camera's start timecode.
QString ntscVideo()
{
    return Fixtures::makeWithFfmpeg(
        "cutlist-ntsc.mov",
        Fixtures::args("-f lavfi -i testsrc2=size=160x120:rate=30000/1001:duration=3 -f lavfi -i "
                       "sine=frequency=440:sample_rate=48000:duration=3 -ac 2 -c:v libx264 "
                       "-preset veryfast -pix_fmt yuv420p -c:a aac -timecode 01:00:00;00"));
}

// 3 s of mono sound.
QString soundOnly()
{
    return Fixtures::makeWithFfmpeg(
        "cutlist-sound.m4a",
        Fixtures::args("-f lavfi -i sine=frequency=300:sample_rate=44100:duration=3 -c:a aac"));
}

QString readAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

const std::vector<Segment> keeps = {{0.5, 1.0}, {2.0, 2.9}};

class CutListFilesTest : public testing::Test {
protected:
    QString base(const QString& name) const { return m_folder.filePath(name); }
    QStringList folderContents() const
    {
        return QDir(m_folder.path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(CutListFilesTest, readsRateSizeSoundAndStartTimecodeFromTheRecording)
{
    const CutListSource video = CutListSource::probe(ntscVideo());
    EXPECT_EQ(video.rate, (TimecodeRate{30, true}));
    EXPECT_TRUE(video.hasVideo);
    EXPECT_EQ(video.width, 160);
    EXPECT_EQ(video.height, 120);
    EXPECT_TRUE(video.hasAudio);
    EXPECT_EQ(video.audioChannels, 2);
    EXPECT_EQ(video.sampleRate, 48000);
    EXPECT_EQ(video.startFrame, 107892); // 01:00:00;00
    EXPECT_NEAR(video.duration, 3.0, 0.1);
    EXPECT_EQ(video.clipName(), QStringLiteral("cutlist-ntsc.mov"));

    const CutListSource sound = CutListSource::probe(soundOnly());
    EXPECT_FALSE(sound.hasVideo);
    EXPECT_EQ(sound.rate, TimecodeRate{});
    EXPECT_EQ(sound.audioChannels, 1);
    EXPECT_EQ(sound.startFrame, 0);
}

TEST_F(CutListFilesTest, writesAnEdlAndAnXmlFileUnderOneBaseName)
{
    const QString media = ntscVideo();
    CutListFiles::write(media, keeps, base("talk cuts"));
    EXPECT_EQ(folderContents(), QStringList({"talk cuts.edl", "talk cuts.xml"}));

    const QString edl = readAll(base("talk cuts.edl"));
    EXPECT_TRUE(edl.startsWith(QLatin1String("TITLE: talk cuts\nFCM: DROP FRAME\n")));
    // 0.5 s is frame 15 after the recording's own 01:00:00;00.
    EXPECT_TRUE(edl.contains(QStringLiteral(
        "\n001  cutlist_ AA/V  C        01:00:00;15 01:00:01;00 00:00:00;00 00:00:00;15\n")))
        << edl.toStdString();
    EXPECT_TRUE(edl.contains(QStringLiteral("* FROM FILE: ") + media));

    const QString xml = readAll(base("talk cuts.xml"));
    EXPECT_TRUE(xml.contains(QStringLiteral("<pathurl>") +
                             QUrl::fromLocalFile(media).toString(QUrl::FullyEncoded) +
                             QStringLiteral("</pathurl>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<name>talk cuts</name>")));
}

TEST_F(CutListFilesTest, aBaseNameEndingInEitherExtensionLosesIt)
{
    for (const char* typed : {"cuts", "cuts.edl", "cuts.xml", "cuts.EDL"})
        EXPECT_EQ(CutListFiles::paths("/x/" + QString::fromLatin1(typed)),
                  QStringList({"/x/cuts.edl", "/x/cuts.xml"}))
            << typed;
    EXPECT_EQ(CutListFiles::paths("/x/cuts.mp4"),
              QStringList({"/x/cuts.mp4.edl", "/x/cuts.mp4.xml"}));
}

TEST_F(CutListFilesTest, writesNeitherFileWhenOneCannotBeWritten)
{
    // A folder where the XML file should go: the EDL must not appear on its own.
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("blocked.xml"));
    try {
        CutListFiles::write(soundOnly(), keeps, base("blocked"));
        FAIL() << "wrote over a folder";
    } catch (const TidleError& error) {
        EXPECT_EQ(error.kind(), TidleError::Kind::exportFailed);
        EXPECT_FALSE(error.payload().isEmpty());
    }
    EXPECT_EQ(folderContents(), QStringList({"blocked.xml"}));

    EXPECT_THROW(CutListFiles::write(soundOnly(), keeps, base("missing/folder/cuts")), TidleError);
    EXPECT_EQ(folderContents(), QStringList({"blocked.xml"}));
}

TEST_F(CutListFilesTest, neverWritesOverTheRecording)
{
    // A recording whose name ends like a cut list: FFmpeg reads it by its content.
    const QString media = base("clip.xml");
    ASSERT_TRUE(QFile::copy(soundOnly(), media));
    const QByteArray before = readAll(media).toUtf8();
    try {
        CutListFiles::write(media, keeps, base("clip"));
        FAIL() << "wrote over the recording";
    } catch (const TidleError& error) {
        EXPECT_EQ(error.kind(), TidleError::Kind::exportFailed);
    }
    EXPECT_EQ(readAll(media).toUtf8(), before);
    EXPECT_EQ(folderContents(), QStringList({"clip.xml"}));
}

TEST_F(CutListFilesTest, anUnreadableRecordingFailsWithoutWritingAnything)
{
    QFile notMedia(base("notes.mp4"));
    ASSERT_TRUE(notMedia.open(QIODevice::WriteOnly));
    notMedia.write("not a recording");
    notMedia.close();
    EXPECT_THROW(CutListFiles::write(notMedia.fileName(), keeps, base("notes")), MediaError);
    EXPECT_EQ(folderContents(), QStringList({"notes.mp4"}));
}
