#pragma once

#include "Analysis.h"

#include <QString>
#include <vector>

// Media the export tests cut, made once per build tree by the ffmpeg tool.
namespace ExportFixtures {

// A tone whose pitch changes at known times, so the content at any output time tells
// which part of the source it came from: 0-1 s 200 Hz, 1-2.5 s 500 Hz, 2.5-4 s 300 Hz,
// 4-6 s 1000 Hz, 6-8 s 700 Hz.
constexpr double toneFrequencyAt(double seconds)
{
    return seconds < 1.0   ? 200
           : seconds < 2.5 ? 500
           : seconds < 4.0 ? 300
           : seconds < 6.0 ? 1000
                           : 700;
}

// The fixture of that file name, made on first use; ExportFixtures.cpp says what each holds.
QString media(const QString& file);
// 2 s of a 440 Hz tone with `channels` channels at `rate`, as AAC in .m4a or PCM in .wav.
QString toneWithChannels(int channels, int rate, const QString& extension);

Analysis analysis(std::vector<Segment> keeps, double duration, bool hasVideo,
                  OutputContainer container);

} // namespace ExportFixtures
