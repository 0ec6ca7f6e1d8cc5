#include "MediaFile.h"

#include "FfmpegCheck.h"
#include "MediaError.h"

#include <QFileInfo>
#include <cerrno>
#include <cmath>

extern "C" {
#include <libavutil/display.h>
}

MediaFile::MediaFile(const QString& path)
    : m_path(path)
    , m_context(openDemuxer(path))
{
    for (unsigned i = 0; i < m_context->nb_streams; ++i) {
        const AVStream* stream = m_context->streams[i];
        switch (stream->codecpar->codec_type) {
        case AVMEDIA_TYPE_AUDIO:
            if (avcodec_find_decoder(stream->codecpar->codec_id))
                m_audioStreams.push_back(int(i));
            else
                m_undecodableAudioStreams.push_back(int(i));
            break;
        case AVMEDIA_TYPE_VIDEO:
            if (!(stream->disposition & AV_DISPOSITION_ATTACHED_PIC))
                m_videoStreams.push_back(int(i));
            break;
        default:
            break;
        }
    }
}

InputFormatContextPtr MediaFile::openDemuxer(const QString& path)
{
    // FFmpeg opens a folder without complaint and only fails on reading; say so at once.
    if (QFileInfo(path).isDir())
        throw MediaError(ffmpegErrorText(AVERROR(EISDIR)));

    // The "file:" protocol makes a path read as a path, even with a colon in it.
    const QByteArray url = "file:" + path.toUtf8();
    AVFormatContext* raw = nullptr;
    int result = avformat_open_input(&raw, url.constData(), nullptr, nullptr);
    if (result == AVERROR(EINVAL))
        result = AVERROR_INVALIDDATA; // we pass no options: the content did not parse
    if (result < 0)
        throwFfmpegError("avformat_open_input", result); // the input is freed on failure
    InputFormatContextPtr context(raw);

    result = avformat_find_stream_info(context.get(), nullptr);
    if (result < 0)
        throwFfmpegError("avformat_find_stream_info", result);
    return context;
}

double MediaFile::duration() const
{
    if (m_context->duration == AV_NOPTS_VALUE)
        return std::nan("");
    return double(m_context->duration) / AV_TIME_BASE;
}

bool MediaFile::durationIsEstimated() const
{
    return m_context->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE;
}

QString MediaFile::codecTag(int streamIndex) const
{
    const AVCodecParameters* parameters = m_context->streams[streamIndex]->codecpar;
    switch (parameters->codec_id) {
    case AV_CODEC_ID_H264:
        return QStringLiteral("avc1");
    case AV_CODEC_ID_HEVC:
        return QStringLiteral("hvc1");
    case AV_CODEC_ID_MPEG4:
        return QStringLiteral("mp4v");
    default:
        break;
    }
    if (parameters->codec_tag != 0) {
        char text[AV_FOURCC_MAX_STRING_SIZE] = {};
        av_fourcc_make_string(text, parameters->codec_tag);
        return QString::fromLatin1(text);
    }
    return QString::fromLatin1(avcodec_get_name(parameters->codec_id));
}

int MediaFile::rotation(int streamIndex) const
{
    const AVStream* stream = m_context->streams[streamIndex];
    const auto* matrix = reinterpret_cast<const int32_t*>(
        av_stream_get_side_data(stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr));
    if (!matrix)
        return 0;
    // av_display_rotation_get gives counter-clockwise degrees.
    const double counterClockwise = av_display_rotation_get(matrix);
    if (std::isnan(counterClockwise))
        return 0;
    int clockwise = -int(std::lround(counterClockwise)) % 360;
    if (clockwise < 0)
        clockwise += 360;
    return clockwise;
}
