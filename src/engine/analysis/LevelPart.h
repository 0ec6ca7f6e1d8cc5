#pragma once

#include "LevelReader.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <vector>

class MediaFile;

// One stretch of a file's timeline, [start, end) in 16 kHz samples, read into levels by
// decoders of its own, so that several stretches of one file can be read at once.
//
// A stretch that starts mid-file decodes its first second unheard, then `seamLength` samples
// that the stretch before it also ends with. Where both hold the same samples there and
// placed the frames around the seam where their timestamps say, the decoders and resamplers
// of both agree from there on: its levels are those of one reading from the start.
class LevelPart {
public:
    static constexpr int64_t warmUp = LevelReader::sampleRate;
    static constexpr int64_t seamLength = 2 * LevelReader::windowSamples;
    static constexpr int64_t unbounded = std::numeric_limits<int64_t>::max();

    // `start` and `end` lie on level windows; `end` may be unbounded. Room is reserved for
    // the levels of `expectedSeconds`.
    LevelPart(int64_t start, int64_t end, double expectedSeconds);
    LevelPart(const LevelPart&) = delete;
    LevelPart& operator=(const LevelPart&) = delete;

    // Has read() decode ahead on further threads, one per track.
    void decodeAhead() { m_decodeAhead = true; }

    // Decodes the stretch. `beforeBuffer`, when set, is called before each buffer of mixed
    // samples is measured. Returns false when `cancelRequested` or `abandoned` stopped it.
    // Throws what AudioMixReader throws.
    bool read(MediaFile& file, const std::atomic<bool>& cancelRequested,
              const std::atomic<bool>* abandoned, const std::function<void()>& beforeBuffer);

    int64_t start() const { return m_start; }
    // Levels measured so far; safe to read from any thread while read() runs.
    std::size_t levelCount() const { return m_levelCount.load(std::memory_order_relaxed); }
    // Timeline index one past the last sample measured: `end`, or less where the sound ended.
    int64_t reached() const { return m_reached; }
    // How much of the file has been read, for a stretch whose length is unknown.
    double fileFraction() const { return m_fileFraction.load(std::memory_order_relaxed); }

    // True when this stretch, read after `previous`, gives what one reading from the start
    // gives: the seam samples agree to the bit and the frames there sit at their timestamps.
    bool continues(const LevelPart& previous) const;

    // The levels, a partial last window included. The part is spent afterwards.
    std::vector<float> takeLevels();

private:
    void take(int64_t at, std::span<const float> samples);

    int64_t m_start;
    int64_t m_end;
    LevelReader m_levels;
    std::atomic<std::size_t> m_levelCount{0};
    std::atomic<double> m_fileFraction{0.0};
    std::vector<float> m_head; // [start - seamLength, start), as this stretch decoded it
    std::vector<float> m_tail; // [end - seamLength, end)
    int64_t m_reached = 0;
    bool m_decodeAhead = false;
    bool m_settled = false;
    int64_t m_driftBeforeStart = 0;
    int64_t m_lastDrift = 0;
};
