#pragma once

#include "CutCursor.h"
#include "Decoder.h"
#include "H264Encoder.h"

class OutputFile;

// The pictures of a frame-accurate export: decodes one source stream and re-encodes,
// for every cut, the pictures on screen during it. A picture counts as shown from its
// timestamp until the next one's, so each cut opens with the picture visible at its
// start, and the last picture of one cut meets the first of the next without gap.
class VideoTranscoder {
public:
    // `cuts` count from `sourceOrigin` (AV_TIME_BASE units, the file's start time).
    VideoTranscoder(AVFormatContext* input, int streamIndex, const CutList& cuts,
                    int64_t sourceOrigin, OutputFile& output);

    AVStream* outputStream() const { return m_encoder.stream(); }

    void decode(const AVPacket* packet);
    void finish();
    // Nothing after the pictures decoded so far is kept.
    bool done() const;
    double progress() const;

    // A time base in which both 1/600 s and the source's ticks are whole numbers.
    static AVRational outputTimeBase(AVRational source);

private:
    void take(AVFrame* frame);
    void show(AVFrame* frame, int64_t start, int64_t end);

    const AVStream* m_source;
    AVRational m_timeBase;
    Decoder m_decoder;
    H264Encoder m_encoder;
    CutCursor m_cursor;
    int64_t m_frameDuration; // nominal, for a last picture that gives none
    FramePtr m_pending = makeFrame();
    int64_t m_pendingStart = AV_NOPTS_VALUE;
    int64_t m_pendingDuration = 0;
};
