#include "AudioPacketCopier.h"

#include <algorithm>

AudioPacketCopier::AudioPacketCopier(CutList spans)
    : m_spans(std::move(spans))
{
}

std::optional<int64_t> AudioPacketCopier::place(int64_t pts, int64_t duration)
{
    const auto& spans = m_spans.cuts();
    const int64_t middle = pts + duration / 2;
    while (m_next < spans.size() && middle >= spans[m_next].sourceEnd)
        ++m_next;
    if (m_next == spans.size() || middle < spans[m_next].sourceStart)
        return std::nullopt;
    const Cut& span = spans[m_next];
    const int64_t faithful = span.outputStart + (pts - span.sourceStart);
    if (m_shiftedSpan != m_next) {
        m_shiftedSpan = m_next;
        m_shift = std::max<int64_t>(0, m_end - faithful);
    }
    const int64_t placed = faithful + m_shift;
    m_end = placed + duration;
    return placed;
}
