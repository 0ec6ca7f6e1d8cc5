#include "EdlWriter.h"

#include <gtest/gtest.h>

namespace {

CutListSource videoSource(TimecodeRate rate, int channels = 2)
{
    CutListSource source;
    source.path = QStringLiteral("/home/ann/Talks/a talk.mp4");
    source.duration = 120.0;
    source.rate = rate;
    source.hasVideo = true;
    source.width = 1280;
    source.height = 720;
    source.hasAudio = channels > 0;
    source.audioChannels = channels;
    source.sampleRate = 48000;
    return source;
}

CutListSource audioSource(int channels)
{
    CutListSource source = videoSource({}, channels);
    source.path = QStringLiteral("/home/ann/lecture.m4a");
    source.hasVideo = false;
    source.width = source.height = 0;
    return source;
}

const QString notes = QStringLiteral("* FROM CLIP NAME: a talk.mp4\n"
                                     "* FROM FILE: /home/ann/Talks/a talk.mp4\n");

} // namespace

TEST(EdlWriter, writesTitleFcmAndOneCutEventPerKeep)
{
    const QString text = EdlWriter::text(videoSource({25, false}),
                                         {{1.0, 2.0}, {3.5, 5.25}, {7.0, 7.5}}, "a talk cuts");
    EXPECT_EQ(text, QStringLiteral("TITLE: a talk cuts\nFCM: NON-DROP FRAME\n\n"
                                   "001  a_talk   AA/V  C        "
                                   "00:00:01:00 00:00:02:00 00:00:00:00 00:00:01:00\n") +
                        notes +
                        QStringLiteral("\n002  a_talk   AA/V  C        "
                                       "00:00:03:13 00:00:05:06 00:00:01:00 00:00:02:18\n") +
                        notes +
                        QStringLiteral("\n003  a_talk   AA/V  C        "
                                       "00:00:07:00 00:00:07:13 00:00:02:18 00:00:03:06\n") +
                        notes);
}

// 29.97 fps is labelled in drop-frame (;00 and ;01 do not exist at minute 1), and source
// timecodes count from the recording's own start timecode while record timecodes start at zero.
TEST(EdlWriter, labelsDropFrameFromTheRecordingsOwnTimecode)
{
    CutListSource source = videoSource({30, true});
    source.startFrame = 107892;
    EXPECT_EQ(EdlWriter::text(source, {{2.0, 3.0}, {60.1, 61.0}}, "t"),
              QStringLiteral("TITLE: t\nFCM: DROP FRAME\n\n"
                             "001  a_talk   AA/V  C        "
                             "01:00:02;00 01:00:03;00 00:00:00;00 00:00:01;00\n") +
                  notes +
                  QStringLiteral("\n002  a_talk   AA/V  C        "
                                 "01:01:00;03 01:01:01;00 00:00:01;00 00:00:01;27\n") +
                  notes);
}

TEST(EdlWriter, namesTheTracksEachEventTakes)
{
    const struct {
        CutListSource source;
        const char* channels;
    } cases[] = {
        {videoSource({25, false}, 2), "AA/V"},
        {videoSource({25, false}, 6), "AA/V"},
        {videoSource({25, false}, 1), "B"},
        {videoSource({25, false}, 0), "V"},
        {audioSource(2), "AA"},
        {audioSource(1), "A"},
    };
    for (const auto& c : cases) {
        // The first event line follows title, FCM and a blank line.
        const QString event = EdlWriter::text(c.source, {{1.0, 2.0}}, "t").section('\n', 3, 3);
        EXPECT_EQ(event.mid(14, 5).trimmed(), QString::fromLatin1(c.channels));
        // Sound alone is counted at 25 frames a second, as video here.
        EXPECT_EQ(event.mid(29, 23), QStringLiteral("00:00:01:00 00:00:02:00"));
    }
}

TEST(EdlWriter, reelNamesAreAtMostEightPlainCharactersOfTheFileName)
{
    const std::pair<const char*, const char*> cases[] = {
        {"/x/Lecture 3.mp4", "Lecture_"},
        {"/x/ab.mov", "ab"},
        {"/x/my.talk.final.mp4", "my_talk_"},
        {"/x/\xc3\x9c"
         "ber.wav",
         "_ber"},
        {"/x/.mp4", "AX"},
        {"relative/TALK2024-05-01.m4a", "TALK2024"},
    };
    for (auto [path, reel] : cases)
        EXPECT_EQ(EdlWriter::reelName(QString::fromUtf8(path)), QString::fromLatin1(reel)) << path;
}
