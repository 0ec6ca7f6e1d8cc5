#include "CutCursor.h"

#include <algorithm>

CutCursor::CutCursor(CutList cuts)
    : m_cuts(std::move(cuts))
{
}

std::vector<Cut> CutCursor::keptParts(int64_t start, int64_t end)
{
    const std::vector<Cut>& cuts = m_cuts.cuts();
    while (m_next < cuts.size() && cuts[m_next].sourceEnd <= start)
        ++m_next;
    std::vector<Cut> parts;
    for (std::size_t i = m_next; i < cuts.size() && cuts[i].sourceStart < end; ++i) {
        const Cut& cut = cuts[i];
        const int64_t from = std::max(start, cut.sourceStart);
        const int64_t to = std::min(end, cut.sourceEnd);
        if (to > from)
            parts.push_back({from, to, cut.outputStart + (from - cut.sourceStart)});
    }
    return parts;
}
