#include "H264Encoder.h"

#include "ExportFailure.h"
#include "Localization.h"
#include "OutputFile.h"
#include "TidleError.h"

extern "C" {
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
}

namespace {

bool isHighDynamicRange(AVColorTransferCharacteristic transfer)
{
    return transfer == AVCOL_TRC_SMPTE2084 || transfer == AVCOL_TRC_ARIB_STD_B67;
}

// 8-bit 4:2:0, the one format every player and phone decodes; HDR pictures need their
// 10 bits, or their gradients band.
AVPixelFormat encoderFormat(const AVCodecContext* source)
{
    if (source->pix_fmt == AV_PIX_FMT_YUV420P || source->pix_fmt == AV_PIX_FMT_YUVJ420P)
        return source->pix_fmt;
    const AVPixFmtDescriptor* descriptor = av_pix_fmt_desc_get(source->pix_fmt);
    if (descriptor && descriptor->comp[0].depth > 8 && isHighDynamicRange(source->color_trc))
        return AV_PIX_FMT_YUV420P10LE;
    return AV_PIX_FMT_YUV420P;
}

bool isRgb(AVPixelFormat format)
{
    const AVPixFmtDescriptor* descriptor = av_pix_fmt_desc_get(format);
    return descriptor && (descriptor->flags & AV_PIX_FMT_FLAG_RGB);
}

bool isFullRange(const AVCodecContext* source)
{
    return source->color_range == AVCOL_RANGE_JPEG || source->pix_fmt == AV_PIX_FMT_YUVJ420P ||
           source->pix_fmt == AV_PIX_FMT_YUVJ422P || source->pix_fmt == AV_PIX_FMT_YUVJ444P;
}

} // namespace

H264Encoder::H264Encoder(const AVCodecContext* source, AVRational frameRate, AVRational timeBase,
                         OutputFile& output)
    : m_output(output)
{
    const AVCodec* codec = avcodec_find_encoder_by_name("libx264");
    if (!codec)
        throw TidleError::exportFailed(localized("diag.noEncoder"));
    m_encoder.reset(avcodec_alloc_context3(codec));
    if (!m_encoder)
        throwExportFailure("opening the H.264 encoder", AVERROR(ENOMEM));

    m_encoder->width = std::max(2, source->width & ~1);
    m_encoder->height = std::max(2, source->height & ~1);
    m_encoder->pix_fmt = encoderFormat(source);
    m_encoder->sample_aspect_ratio = source->sample_aspect_ratio;
    m_encoder->time_base = timeBase;
    m_encoder->framerate = frameRate;
    // The picture itself is not re-coloured, so its tags stay true. Converting RGB needs a
    // matrix: BT.709, tagged as such.
    m_encoder->color_primaries = source->color_primaries;
    m_encoder->color_trc = source->color_trc;
    m_encoder->colorspace = isRgb(source->pix_fmt) ? AVCOL_SPC_BT709 : source->colorspace;
    m_encoder->color_range =
        !isRgb(source->pix_fmt) && isFullRange(source) ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    m_encoder->chroma_sample_location = source->chroma_sample_location;
    if (output.needsGlobalHeader())
        m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    checkExportStep(av_opt_set(m_encoder->priv_data, "preset", preset, 0),
                    "opening the H.264 encoder");
    checkExportStep(av_opt_set(m_encoder->priv_data, "crf", quality, 0),
                    "opening the H.264 encoder");
    checkExportStep(avcodec_open2(m_encoder.get(), codec, nullptr), "opening the H.264 encoder");

    m_stream = output.addStream();
    checkExportStep(avcodec_parameters_from_context(m_stream->codecpar, m_encoder.get()),
                    "opening the H.264 encoder");
    m_stream->time_base = timeBase;
    m_stream->avg_frame_rate = frameRate;
    m_stream->sample_aspect_ratio = m_encoder->sample_aspect_ratio;
}

AVFrame* H264Encoder::convert(AVFrame* frame)
{
    if (frame->format == m_encoder->pix_fmt && frame->width == m_encoder->width &&
        frame->height == m_encoder->height)
        return frame;
    const auto sourceFormat = AVPixelFormat(frame->format);
    m_scaler.reset(sws_getCachedContext(
        m_scaler.release(), frame->width, frame->height, sourceFormat, m_encoder->width,
        m_encoder->height, m_encoder->pix_fmt, SWS_BICUBIC, nullptr, nullptr, nullptr));
    if (!m_scaler)
        throwExportFailure("converting the picture", AVERROR(EINVAL));
    const int sourceSpace = isRgb(sourceFormat) ? SWS_CS_ITU709 : int(frame->colorspace);
    const int* coefficients = sws_getCoefficients(sourceSpace);
    const int sourceFull =
        frame->color_range == AVCOL_RANGE_JPEG || sourceFormat == AV_PIX_FMT_YUVJ420P ||
        sourceFormat == AV_PIX_FMT_YUVJ422P || sourceFormat == AV_PIX_FMT_YUVJ444P;
    // Only the chroma layout and bit depth change; matrix and range stay the source's.
    sws_setColorspaceDetails(m_scaler.get(), coefficients, sourceFull, coefficients,
                             m_encoder->color_range == AVCOL_RANGE_JPEG, 0, 1 << 16, 1 << 16);

    if (!m_converted->buf[0]) {
        m_converted->format = m_encoder->pix_fmt;
        m_converted->width = m_encoder->width;
        m_converted->height = m_encoder->height;
        checkExportStep(av_frame_get_buffer(m_converted.get(), 0), "converting the picture");
    }
    // The encoder may still hold the previous picture.
    checkExportStep(av_frame_make_writable(m_converted.get()), "converting the picture");
    checkExportStep(sws_scale(m_scaler.get(), frame->data, frame->linesize, 0, frame->height,
                              m_converted->data, m_converted->linesize),
                    "converting the picture");
    checkExportStep(av_frame_copy_props(m_converted.get(), frame), "converting the picture");
    return m_converted.get();
}

void H264Encoder::encode(AVFrame* frame, int64_t start, int64_t end)
{
    if (end <= start || (m_lastStart != AV_NOPTS_VALUE && start <= m_lastStart))
        return;
    m_lastStart = start;
    AVFrame* picture = convert(frame);
    picture->pts = start;
    // The source's frame types mean nothing to the new stream; x264 would obey them.
    picture->pict_type = AV_PICTURE_TYPE_NONE;
    m_durations[start] = end - start;
    send(picture);
}

void H264Encoder::finish()
{
    send(nullptr);
}

void H264Encoder::send(const AVFrame* frame)
{
    checkExportStep(avcodec_send_frame(m_encoder.get(), frame), "encoding the video");
    for (;;) {
        const int result = avcodec_receive_packet(m_encoder.get(), m_packet.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return;
        checkExportStep(result, "encoding the video");
        // Durations ride along by pts, since x264 hands packets out in decode order.
        if (const auto found = m_durations.find(m_packet->pts); found != m_durations.end()) {
            m_packet->duration = found->second;
            m_durations.erase(found);
        }
        m_packet->stream_index = m_stream->index;
        m_output.write(m_packet.get(), m_encoder->time_base);
    }
}
