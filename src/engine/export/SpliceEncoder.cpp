#include "SpliceEncoder.h"

#include "AvcConfig.h"
#include "ExportFailure.h"
#include "NalUnits.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <cstring>

namespace {

const char* x264Profile(int profileIdc)
{
    switch (profileIdc) {
    case 66:
        return "baseline";
    case 77:
        return "main";
    case 100:
        return "high";
    case 110:
        return "high10";
    case 122:
        return "high422";
    case 244:
        return "high444";
    default:
        return nullptr;
    }
}

bool encoderTakes(const AVCodec* codec, AVPixelFormat format)
{
    for (const AVPixelFormat* f = codec->pix_fmts; f && *f != AV_PIX_FMT_NONE; ++f) {
        if (*f == format)
            return true;
    }
    return false;
}

CodecContextPtr openEncoder(const SpliceEncoder::Settings& settings)
{
    const AVCodec* codec = avcodec_find_encoder_by_name("libx264");
    if (!codec)
        throwExportFailure("opening the H.264 encoder", AVERROR_ENCODER_NOT_FOUND);
    CodecContextPtr encoder(avcodec_alloc_context3(codec));
    if (!encoder)
        throwExportFailure("opening the H.264 encoder", AVERROR(ENOMEM));
    encoder->width = settings.width;
    encoder->height = settings.height;
    encoder->pix_fmt = settings.format;
    encoder->time_base = settings.timeBase;
    encoder->framerate = settings.frameRate;
    encoder->sample_aspect_ratio = settings.aspect;
    encoder->color_primaries = settings.primaries;
    encoder->color_trc = settings.transfer;
    encoder->colorspace = settings.space;
    encoder->color_range = settings.range;
    encoder->chroma_sample_location = settings.chromaLocation;
    encoder->max_b_frames = 0;
    // Parameter sets go into the file's decoder configuration, not before each IDR.
    encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    const char* step = "opening the H.264 encoder";
    checkExportStep(av_opt_set(encoder->priv_data, "preset", SpliceEncoder::preset, 0), step);
    // No look-ahead and no frame threads: each picture's packet comes out as it goes in,
    // so a run is complete with its last picture and the encoder serves every run.
    checkExportStep(av_opt_set(encoder->priv_data, "tune", "zerolatency", 0), step);
    checkExportStep(av_opt_set(encoder->priv_data, "forced-idr", "1", 0), step);
    checkExportStep(av_opt_set(encoder->priv_data, "crf", SpliceEncoder::quality, 0), step);
    checkExportStep(av_opt_set(encoder->priv_data, "profile", settings.profile, 0), step);
    checkExportStep(
        av_opt_set(encoder->priv_data, "level", QByteArray::number(settings.level).constData(), 0),
        step);
    const QByteArray parameters = "sps-id=" + QByteArray::number(settings.parameterSetId);
    checkExportStep(av_opt_set(encoder->priv_data, "x264-params", parameters.constData(), 0), step);
    checkExportStep(avcodec_open2(encoder.get(), codec, nullptr), step);
    return encoder;
}

} // namespace

std::optional<SpliceEncoder::Settings> SpliceEncoder::settingsFor(const AVStream* source,
                                                                  QString& whyNot)
{
    const AVCodecParameters* parameters = source->codecpar;
    if (parameters->codec_id != AV_CODEC_ID_H264) {
        whyNot = QStringLiteral("no encoder makes %1 that joins the copied pictures")
                     .arg(QString::fromLatin1(avcodec_get_name(parameters->codec_id)));
        return std::nullopt;
    }
    const AVCodec* codec = avcodec_find_encoder_by_name("libx264");
    if (!codec) {
        whyNot = QStringLiteral("libx264 is missing");
        return std::nullopt;
    }
    const auto config = AvcConfig::parse(QByteArray(
        reinterpret_cast<const char*>(parameters->extradata), parameters->extradata_size));
    if (!config || config->lengthSize() != 4) {
        whyNot = QStringLiteral("the stream's parameter sets are not in a decoder configuration");
        return std::nullopt;
    }
    Settings settings;
    settings.profile = x264Profile(config->profile());
    const auto id = config->freeParameterSetId();
    settings.format = AVPixelFormat(parameters->format);
    if (!settings.profile || !id || !encoderTakes(codec, settings.format) ||
        parameters->width % 2 != 0 || parameters->height % 2 != 0 ||
        (parameters->field_order != AV_FIELD_UNKNOWN &&
         parameters->field_order != AV_FIELD_PROGRESSIVE)) {
        whyNot = QStringLiteral("x264 cannot match this stream's profile, size or pixel format");
        return std::nullopt;
    }
    settings.width = parameters->width;
    settings.height = parameters->height;
    settings.timeBase = source->time_base;
    settings.frameRate =
        source->avg_frame_rate.num > 0 ? source->avg_frame_rate : source->r_frame_rate;
    settings.aspect = parameters->sample_aspect_ratio;
    settings.primaries = parameters->color_primaries;
    settings.transfer = parameters->color_trc;
    settings.space = parameters->color_space;
    settings.range = parameters->color_range;
    settings.chromaLocation = parameters->chroma_location;
    settings.level = config->level();
    settings.parameterSetId = *id;
    settings.lengthSize = config->lengthSize();
    settings.sourceConfig = QByteArray(reinterpret_cast<const char*>(parameters->extradata),
                                       parameters->extradata_size);
    return settings;
}

QByteArray SpliceEncoder::decoderConfig(const Settings& settings)
{
    const CodecContextPtr encoder = openEncoder(settings);
    QList<QByteArray> sequenceSets;
    QList<QByteArray> pictureSets;
    AvcConfig::splitParameterSets(
        QByteArray(reinterpret_cast<const char*>(encoder->extradata), encoder->extradata_size),
        sequenceSets, pictureSets);
    if (sequenceSets.isEmpty() || pictureSets.isEmpty())
        throwExportFailure("opening the H.264 encoder", AVERROR_BUG);
    return AvcConfig::parse(settings.sourceConfig)->withParameterSets(sequenceSets, pictureSets);
}

SpliceEncoder::SpliceEncoder(const Settings& settings)
    : m_settings(settings)
    , m_encoder(openEncoder(settings))
{
}

void SpliceEncoder::encode(AVFrame* frame, int64_t pts, int64_t duration, bool startsRun,
                           const Sink& sink)
{
    frame->pts = pts;
    // The source's frame types mean nothing here; an I picture is made an IDR.
    frame->pict_type = startsRun ? AV_PICTURE_TYPE_I : AV_PICTURE_TYPE_NONE;
    m_durations[pts] = duration;
    send(frame, sink);
}

void SpliceEncoder::finish(const Sink& sink)
{
    send(nullptr, sink);
}

void SpliceEncoder::send(const AVFrame* frame, const Sink& sink)
{
    checkExportStep(avcodec_send_frame(m_encoder.get(), frame), "encoding the video");
    for (;;) {
        const int result = avcodec_receive_packet(m_encoder.get(), m_packet.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return;
        checkExportStep(result, "encoding the video");
        if (const auto found = m_durations.find(m_packet->pts); found != m_durations.end()) {
            m_packet->duration = found->second;
            m_durations.erase(found);
        }
        // x264 writes start codes; the file stores lengths, as the copied packets do.
        const QByteArray units =
            NalUnits::toLengthPrefixed(m_packet->data, m_packet->size, m_settings.lengthSize);
        PacketPtr converted = makePacket();
        checkExportStep(av_new_packet(converted.get(), int(units.size())), "encoding the video");
        std::memcpy(converted->data, units.constData(), std::size_t(units.size()));
        checkExportStep(av_packet_copy_props(converted.get(), m_packet.get()),
                        "encoding the video");
        av_packet_unref(m_packet.get());
        sink(converted.get());
    }
}
