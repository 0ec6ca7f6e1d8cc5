#include "LevelPart.h"

#include "AudioMixReader.h"

#include <algorithm>
#include <bit>

LevelPart::LevelPart(int64_t start, int64_t end, double expectedSeconds)
    : m_start(start)
    , m_end(end)
    , m_levels(expectedSeconds)
    , m_reached(start)
{
}

bool LevelPart::read(MediaFile& file, const std::atomic<bool>& cancelRequested,
                     const std::atomic<bool>* abandoned, const std::function<void()>& beforeBuffer)
{
    const int64_t first = m_start > 0 ? m_start - seamLength : 0;
    AudioMixReader mix(file, cancelRequested, first, m_start > 0 ? warmUp : 0);
    mix.stopWhen(abandoned);
    if (m_decodeAhead)
        mix.decodeAhead();
    m_driftBeforeStart = AudioTrackDecoder::noPosition;
    bool started = m_start == 0;
    int64_t at = first;
    const bool finished = mix.read(
        [&](std::span<const float> samples) {
            if (!started && at + int64_t(samples.size()) > m_start) {
                started = true;
                m_driftBeforeStart = mix.lastDrift();
            }
            if (beforeBuffer)
                beforeBuffer();
            take(at, samples);
            at += int64_t(samples.size());
            m_levelCount.store(m_levels.levelCount(), std::memory_order_relaxed);
            m_fileFraction.store(mix.fileFraction(), std::memory_order_relaxed);
        },
        m_end);
    m_reached = mix.samplesRead();
    m_settled = mix.settledBy(m_start - seamLength, warmUp / 2);
    m_lastDrift = mix.lastDrift();
    if (!started)
        m_driftBeforeStart = m_lastDrift;
    return finished;
}

void LevelPart::take(int64_t at, std::span<const float> samples)
{
    if (at < m_start) {
        const auto head = std::size_t(std::min<int64_t>(m_start - at, int64_t(samples.size())));
        m_head.insert(m_head.end(), samples.begin(), samples.begin() + head);
        samples = samples.subspan(head);
        at += int64_t(head);
    }
    if (samples.empty())
        return;
    m_levels.add(samples);
    if (m_end != unbounded && at + int64_t(samples.size()) > m_end - seamLength) {
        const auto skip = std::size_t(std::max<int64_t>(m_end - seamLength - at, 0));
        m_tail.insert(m_tail.end(), samples.begin() + skip, samples.end());
    }
}

bool LevelPart::continues(const LevelPart& previous) const
{
    // The sound ended before this stretch: so must everything after it.
    if (previous.m_reached < m_start)
        return m_reached <= m_start && m_levelCount.load() == 0;
    if (previous.m_reached != m_start || previous.m_end != m_start)
        return false;
    // Frames that followed their predecessor off their timestamps sit where only a reading
    // from the start can know; none may lie where both stretches decoded.
    const int64_t decodedByBoth = m_start - seamLength - warmUp;
    if (previous.m_lastDrift >= decodedByBoth ||
        m_driftBeforeStart != AudioTrackDecoder::noPosition)
        return false;
    return m_settled && m_head.size() == std::size_t(seamLength) &&
           std::equal(m_head.begin(), m_head.end(), previous.m_tail.begin(), previous.m_tail.end(),
                      [](float a, float b) {
                          // Bit for bit: -0 is not 0 here, and a NaN matches itself.
                          return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
                      });
}

std::vector<float> LevelPart::takeLevels()
{
    return m_levels.finish();
}
