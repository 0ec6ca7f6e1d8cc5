#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

class MediaFile;

// Turns mono 16 kHz samples into loudness levels: the root mean square of every run of 800
// samples (0.05 s), in single precision. A window may span any number of buffers.
class LevelReader {
public:
    static constexpr int sampleRate = 16000;
    static constexpr int windowSamples = 800;

    // Reserves room for the levels of `duration` seconds.
    explicit LevelReader(double duration);

    void add(std::span<const float> samples);
    // The levels, a last partial window included. The reader is spent afterwards.
    std::vector<float> finish();

    std::size_t levelCount() const { return m_levels.size(); }
    // Levels a file of the given duration should give, at least 1; for progress.
    double expectedLevels() const { return m_expected; }

private:
    double m_expected;
    std::vector<float> m_levels;
    float m_sum = 0.0f;
    int m_count = 0;
};

struct LevelReading {
    std::vector<float> levels;
    int64_t sampleCount = 0;   // mixed samples decoded, at 16 kHz
    int parts = 1;             // stretches of the file read at once
    bool decodedAhead = false; // one stretch, decoded on threads of its own while measured
};

// Decodes the sound of `file` (every audio track, mixed) into levels. `onProgress`, when
// set, gets the fraction of the expected levels read so far, once per decoded buffer while
// the level count is a multiple of 20 (with no known `duration`, the fraction of the file
// read). Throws TidleError::cancelled when `cancelRequested` is seen, TidleError::unreadable
// when decoding fails.
//
// On a machine of several cores, a file of known length whose timestamps name exact samples
// and whose codec decodes the same from any point after a second is read in `parts`
// stretches at once (0: one per core, each at least half a minute), with the very levels of
// one reading from the start; where the stretches do not join seamlessly it is read again from
// the start. Any other file is decoded on threads of its own while the calling thread
// measures. `parts` 1 asks for one plain reading on the calling thread.
LevelReading readLevels(MediaFile& file, double duration, const std::atomic<bool>& cancelRequested,
                        const std::function<void(double)>& onProgress, int parts = 0);
