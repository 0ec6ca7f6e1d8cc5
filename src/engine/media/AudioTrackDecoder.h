#pragma once

#include "FfmpegPtr.h"

#include <cstdint>
#include <stdexcept>
#include <vector>

// Decodes one audio stream into 16 kHz mono 32-bit float samples, the channels averaged,
// and buffers them until the mixer takes them. Each decoder reads its own demuxer, so a
// track never has to buffer the samples of another one however the file is interleaved.
//
// Samples are numbered on the file's timeline at 16 kHz, sample 0 being the file's start:
// the first decoded frame's timestamp places the track, after which its samples are taken
// as contiguous.
class AudioTrackDecoder {
public:
    static constexpr int outputRate = 16000;

    // The decoded sound cannot be turned into 16 kHz mono float.
    class FormatError : public std::runtime_error {
    public:
        FormatError()
            : std::runtime_error("audio format cannot be converted")
        {
        }
    };

    // The file ends before the packets its own index lists: it was cut short.
    class TruncatedError : public std::runtime_error {
    public:
        TruncatedError()
            : std::runtime_error("file is cut short")
        {
        }
    };

    // Reads stream `streamIndex` of `demuxer`, which must stay open while this decoder lives;
    // every other stream of it is discarded. `fileStart` is the file's start time in
    // AV_TIME_BASE units (AV_NOPTS_VALUE when unknown). Throws MediaError with FFmpeg's message
    // when the decoder cannot be set up, and an empty MediaError when none exists for the codec.
    AudioTrackDecoder(AVFormatContext* demuxer, int streamIndex, int64_t fileStart);
    // The same, owning a demuxer opened for this track alone.
    AudioTrackDecoder(InputFormatContextPtr demuxer, int streamIndex, int64_t fileStart);

    // Decodes until at least one more frame has been buffered or the stream has ended.
    // Throws MediaError for a failure of reading or decoding, FormatError for a sound that
    // cannot be converted, TruncatedError when the demuxer runs out before the stream's end.
    void decodeMore();

    bool ended() const { return m_ended; }
    // True once the first frame has placed the track on the timeline, or it has ended.
    bool placed() const { return m_placed || m_ended; }
    // Timeline index of the first buffered sample, and one past the last.
    int64_t bufferStart() const { return m_bufferStart; }
    int64_t bufferEnd() const { return m_bufferStart + av_audio_fifo_size(m_fifo.get()); }
    // Moves the buffer's start to `index` (not beyond its end), dropping earlier samples.
    void dropBefore(int64_t index);
    // Takes `count` samples from the start of the buffer into `destination`.
    void take(float* destination, int count);

private:
    void openDecoder();
    void sendNextPacket();
    void finish();
    void checkComplete() const;
    void convertFrame(const AVFrame& frame);
    void flushConverter();
    void configureConverter(const AVFrame& frame);
    void appendConverted(const uint8_t* const* input, int inputCount);
    void placeTrack(const AVFrame& frame);

    InputFormatContextPtr m_ownedDemuxer;
    AVFormatContext* m_demuxer;
    int m_streamIndex;
    int64_t m_fileStart;
    CodecContextPtr m_decoder;
    SwrContextPtr m_converter;
    AudioFifoPtr m_fifo;
    FramePtr m_frame = makeFrame();
    PacketPtr m_packet = makePacket();
    std::vector<float> m_converted;

    // Owns the allocations of a copied channel layout.
    struct ChannelLayout {
        AVChannelLayout value{};
        ChannelLayout() = default;
        ChannelLayout(const ChannelLayout&) = delete;
        ChannelLayout& operator=(const ChannelLayout&) = delete;
        ~ChannelLayout() { av_channel_layout_uninit(&value); }
    };

    // What the converter was set up for; a change mid-stream sets up a new one.
    int m_inputFormat = -1;
    int m_inputRate = 0;
    ChannelLayout m_inputLayout;

    int64_t m_bufferStart = 0;
    bool m_placed = false;
    bool m_demuxEnded = false;
    bool m_ended = false;
    bool m_producedAny = false;
    int64_t m_packetsRead = 0;
    int m_lastDecodeError = 0;
};
