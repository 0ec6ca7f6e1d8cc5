#include "VideoTranscoder.h"

#include <numeric>

extern "C" {
#include <libavutil/mathematics.h>
}

namespace {

AVRational frameRateOf(AVFormatContext* input, AVStream* stream)
{
    const AVRational rate = av_guess_frame_rate(input, stream, nullptr);
    return rate.num > 0 && rate.den > 0 ? rate : AVRational{25, 1};
}

} // namespace

AVRational VideoTranscoder::outputTimeBase(AVRational source)
{
    constexpr int64_t keepTicks = 600;
    if (source.num == 1 && source.den > 0) {
        const int64_t common = std::lcm<int64_t>(keepTicks, source.den);
        if (common <= 1'000'000)
            return {1, int(common)};
    }
    return {1, 90000}; // a multiple of 600 that most frame rates divide
}

VideoTranscoder::VideoTranscoder(AVFormatContext* input, int streamIndex, const CutList& cuts,
                                 int64_t sourceOrigin, OutputFile& output)
    : m_source(input->streams[streamIndex])
    , m_timeBase(outputTimeBase(m_source->time_base))
    , m_decoder(m_source, "video")
    , m_encoder(m_decoder.context(), frameRateOf(input, input->streams[streamIndex]), m_timeBase,
                output)
    , m_cursor(cuts.rescaled(m_timeBase, av_rescale_q(sourceOrigin, AV_TIME_BASE_Q, m_timeBase)))
    , m_frameDuration(std::max<int64_t>(
          1,
          av_rescale_q(1, av_inv_q(frameRateOf(input, input->streams[streamIndex])), m_timeBase)))
{
}

void VideoTranscoder::decode(const AVPacket* packet)
{
    m_decoder.decode(packet, [this](AVFrame* frame) { take(frame); });
}

void VideoTranscoder::finish()
{
    decode(nullptr);
    if (m_pendingStart != AV_NOPTS_VALUE)
        show(m_pending.get(), m_pendingStart, m_pendingStart + m_pendingDuration);
    m_encoder.finish();
}

bool VideoTranscoder::done() const
{
    return m_pendingStart != AV_NOPTS_VALUE && m_cursor.pastEnd(m_pendingStart);
}

double VideoTranscoder::progress() const
{
    const CutList& cuts = m_cursor.cutList();
    if (cuts.empty() || m_pendingStart == AV_NOPTS_VALUE)
        return 0.0;
    const int64_t first = cuts.cuts().front().sourceStart;
    const double span = double(cuts.sourceEnd() - first);
    return span > 0 ? double(m_pendingStart - first) / span : 1.0;
}

void VideoTranscoder::take(AVFrame* frame)
{
    int64_t start = frame->best_effort_timestamp;
    if (start == AV_NOPTS_VALUE) {
        if (m_pendingStart == AV_NOPTS_VALUE)
            start = 0;
        else
            start = m_pendingStart + m_pendingDuration;
    } else {
        start = av_rescale_q(start, m_source->time_base, m_timeBase);
    }
    // A picture that does not come after the one before it has no time of its own.
    if (m_pendingStart != AV_NOPTS_VALUE && start <= m_pendingStart)
        return;
    if (m_pendingStart != AV_NOPTS_VALUE)
        show(m_pending.get(), m_pendingStart, start);

    av_frame_unref(m_pending.get());
    av_frame_move_ref(m_pending.get(), frame);
    m_pendingStart = start;
    const int64_t duration = av_rescale_q(m_pending->pkt_duration, m_source->time_base, m_timeBase);
    m_pendingDuration = duration > 0 ? duration : m_frameDuration;
}

void VideoTranscoder::show(AVFrame* frame, int64_t start, int64_t end)
{
    for (const Cut& part : m_cursor.keptParts(start, end))
        m_encoder.encode(frame, part.outputStart, part.outputEnd());
}
