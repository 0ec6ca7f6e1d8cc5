#pragma once

#include "FfmpegPtr.h"

#include <map>

class OutputFile;

// Encodes decoded pictures with libx264 at CRF 18 into one new stream of an output file.
// Pictures keep their size (trimmed to even numbers, as 4:2:0 needs), aspect and colour
// tags; each is shown for the span it is given, so the stream's timing is exactly the
// cut list's.
class H264Encoder {
public:
    // The x264 speed preset; the comparison benchmark uses the same.
    static constexpr const char* preset = "fast";
    static constexpr const char* quality = "18";

    // `source` is the opened decoder of the source stream. Times are in `timeBase`.
    H264Encoder(const AVCodecContext* source, AVRational frameRate, AVRational timeBase,
                OutputFile& output);

    AVStream* stream() const { return m_stream; }

    // Encodes `frame` shown from `start` until `end`. Spans must come in time order;
    // one that does not start after the previous is skipped.
    void encode(AVFrame* frame, int64_t start, int64_t end);
    void finish();

private:
    AVFrame* convert(AVFrame* frame);
    void send(const AVFrame* frame);

    OutputFile& m_output;
    AVStream* m_stream = nullptr;
    CodecContextPtr m_encoder;
    SwsContextPtr m_scaler;
    FramePtr m_converted = makeFrame();
    PacketPtr m_packet = makePacket();
    std::map<int64_t, int64_t> m_durations; // by pts, until the packet comes out
    int64_t m_lastStart = AV_NOPTS_VALUE;
};
