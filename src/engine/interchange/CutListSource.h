#pragma once

#include "Timecode.h"

#include <QString>

// What an editor needs to know of the original recording to place its cuts.
struct CutListSource {
    QString path; // absolute location of the original media
    double duration = 0.0;
    TimecodeRate rate;     // the video's rate; TimecodeRate's default for sound alone
    qint64 startFrame = 0; // the recording's own start timecode, when it carries one
    bool hasVideo = false;
    int width = 0;
    int height = 0;
    bool hasAudio = false;
    int audioChannels = 0;
    int sampleRate = 0;

    // The file's name with its extension, as editors show clips.
    QString clipName() const;
    qint64 durationFrames() const;

    // Opens `path` and reads the first video and the first audio stream's properties.
    // Throws MediaError with FFmpeg's message when the file cannot be opened.
    static CutListSource probe(const QString& path);
};
