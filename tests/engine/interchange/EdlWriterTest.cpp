#include "EdlWriter.h"

#include <QRegularExpression>
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

// One event line as CMX 3600 lays it out: the fields at fixed columns.
struct EventLine {
    int number = 0;
    QString reel;
    QString channels;
    QString transition;
    QString times[4]; // source in, source out, record in, record out
};

std::optional<EventLine> readEvent(const QString& line)
{
    // Columns counted from 1: event 1-3, reel 6-13, channels 15-19, transition 21-28,
    // then four timecodes of 11 characters starting at 30, 42, 54 and 66.
    if (line.size() != 76 || !line.left(3).toInt())
        return std::nullopt;
    for (int column : {4, 5, 14, 20, 29, 41, 53, 65}) {
        if (line[column - 1] != QLatin1Char(' '))
            return std::nullopt;
    }
    EventLine event;
    event.number = line.left(3).toInt();
    event.reel = line.mid(5, 8).trimmed();
    event.channels = line.mid(14, 5).trimmed();
    event.transition = line.mid(20, 8).trimmed();
    for (int i = 0; i < 4; ++i)
        event.times[i] = line.mid(29 + 12 * i, 11);
    return event;
}

struct Edl {
    QString title;
    QString fcm;
    std::vector<EventLine> events;
    std::vector<QStringList> notes; // the comment lines under each event
    QStringList unreadLines;
};

Edl readEdl(const QString& text)
{
    Edl edl;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1String("TITLE: ")))
            edl.title = line.mid(7);
        else if (line.startsWith(QLatin1String("FCM: ")))
            edl.fcm = line.mid(5);
        else if (line.startsWith(QLatin1String("* ")) && !edl.notes.empty())
            edl.notes.back() << line.mid(2);
        else if (const std::optional<EventLine> event = readEvent(line)) {
            edl.events.push_back(*event);
            edl.notes.emplace_back();
        } else if (!line.isEmpty())
            edl.unreadLines << line;
    }
    return edl;
}

qint64 frames(const QString& timecode, TimecodeRate rate)
{
    const std::optional<qint64> frame = Timecode::parse(timecode, rate);
    EXPECT_TRUE(frame.has_value()) << timecode.toStdString();
    return frame.value_or(-1);
}

} // namespace

TEST(EdlWriter, writesTitleFcmAndOneCutEventPerKeep)
{
    const QString text = EdlWriter::text(videoSource({25, false}),
                                         {{1.0, 2.0}, {3.5, 5.25}, {7.0, 7.5}}, "a talk cuts");
    EXPECT_TRUE(text.startsWith(QLatin1String("TITLE: a talk cuts\nFCM: NON-DROP FRAME\n")));
    const Edl edl = readEdl(text);
    EXPECT_TRUE(edl.unreadLines.isEmpty()) << edl.unreadLines.join('\n').toStdString();
    ASSERT_EQ(edl.events.size(), 3u);
    const char* expected[3][4] = {
        {"00:00:01:00", "00:00:02:00", "00:00:00:00", "00:00:01:00"},
        {"00:00:03:13", "00:00:05:06", "00:00:01:00", "00:00:02:18"},
        {"00:00:07:00", "00:00:07:13", "00:00:02:18", "00:00:03:06"},
    };
    for (int i = 0; i < 3; ++i) {
        const EventLine& event = edl.events[i];
        EXPECT_EQ(event.number, i + 1);
        EXPECT_EQ(event.reel, QStringLiteral("a_talk"));
        EXPECT_EQ(event.channels, QStringLiteral("AA/V"));
        EXPECT_EQ(event.transition, QStringLiteral("C"));
        for (int t = 0; t < 4; ++t)
            EXPECT_EQ(event.times[t], QString::fromLatin1(expected[i][t])) << i << "," << t;
        EXPECT_EQ(edl.notes[i], QStringList({"FROM CLIP NAME: a talk.mp4",
                                             "FROM FILE: /home/ann/Talks/a talk.mp4"}));
    }
}

TEST(EdlWriter, sourceAndRecordSpansAgreeAndRecordTimecodesFollowOnAtEveryRate)
{
    const std::vector<Segment> keeps = {{0.3, 12.7}, {13.9, 59.95}, {60.4, 61.1}, {599.0, 601.0}};
    for (const TimecodeRate rate : {TimecodeRate{25, false}, TimecodeRate{24, true},
                                    TimecodeRate{30, true}, TimecodeRate{60, true}}) {
        const Edl edl = readEdl(EdlWriter::text(videoSource(rate), keeps, "t"));
        EXPECT_EQ(edl.fcm, rate.dropFrame() ? "DROP FRAME" : "NON-DROP FRAME");
        ASSERT_EQ(edl.events.size(), keeps.size());
        // 29.97 and 59.94 are labelled in drop-frame, with ";" before the frames.
        EXPECT_EQ(edl.events[0].times[0][8], rate.dropFrame() ? ';' : ':');
        qint64 record = 0;
        for (size_t i = 0; i < keeps.size(); ++i) {
            const EventLine& event = edl.events[i];
            const qint64 sourceIn = frames(event.times[0], rate);
            const qint64 sourceOut = frames(event.times[1], rate);
            EXPECT_EQ(sourceIn, Timecode::frameAt(keeps[i].start, rate));
            EXPECT_EQ(sourceOut, Timecode::frameAt(keeps[i].end, rate));
            EXPECT_EQ(frames(event.times[2], rate), record);
            record = frames(event.times[3], rate);
            EXPECT_EQ(record - frames(event.times[2], rate), sourceOut - sourceIn);
        }
    }
}

TEST(EdlWriter, startsSourceTimecodesAtTheRecordingsOwnTimecode)
{
    CutListSource source = videoSource({25, false});
    source.startFrame = 90000; // 01:00:00:00
    const Edl edl = readEdl(EdlWriter::text(source, {{2.0, 3.0}}, "t"));
    ASSERT_EQ(edl.events.size(), 1u);
    EXPECT_EQ(edl.events[0].times[0], QStringLiteral("01:00:02:00"));
    EXPECT_EQ(edl.events[0].times[1], QStringLiteral("01:00:03:00"));
    EXPECT_EQ(edl.events[0].times[2], QStringLiteral("00:00:00:00"));
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
        const Edl edl = readEdl(EdlWriter::text(c.source, {{0.0, 1.0}}, "t"));
        ASSERT_EQ(edl.events.size(), 1u);
        EXPECT_EQ(edl.events[0].channels, QString::fromLatin1(c.channels));
    }
    // Sound alone is counted at 25 frames a second.
    const Edl audio = readEdl(EdlWriter::text(audioSource(2), {{1.0, 2.0}}, "t"));
    EXPECT_EQ(audio.events[0].times[1], QStringLiteral("00:00:02:00"));
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
