#include "AudioMixReader.h"

#include "MediaFile.h"

#include <algorithm>
#include <limits>

AudioMixReader::AudioMixReader(MediaFile& file, const std::atomic<bool>& cancelRequested,
                               int64_t start, int64_t warmUp)
    : m_cancelRequested(cancelRequested)
    , m_emitted(start)
{
    const int64_t fileStart = file.context()->start_time;
    const std::vector<int>& streams = file.audioStreams();
    for (std::size_t i = 0; i < streams.size(); ++i) {
        // The first track of a reader from the start reads the file's own demuxer; every
        // other one gets a demuxer of its own, so that no track waits in memory for another
        // one's packets and readers of different parts never share one.
        if (i == 0 && start == 0)
            m_tracks.push_back(
                std::make_unique<AudioTrackDecoder>(file.context(), streams[i], fileStart));
        else
            m_tracks.push_back(std::make_unique<AudioTrackDecoder>(
                MediaFile::openDemuxer(file.path()), streams[i], fileStart));
        if (start > 0)
            m_tracks.back()->seek(start - warmUp);
    }
}

bool AudioMixReader::read(const Consumer& consumer, int64_t end)
{
    for (;;) {
        if (stopRequested())
            return false;
        // Samples before what was handed out (a track that starts before the file does)
        // are never mixed; dropping them here keeps a lagging track's buffer small.
        for (const auto& track : m_tracks)
            track->dropBefore(m_emitted);
        emitUpTo(std::min(mixableEnd(), end), consumer);
        if (m_emitted >= end)
            return true;
        AudioTrackDecoder* next = laggingTrack();
        if (!next)
            return true;
        next->decodeMore();
    }
}

void AudioMixReader::decodeAhead()
{
    for (const auto& track : m_tracks)
        track->prefetch();
}

bool AudioMixReader::stopRequested() const
{
    return m_cancelRequested.load(std::memory_order_relaxed) ||
           (m_abandoned && m_abandoned->load(std::memory_order_relaxed));
}

bool AudioMixReader::settledBy(int64_t index, int64_t warmUp) const
{
    return std::all_of(m_tracks.begin(), m_tracks.end(), [&](const auto& track) {
        return track->startedAtStreamStart() ||
               track->firstPosition() == AudioTrackDecoder::noPosition ||
               track->firstPosition() <= index - warmUp;
    });
}

int64_t AudioMixReader::lastDrift() const
{
    int64_t latest = AudioTrackDecoder::noPosition;
    for (const auto& track : m_tracks)
        latest = std::max(latest, track->lastDrift());
    return latest;
}

double AudioMixReader::fileFraction()
{
    AVIOContext* io = m_tracks.empty() ? nullptr : m_tracks.front()->demuxer()->pb;
    if (!io)
        return 0.0;
    if (m_fileSize == 0)
        m_fileSize = avio_size(io); // a system call: once
    const int64_t at = avio_tell(io);
    return m_fileSize > 0 && at >= 0 ? std::min(double(at) / double(m_fileSize), 1.0) : 0.0;
}

// Samples up to here are known for every track: decoded, or beyond the end of a track that
// has ended. A track not yet placed on the timeline could still start anywhere.
int64_t AudioMixReader::mixableEnd() const
{
    int64_t openEnd = std::numeric_limits<int64_t>::max();
    int64_t lastEnd = m_emitted;
    bool anyOpen = false;
    for (const auto& track : m_tracks) {
        if (!track->placed())
            return m_emitted;
        lastEnd = std::max(lastEnd, track->bufferEnd());
        if (!track->ended()) {
            anyOpen = true;
            openEnd = std::min(openEnd, track->bufferEnd());
        }
    }
    return anyOpen ? openEnd : lastEnd;
}

// The open track that has decoded least, so that the others wait for it with small buffers.
AudioTrackDecoder* AudioMixReader::laggingTrack() const
{
    AudioTrackDecoder* lagging = nullptr;
    for (const auto& track : m_tracks) {
        if (track->ended())
            continue;
        if (!track->placed())
            return track.get();
        if (!lagging || track->bufferEnd() < lagging->bufferEnd())
            lagging = track.get();
    }
    return lagging;
}

void AudioMixReader::emitUpTo(int64_t end, const Consumer& consumer)
{
    while (m_emitted < end) {
        const int count = int(std::min<int64_t>(end - m_emitted, chunkSamples));
        mixChunk(count);
        consumer(std::span<const float>(m_mix.data(), std::size_t(count)));
        m_emitted += count;
    }
}

void AudioMixReader::mixChunk(int count)
{
    if (m_tracks.size() == 1) {
        copyOnlyTrack(count);
        return;
    }
    m_mix.assign(std::size_t(count), 0.0f);
    m_playing.assign(std::size_t(count), 0);
    const int64_t chunkEnd = m_emitted + count;
    for (const auto& track : m_tracks) {
        track->dropBefore(m_emitted);
        const int64_t from = std::max(track->bufferStart(), m_emitted);
        const int64_t to = std::min(track->bufferEnd(), chunkEnd);
        if (from >= to)
            continue;
        const auto offset = std::size_t(from - m_emitted);
        const int length = int(to - from);
        m_part.resize(std::size_t(length));
        track->take(m_part.data(), length);
        for (int i = 0; i < length; ++i) {
            m_mix[offset + std::size_t(i)] += m_part[std::size_t(i)];
            ++m_playing[offset + std::size_t(i)];
        }
    }
    for (int i = 0; i < count; ++i) {
        const int playing = m_playing[std::size_t(i)];
        if (playing > 1)
            m_mix[std::size_t(i)] /= float(playing);
    }
}

// The common case needs no sums: the samples go straight out, silence where there are none.
void AudioMixReader::copyOnlyTrack(int count)
{
    AudioTrackDecoder& track = *m_tracks.front();
    track.dropBefore(m_emitted);
    const int from = int(std::clamp<int64_t>(track.bufferStart() - m_emitted, 0, count));
    const int to = int(std::clamp<int64_t>(track.bufferEnd() - m_emitted, from, count));
    m_mix.resize(std::size_t(count));
    std::fill(m_mix.begin(), m_mix.begin() + from, 0.0f);
    if (to > from)
        track.take(m_mix.data() + from, to - from);
    std::fill(m_mix.begin() + to, m_mix.end(), 0.0f);
}
