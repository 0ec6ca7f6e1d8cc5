#include "CutEvent.h"

std::vector<CutEvent> CutEvent::fromKeeps(const std::vector<Segment>& keeps, TimecodeRate rate)
{
    std::vector<CutEvent> events;
    qint64 record = 0;
    for (const Segment& keep : keeps) {
        // Both ends are rounded alike, so neighbouring keeps never overlap by a frame.
        const qint64 in = Timecode::frameAt(keep.start, rate);
        const qint64 out = Timecode::frameAt(keep.end, rate);
        if (out <= in)
            continue;
        events.push_back({in, out, record, record + (out - in)});
        record += out - in;
    }
    return events;
}
