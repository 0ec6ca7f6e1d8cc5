#include "PassThroughPlan.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace {

// Lookups over the packet list: pictures in presentation order ("ranks") and back.
class PacketIndex {
public:
    explicit PacketIndex(const std::vector<VideoPacketTiming>& packets)
        : m_packets(packets)
        , m_byTime(packets.size())
        , m_rank(packets.size())
    {
        std::iota(m_byTime.begin(), m_byTime.end(), std::size_t(0));
        std::stable_sort(m_byTime.begin(), m_byTime.end(), [&](std::size_t a, std::size_t b) {
            return packets[a].pts < packets[b].pts;
        });
        for (std::size_t rank = 0; rank < m_byTime.size(); ++rank)
            m_rank[m_byTime[rank]] = rank;
    }

    std::size_t size() const { return m_packets.size(); }
    const VideoPacketTiming& packet(std::size_t index) const { return m_packets[index]; }
    std::size_t atRank(std::size_t rank) const { return m_byTime[rank]; }
    std::size_t rankOf(std::size_t index) const { return m_rank[index]; }
    int64_t ptsAtRank(std::size_t rank) const { return m_packets[m_byTime[rank]].pts; }

    // When the picture of `rank` gives way to the next.
    int64_t shownEnd(std::size_t rank) const
    {
        if (rank + 1 < m_byTime.size())
            return ptsAtRank(rank + 1);
        const VideoPacketTiming& last = m_packets[m_byTime[rank]];
        return last.pts + std::max<int64_t>(1, last.duration);
    }

    bool covers(int64_t time) const
    {
        return !m_byTime.empty() && time < shownEnd(m_byTime.size() - 1);
    }

    // The picture on screen at `time` (the first one for times before it).
    std::size_t rankAt(int64_t time) const
    {
        const auto after = std::upper_bound(
            m_byTime.begin(), m_byTime.end(), time,
            [&](int64_t t, std::size_t index) { return t < m_packets[index].pts; });
        return after == m_byTime.begin() ? 0 : std::size_t(after - m_byTime.begin() - 1);
    }

    // The picture whose start is nearest to `time`.
    std::size_t rankNearest(int64_t time) const
    {
        const std::size_t rank = rankAt(time);
        if (rank + 1 < m_byTime.size() && ptsAtRank(rank + 1) - time < time - ptsAtRank(rank))
            return rank + 1;
        return rank;
    }

    // `nominal` when nearly every picture follows the one before by that much, else 0.
    double steadyStep(double nominal) const
    {
        if (nominal <= 0 || m_byTime.size() < 2)
            return 0;
        std::size_t steady = 0;
        for (std::size_t rank = 1; rank < m_byTime.size(); ++rank) {
            if (std::abs(double(ptsAtRank(rank) - ptsAtRank(rank - 1)) - nominal) <= 1.0)
                ++steady;
        }
        return steady * 20 >= (m_byTime.size() - 1) * 19 ? nominal : 0;
    }

    // The first rank from `rank` on whose packet passes `test`, shown before `before`.
    template <typename Test>
    std::optional<std::size_t> firstFrom(std::size_t rank, int64_t before, Test test) const
    {
        for (; rank < m_byTime.size() && ptsAtRank(rank) < before; ++rank) {
            if (test(m_packets[m_byTime[rank]]))
                return rank;
        }
        return std::nullopt;
    }

    // The last rank at or before `rank` whose packet passes `test`.
    template <typename Test> std::optional<std::size_t> lastUpTo(std::size_t rank, Test test) const
    {
        for (std::size_t r = rank + 1; r-- > 0;) {
            if (test(m_packets[m_byTime[r]]))
                return r;
        }
        return std::nullopt;
    }

private:
    const std::vector<VideoPacketTiming>& m_packets;
    std::vector<std::size_t> m_byTime;
    std::vector<std::size_t> m_rank;
};

// A copy from the packet `start` on, in decode order, leaving out pictures shown before it.
// It is clean when it holds every picture from `start` to the latest one it shows: then
// nothing it shows waits for a packet it lacks, and nothing is missing between.
struct Prefix {
    std::size_t last = 0;    // decode index of its last packet
    std::size_t maxRank = 0; // the latest picture it shows
};

// The longest clean copy from `start` that shows nothing at or after `end`.
std::optional<Prefix> longestCleanPrefix(const PacketIndex& index, std::size_t start, int64_t end)
{
    const std::size_t startRank = index.rankOf(start);
    std::optional<Prefix> best;
    std::size_t count = 0;
    std::size_t maxRank = startRank;
    for (std::size_t i = start; i < index.size(); ++i) {
        if (index.rankOf(i) < startRank)
            continue;
        if (index.packet(i).pts >= end)
            break;
        ++count;
        maxRank = std::max(maxRank, index.rankOf(i));
        if (maxRank - startRank + 1 == count)
            best = Prefix{i, maxRank};
    }
    return best;
}

// The shortest clean copy from `start` that shows every picture before `end`.
Prefix shortestCoveringPrefix(const PacketIndex& index, std::size_t start, int64_t end)
{
    const std::size_t startRank = index.rankOf(start);
    std::size_t count = 0;
    std::size_t maxRank = startRank;
    Prefix prefix{start, startRank};
    for (std::size_t i = start; i < index.size(); ++i) {
        if (index.rankOf(i) < startRank)
            continue;
        ++count;
        maxRank = std::max(maxRank, index.rankOf(i));
        if (maxRank - startRank + 1 == count) {
            prefix = {i, maxRank};
            if (index.shownEnd(maxRank) >= end)
                break;
        }
    }
    return prefix;
}

// The packets a decoder needs to show the pictures of [from, to): from the keyframe before
// the first of them to the last of them in decode order. None when no picture is shown then.
std::optional<std::pair<std::size_t, std::size_t>> decodeRange(const PacketIndex& index,
                                                               int64_t from, int64_t to)
{
    const std::size_t firstRank = index.rankAt(from);
    std::size_t last = 0;
    bool any = false;
    for (std::size_t rank = firstRank; rank < index.size() && index.ptsAtRank(rank) < to; ++rank) {
        if (index.shownEnd(rank) <= from)
            continue;
        last = std::max(last, index.atRank(rank));
        any = true;
    }
    if (!any)
        return std::nullopt;
    const auto key = index.lastUpTo(firstRank, [](const VideoPacketTiming& p) { return p.key; });
    return std::make_pair(key ? index.atRank(*key) : std::size_t(0), last);
}

void addEncode(std::vector<VideoRun>& runs, const PacketIndex& index, int64_t from, int64_t to,
               int64_t shift)
{
    const auto range = decodeRange(index, from, to);
    if (!range)
        return;
    VideoRun run;
    run.kind = VideoRun::Kind::encode;
    run.from = from;
    run.to = to;
    run.shift = shift;
    run.first = range->first;
    run.last = range->second;
    runs.push_back(run);
}

void addCopy(std::vector<VideoRun>& runs, const PacketIndex& index, std::size_t first,
             std::size_t last, int64_t from, int64_t to, int64_t shift)
{
    VideoRun run;
    run.from = from;
    run.to = to;
    run.shift = shift;
    run.first = first;
    run.last = last;
    run.skipBefore = index.packet(first).pts;
    runs.push_back(run);
}

struct SnappedSpan {
    int64_t start = 0;
    int64_t end = 0;
    std::optional<std::size_t> first;
    std::size_t last = 0;
};

} // namespace

PassThroughPlan::PassThroughPlan(const std::vector<VideoPacketTiming>& packets, const CutList& cuts,
                                 bool reencodeEdges, double frameDuration)
    : m_spans(cuts.timeBase(), {})
{
    const PacketIndex index(packets);
    std::vector<Cut> spans;
    if (reencodeEdges) {
        const double step = index.steadyStep(frameDuration);
        for (const Cut& cut : cuts.cuts()) {
            spans.push_back(cut);
            if (!index.covers(cut.sourceStart))
                continue; // past the end of the video: sound only
            int64_t start = cut.sourceStart;
            int64_t end = cut.sourceEnd;
            int64_t shift = cut.outputStart - cut.sourceStart;
            if (step > 0) {
                // A steady stream keeps its pictures whole: each span takes the pictures
                // nearest its bounds and moves them by less than half a picture, onto the
                // output's own frame grid, so no picture is cut short at a join and the
                // spans still meet where the cut list puts them.
                const auto first = std::llround(double(cut.outputStart) / step);
                const auto last = std::llround(double(cut.outputEnd()) / step);
                if (last <= first)
                    continue; // shorter than half a picture
                const int64_t gridStart = std::llround(double(first) * step);
                const std::size_t rank =
                    index.rankNearest(cut.sourceStart + gridStart - cut.outputStart);
                const std::size_t lastRank = rank + std::size_t(last - first);
                start = index.ptsAtRank(rank);
                end = lastRank < index.size() ? index.ptsAtRank(lastRank)
                                              : index.shownEnd(index.size() - 1);
                shift = gridStart - start;
            }
            const std::size_t atStart = index.rankAt(start);
            const auto restart =
                index.firstFrom(atStart, end, [](const VideoPacketTiming& p) { return p.restart; });
            if (!restart) {
                addEncode(m_runs, index, start, end, shift);
                continue;
            }
            const std::size_t first = index.atRank(*restart);
            const int64_t copyFrom = std::max(start, index.packet(first).pts);
            if (*restart != atStart)
                addEncode(m_runs, index, start, copyFrom, shift);
            const auto prefix = longestCleanPrefix(index, first, end);
            const int64_t copyTo = std::min(end, index.shownEnd(prefix->maxRank));
            addCopy(m_runs, index, first, prefix->last, copyFrom, copyTo, shift);
            if (copyTo < end)
                addEncode(m_runs, index, copyTo, end, shift);
        }
    } else {
        std::vector<SnappedSpan> open;
        for (const Cut& cut : cuts.cuts()) {
            SnappedSpan span{cut.sourceStart, cut.sourceEnd, std::nullopt, 0};
            if (index.covers(cut.sourceStart)) {
                const std::size_t atStart = index.rankAt(cut.sourceStart);
                const auto isRestart = [](const VideoPacketTiming& p) { return p.restart; };
                auto restart = index.lastUpTo(atStart, isRestart);
                if (!restart)
                    restart = index.firstFrom(atStart, cut.sourceEnd, isRestart);
                if (restart) {
                    span.first = index.atRank(*restart);
                    span.start = std::min(cut.sourceStart, index.packet(*span.first).pts);
                    const Prefix prefix = shortestCoveringPrefix(index, *span.first, cut.sourceEnd);
                    span.last = prefix.last;
                    span.end = std::max(cut.sourceEnd, index.shownEnd(prefix.maxRank));
                }
            }
            if (!open.empty() && span.start <= open.back().end) {
                SnappedSpan& previous = open.back();
                previous.end = std::max(previous.end, span.end);
                previous.last = std::max(previous.last, span.last);
                if (!previous.first)
                    previous.first = span.first;
                continue;
            }
            open.push_back(span);
        }
        int64_t output = 0;
        for (const SnappedSpan& span : open) {
            const int64_t shift = output - span.start;
            spans.push_back({span.start, span.end, output});
            output += span.end - span.start;
            if (span.first)
                addCopy(m_runs, index, *span.first, span.last, span.start, span.end, shift);
        }
    }
    m_spans = CutList(cuts.timeBase(), std::move(spans));
    setDecodeTimes(packets);
}

void PassThroughPlan::setDecodeTimes(const std::vector<VideoPacketTiming>& packets)
{
    // Each run holds pictures of one stretch of time and the runs follow each other in
    // time, so the n-th packet of the stream decodes at the n-th picture's time, less the
    // largest reordering anywhere.
    m_delay = 0;
    for (VideoRun& run : m_runs) {
        if (run.kind != VideoRun::Kind::copy)
            continue;
        std::vector<int64_t> shown;
        for (std::size_t i = run.first; i <= run.last; ++i) {
            if (packets[i].pts >= run.skipBefore)
                shown.push_back(std::max(packets[i].pts, run.from) + run.shift);
        }
        run.decodeTimes = shown;
        std::sort(run.decodeTimes.begin(), run.decodeTimes.end());
        for (std::size_t j = 0; j < shown.size(); ++j)
            m_delay = std::max(m_delay, run.decodeTimes[j] - shown[j]);
    }
    for (VideoRun& run : m_runs) {
        for (int64_t& time : run.decodeTimes)
            time -= m_delay;
    }
}
