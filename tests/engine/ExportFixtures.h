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

// 8 s of that tone, mono 48 kHz AAC in an .m4a, titled "Tones" by "Hushpane Tests".
QString tones();
// 2 s of a tone with `channels` channels at `rate`, as AAC in .m4a or PCM in .wav.
QString toneWithChannels(int channels, int rate, const QString& extension);
// 8 s of 320x240 H.264 at 25 fps (a keyframe every second, B-frames) with the tone as
// first sound track, a second sound track, a subtitle track, rotation 90, colour tags
// (SMPTE 170M) and title, artist and creation time.
QString richVideo();
// 8 s of black 160x120 H.264 with a white flash and a beep together from 5.0 to 5.2 s.
QString flash();
// 2 s of ProRes with PCM sound in a .mov.
QString proresMovie();
// 4 s of H.264 with PCM sound in a .mov: the sound cannot go into an .mp4 as it is.
QString h264WithPcm();
// 2 s of 161x121 H.264 (odd sizes) with sound.
QString oddSizedVideo();
// 2 s of sound with two tracks: 440 Hz first, 1000 Hz second.
QString twoSoundTracks();
// 2 s of H.264 without sound.
QString silentVideo();
// 20 s of 640x360 H.264 with sound: long enough to be cancelled midway.
QString longVideo();

// 8 s of 320x240 at 25 fps with the tone as AAC, a keyframe every `gop` pictures, in
// these forms:
// H.264 with B-frames in Matroska (no decode times stored), as screen recorders write it.
QString h264Matroska();
// H.264 with open GOPs: only the first keyframe is an IDR, the others recovery points.
QString h264OpenGop();
// HEVC from x265 (open GOPs, CRA pictures) in Matroska.
QString hevcMatroska();
// VP9 with Opus sound in WebM.
QString vp9Webm();

Analysis analysis(std::vector<Segment> keeps, double duration, bool hasVideo,
                  OutputContainer container);

} // namespace ExportFixtures
