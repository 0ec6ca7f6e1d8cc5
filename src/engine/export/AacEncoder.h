#pragma once

#include "FfmpegPtr.h"

class OutputFile;

// Encodes decoded sound of any layout, rate and sample format as AAC-LC into one new
// stream of an output file: converts it to at most two channels at a rate AAC allows,
// gathers it into encoder frames, encodes and writes the packets. Sound is appended in
// output order; the encoder's time starts at zero.
class AacEncoder {
public:
    // `source` describes the decoded sound (rate and channels); the stream is created on
    // `output`, which must not be open yet.
    AacEncoder(const AVCodecContext* source, OutputFile& output);
    ~AacEncoder();
    AacEncoder(const AacEncoder&) = delete;
    AacEncoder& operator=(const AacEncoder&) = delete;

    AVStream* stream() const { return m_stream; }

    // Appends `count` samples of `frame` starting at sample `offset`.
    void append(const AVFrame* frame, int offset, int count);
    // Appends `count` samples of silence in the format of `like`.
    void appendSilence(const AVFrame* like, int count);
    // Encodes what is still buffered and drains the encoder.
    void finish();

private:
    void setUpResampler(const AVFrame* frame);
    int resample(const uint8_t** input, int count);
    void encodeBuffered(bool all);
    void encodeFrame(int sampleCount);
    void sendToEncoder(const AVFrame* frame);

    OutputFile& m_output;
    AVStream* m_stream = nullptr;
    CodecContextPtr m_encoder;
    SwrContextPtr m_resampler;
    AVChannelLayout m_resamplerInput{};
    int m_resamplerFormat = -1;
    int m_resamplerRate = 0;
    AudioFifoPtr m_fifo;
    FramePtr m_scratch = makeFrame();
    PacketPtr m_packet = makePacket();
    int64_t m_samplesEncoded = 0;
};
