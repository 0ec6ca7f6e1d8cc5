#pragma once

#include "CutList.h"

#include <cstddef>
#include <cstdint>
#include <optional>

// Chooses the compressed sound packets of each copied span and places them on the output
// timeline. A packet belongs to the span that holds its middle, so each join is cut to
// within half a packet; it keeps its distance from the span's start, so the sound stays
// in sync with the copied pictures; where the previous span's last packet would overlap
// it, the span's sound moves later by that overlap (less than one packet).
class AudioPacketCopier {
public:
    // `spans` in the sound stream's time base, source times as the stream stamps them.
    explicit AudioPacketCopier(CutList spans);

    // The output time of a packet, or none when it is not copied. Packets in stream order.
    std::optional<int64_t> place(int64_t pts, int64_t duration);
    // Nothing at or after `pts` is copied.
    bool pastEnd(int64_t pts) const { return pts >= m_spans.sourceEnd(); }

private:
    CutList m_spans;
    std::size_t m_next = 0;
    std::size_t m_shiftedSpan = SIZE_MAX;
    int64_t m_shift = 0;
    int64_t m_end = 0; // where the last copied packet ends on the output
};
