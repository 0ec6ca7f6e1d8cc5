#include "AudioTranscoder.h"

#include <algorithm>
#include <cstdlib>

extern "C" {
#include <libavutil/mathematics.h>
}

AudioTranscoder::AudioTranscoder(const AVStream* source, const CutList& cuts, int64_t sourceOrigin,
                                 OutputFile& output)
    : AudioTranscoder(source, output)
{
    setCuts(cuts, sourceOrigin);
}

AudioTranscoder::AudioTranscoder(const AVStream* source, OutputFile& output)
    : m_source(source)
    , m_cuts(CutList::keepTimeBase, {})
    , m_decoder(source, "sound")
    , m_encoder(m_decoder.context(), output)
{
}

void AudioTranscoder::setCuts(const CutList& cuts, int64_t sourceOrigin)
{
    m_cuts = cuts;
    m_sourceOrigin = sourceOrigin;
}

void AudioTranscoder::decode(const AVPacket* packet)
{
    m_decoder.decode(packet, [this](const AVFrame* frame) { take(frame); });
}

void AudioTranscoder::finish()
{
    decode(nullptr);
    m_encoder.finish();
}

bool AudioTranscoder::done() const
{
    return m_cursor && m_cursor->pastEnd(m_expected);
}

double AudioTranscoder::progress() const
{
    if (!m_cursor || m_cuts.empty())
        return 0.0;
    const CutList& samples = m_cursor->cutList();
    const double span = double(samples.sourceEnd() - samples.cuts().front().sourceStart);
    return span > 0 ? double(m_expected - samples.cuts().front().sourceStart) / span : 1.0;
}

void AudioTranscoder::take(const AVFrame* frame)
{
    if (!m_cursor) {
        // The decoder's own rate, which for some streams is known only now.
        m_sampleRate = frame->sample_rate;
        const AVRational samples{1, m_sampleRate};
        const int64_t origin = av_rescale_q(m_sourceOrigin, AV_TIME_BASE_Q, samples);
        m_cursor = std::make_unique<CutCursor>(m_cuts.rescaled(samples, origin));
        m_expected = origin;
    }
    // Sound is a continuous run of samples; timestamps only correct it where the source
    // really jumps, not for the rounding jitter of coarse time bases.
    int64_t start = m_expected;
    if (frame->best_effort_timestamp != AV_NOPTS_VALUE && frame->sample_rate == m_sampleRate) {
        const int64_t stamped =
            av_rescale_q(frame->best_effort_timestamp, m_source->time_base, {1, m_sampleRate});
        if (std::llabs(stamped - m_expected) > m_sampleRate / 100)
            start = stamped;
    }
    m_expected = start + frame->nb_samples;
    for (const Cut& part : m_cursor->keptParts(start, m_expected))
        place(frame, int(part.sourceStart - start), part);
}

void AudioTranscoder::place(const AVFrame* frame, int offset, const Cut& part)
{
    int64_t count = part.length();
    // A hole in the source becomes silence, so later cuts still start in their place;
    // sound that overlaps what is already placed is dropped.
    if (part.outputStart > m_placed)
        m_encoder.appendSilence(frame, int(part.outputStart - m_placed));
    const int64_t overlap = std::max<int64_t>(0, m_placed - part.outputStart);
    if (overlap >= count)
        return;
    m_encoder.append(frame, offset + int(overlap), int(count - overlap));
    m_placed = std::max(m_placed, part.outputStart) + (count - overlap);
}
