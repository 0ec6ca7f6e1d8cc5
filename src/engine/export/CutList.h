#pragma once

#include "Segment.h"

extern "C" {
#include <libavutil/rational.h>
}

#include <cstdint>
#include <vector>

// One kept span of the source and where it lands on the output timeline. All times are in
// the time base of the CutList that holds the cut.
struct Cut {
    int64_t sourceStart = 0;
    int64_t sourceEnd = 0;
    int64_t outputStart = 0;

    int64_t length() const { return sourceEnd - sourceStart; }
    int64_t outputEnd() const { return outputStart + length(); }
    bool operator==(const Cut&) const = default;
};

// The kept spans of a recording laid end to end on the output timeline, in time order.
class CutList {
public:
    // Keep bounds are handed to the writers in 1/600 s, as the rest of the app rounds them.
    static constexpr AVRational keepTimeBase{1, 600};

    // Rounds each keep's start and its length to 1/600 s on their own; a keep's output
    // position is the exact sum of the rounded lengths before it. Keeps that round to
    // nothing are dropped.
    static CutList fromKeeps(const std::vector<Segment>& keeps);

    CutList(AVRational timeBase, std::vector<Cut> cuts);

    AVRational timeBase() const { return m_timeBase; }
    const std::vector<Cut>& cuts() const { return m_cuts; }
    bool empty() const { return m_cuts.empty(); }
    int64_t outputLength() const { return m_cuts.empty() ? 0 : m_cuts.back().outputEnd(); }
    // Where the last cut ends in the source.
    int64_t sourceEnd() const { return m_cuts.empty() ? 0 : m_cuts.back().sourceEnd; }

    // The same cuts in `timeBase`, with `sourceOrigin` (in `timeBase`) added to the source
    // times: a stream's timestamps count from the file's start time, keeps from zero.
    // Output bounds round to the nearest unit on their own, so every join stays within half
    // a unit of its exact place however many cuts come before it; a cut's source start
    // rounds the same way and its length is that of its rounded output span.
    CutList rescaled(AVRational timeBase, int64_t sourceOrigin = 0) const;

private:
    AVRational m_timeBase;
    std::vector<Cut> m_cuts;
};
