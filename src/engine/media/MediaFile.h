#pragma once

#include "FfmpegPtr.h"

#include <QString>
#include <vector>

// One media file opened with FFmpeg and its stream information loaded.
// Tracks are streams by type in file order; a cover picture is not a video track, and a sound
// stream that no decoder knows is no audio track either (nobody can hear it).
class MediaFile {
public:
    // Throws MediaError with FFmpeg's own message when the file cannot be opened.
    explicit MediaFile(const QString& path);

    // A further demuxer on the same file, its stream information loaded; throws as above.
    static InputFormatContextPtr openDemuxer(const QString& path);

    AVFormatContext* context() const { return m_context.get(); }
    const QString& path() const { return m_path; }

    // The container's length in seconds (its longest stream); NaN when unknown.
    double duration() const;
    // True where FFmpeg only estimated the length from the bitrate (raw ADTS, headerless MP3).
    bool durationIsEstimated() const;

    const std::vector<int>& audioStreams() const { return m_audioStreams; }
    // Sound streams left out because FFmpeg has no decoder for them.
    const std::vector<int>& undecodableAudioStreams() const { return m_undecodableAudioStreams; }
    const std::vector<int>& videoStreams() const { return m_videoStreams; }

    // Four-character code of a stream's codec: 'avc1', 'hvc1', 'mp4v' for the formats an
    // MPEG-4 file takes as they are; the container's own tag or the codec name otherwise.
    QString codecTag(int streamIndex) const;
    // Clockwise rotation in degrees (0, 90, 180, 270) from the display matrix; 0 when none.
    int rotation(int streamIndex) const;

private:
    QString m_path;
    InputFormatContextPtr m_context;
    std::vector<int> m_audioStreams;
    std::vector<int> m_undecodableAudioStreams;
    std::vector<int> m_videoStreams;
};
