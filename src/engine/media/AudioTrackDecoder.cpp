#include "AudioTrackDecoder.h"

#include "FfmpegCheck.h"
#include "MediaError.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <numeric>

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

void AudioTrackDecoder::seek(int64_t index)
{
    const AVStream* stream = m_demuxer->streams[m_streamIndex];
    const int64_t fileStart = m_fileStart == AV_NOPTS_VALUE ? 0 : m_fileStart;
    const int64_t target = av_rescale_q(index, outputTimeBase, stream->time_base) +
                           av_rescale_q(fileStart, AV_TIME_BASE_Q, stream->time_base);
    const int result = av_seek_frame(m_demuxer, m_streamIndex, target, AVSEEK_FLAG_BACKWARD);
    if (result < 0)
        throwFfmpegError("av_seek_frame", result);
    m_sought = true;
}

void AudioTrackDecoder::prefetch()
{
    m_prefetcher =
        std::make_unique<FramePrefetcher>([this](AVFrame* frame) { return decodeFrame(frame); });
}

void AudioTrackDecoder::decodeMore()
{
    if (m_holeLeft > 0) {
        fillHole();
        return;
    }
    if (m_ended)
        return;
    const bool decoded =
        m_prefetcher ? m_prefetcher->next(m_frame.get()) : decodeFrame(m_frame.get());
    if (!decoded) {
        flushConverter();
        m_ended = true;
        return;
    }
    convertFrame(*m_frame);
    av_frame_unref(m_frame.get());
}

bool AudioTrackDecoder::decodeFrame(AVFrame* frame)
{
    for (;;) {
        const int result = avcodec_receive_frame(m_decoder.get(), frame);
        if (result == 0) {
            m_decodedAny = m_decodedAny || frame->nb_samples > 0;
            return true;
        }
        if (result == AVERROR(EAGAIN)) {
            sendNextPacket();
        } else if (result == AVERROR_EOF) {
            // Damage here and there is tolerated, but a stream of which nothing decoded is a
            // failure.
            if (!m_decodedAny && m_lastDecodeError < 0)
                throwFfmpegError("decoding audio", m_lastDecodeError);
            return false;
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
        noteFirstPacket(*m_packet);
        m_lastDts = m_packet->dts != AV_NOPTS_VALUE ? m_packet->dts : m_packet->pts;
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

void AudioTrackDecoder::noteFirstPacket(const AVPacket& packet)
{
    if (m_firstPacketSeen)
        return;
    m_firstPacketSeen = true;
    const AVStream* stream = m_demuxer->streams[m_streamIndex];
    const int64_t time = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
    m_startedAtStreamStart =
        !m_sought || (time != AV_NOPTS_VALUE && stream->start_time != AV_NOPTS_VALUE &&
                      time <= stream->start_time);
}

// MPEG-4 and QuickTime files list every packet in their index up front; when the data ends
// before the last one listed, the file was cut short. Other containers index seek points at
// most (FLV lists its AAC header among them), so running out there is the stream's end.
void AudioTrackDecoder::checkComplete() const
{
    if (std::strncmp(m_demuxer->iformat->name, "mov,", 4) != 0)
        return;
    AVStream* stream = m_demuxer->streams[m_streamIndex];
    const int listed = avformat_index_get_entries_count(stream);
    if (listed == 0)
        return;
    const AVIndexEntry* last = avformat_index_get_entry(stream, listed - 1);
    if (m_lastDts == AV_NOPTS_VALUE || m_lastDts < last->timestamp) {
        qCWarning(lcMedia, "stream %d ended at %lld before its last indexed packet at %lld",
                  m_streamIndex, static_cast<long long>(m_lastDts),
                  static_cast<long long>(last->timestamp));
        throw TruncatedError();
    }
}

void AudioTrackDecoder::convertFrame(const AVFrame& frame)
{
    if (frame.nb_samples <= 0)
        return;
    const bool first = !m_converter;
    const bool changed = !first && formatChanged(frame);
    int64_t position = m_expected;
    if (changed && frame.sample_rate != m_inputRate && m_inputRate > 0)
        position = av_rescale(m_expected, frame.sample_rate, m_inputRate);
    const int64_t stamped = stampedPosition(frame);
    bool jump = false;
    if (stamped != noPosition) {
        jump = first || std::llabs(stamped - position) > tolerance(frame.sample_rate);
        if (jump)
            position = stamped;
        else if (stamped != position)
            m_lastDrift = av_rescale(position, outputRate, frame.sample_rate);
    } else if (first) {
        position = 0;
    }
    if (first)
        m_firstPosition = av_rescale(position, outputRate, frame.sample_rate);
    if (first || jump || changed)
        startRun(frame, position);
    appendConverted(frame.extended_data, frame.nb_samples);
    m_expected = position + frame.nb_samples;
}

// Timestamps that name single samples are followed to the sample, so that where a frame goes
// never depends on how far back decoding began. Coarser ones (milliseconds) jitter around
// the truth; within 10 ms, as an export has it, a frame then follows its predecessor.
int64_t AudioTrackDecoder::tolerance(int sampleRate) const
{
    const AVRational timeBase = m_demuxer->streams[m_streamIndex]->time_base;
    if (int64_t(timeBase.num) * sampleRate <= int64_t(timeBase.den))
        return 0;
    return sampleRate / 100;
}

bool AudioTrackDecoder::formatChanged(const AVFrame& frame) const
{
    return frame.format != m_inputFormat || frame.sample_rate != m_inputRate ||
           av_channel_layout_compare(&frame.ch_layout, &m_inputLayout.value) != 0;
}

// The frame's start in its own samples from the file's start; noPosition without a timestamp.
int64_t AudioTrackDecoder::stampedPosition(const AVFrame& frame) const
{
    if (frame.best_effort_timestamp == AV_NOPTS_VALUE || frame.sample_rate <= 0)
        return noPosition;
    const AVRational samples{1, frame.sample_rate};
    const AVRational timeBase = m_demuxer->streams[m_streamIndex]->time_base;
    const int64_t fileStart = m_fileStart == AV_NOPTS_VALUE ? 0 : m_fileStart;
    return av_rescale_q(frame.best_effort_timestamp, timeBase, samples) -
           av_rescale_q(fileStart, AV_TIME_BASE_Q, samples);
}

// A run starts its resampler on the grid of input samples that fall exactly on 16 kHz
// samples (every third at 48 kHz, every 441st at 44.1 kHz), padding with silence up to its
// first frame, so the resampler's phase depends on where the run is, not where it began.
void AudioTrackDecoder::startRun(const AVFrame& frame, int64_t position)
{
    flushConverter();
    configureConverter(frame);
    const int64_t common = std::gcd(int64_t(frame.sample_rate), int64_t(outputRate));
    const int64_t inputStep = frame.sample_rate / common;
    const int64_t outputStep = outputRate / common;
    const int64_t quotient = position / inputStep - (position % inputStep < 0 ? 1 : 0);
    const int64_t gridStart = quotient * inputStep;
    m_runNext = quotient * outputStep;
    if (position > gridStart) {
        const int result = swr_inject_silence(m_converter.get(), int(position - gridStart));
        if (result < 0)
            throwFfmpegError("swr_inject_silence", result);
    }
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
        const int64_t before = m_runNext;
        appendConverted(nullptr, 0);
        if (m_runNext == before)
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
    if (converted > 0)
        place(m_converted.data(), converted);
}

// Puts resampled samples at the run's next index: what lies before the end of what is placed
// already is dropped, and a hole before them becomes silence.
void AudioTrackDecoder::place(const float* samples, int count)
{
    int64_t at = m_runNext;
    m_runNext += count;
    if (!m_placed) {
        m_placed = true;
        m_bufferStart = at;
    }
    const int64_t end = bufferEnd() + m_holeLeft + int64_t(m_behindHole.size());
    if (at < end) {
        const int overlap = int(std::min<int64_t>(end - at, count));
        samples += overlap;
        count -= overlap;
        at += overlap;
    }
    if (count == 0)
        return;
    if (at > end) {
        if (m_holeLeft == 0 && at - end <= holeChunk)
            write(m_zeros.data(), int(at - end));
        else if (m_behindHole.empty())
            m_holeLeft += at - end;
        else
            m_behindHole.insert(m_behindHole.end(), std::size_t(at - end), 0.0f);
    }
    if (m_holeLeft > 0)
        m_behindHole.insert(m_behindHole.end(), samples, samples + count);
    else
        write(samples, count);
}

void AudioTrackDecoder::write(const float* samples, int count)
{
    void* data = const_cast<float*>(samples);
    const int written = av_audio_fifo_write(m_fifo.get(), &data, count);
    if (written < 0)
        throwFfmpegError("av_audio_fifo_write", written);
}

void AudioTrackDecoder::fillHole()
{
    const int count = int(std::min<int64_t>(m_holeLeft, holeChunk));
    write(m_zeros.data(), count);
    m_holeLeft -= count;
    if (m_holeLeft == 0)
        releaseBehindHole();
}

void AudioTrackDecoder::releaseBehindHole()
{
    if (!m_behindHole.empty())
        write(m_behindHole.data(), int(m_behindHole.size()));
    m_behindHole.clear();
}

void AudioTrackDecoder::dropBefore(int64_t index)
{
    if (index <= m_bufferStart)
        return;
    const int buffered = av_audio_fifo_size(m_fifo.get());
    const int count = int(std::min<int64_t>(index - m_bufferStart, buffered));
    if (count > 0) {
        av_audio_fifo_drain(m_fifo.get(), count);
        m_bufferStart += count;
    }
    // A hole that nobody will hear is skipped without writing its zeros.
    if (count == buffered && m_holeLeft > 0 && index > m_bufferStart) {
        const int64_t skipped = std::min(index - m_bufferStart, m_holeLeft);
        m_bufferStart += skipped;
        m_holeLeft -= skipped;
        if (m_holeLeft == 0)
            releaseBehindHole();
    }
}

void AudioTrackDecoder::take(float* destination, int count)
{
    void* data = destination;
    const int read = av_audio_fifo_read(m_fifo.get(), &data, count);
    if (read < 0)
        throwFfmpegError("av_audio_fifo_read", read);
    m_bufferStart += read;
}
