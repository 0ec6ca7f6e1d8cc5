#include "XmemlWriter.h"

#include <QSet>
#include <QUrl>
#include <QXmlStreamReader>
#include <gtest/gtest.h>
#include <memory>

namespace {

// The document read back by Qt's XML reader into a plain tree.
struct Element {
    QString name;
    QXmlStreamAttributes attributes;
    QString text;
    std::vector<std::unique_ptr<Element>> children;

    const Element* child(const QString& childName) const
    {
        for (const auto& c : children) {
            if (c->name == childName)
                return c.get();
        }
        return nullptr;
    }
    std::vector<const Element*> all(const QString& childName) const
    {
        std::vector<const Element*> found;
        for (const auto& c : children) {
            if (c->name == childName)
                found.push_back(c.get());
        }
        return found;
    }
    // The text of the descendant at `path` ("rate/timebase"); empty when it is missing.
    QString at(const QString& path) const
    {
        const Element* e = this;
        for (const QString& step : path.split(QLatin1Char('/'))) {
            e = e->child(step);
            if (!e)
                return {};
        }
        return e->text;
    }
    qint64 number(const QString& path) const
    {
        bool ok = false;
        const qint64 value = at(path).toLongLong(&ok);
        EXPECT_TRUE(ok) << "no number at " << name.toStdString() << "/" << path.toStdString();
        return value;
    }
    QString id() const { return attributes.value(QLatin1String("id")).toString(); }
};

std::unique_ptr<Element> parse(const QString& text, QString* doctype = nullptr)
{
    QXmlStreamReader reader(text);
    auto root = std::make_unique<Element>();
    std::vector<Element*> open{root.get()};
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::DTD:
            if (doctype)
                *doctype = reader.text().toString();
            break;
        case QXmlStreamReader::StartElement: {
            auto element = std::make_unique<Element>();
            element->name = reader.name().toString();
            element->attributes = reader.attributes();
            Element* raw = element.get();
            open.back()->children.push_back(std::move(element));
            open.push_back(raw);
            break;
        }
        case QXmlStreamReader::Characters:
            if (!reader.isWhitespace())
                open.back()->text += reader.text();
            break;
        case QXmlStreamReader::EndElement:
            open.pop_back();
            break;
        default:
            break;
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return root;
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

qint64 keptFrames(TimecodeRate rate)
{
    qint64 total = 0;
    for (const Segment& keep : keeps)
        total += Timecode::frameAt(keep.end, rate) - Timecode::frameAt(keep.start, rate);
    return total;
}

// Checks one track's clip items against the keeps; returns the items.
std::vector<const Element*> checkTrack(const Element* media, const QString& kind, TimecodeRate rate)
{
    const Element* track =
        media && media->child(kind) ? media->child(kind)->child("track") : nullptr;
    EXPECT_NE(track, nullptr) << kind.toStdString();
    if (!track)
        return {};
    const std::vector<const Element*> items = track->all("clipitem");
    EXPECT_EQ(items.size(), keeps.size());
    qint64 end = 0;
    for (size_t i = 0; i < items.size() && i < keeps.size(); ++i) {
        const Element* item = items[i];
        const qint64 in = item->number("in");
        const qint64 out = item->number("out");
        EXPECT_EQ(in, Timecode::frameAt(keeps[i].start, rate));
        EXPECT_EQ(out, Timecode::frameAt(keeps[i].end, rate));
        EXPECT_EQ(item->number("start"), end) << "clip items follow on without gaps";
        EXPECT_EQ(item->number("end") - item->number("start"), out - in);
        EXPECT_LE(out, item->number("duration"));
        EXPECT_EQ(item->number("rate/timebase"), rate.timebase);
        EXPECT_EQ(item->at("name"), QStringLiteral("a talk #1.mov"));
        EXPECT_EQ(item->child("file")->id(), QStringLiteral("file-1"));
        end = item->number("end");
    }
    return items;
}

} // namespace

TEST(XmemlWriter, describesOneSequenceAsLongAsTheKeepsAtTheVideosRate)
{
    const TimecodeRate rate{30, true};
    QString doctype;
    const QString text = XmemlWriter::text(source(true, rate), keeps, "a talk");
    EXPECT_TRUE(text.startsWith(QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>")));
    const auto root = parse(text, &doctype);
    EXPECT_EQ(doctype.trimmed(), QStringLiteral("<!DOCTYPE xmeml>"));
    ASSERT_EQ(root->children.size(), 1u);
    const Element* xmeml = root->child("xmeml");
    ASSERT_NE(xmeml, nullptr);
    EXPECT_EQ(xmeml->attributes.value("version"), QStringLiteral("5"));
    const Element* sequence = xmeml->child("sequence");
    ASSERT_NE(sequence, nullptr);
    EXPECT_EQ(sequence->at("name"), QStringLiteral("a talk"));
    EXPECT_EQ(sequence->number("duration"), keptFrames(rate));
    EXPECT_EQ(sequence->number("rate/timebase"), 30);
    EXPECT_EQ(sequence->at("rate/ntsc"), QStringLiteral("TRUE"));
    EXPECT_EQ(sequence->at("timecode/displayformat"), QStringLiteral("DF"));
    EXPECT_EQ(sequence->at("timecode/string"), QStringLiteral("00:00:00;00"));
    EXPECT_EQ(sequence->number("media/video/format/samplecharacteristics/width"), 1920);
    EXPECT_EQ(sequence->number("media/audio/format/samplecharacteristics/samplerate"), 44100);
}

TEST(XmemlWriter, clipItemsCutTheOriginalFileInBothTracks)
{
    const TimecodeRate rate{25, false};
    const auto root = parse(XmemlWriter::text(source(true, rate), keeps, "t"));
    const Element* media = root->child("xmeml")->child("sequence")->child("media");
    const auto video = checkTrack(media, "video", rate);
    const auto audio = checkTrack(media, "audio", rate);
    ASSERT_EQ(video.size(), keeps.size());
    ASSERT_EQ(audio.size(), keeps.size());

    // The first clip item describes the file; every other one refers to it by id.
    const Element* file = video.front()->child("file");
    const QUrl url(file->at("pathurl"), QUrl::StrictMode);
    EXPECT_EQ(url.scheme(), QStringLiteral("file"));
    EXPECT_TRUE(file->at("pathurl").startsWith(QLatin1String("file:///")));
    EXPECT_EQ(url.toLocalFile(), QStringLiteral("/home/ann/Vorträge/a talk #1.mov"));
    EXPECT_EQ(file->number("duration"), 2500);
    EXPECT_EQ(file->number("media/audio/channelcount"), 2);
    EXPECT_EQ(file->number("media/video/samplecharacteristics/height"), 1080);
    int described = 0;
    for (const auto* items : {&video, &audio}) {
        for (const Element* item : *items)
            described += item->child("file")->children.empty() ? 0 : 1;
    }
    EXPECT_EQ(described, 1);

    // Every item has its own id; picture and sound of one keep are linked to each other.
    QSet<QString> ids;
    for (const auto* items : {&video, &audio}) {
        for (const Element* item : *items)
            ids.insert(item->id());
    }
    EXPECT_EQ(ids.size(), int(2 * keeps.size()));
    for (size_t i = 0; i < keeps.size(); ++i) {
        for (const Element* item : {video[i], audio[i]}) {
            QStringList linked;
            for (const Element* link : item->all("link"))
                linked << link->at("linkclipref");
            EXPECT_EQ(linked, QStringList({video[i]->id(), audio[i]->id()}));
        }
        EXPECT_EQ(audio[i]->at("sourcetrack/mediatype"), QStringLiteral("audio"));
    }
}

TEST(XmemlWriter, soundAloneHasOnlyAnAudioTrackCountedAt25)
{
    const auto root = parse(XmemlWriter::text(source(false, {}), keeps, "t"));
    const Element* sequence = root->child("xmeml")->child("sequence");
    EXPECT_EQ(sequence->number("rate/timebase"), 25);
    EXPECT_EQ(sequence->at("rate/ntsc"), QStringLiteral("FALSE"));
    EXPECT_EQ(sequence->child("media")->child("video"), nullptr);
    const auto audio = checkTrack(sequence->child("media"), "audio", TimecodeRate{});
    ASSERT_FALSE(audio.empty());
    EXPECT_FALSE(audio.front()->child("file")->at("pathurl").isEmpty());
    EXPECT_TRUE(audio.front()->all("link").empty());
    EXPECT_EQ(sequence->number("duration"), keptFrames(TimecodeRate{}));
}


