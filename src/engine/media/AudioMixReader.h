#pragma once

#include "AudioTrackDecoder.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

class MediaFile;

// Decodes every audio stream of a file and hands out their mix: mono 32-bit float at 16 kHz,
// sample 0 at the file's start. The channels of a track are averaged, then the tracks.
//
// Samples are handed out as soon as every track has decoded them, so memory stays bounded
// whatever the file's length. Where a track has no sound (it starts late or ends early) the
// mix is the average of the tracks that do; where none has, it is silence.
class AudioMixReader {
public:
    using Consumer = std::function<void(std::span<const float>)>;
    static constexpr int sampleRate = AudioTrackDecoder::outputRate;

    // Sets up a decoder per audio stream. `file` must outlive the reader, whose reading
    // consumes its demuxer. Throws what AudioTrackDecoder throws, or MediaError when a
    // further demuxer cannot be opened.
    AudioMixReader(MediaFile& file, const std::atomic<bool>& cancelRequested);

    // Decodes to the end, handing each run of mixed samples to `consumer`; a run is valid
    // only during the call. The cancel flag is read once per decoded frame: returns false
    // as soon as it is set, true at the end of the sound.
    bool read(const Consumer& consumer);

    // Mixed samples handed out so far.
    int64_t samplesRead() const { return m_emitted; }

private:
    static constexpr int chunkSamples = 4096;

    int64_t mixableEnd() const;
    AudioTrackDecoder* laggingTrack() const;
    void emitUpTo(int64_t end, const Consumer& consumer);
    void mixChunk(int count);
    void copyOnlyTrack(int count);

    const std::atomic<bool>& m_cancelRequested;
    std::vector<std::unique_ptr<AudioTrackDecoder>> m_tracks;
    std::vector<float> m_mix;
    std::vector<float> m_part;
    std::vector<int> m_playing;
    int64_t m_emitted = 0;
};
