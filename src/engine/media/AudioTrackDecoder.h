#pragma once

#include "FfmpegPtr.h"
#include "FramePrefetcher.h"

#include <atomic>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <vector>

// Decodes one audio stream into 16 kHz mono 32-bit float samples, the channels averaged,
// and buffers them until the mixer takes them. Each decoder reads its own demuxer, so a
// track never has to buffer the samples of another one however the file is interleaved.
//
// Samples are numbered on the file's timeline at 16 kHz, sample 0 being the file's start.
// Every decoded frame goes where its timestamp says, as an export places it, except that with
// a time base coarser than a sample (whose timestamps jitter) a frame that starts within
// 10 ms of where the previous one ended follows it directly. A frame that does not follow
// starts a new run: a hole before it is silence, and where it overlaps sound already placed
// its overlapping part is dropped.
//
// Each run is resampled from an input sample whose time falls exactly on a 16 kHz sample,
// so that two decoders that meet the same frames at the same place, one of them started
// mid-file by seek(), hand out the same samples once past their first second.
class AudioTrackDecoder {
public:
    static constexpr int outputRate = 16000;
    static constexpr int64_t noPosition = std::numeric_limits<int64_t>::min();

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

    // Before the first decodeMore(): moves the demuxer to a packet at or before timeline
    // index `index`. Throws MediaError when the demuxer cannot seek.
    void seek(int64_t index);

    // From now on, frames are decoded ahead on a thread of their own (before the first
    // decodeMore(), after any seek()).
    void prefetch();

    // Decodes until at least one more frame has been buffered or the stream has ended.
    // Throws MediaError for a failure of reading or decoding, FormatError for a sound that
    // cannot be converted, TruncatedError when the demuxer runs out before the stream's end.
    void decodeMore();

    bool ended() const { return m_ended && m_holeLeft == 0; }
    // True once the first frame has placed the track on the timeline, or it has ended.
    bool placed() const { return m_placed || m_ended; }
    // Timeline index of the first buffered sample, and one past the last.
    int64_t bufferStart() const { return m_bufferStart; }
    int64_t bufferEnd() const { return m_bufferStart + av_audio_fifo_size(m_fifo.get()); }
    // Moves the buffer's start to `index` (not beyond its end), dropping earlier samples.
    void dropBefore(int64_t index);
    // Takes `count` samples from the start of the buffer into `destination`.
    void take(float* destination, int count);

    AVFormatContext* demuxer() const { return m_demuxer; }

    // Where the first decoded frame went; noPosition before that.
    int64_t firstPosition() const { return m_firstPosition; }
    // True when the first frame decoded was the stream's first packet.
    bool startedAtStreamStart() const { return m_startedAtStreamStart; }
    // The latest timeline index at which a frame was placed elsewhere than its timestamp says
    // (it followed its predecessor within the tolerance); noPosition when none was.
    int64_t lastDrift() const { return m_lastDrift; }

private:
    void openDecoder();
    bool decodeFrame(AVFrame* frame);
    void sendNextPacket();
    void noteFirstPacket(const AVPacket& packet);
    void checkComplete() const;
    void convertFrame(const AVFrame& frame);
    bool formatChanged(const AVFrame& frame) const;
    int64_t stampedPosition(const AVFrame& frame) const;
    int64_t tolerance(int sampleRate) const;
    void startRun(const AVFrame& frame, int64_t position);
    void flushConverter();
    void configureConverter(const AVFrame& frame);
    void appendConverted(const uint8_t* const* input, int inputCount);
    void place(const float* samples, int count);
    void write(const float* samples, int count);
    void fillHole();
    void releaseBehindHole();

    static constexpr int holeChunk = 4096;

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

    // What the converter was set up for; a change mid-stream starts a new run.
    int m_inputFormat = -1;
    int m_inputRate = 0;
    ChannelLayout m_inputLayout;

    // The run being decoded: where, in input samples from the file's start, the next frame
    // would continue it, and the timeline index of the next resampled sample.
    int64_t m_expected = 0;
    int64_t m_runNext = 0;

    // A hole longer than a chunk is filled a chunk per decodeMore(), so that a long one never
    // sits in memory as zeros; the run's first samples wait behind it.
    int64_t m_holeLeft = 0;
    std::vector<float> m_behindHole;
    const std::vector<float> m_zeros = std::vector<float>(holeChunk, 0.0f);

    int64_t m_bufferStart = 0;
    int64_t m_firstPosition = noPosition;
    int64_t m_lastDrift = noPosition;
    bool m_placed = false;
    bool m_sought = false;
    std::atomic<bool> m_startedAtStreamStart = false;
    bool m_firstPacketSeen = false;
    bool m_demuxEnded = false;
    bool m_ended = false;
    bool m_decodedAny = false;
    int64_t m_lastDts = AV_NOPTS_VALUE;
    int m_lastDecodeError = 0;

    // Last: its thread uses the decoder and demuxer above, so it stops before they go.
    std::unique_ptr<FramePrefetcher> m_prefetcher;
};
