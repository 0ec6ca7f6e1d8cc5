#pragma once

#include <QString>

// Media for the engine's tests, made once per build tree by ffmpeg and espeak-ng.
namespace EngineFixtures {

// Tones are 440 Hz sines of amplitude 0.5, whose level (RMS) is 0.5 / sqrt(2).
inline constexpr double toneLevel = 0.35355339059327373;

// The fixture of that file name, made on first use; EngineFixtures.cpp says what each holds.
QString media(const QString& file);

// The length of a file's sound as ffmpeg decodes it (through a WAV it writes).
double decodedSeconds(const QString& path);

// Files as phones, screen recorders, browsers and streaming tools write them. Each holds
// tone with a quiet stretch, given as the pause it should give.
struct RealWorld {
    QString file;
    double pauseStart;
    double pauseEnd;
};
// AAC in .m4a whose timestamps jump: 3 s (tone, quiet from 2 s), nothing from 3 to 5 s, then
// 2 s of tone; joined by the concat demuxer with the first part's length given as 5 s.
RealWorld gappedAac();
// H.264 and AAC in FLV, as streaming tools write it; quiet from 1.5 to 2.5 s of 4 s.
RealWorld flvStream();
// Opus in WebM and AAC in Matroska written as live streams: no duration element.
RealWorld liveWebm();
RealWorld liveMatroska();
// A QuickTime movie whose first sound track no decoder knows; the second holds the tone.
RealWorld unknownTrackBesideSound();

} // namespace EngineFixtures
