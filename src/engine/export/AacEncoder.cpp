#include "AacEncoder.h"

#include "ExportFailure.h"
#include "Localization.h"
#include "OutputFile.h"
#include "TidleError.h"

#include <vector>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

namespace {

// FFmpeg's encoder needs about 128 kb/s for stereo music to sound clean; speech in mono
// keeps its sibilants at 96 kb/s. Both are what a podcast host would accept as is.
constexpr int64_t stereoBitRate = 128000;
constexpr int64_t monoBitRate = 96000;

// The source rate when AAC allows it, else the nearest allowed rate above, else the highest.
int encoderSampleRate(const AVCodec* codec, int sourceRate)
{
    int best = 0;
    int highest = 0;
    for (const int* rate = codec->supported_samplerates; rate && *rate; ++rate) {
        if (*rate == sourceRate)
            return sourceRate;
        if (*rate > sourceRate && (best == 0 || *rate < best))
            best = *rate;
        highest = std::max(highest, *rate);
    }
    if (best != 0)
        return best;
    return highest != 0 ? highest : sourceRate;
}

} // namespace

AacEncoder::AacEncoder(const AVCodecContext* source, OutputFile& output)
    : m_output(output)
{
    const AVCodec* codec = avcodec_find_encoder_by_name("aac");
    if (!codec)
        throw TidleError::exportFailed(localized("diag.noEncoder"));
    m_encoder.reset(avcodec_alloc_context3(codec));
    if (!m_encoder)
        throwExportFailure("opening the AAC encoder", AVERROR(ENOMEM));

    const bool mono = source->ch_layout.nb_channels == 1;
    m_encoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
    m_encoder->sample_rate = encoderSampleRate(codec, source->sample_rate);
    av_channel_layout_default(&m_encoder->ch_layout, mono ? 1 : 2);
    m_encoder->bit_rate = mono ? monoBitRate : stereoBitRate;
    m_encoder->profile = FF_PROFILE_AAC_LOW;
    m_encoder->time_base = {1, m_encoder->sample_rate};
    if (output.needsGlobalHeader())
        m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    checkExportStep(avcodec_open2(m_encoder.get(), codec, nullptr), "opening the AAC encoder");

    m_stream = output.addStream();
    checkExportStep(avcodec_parameters_from_context(m_stream->codecpar, m_encoder.get()),
                    "opening the AAC encoder");
    m_stream->time_base = m_encoder->time_base;

    m_fifo.reset(av_audio_fifo_alloc(AV_SAMPLE_FMT_FLTP, m_encoder->ch_layout.nb_channels,
                                     m_encoder->frame_size * 2));
    if (!m_fifo)
        throwExportFailure("opening the AAC encoder", AVERROR(ENOMEM));
}

AacEncoder::~AacEncoder()
{
    av_channel_layout_uninit(&m_resamplerInput);
}

void AacEncoder::setUpResampler(const AVFrame* frame)
{
    const bool same = m_resampler && m_resamplerFormat == frame->format &&
                      m_resamplerRate == frame->sample_rate &&
                      av_channel_layout_compare(&m_resamplerInput, &frame->ch_layout) == 0;
    if (same)
        return;
    // A change of format midway drops what the old resampler still held: a few samples at most.
    AVChannelLayout input{};
    if (frame->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
        av_channel_layout_default(&input, frame->ch_layout.nb_channels);
    else
        checkExportStep(av_channel_layout_copy(&input, &frame->ch_layout), "converting the sound");

    SwrContext* raw = nullptr;
    const int result = swr_alloc_set_opts2(
        &raw, &m_encoder->ch_layout, m_encoder->sample_fmt, m_encoder->sample_rate, &input,
        AVSampleFormat(frame->format), frame->sample_rate, 0, nullptr);
    SwrContextPtr resampler(raw);
    av_channel_layout_uninit(&input);
    checkExportStep(result, "converting the sound");
    checkExportStep(swr_init(resampler.get()), "converting the sound");

    m_resampler = std::move(resampler);
    av_channel_layout_uninit(&m_resamplerInput);
    checkExportStep(av_channel_layout_copy(&m_resamplerInput, &frame->ch_layout),
                    "converting the sound");
    m_resamplerFormat = frame->format;
    m_resamplerRate = frame->sample_rate;
}

void AacEncoder::append(const AVFrame* frame, int offset, int count)
{
    if (count <= 0)
        return;
    setUpResampler(frame);
    const auto format = AVSampleFormat(frame->format);
    const int bytesPerSample = av_get_bytes_per_sample(format);
    const int channels = frame->ch_layout.nb_channels;
    std::vector<const uint8_t*> planes;
    if (av_sample_fmt_is_planar(format)) {
        for (int channel = 0; channel < channels; ++channel)
            planes.push_back(frame->extended_data[channel] + offset * bytesPerSample);
    } else {
        planes.push_back(frame->extended_data[0] + offset * bytesPerSample * channels);
    }
    resample(planes.data(), count);
}

void AacEncoder::appendSilence(const AVFrame* like, int count)
{
    if (count <= 0)
        return;
    setUpResampler(like);
    checkExportStep(swr_inject_silence(m_resampler.get(), count), "converting the sound");
    resample(nullptr, 0);
}

int AacEncoder::resample(const uint8_t** input, int count)
{
    const int capacity = swr_get_out_samples(m_resampler.get(), count);
    checkExportStep(capacity, "converting the sound");
    if (capacity == 0)
        return 0;
    if (m_scratch->nb_samples < capacity) {
        av_frame_unref(m_scratch.get());
        m_scratch->format = m_encoder->sample_fmt;
        m_scratch->nb_samples = capacity;
        checkExportStep(av_channel_layout_copy(&m_scratch->ch_layout, &m_encoder->ch_layout),
                        "converting the sound");
        checkExportStep(av_frame_get_buffer(m_scratch.get(), 0), "converting the sound");
    }
    const int converted = checkExportStep(swr_convert(m_resampler.get(), m_scratch->extended_data,
                                                      m_scratch->nb_samples, input, count),
                                          "converting the sound");
    if (av_audio_fifo_write(m_fifo.get(), reinterpret_cast<void**>(m_scratch->extended_data),
                            converted) < converted)
        throwExportFailure("converting the sound", AVERROR(ENOMEM));
    encodeBuffered(false);
    return converted;
}

void AacEncoder::encodeBuffered(bool all)
{
    const int frameSize = m_encoder->frame_size;
    while (av_audio_fifo_size(m_fifo.get()) >= frameSize)
        encodeFrame(frameSize);
    // The encoder takes a shorter last frame.
    if (all && av_audio_fifo_size(m_fifo.get()) > 0)
        encodeFrame(av_audio_fifo_size(m_fifo.get()));
}

void AacEncoder::encodeFrame(int sampleCount)
{
    FramePtr frame = makeFrame();
    frame->format = m_encoder->sample_fmt;
    frame->nb_samples = sampleCount;
    frame->sample_rate = m_encoder->sample_rate;
    checkExportStep(av_channel_layout_copy(&frame->ch_layout, &m_encoder->ch_layout),
                    "encoding the sound");
    checkExportStep(av_frame_get_buffer(frame.get(), 0), "encoding the sound");
    if (av_audio_fifo_read(m_fifo.get(), reinterpret_cast<void**>(frame->extended_data),
                           sampleCount) < sampleCount)
        throwExportFailure("encoding the sound", AVERROR_BUG);
    frame->pts = m_samplesEncoded;
    m_samplesEncoded += sampleCount;
    sendToEncoder(frame.get());
}

void AacEncoder::sendToEncoder(const AVFrame* frame)
{
    checkExportStep(avcodec_send_frame(m_encoder.get(), frame), "encoding the sound");
    for (;;) {
        const int result = avcodec_receive_packet(m_encoder.get(), m_packet.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return;
        checkExportStep(result, "encoding the sound");
        m_packet->stream_index = m_stream->index;
        m_output.write(m_packet.get(), m_encoder->time_base);
    }
}

void AacEncoder::finish()
{
    // What the resampler still holds, then the short remainder.
    while (m_resampler && resample(nullptr, 0) > 0) {
    }
    encodeBuffered(true);
    sendToEncoder(nullptr);
}
