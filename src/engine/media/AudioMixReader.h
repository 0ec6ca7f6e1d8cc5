#pragma once

#include "AudioTrackDecoder.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <vector>

class MediaFile;

// Decodes every audio stream of a file and hands out their mix: mono 32-bit float at 16 kHz,
// sample 0 at the file's start. The channels of a track are averaged, then the tracks.
// A reader may start mid-file: it then seeks every track to a little before its start and
// decodes up to there unheard, so that decoders and resamplers have settled when it begins.
//
// Samples are handed out as soon as every track has decoded them, so memory stays bounded
// whatever the file's length. Where a track has no sound (it starts late or ends early) the
// mix is the average of the tracks that do; where none has, it is silence.
class AudioMixReader {
public:
    using Consumer = std::function<void(std::span<const float>)>;
    static constexpr int sampleRate = AudioTrackDecoder::outputRate;

    static constexpr int64_t unbounded = std::numeric_limits<int64_t>::max();

    // Sets up a decoder per audio stream of `file` that has one. `file` must outlive the
    // reader; a reader that starts at 0 consumes its demuxer. The first sample handed out is
    // the one at timeline index `start`; a later start seeks each track to `warmUp` samples
    // before it, on a demuxer of the track's own. Throws what AudioTrackDecoder throws, or
    // MediaError when a further demuxer cannot be opened or cannot seek.
    AudioMixReader(MediaFile& file, const std::atomic<bool>& cancelRequested, int64_t start = 0,
                   int64_t warmUp = 0);

    // Has every track decode ahead on a thread of its own; before the first read().
    void decodeAhead();

    // Also stops, like a cancel, once `abandoned` is set; it must outlive the reader.
    void stopWhen(const std::atomic<bool>* abandoned) { m_abandoned = abandoned; }

    // Decodes up to timeline index `end` or the end of the sound, handing each run of mixed
    // samples to `consumer`; a run is valid only during the call. The cancel flag is read once
    // per decoded frame: returns false as soon as it is set, true otherwise.
    bool read(const Consumer& consumer, int64_t end = unbounded);

    // Timeline index one past the last sample handed out: the samples read, from 0.
    int64_t samplesRead() const { return m_emitted; }

    // True when every track decoded from its stream's start or from `warmUp` samples or more
    // before `index`, so its decoder had settled there; a track that ended unplaced counts.
    bool settledBy(int64_t index, int64_t warmUp) const;
    // The latest timeline index where a track placed a frame off its timestamp; noPosition
    // when none did.
    int64_t lastDrift() const;
    // How much of the first track's file has been read, from 0 to 1; 0 when unknown.
    double fileFraction();

private:
    static constexpr int chunkSamples = 4096;

    int64_t mixableEnd() const;
    AudioTrackDecoder* laggingTrack() const;
    void emitUpTo(int64_t end, const Consumer& consumer);
    void mixChunk(int count);
    void copyOnlyTrack(int count);

    bool stopRequested() const;

    const std::atomic<bool>& m_cancelRequested;
    const std::atomic<bool>* m_abandoned = nullptr;
    std::vector<std::unique_ptr<AudioTrackDecoder>> m_tracks;
    std::vector<float> m_mix;
    std::vector<float> m_part;
    std::vector<int> m_playing;
    int64_t m_emitted = 0;
    int64_t m_fileSize = 0;
};
