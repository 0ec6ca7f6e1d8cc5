#include "XmemlWriter.h"

#include <QHash>
#include <QUrl>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

namespace {

// The document read back by Qt's XML reader: for every element path ("xmeml/sequence/name")
// the texts of the elements there in document order, an empty one for an element holding
// only others; attributes as "path/@name", the doctype as "!DOCTYPE".
using Texts = QHash<QString, QStringList>;

Texts parse(const QString& text)
{
    QXmlStreamReader reader(text);
    Texts texts;
    QStringList path;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::DTD:
            texts["!DOCTYPE"] << reader.text().trimmed().toString();
            break;
        case QXmlStreamReader::StartElement:
            path << reader.name().toString();
            texts[path.join('/')] << QString();
            for (const QXmlStreamAttribute& attribute : reader.attributes())
                texts[path.join('/') + "/@" + attribute.name().toString()]
                    << attribute.value().toString();
            break;
        case QXmlStreamReader::Characters:
            if (!reader.isWhitespace())
                texts[path.join('/')].last() += reader.text();
            break;
        case QXmlStreamReader::EndElement:
            path.removeLast();
            break;
        default:
            break;
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return texts;
}

CutListSource source(bool video, TimecodeRate rate)
{
    CutListSource s;
    s.path = QStringLiteral("/home/ann/Vorträge/a talk #1.mov");
    s.duration = 100.0;
    s.rate = rate;
    s.hasVideo = video;
    s.width = video ? 1920 : 0;
    s.height = video ? 1080 : 0;
    s.hasAudio = true;
    s.audioChannels = 2;
    s.sampleRate = 44100;
    return s;
}

const std::vector<Segment> keeps = {{0.4, 10.0}, {11.2, 30.55}, {31.0, 31.5}, {59.9, 61.3}};

// Checks one track's clip items against the keeps: source spans, record spans end to end,
// the rate and the one file they cut. Returns the frames kept.
qint64 checkTrack(const Texts& texts, const QString& kind, TimecodeRate rate)
{
    SCOPED_TRACE(kind.toStdString());
    const QString item = "xmeml/sequence/media/" + kind + "/track/clipitem/";
    QStringList in, out, start, end;
    qint64 record = 0;
    for (const Segment& keep : keeps) {
        const qint64 first = Timecode::frameAt(keep.start, rate);
        const qint64 last = Timecode::frameAt(keep.end, rate);
        in << QString::number(first);
        out << QString::number(last);
        start << QString::number(record);
        record += last - first;
        end << QString::number(record);
    }
    EXPECT_EQ(texts.value(item + "in"), in);
    EXPECT_EQ(texts.value(item + "out"), out);
    EXPECT_EQ(texts.value(item + "start"), start);
    EXPECT_EQ(texts.value(item + "end"), end);
    const auto n = qsizetype(keeps.size());
    const QString fileFrames = QString::number(Timecode::frameAt(100.0, rate));
    EXPECT_EQ(texts.value(item + "duration"), QStringList(n, fileFrames));
    EXPECT_EQ(texts.value(item + "rate/timebase"), QStringList(n, QString::number(rate.timebase)));
    EXPECT_EQ(texts.value(item + "name"), QStringList(n, "a talk #1.mov"));
    EXPECT_EQ(texts.value(item + "file/@id"), QStringList(n, "file-1"));
    return record;
}

} // namespace

TEST(XmemlWriter, describesOneSequenceAsLongAsTheKeepsAtTheVideosRate)
{
    const TimecodeRate rate{30, true};
    const QString text = XmemlWriter::text(source(true, rate), keeps, "a talk");
    EXPECT_TRUE(text.startsWith(QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>")));
    const Texts texts = parse(text);
    EXPECT_EQ(texts.value("!DOCTYPE"), QStringList{"<!DOCTYPE xmeml>"});
    EXPECT_EQ(texts.value("xmeml/@version"), QStringList{"5"});
    const auto sequence = [&](const QString& path) {
        const QStringList found = texts.value("xmeml/sequence/" + path);
        return found.size() == 1 ? found[0] : "found " + QString::number(found.size());
    };
    EXPECT_EQ(sequence("name"), "a talk");
    EXPECT_EQ(sequence("duration"), QString::number(checkTrack(texts, "video", rate)));
    EXPECT_EQ(sequence("rate/timebase"), "30");
    EXPECT_EQ(sequence("rate/ntsc"), "TRUE");
    EXPECT_EQ(sequence("timecode/displayformat"), "DF");
    EXPECT_EQ(sequence("timecode/string"), "00:00:00;00");
    EXPECT_EQ(sequence("media/video/format/samplecharacteristics/width"), "1920");
    EXPECT_EQ(sequence("media/audio/format/samplecharacteristics/samplerate"), "44100");
}

TEST(XmemlWriter, clipItemsCutTheOriginalFileInBothTracks)
{
    const TimecodeRate rate{25, false};
    const Texts texts = parse(XmemlWriter::text(source(true, rate), keeps, "t"));
    checkTrack(texts, "video", rate);
    checkTrack(texts, "audio", rate);

    // The first clip item describes the file; every other one refers to it by id.
    const QString video = "xmeml/sequence/media/video/track/clipitem/";
    const QString audio = "xmeml/sequence/media/audio/track/clipitem/";
    EXPECT_FALSE(texts.contains(audio + "file/pathurl"));
    ASSERT_EQ(texts.value(video + "file/pathurl").size(), 1);
    const QString pathurl = texts.value(video + "file/pathurl")[0];
    EXPECT_TRUE(pathurl.startsWith(QLatin1String("file:///")));
    EXPECT_EQ(QUrl(pathurl, QUrl::StrictMode).toLocalFile(),
              QStringLiteral("/home/ann/Vorträge/a talk #1.mov"));
    EXPECT_EQ(texts.value(video + "file/duration"), QStringList{"2500"});
    EXPECT_EQ(texts.value(video + "file/media/audio/channelcount"), QStringList{"2"});
    EXPECT_EQ(texts.value(video + "file/media/video/samplecharacteristics/height"),
              QStringList{"1080"});

    // Every item has its own id; picture and sound of one keep are linked to each other.
    const QStringList videoIds = texts.value(video + "@id");
    const QStringList audioIds = texts.value(audio + "@id");
    ASSERT_EQ(videoIds.size(), qsizetype(keeps.size()));
    ASSERT_EQ(audioIds.size(), qsizetype(keeps.size()));
    QStringList ids = videoIds + audioIds;
    ids.removeDuplicates();
    EXPECT_EQ(ids.size(), qsizetype(2 * keeps.size()));
    QStringList pairs;
    for (std::size_t i = 0; i < keeps.size(); ++i)
        pairs << videoIds[i] << audioIds[i];
    EXPECT_EQ(texts.value(video + "link/linkclipref"), pairs);
    EXPECT_EQ(texts.value(audio + "link/linkclipref"), pairs);
    EXPECT_EQ(texts.value(audio + "sourcetrack/mediatype"),
              QStringList(qsizetype(keeps.size()), "audio"));
}

TEST(XmemlWriter, soundAloneHasOnlyAnAudioTrackCountedAt25)
{
    const Texts texts = parse(XmemlWriter::text(source(false, {}), keeps, "t"));
    EXPECT_EQ(texts.value("xmeml/sequence/rate/timebase"), QStringList{"25"});
    EXPECT_EQ(texts.value("xmeml/sequence/rate/ntsc"), QStringList{"FALSE"});
    EXPECT_FALSE(texts.contains("xmeml/sequence/media/video"));
    const qint64 kept = checkTrack(texts, "audio", TimecodeRate{});
    const QString audio = "xmeml/sequence/media/audio/track/clipitem/";
    EXPECT_EQ(texts.value(audio + "file/pathurl").size(), 1);
    EXPECT_FALSE(texts.contains(audio + "link"));
    EXPECT_EQ(texts.value("xmeml/sequence/duration"), QStringList{QString::number(kept)});
}
