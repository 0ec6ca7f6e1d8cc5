#include "AudioTrackDecoder.h"

#include "FfmpegCheck.h"
#include "MediaError.h"

#include <algorithm>
#include <new>

namespace {

constexpr AVRational outputTimeBase{1, AudioTrackDecoder::outputRate};

// Only this stream's packets are wanted from the demuxer; the others are skipped unread
// where the container allows it, and never decoded.
void discardOtherStreams(AVFormatContext* demuxer, int streamIndex)
{
    for (unsigned i = 0; i < demuxer->nb_streams; ++i)
        demuxer->streams[i]->discard = int(i) == streamIndex ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
}

} // namespace

AudioTrackDecoder::AudioTrackDecoder(AVFormatContext* demuxer, int streamIndex, int64_t fileStart)
    : m_demuxer(demuxer)
    , m_streamIndex(streamIndex)
    , m_fileStart(fileStart)
{
    openDecoder();
}

AudioTrackDecoder::AudioTrackDecoder(InputFormatContextPtr demuxer, int streamIndex,
                                     int64_t fileStart)
    : m_ownedDemuxer(std::move(demuxer))
    , m_demuxer(m_ownedDemuxer.get())
    , m_streamIndex(streamIndex)
    , m_fileStart(fileStart)
{
    openDecoder();
}

void AudioTrackDecoder::openDecoder()
{
    discardOtherStreams(m_demuxer, m_streamIndex);
    const AVStream* stream = m_demuxer->streams[m_streamIndex];
    const AVCodec* codec = avcodec_find_decoder(stream->codecpar->codec_id);
    if (!codec)
        throw MediaError(QString()); // FFmpeg has no decoder and no message for it

    m_decoder.reset(avcodec_alloc_context3(codec));
    if (!m_decoder)
        throw std::bad_alloc();
    int result = avcodec_parameters_to_context(m_decoder.get(), stream->codecpar);
    if (result < 0)
        throwFfmpegError("avcodec_parameters_to_context", result);
    // Frames then carry timestamps in the stream's time base, and priming samples are trimmed.
    m_decoder->pkt_timebase = stream->time_base;
    result = avcodec_open2(m_decoder.get(), codec, nullptr);
    if (result < 0)
        throwFfmpegError("avcodec_open2", result);

    m_fifo.reset(av_audio_fifo_alloc(AV_SAMPLE_FMT_FLT, 1, outputRate / 4));
    if (!m_fifo)
        throw std::bad_alloc();
}

void AudioTrackDecoder::decodeMore()
{
    while (!m_ended) {
        const int result = avcodec_receive_frame(m_decoder.get(), m_frame.get());
        if (result == 0) {
            convertFrame(*m_frame);
            av_frame_unref(m_frame.get());
            return;
        }
        if (result == AVERROR(EAGAIN)) {
            sendNextPacket();
        } else if (result == AVERROR_EOF) {
            finish();
        } else if (result == AVERROR_INVALIDDATA) {
            // A damaged frame is skipped, as ffmpeg itself does; the stream goes on.
            m_lastDecodeError = result;
        } else {
            throwFfmpegError("avcodec_receive_frame", result);
        }
    }
}

void AudioTrackDecoder::sendNextPacket()
{
    for (;;) {
        int result = av_read_frame(m_demuxer, m_packet.get());
        if (result == AVERROR_EOF) {
            m_demuxEnded = true;
            checkComplete();
            // An empty packet drains the frames the decoder still holds.
            result = avcodec_send_packet(m_decoder.get(), nullptr);
            if (result < 0 && result != AVERROR_EOF)
                throwFfmpegError("avcodec_send_packet", result);
            return;
        }
        if (result < 0)
            throwFfmpegError("av_read_frame", result);
        if (m_packet->stream_index != m_streamIndex) {
            av_packet_unref(m_packet.get());
            continue;
        }
        ++m_packetsRead;
        result = avcodec_send_packet(m_decoder.get(), m_packet.get());
        av_packet_unref(m_packet.get());
        if (result == AVERROR_INVALIDDATA) {
            m_lastDecodeError = result;
            continue;
        }
        // EAGAIN cannot come back: the decoder asked for input.
        if (result < 0)
            throwFfmpegError("avcodec_send_packet", result);
        return;
    }
}

// Containers with a full sample index (MP4, QuickTime) list every packet up front; fewer
// packets than listed means the data ends early. Sparse indexes (seek points only) list fewer
// entries than there are packets and never trip this.
void AudioTrackDecoder::checkComplete() const
{
    const int listed = avformat_index_get_entries_count(m_demuxer->streams[m_streamIndex]);
    if (m_packetsRead < listed) {
        qCWarning(lcMedia, "stream %d ended after %lld of %d indexed packets", m_streamIndex,
                  static_cast<long long>(m_packetsRead), listed);
        throw TruncatedError();
    }
}

void AudioTrackDecoder::finish()
{
    flushConverter();
    m_ended = true;
    // Damage here and there is tolerated, but a stream of which nothing decoded is a failure.
    if (!m_producedAny && m_lastDecodeError < 0)
        throwFfmpegError("decoding audio", m_lastDecodeError);
}

void AudioTrackDecoder::convertFrame(const AVFrame& frame)
{
    if (frame.nb_samples <= 0)
        return;
    if (!m_placed)
        placeTrack(frame);
    if (!m_converter || frame.format != m_inputFormat || frame.sample_rate != m_inputRate ||
        av_channel_layout_compare(&frame.ch_layout, &m_inputLayout.value) != 0) {
        flushConverter();
        configureConverter(frame);
    }
    appendConverted(frame.extended_data, frame.nb_samples);
    m_producedAny = true;
}

void AudioTrackDecoder::placeTrack(const AVFrame& frame)
{
    m_placed = true;
    if (frame.best_effort_timestamp == AV_NOPTS_VALUE)
        return;
    const AVRational timeBase = m_demuxer->streams[m_streamIndex]->time_base;
    const int64_t start = av_rescale_q(frame.best_effort_timestamp, timeBase, outputTimeBase);
    const int64_t fileStart = m_fileStart == AV_NOPTS_VALUE
                                  ? 0
                                  : av_rescale_q(m_fileStart, AV_TIME_BASE_Q, outputTimeBase);
    m_bufferStart = start - fileStart;
}

void AudioTrackDecoder::configureConverter(const AVFrame& frame)
{
    const int channels = frame.ch_layout.nb_channels;
    if (channels <= 0 || frame.sample_rate <= 0)
        throw FormatError();

    // Only the channel count matters to our own matrix; a layout without named channels
    // gets the default one so that the resampler accepts it.
    ChannelLayout input;
    const int copied = frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC
                           ? (av_channel_layout_default(&input.value, channels), 0)
                           : av_channel_layout_copy(&input.value, &frame.ch_layout);
    if (copied < 0)
        throw std::bad_alloc();

    AVChannelLayout mono = AV_CHANNEL_LAYOUT_MONO; // swr_alloc_set_opts2 takes it non-const
    SwrContext* raw = nullptr;
    if (swr_alloc_set_opts2(&raw, &mono, AV_SAMPLE_FMT_FLT, outputRate, &input.value,
                            AVSampleFormat(frame.format), frame.sample_rate, 0, nullptr) < 0)
        throw FormatError();
    SwrContextPtr converter(raw);
    // A plain average of the channels: the resampler's own downmix weights them otherwise.
    const std::vector<double> weights(std::size_t(channels), 1.0 / channels);
    if (swr_set_matrix(converter.get(), weights.data(), channels) < 0)
        throw FormatError();
    if (swr_init(converter.get()) < 0)
        throw FormatError();

    m_converter = std::move(converter);
    m_inputFormat = frame.format;
    m_inputRate = frame.sample_rate;
    av_channel_layout_uninit(&m_inputLayout.value);
    if (av_channel_layout_copy(&m_inputLayout.value, &frame.ch_layout) < 0)
        throw std::bad_alloc();
}

void AudioTrackDecoder::flushConverter()
{
    if (!m_converter)
        return;
    // The resampler holds back the samples its filter still needs; an empty input drains them.
    while (swr_get_out_samples(m_converter.get(), 0) > 0) {
        const int before = av_audio_fifo_size(m_fifo.get());
        appendConverted(nullptr, 0);
        if (av_audio_fifo_size(m_fifo.get()) == before)
            break;
    }
}

void AudioTrackDecoder::appendConverted(const uint8_t* const* input, int inputCount)
{
    const int capacity = swr_get_out_samples(m_converter.get(), inputCount);
    if (capacity < 0)
        throwFfmpegError("swr_get_out_samples", capacity);
    if (capacity == 0)
        return;
    m_converted.resize(std::size_t(capacity));
    auto* output = reinterpret_cast<uint8_t*>(m_converted.data());
    const int converted = swr_convert(m_converter.get(), &output, capacity,
                                      const_cast<const uint8_t**>(input), inputCount);
    if (converted < 0)
        throwFfmpegError("swr_convert", converted);
    if (converted == 0)
        return;
    void* data = m_converted.data();
    const int written = av_audio_fifo_write(m_fifo.get(), &data, converted);
    if (written < 0)
        throwFfmpegError("av_audio_fifo_write", written);
}

void AudioTrackDecoder::dropBefore(int64_t index)
{
    if (index <= m_bufferStart)
        return;
    const int count =
        int(std::min<int64_t>(index - m_bufferStart, av_audio_fifo_size(m_fifo.get())));
    if (count <= 0)
        return;
    av_audio_fifo_drain(m_fifo.get(), count);
    m_bufferStart += count;
}

void AudioTrackDecoder::take(float* destination, int count)
{
    void* data = destination;
    const int read = av_audio_fifo_read(m_fifo.get(), &data, count);
    if (read < 0)
        throwFfmpegError("av_audio_fifo_read", read);
    m_bufferStart += read;
}
