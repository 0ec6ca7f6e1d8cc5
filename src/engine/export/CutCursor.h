#pragma once

#include "CutList.h"

#include <cstddef>
#include <vector>

// Walks a CutList along a stream whose pieces (sample buffers, frames shown for a while)
// come in time order, and tells which parts of each piece are kept and where they land.
class CutCursor {
public:
    explicit CutCursor(CutList cuts);

    const CutList& cutList() const { return m_cuts; }

    // The parts of the source span [start, end) that lie inside cuts, in order, each with
    // its place on the output timeline. Spans must not start before an earlier span did.
    std::vector<Cut> keptParts(int64_t start, int64_t end);

    // True when nothing at or after `time` is kept.
    bool pastEnd(int64_t time) const { return time >= m_cuts.sourceEnd(); }

private:
    CutList m_cuts;
    std::size_t m_next = 0; // first cut that may still overlap a coming span
};
