#include "XmemlWriter.h"

#include "CutEvent.h"

#include <QUrl>
#include <QXmlStreamWriter>

namespace {

constexpr int defaultSampleRate = 48000;
constexpr int assumedSampleDepth = 16;
const QString fileId = QStringLiteral("file-1");

enum class Track { video, audio };

QString mediaType(Track track)
{
    return track == Track::video ? QStringLiteral("video") : QStringLiteral("audio");
}

class Document {
public:
    Document(const CutListSource& source, const std::vector<CutEvent>& events, QByteArray* output)
        : m_source(source)
        , m_events(events)
        , m_xml(output)
    {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(2);
    }

    void write(const QString& title)
    {
        m_xml.writeStartDocument();
        m_xml.writeDTD(QStringLiteral("<!DOCTYPE xmeml>"));
        m_xml.writeStartElement(QStringLiteral("xmeml"));
        m_xml.writeAttribute(QStringLiteral("version"), QStringLiteral("5"));
        m_xml.writeStartElement(QStringLiteral("sequence"));
        m_xml.writeAttribute(QStringLiteral("id"), QStringLiteral("sequence-1"));
        m_xml.writeTextElement(QStringLiteral("name"), title);
        number(QStringLiteral("duration"), m_events.empty() ? 0 : m_events.back().recordOut);
        rate();
        timecode(0);
        m_xml.writeStartElement(QStringLiteral("media"));
        if (m_source.hasVideo)
            track(Track::video);
        if (m_source.hasAudio)
            track(Track::audio);
        m_xml.writeEndElement(); // media
        m_xml.writeEndElement(); // sequence
        m_xml.writeEndElement(); // xmeml
        m_xml.writeEndDocument();
    }

private:
    void number(const QString& name, qint64 value)
    {
        m_xml.writeTextElement(name, QString::number(value));
    }

    void rate()
    {
        m_xml.writeStartElement(QStringLiteral("rate"));
        number(QStringLiteral("timebase"), m_source.rate.timebase);
        m_xml.writeTextElement(QStringLiteral("ntsc"), m_source.rate.ntsc
                                                           ? QStringLiteral("TRUE")
                                                           : QStringLiteral("FALSE"));
        m_xml.writeEndElement();
    }

    void timecode(qint64 frame)
    {
        m_xml.writeStartElement(QStringLiteral("timecode"));
        rate();
        m_xml.writeTextElement(QStringLiteral("string"), Timecode::text(frame, m_source.rate));
        number(QStringLiteral("frame"), frame);
        m_xml.writeTextElement(QStringLiteral("displayformat"), m_source.rate.dropFrame()
                                                                    ? QStringLiteral("DF")
                                                                    : QStringLiteral("NDF"));
        m_xml.writeEndElement();
    }

    int sampleRate() const
    {
        return m_source.sampleRate > 0 ? m_source.sampleRate : defaultSampleRate;
    }

    void videoCharacteristics()
    {
        m_xml.writeStartElement(QStringLiteral("samplecharacteristics"));
        rate();
        number(QStringLiteral("width"), m_source.width);
        number(QStringLiteral("height"), m_source.height);
        m_xml.writeTextElement(QStringLiteral("pixelaspectratio"), QStringLiteral("square"));
        m_xml.writeTextElement(QStringLiteral("fielddominance"), QStringLiteral("none"));
        m_xml.writeEndElement();
    }

    void audioCharacteristics()
    {
        m_xml.writeStartElement(QStringLiteral("samplecharacteristics"));
        number(QStringLiteral("depth"), assumedSampleDepth);
        number(QStringLiteral("samplerate"), sampleRate());
        m_xml.writeEndElement();
    }

    // The first clip item to name the file describes it in full; later ones refer to it.
    void file()
    {
        m_xml.writeStartElement(QStringLiteral("file"));
        m_xml.writeAttribute(QStringLiteral("id"), fileId);
        if (m_fileWritten) {
            m_xml.writeEndElement();
            return;
        }
        m_fileWritten = true;
        m_xml.writeTextElement(QStringLiteral("name"), m_source.clipName());
        m_xml.writeTextElement(QStringLiteral("pathurl"),
                               QUrl::fromLocalFile(m_source.path).toString(QUrl::FullyEncoded));
        rate();
        number(QStringLiteral("duration"), m_source.durationFrames());
        timecode(m_source.startFrame);
        m_xml.writeStartElement(QStringLiteral("media"));
        if (m_source.hasVideo) {
            m_xml.writeStartElement(QStringLiteral("video"));
            videoCharacteristics();
            m_xml.writeEndElement();
        }
        if (m_source.hasAudio) {
            m_xml.writeStartElement(QStringLiteral("audio"));
            audioCharacteristics();
            number(QStringLiteral("channelcount"), std::max(m_source.audioChannels, 1));
            m_xml.writeEndElement();
        }
        m_xml.writeEndElement(); // media
        m_xml.writeEndElement(); // file
    }

    QString clipItemId(Track track, size_t index) const
    {
        const size_t offset = track == Track::audio && m_source.hasVideo ? m_events.size() : 0;
        return QStringLiteral("clipitem-%1").arg(offset + index + 1);
    }

    void link(Track track, size_t index)
    {
        m_xml.writeStartElement(QStringLiteral("link"));
        m_xml.writeTextElement(QStringLiteral("linkclipref"), clipItemId(track, index));
        m_xml.writeTextElement(QStringLiteral("mediatype"), mediaType(track));
        number(QStringLiteral("trackindex"), 1);
        number(QStringLiteral("clipindex"), qint64(index) + 1);
        m_xml.writeEndElement();
    }

    void clipItem(Track track, size_t index)
    {
        const CutEvent& event = m_events[index];
        m_xml.writeStartElement(QStringLiteral("clipitem"));
        m_xml.writeAttribute(QStringLiteral("id"), clipItemId(track, index));
        m_xml.writeTextElement(QStringLiteral("masterclipid"), QStringLiteral("masterclip-1"));
        m_xml.writeTextElement(QStringLiteral("name"), m_source.clipName());
        m_xml.writeTextElement(QStringLiteral("enabled"), QStringLiteral("TRUE"));
        number(QStringLiteral("duration"), m_source.durationFrames());
        rate();
        number(QStringLiteral("start"), event.recordIn);
        number(QStringLiteral("end"), event.recordOut);
        number(QStringLiteral("in"), event.sourceIn);
        number(QStringLiteral("out"), event.sourceOut);
        file();
        if (track == Track::audio) {
            m_xml.writeStartElement(QStringLiteral("sourcetrack"));
            m_xml.writeTextElement(QStringLiteral("mediatype"), QStringLiteral("audio"));
            number(QStringLiteral("trackindex"), 1);
            m_xml.writeEndElement();
        }
        // Picture and sound of one keep move together in the editor.
        if (m_source.hasVideo && m_source.hasAudio) {
            link(Track::video, index);
            link(Track::audio, index);
        }
        m_xml.writeEndElement();
    }

    void track(Track kind)
    {
        m_xml.writeStartElement(mediaType(kind));
        m_xml.writeStartElement(QStringLiteral("format"));
        if (kind == Track::video)
            videoCharacteristics();
        else
            audioCharacteristics();
        m_xml.writeEndElement();
        m_xml.writeStartElement(QStringLiteral("track"));
        for (size_t i = 0; i < m_events.size(); ++i)
            clipItem(kind, i);
        m_xml.writeEndElement(); // track
        m_xml.writeEndElement(); // video or audio
    }

    const CutListSource& m_source;
    const std::vector<CutEvent>& m_events;
    QXmlStreamWriter m_xml;
    bool m_fileWritten = false;
};

} // namespace

namespace XmemlWriter {

QString text(const CutListSource& source, const std::vector<Segment>& keeps, const QString& title)
{
    // Written as bytes, so the declaration names UTF-8 as editors expect.
    QByteArray output;
    const std::vector<CutEvent> events = CutEvent::fromKeeps(keeps, source.rate);
    Document(source, events, &output).write(title);
    return QString::fromUtf8(output);
}

} // namespace XmemlWriter
