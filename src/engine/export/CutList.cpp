#include "CutList.h"

extern "C" {
#include <libavutil/mathematics.h>
}

#include <cmath>

namespace {

int64_t toTicks(double seconds)
{
    return std::llround(seconds * CutList::keepTimeBase.den);
}

} // namespace

CutList CutList::fromKeeps(const std::vector<Segment>& keeps)
{
    std::vector<Cut> cuts;
    int64_t output = 0;
    for (const Segment& keep : keeps) {
        const int64_t start = toTicks(keep.start < 0.0 ? 0.0 : keep.start);
        const int64_t length = toTicks(keep.end - keep.start);
        if (length <= 0)
            continue;
        cuts.push_back({start, start + length, output});
        output += length;
    }
    return {keepTimeBase, std::move(cuts)};
}

CutList::CutList(AVRational timeBase, std::vector<Cut> cuts)
    : m_timeBase(timeBase)
    , m_cuts(std::move(cuts))
{
}

CutList CutList::rescaled(AVRational timeBase, int64_t sourceOrigin) const
{
    std::vector<Cut> cuts;
    for (const Cut& cut : m_cuts) {
        const int64_t outputStart = av_rescale_q(cut.outputStart, m_timeBase, timeBase);
        const int64_t outputEnd = av_rescale_q(cut.outputEnd(), m_timeBase, timeBase);
        if (outputEnd <= outputStart)
            continue;
        const int64_t sourceStart =
            av_rescale_q(cut.sourceStart, m_timeBase, timeBase) + sourceOrigin;
        cuts.push_back({sourceStart, sourceStart + (outputEnd - outputStart), outputStart});
    }
    return {timeBase, std::move(cuts)};
}
