#include "PassThroughPlan.h"

#include <algorithm>
#include <optional>

namespace {

// Lookups over the packet list that the planning needs.
class PacketIndex {
public:
    explicit PacketIndex(const std::vector<VideoPacketTiming>& packets)
        : m_packets(packets)
    {
        int64_t shownUntil = std::numeric_limits<int64_t>::min();
        int64_t latest = std::numeric_limits<int64_t>::min();
        for (std::size_t i = 0; i < packets.size(); ++i) {
            shownUntil = std::max(shownUntil, packets[i].pts + packets[i].duration);
            latest = std::max(latest, packets[i].pts);
            m_shownUntil.push_back(shownUntil);
            m_latestShown.push_back(latest);
            if (packets[i].key)
                m_keys.push_back(i);
        }
        m_earliestAfter.assign(packets.size() + 1, std::numeric_limits<int64_t>::max());
        for (std::size_t i = packets.size(); i-- > 0;)
            m_earliestAfter[i] = std::min(m_earliestAfter[i + 1], packets[i].pts);
        // A stream that flags no keyframe at all can still be copied from its first packet.
        if (m_keys.empty() && !packets.empty())
            m_keys.push_back(0);
        std::sort(m_keys.begin(), m_keys.end(),
                  [&](std::size_t a, std::size_t b) { return packets[a].pts < packets[b].pts; });
    }

    bool covers(int64_t time) const { return !m_packets.empty() && time < m_shownUntil.back(); }

    // The keyframe at or before `time`, else the first keyframe after it.
    std::optional<std::size_t> keyFor(int64_t time) const
    {
        if (m_keys.empty())
            return std::nullopt;
        const auto after =
            std::upper_bound(m_keys.begin(), m_keys.end(), time, [&](int64_t t, std::size_t index) {
                return t < m_packets[index].pts;
            });
        return after == m_keys.begin() ? m_keys.front() : *(after - 1);
    }

    // The last packet a copy ending at `time` takes: every packet decoded before `time`,
    // and then on in decode order until no later packet is shown before one taken, so the
    // pictures copied have no hole (a B-pyramid decodes its anchor first).
    std::optional<std::size_t> lastPacketFor(int64_t time) const
    {
        const auto after = std::lower_bound(
            m_packets.begin(), m_packets.end(), time,
            [](const VideoPacketTiming& packet, int64_t t) { return packet.dts < t; });
        if (after == m_packets.begin())
            return std::nullopt;
        std::size_t last = std::size_t(after - m_packets.begin() - 1);
        while (m_earliestAfter[last + 1] <= m_latestShown[last])
            ++last;
        return last;
    }

    // The end of the last picture a copy ending at `time` shows, or `time`.
    int64_t shownEnd(int64_t time) const
    {
        const auto last = lastPacketFor(time);
        return last ? std::max(time, m_shownUntil[*last]) : time;
    }

    const VideoPacketTiming& operator[](std::size_t index) const { return m_packets[index]; }

private:
    const std::vector<VideoPacketTiming>& m_packets;
    std::vector<int64_t> m_shownUntil;    // running maximum of pts + duration in decode order
    std::vector<int64_t> m_latestShown;   // running maximum of pts in decode order
    std::vector<int64_t> m_earliestAfter; // minimum pts from each packet to the end
    std::vector<std::size_t> m_keys;      // keyframes, by pts
};

struct OpenSpan {
    int64_t start = 0;
    int64_t end = 0;    // stretched to the pictures shown
    int64_t cutEnd = 0; // end of the last cut merged in
    std::optional<std::size_t> firstPacket;
};

} // namespace

PassThroughPlan::PassThroughPlan(const std::vector<VideoPacketTiming>& packets, const CutList& cuts)
    : m_timeBase(cuts.timeBase())
{
    const PacketIndex index(packets);
    std::vector<OpenSpan> open;
    for (const Cut& cut : cuts.cuts()) {
        OpenSpan span{cut.sourceStart, index.shownEnd(cut.sourceEnd), cut.sourceEnd, {}};
        // Beyond the end of the video there is nothing to snap to.
        if (index.covers(cut.sourceStart)) {
            span.firstPacket = index.keyFor(cut.sourceStart);
            span.start = std::min(cut.sourceStart, index[*span.firstPacket].pts);
        }
        if (!open.empty() && span.start <= open.back().end) {
            OpenSpan& previous = open.back();
            previous.end = std::max(previous.end, span.end);
            previous.cutEnd = std::max(previous.cutEnd, span.cutEnd);
            if (!previous.firstPacket)
                previous.firstPacket = span.firstPacket;
            continue;
        }
        open.push_back(span);
    }

    int64_t output = 0;
    for (const OpenSpan& span : open) {
        CopySpan copy;
        copy.cut = {span.start, span.end, output};
        output += span.end - span.start;
        const auto lastPacket = index.lastPacketFor(span.cutEnd);
        if (span.firstPacket && lastPacket && *span.firstPacket <= *lastPacket) {
            copy.firstDts = index[*span.firstPacket].dts;
            copy.lastDts = index[*lastPacket].dts;
        }
        m_spans.push_back(copy);
    }
}

CutList PassThroughPlan::cutList() const
{
    std::vector<Cut> cuts;
    for (const CopySpan& span : m_spans)
        cuts.push_back(span.cut);
    return {m_timeBase, std::move(cuts)};
}
