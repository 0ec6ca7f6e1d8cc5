#pragma once

#include "CutList.h"

#include <cstdint>
#include <limits>
#include <vector>

// Timing of one compressed video packet, as read (decode order), in its stream's time base.
struct VideoPacketTiming {
    int64_t dts = 0;
    int64_t pts = 0;
    int64_t duration = 0;
    bool key = false;
};

// A stretch of the source copied unchanged. Its video is the packets whose dts lies in
// [firstDts, lastDts] and whose pts is not before the span's start.
struct CopySpan {
    Cut cut;
    int64_t firstDts = std::numeric_limits<int64_t>::max();
    int64_t lastDts = std::numeric_limits<int64_t>::min();

    bool hasVideo() const { return firstDts <= lastDts; }
    bool copiesVideoPacket(int64_t dts, int64_t pts) const
    {
        return dts >= firstDts && dts <= lastDts && pts >= cut.sourceStart;
    }
};

// What a stream copy can keep of a cut list. A copy can only start decoding at a keyframe,
// so each cut starts at the keyframe at or before its start (nothing kept is lost). It
// takes the packets decoded before the cut's end and those needed to leave no hole among
// the pictures shown, and lasts until the last of them has been shown: no copied picture
// lacks a reference, none is missing, and none overlaps the next span. Spans that then
// touch or overlap are merged.
class PassThroughPlan {
public:
    // `cuts` in the video stream's time base, source times already offset by the file's
    // start time. `packets` in decode order; none when there is no video.
    PassThroughPlan(const std::vector<VideoPacketTiming>& packets, const CutList& cuts);

    const std::vector<CopySpan>& spans() const { return m_spans; }
    // The spans as cuts on the output timeline, for the sound.
    CutList cutList() const;

private:
    AVRational m_timeBase;
    std::vector<CopySpan> m_spans;
};
