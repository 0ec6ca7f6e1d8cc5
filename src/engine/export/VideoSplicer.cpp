#include "VideoSplicer.h"

#include "ExportFailure.h"
#include "NalUnits.h"
#include "OutputFile.h"

#include <QLoggingCategory>
#include <algorithm>
#include <cstring>

extern "C" {
#include <libavutil/mathematics.h>
}

Q_LOGGING_CATEGORY(lcSplice, "hushpane.export")

struct VideoSplicer::RunState {
    std::deque<PacketPtr> pending; // written once every earlier run is
    bool encoding = false;
    std::size_t copied = 0; // copy runs: packets taken so far
    std::size_t written = 0;
    bool complete = false;
};

namespace {

constexpr int hevcEndOfSequence = 36;
constexpr int hevcCleanRandomAccess = 21;

// HEVC: a copy that starts at a CRA picture must follow an end-of-sequence mark, so that
// the decoder starts afresh there (as at the start of a file) rather than counting on
// pictures that are not copied.
bool needsEndOfSequenceBefore(const AVStream* source, const AVPacket* packet, int& lengthSize)
{
    const AVCodecParameters* parameters = source->codecpar;
    if (parameters->codec_id != AV_CODEC_ID_HEVC || parameters->extradata_size < 23 ||
        parameters->extradata[0] != 1)
        return false;
    lengthSize = (parameters->extradata[21] & 3) + 1;
    bool cleanRandomAccess = false;
    NalUnits::forEach(packet->data, packet->size, lengthSize, [&](NalUnits::Unit unit) {
        const int type = NalUnits::hevcType(unit);
        if (type < 32) { // the first picture unit tells
            cleanRandomAccess = type == hevcCleanRandomAccess;
            return false;
        }
        return true;
    });
    return cleanRandomAccess;
}

void appendEndOfSequence(AVPacket* packet, int lengthSize)
{
    const int size = packet->size;
    checkExportStep(av_grow_packet(packet, lengthSize + 2), "marking a join");
    uint8_t* unit = packet->data + size;
    std::memset(unit, 0, std::size_t(lengthSize));
    unit[lengthSize - 1] = 2;
    unit[lengthSize] = hevcEndOfSequence << 1;
    unit[lengthSize + 1] = 1; // temporal id 0, plus one
}

} // namespace

VideoSplicer::VideoSplicer(const AVStream* source, const PassThroughPlan& plan,
                           std::optional<SpliceEncoder::Settings> encoder, OutputFile& output,
                           int streamIndex)
    : m_source(source)
    , m_plan(plan)
    , m_runs(plan.runs())
    , m_encoderSettings(std::move(encoder))
    , m_output(output)
    , m_streamIndex(streamIndex)
{
    for (std::size_t i = 0; i < m_runs.size(); ++i) {
        m_states.push_back(std::make_unique<RunState>());
        m_lastNeeded = std::max(m_lastNeeded, m_runs[i].last);
        if (m_runs[i].kind != VideoRun::Kind::encode)
            continue;
        if (!m_encoderSettings)
            throwExportFailure("planning the video", AVERROR_BUG);
        m_decodeRanges.emplace_back(m_runs[i].first, m_runs[i].last);
    }
    std::sort(m_decodeRanges.begin(), m_decodeRanges.end());
    std::vector<std::pair<std::size_t, std::size_t>> merged;
    for (const auto& range : m_decodeRanges) {
        if (!merged.empty() && range.first <= merged.back().second + 1)
            merged.back().second = std::max(merged.back().second, range.second);
        else
            merged.push_back(range);
    }
    m_decodeRanges = std::move(merged);
    if (!m_decodeRanges.empty())
        m_decoder = std::make_unique<Decoder>(source, "video");
    const AVRational rate =
        source->avg_frame_rate.num > 0 ? source->avg_frame_rate : source->r_frame_rate;
    if (rate.num > 0 && rate.den > 0)
        m_nominalDuration =
            std::max<int64_t>(1, av_rescale_q(1, av_inv_q(rate), source->time_base));
}

VideoSplicer::~VideoSplicer() = default;

void VideoSplicer::take(std::size_t index, AVPacket* packet)
{
    if (m_decodeRange < m_decodeRanges.size() && index >= m_decodeRanges[m_decodeRange].first) {
        decode(packet);
        if (index == m_decodeRanges[m_decodeRange].second) {
            // Drained, every picture of the runs decoded so far is out; the decoder then
            // starts again at the next range's keyframe.
            decode(nullptr);
            showHeld();
            avcodec_flush_buffers(m_decoder->context());
            completeEncodedRunsUpTo(index);
            ++m_decodeRange;
        }
    }

    while (m_copyRun < m_runs.size() &&
           (m_runs[m_copyRun].kind != VideoRun::Kind::copy || m_runs[m_copyRun].last < index))
        ++m_copyRun;
    if (m_copyRun < m_runs.size() && m_runs[m_copyRun].first <= index) {
        const VideoRun& run = m_runs[m_copyRun];
        RunState& state = *m_states[m_copyRun];
        const int64_t pts = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
        if (pts != AV_NOPTS_VALUE && pts >= run.skipBefore &&
            state.copied < run.decodeTimes.size()) {
            PacketPtr copy = makePacket();
            av_packet_move_ref(copy.get(), packet);
            copy->pts = std::max(pts, run.from) + run.shift;
            copy->dts = run.decodeTimes[state.copied++];
            copy->stream_index = m_streamIndex;
            // Each copied picture holds until the next one's time, which the muxer works
            // out itself; a stale length would only confuse the last one.
            state.pending.push_back(std::move(copy));
        }
        if (index == run.last)
            state.complete = true;
    }
    writeReady();
}

void VideoSplicer::finish()
{
    if (m_decoder && m_decodeRange < m_decodeRanges.size()) {
        decode(nullptr);
        showHeld();
    }
    // A file that ends early leaves its last runs short; what there is still goes out.
    for (std::size_t i = 0; i < m_runs.size(); ++i) {
        if (!m_states[i]->complete)
            complete(i);
    }
    if (m_encoder)
        m_encoder->finish(
            [](AVPacket*) { throwExportFailure("re-encoding the video", AVERROR_BUG); });
    writeReady();
    if (m_lastWritten)
        m_output.write(m_lastWritten.get(), m_source->time_base);
    m_lastWritten.reset();
}

void VideoSplicer::decode(const AVPacket* packet)
{
    m_decoder->decode(packet, [this](AVFrame* frame) { takeFrame(frame); });
}

void VideoSplicer::takeFrame(AVFrame* frame)
{
    const int64_t start = frame->best_effort_timestamp;
    // A picture without a time of its own, or one that does not come after the one before,
    // cannot be placed.
    if (start == AV_NOPTS_VALUE || (m_heldStart != AV_NOPTS_VALUE && start <= m_heldStart))
        return;
    if (m_heldStart != AV_NOPTS_VALUE)
        show(m_held.get(), m_heldStart, start);
    av_frame_unref(m_held.get());
    av_frame_move_ref(m_held.get(), frame);
    m_heldStart = start;
}

void VideoSplicer::showHeld()
{
    if (m_heldStart == AV_NOPTS_VALUE)
        return;
    const int64_t duration = m_held->pkt_duration > 0 ? m_held->pkt_duration : m_nominalDuration;
    show(m_held.get(), m_heldStart, m_heldStart + duration);
    m_heldStart = AV_NOPTS_VALUE;
}

void VideoSplicer::show(AVFrame* frame, int64_t start, int64_t end)
{
    while (m_encodeCursor < m_runs.size() &&
           (m_runs[m_encodeCursor].kind != VideoRun::Kind::encode ||
            m_states[m_encodeCursor]->complete))
        ++m_encodeCursor;
    if (m_decodeRange >= m_decodeRanges.size())
        return;
    const auto& range = m_decodeRanges[m_decodeRange];
    for (std::size_t i = m_encodeCursor; i < m_runs.size(); ++i) {
        const VideoRun& run = m_runs[i];
        // Runs decoded from another keyframe get their pictures from that decoding.
        if (run.kind != VideoRun::Kind::encode || m_states[i]->complete ||
            run.first < range.first || run.last > range.second)
            continue;
        if (run.from >= end)
            break;
        if (start >= run.to) {
            // Pictures come in time order: everything this run shows has been seen.
            complete(i);
            continue;
        }
        RunState& state = *m_states[i];
        if (!m_encoder)
            m_encoder = std::make_unique<SpliceEncoder>(*m_encoderSettings);
        const int64_t from = std::max(start, run.from);
        const int64_t to = std::min(end, run.to);
        FramePtr picture = makeFrame();
        checkExportStep(av_frame_ref(picture.get(), frame), "re-encoding the video");
        // Every run opens with an IDR picture, so it needs nothing that came before.
        m_encoder->encode(picture.get(), from + run.shift, to - from, !state.encoding,
                          [&](AVPacket* packet) {
                              PacketPtr out = makePacket();
                              av_packet_move_ref(out.get(), packet);
                              state.pending.push_back(std::move(out));
                          });
        state.encoding = true;
    }
    writeReady();
}

void VideoSplicer::completeEncodedRunsUpTo(std::size_t index)
{
    for (std::size_t i = 0; i < m_runs.size(); ++i) {
        if (m_runs[i].kind == VideoRun::Kind::encode && m_runs[i].last <= index &&
            !m_states[i]->complete)
            complete(i);
    }
    writeReady();
}

void VideoSplicer::complete(std::size_t run)
{
    RunState& state = *m_states[run];
    // The encoder holds no picture back, so every packet of the run is out already.
    if (!state.encoding && m_runs[run].kind == VideoRun::Kind::encode) {
        qCWarning(lcSplice, "no picture decoded for the stretch at %lld",
                  qlonglong(m_runs[run].from));
    }
    state.complete = true;
}

void VideoSplicer::writeReady()
{
    while (m_nextToWrite < m_runs.size()) {
        const VideoRun& run = m_runs[m_nextToWrite];
        RunState& state = *m_states[m_nextToWrite];
        // An encoded run's packets come out of x264 in presentation order.
        while (!state.pending.empty()) {
            PacketPtr packet = std::move(state.pending.front());
            state.pending.pop_front();
            if (run.kind == VideoRun::Kind::encode) {
                packet->dts = packet->pts - m_plan.decodeDelay();
                packet->stream_index = m_streamIndex;
            }
            writeVideo(std::move(packet), run.kind == VideoRun::Kind::copy && state.written == 0);
            ++state.written;
        }
        if (!state.complete)
            return;
        ++m_nextToWrite;
    }
}

void VideoSplicer::writeVideo(PacketPtr packet, bool startsRun)
{
    int lengthSize = 4;
    if (m_lastWritten && startsRun && needsEndOfSequenceBefore(m_source, packet.get(), lengthSize))
        appendEndOfSequence(m_lastWritten.get(), lengthSize);
    if (m_lastWritten)
        m_output.write(m_lastWritten.get(), m_source->time_base);
    m_lastWritten = std::move(packet);
}
