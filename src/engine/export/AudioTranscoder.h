#pragma once

#include "AacEncoder.h"
#include "CutCursor.h"
#include "Decoder.h"

#include <memory>

class OutputFile;

// The sound of an export: decodes one source stream, keeps the samples inside the cuts,
// to the sample, and encodes them as AAC so each cut starts where the cut list puts it.
class AudioTranscoder {
public:
    // `cuts` count from `sourceOrigin` (AV_TIME_BASE units, the file's start time).
    AudioTranscoder(const AVStream* source, const CutList& cuts, int64_t sourceOrigin,
                    OutputFile& output);
    // The cuts given later with setCuts(), before the first packet: the output stream must
    // exist before the file is opened, the cuts may be known only afterwards.
    AudioTranscoder(const AVStream* source, OutputFile& output);

    void setCuts(const CutList& cuts, int64_t sourceOrigin);

    AVStream* outputStream() const { return m_encoder.stream(); }

    void decode(const AVPacket* packet);
    // Drains the decoder and the encoder.
    void finish();
    // Nothing after the samples decoded so far is kept.
    bool done() const;
    // How far decoding has come towards the end of the last cut, from 0 to 1.
    double progress() const;

private:
    void take(const AVFrame* frame);
    void place(const AVFrame* frame, int offset, const Cut& part);

    const AVStream* m_source;
    CutList m_cuts;
    int64_t m_sourceOrigin = 0;
    Decoder m_decoder;
    AacEncoder m_encoder;
    std::unique_ptr<CutCursor> m_cursor; // in samples, made once the rate is known
    int m_sampleRate = 0;
    int64_t m_expected = 0; // where the next frame should start, in samples
    int64_t m_placed = 0;   // output samples handed to the encoder
};
