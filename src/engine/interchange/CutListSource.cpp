#include "CutListSource.h"

#include "MediaFile.h"

#include <QFileInfo>
#include <cmath>
#include <optional>

extern "C" {
#include <libavutil/dict.h>
}

namespace {

// Camera files carry their start timecode as a tag on the video stream or the container.
std::optional<QString> timecodeTag(const AVFormatContext* context, const AVStream* video)
{
    for (const AVDictionary* tags : {video ? video->metadata : nullptr, context->metadata}) {
        if (const AVDictionaryEntry* entry = av_dict_get(tags, "timecode", nullptr, 0))
            return QString::fromUtf8(entry->value);
    }
    return std::nullopt;
}

} // namespace

QString CutListSource::clipName() const
{
    return QFileInfo(path).fileName();
}

qint64 CutListSource::durationFrames() const
{
    return Timecode::frameAt(duration, rate);
}

CutListSource CutListSource::probe(const QString& path)
{
    const MediaFile file(path);
    CutListSource source;
    source.path = QFileInfo(path).absoluteFilePath();
    source.duration = std::isfinite(file.duration()) ? file.duration() : 0.0;
    const AVFormatContext* context = file.context();
    const AVStream* video = nullptr;
    if (!file.videoStreams().empty()) {
        video = context->streams[file.videoStreams().front()];
        const AVRational rate =
            video->avg_frame_rate.num > 0 ? video->avg_frame_rate : video->r_frame_rate;
        source.rate = TimecodeRate::fromFrameRate(rate.num, rate.den);
        source.hasVideo = true;
        source.width = video->codecpar->width;
        source.height = video->codecpar->height;
    }
    if (!file.audioStreams().empty()) {
        const AVStream* audio = context->streams[file.audioStreams().front()];
        source.hasAudio = true;
        source.audioChannels = audio->codecpar->ch_layout.nb_channels;
        source.sampleRate = audio->codecpar->sample_rate;
    }
    if (const std::optional<QString> tag = timecodeTag(context, video))
        source.startFrame = Timecode::parse(*tag, source.rate).value_or(0);
    return source;
}
