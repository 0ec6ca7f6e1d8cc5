#pragma once

#include "Segment.h"
#include "Timecode.h"

#include <vector>

// One kept span in whole frames: where it is in the recording (from the recording's first
// frame) and where it lands in the edited sequence. Outs are exclusive, as in EDLs and XML.
struct CutEvent {
    qint64 sourceIn = 0;
    qint64 sourceOut = 0;
    qint64 recordIn = 0;
    qint64 recordOut = 0;

    qint64 length() const { return sourceOut - sourceIn; }
    bool operator==(const CutEvent&) const = default;

    // The keeps snapped to frames and laid end to end from frame 0 of the sequence; keeps
    // shorter than a frame at `rate` are left out, so no event is empty.
    static std::vector<CutEvent> fromKeeps(const std::vector<Segment>& keeps, TimecodeRate rate);
};
