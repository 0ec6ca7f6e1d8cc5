#pragma once

#include <QString>
#include <vector>

// Media for the engine's tests, made once per build tree by ffmpeg and espeak-ng.
// Tones are 440 Hz sines of amplitude 0.5, whose level (RMS) is 0.5 / sqrt(2).
namespace EngineFixtures {

inline constexpr double toneLevel = 0.35355339059327373; // 0.5 / sqrt(2)

// Mono WAV at 48 kHz, 3 s of tone.
QString tone();
// Mono WAV, 2 s of digital silence.
QString silence();
// Mono WAV, 8 s of tone with digital silence from 2 to 3.5 s and from 5 to 6 s.
QString toneWithGaps();
// tone() in stereo, on the left only and inverted on the right.
QString stereoLeftOnly();
QString stereoOpposite();
// QuickTime movies with two sound tracks (16-bit PCM): tone 3 s and silence 3 s; tone 4 s
// and silence 2 s; tone 3 s and silence placed from 1 s to 3 s.
QString twoTracks();
QString twoTracksUnequal();
QString twoTracksLateStart();
// MP3 of 3 s of tone with a cover picture.
QString mp3WithCover();
// 1 s of 160x120 picture with tone: H.264 in MP4, HEVC in MP4, ProRes in MOV, H.264 in MOV.
QString h264Mp4();
QString hevcMp4();
QString proresMov();
QString h264Mov();
// H.264 in MP4 whose display matrix turns the picture a quarter turn clockwise.
QString rotatedMp4();
// 2 s of picture with 1.5 s of tone (16-bit PCM) that starts at 0.5 s, QuickTime.
QString soundStartsLate();
// 5 s of picture with 2 s of tone.
QString pictureOutlastsSound();
// 4 s of tone then 3 s of digital silence as raw ADTS AAC: FFmpeg can only estimate its
// length from the bitrate.
QString adtsAac();
// Three sentences of espeak-ng speech joined by 1.5 s and 1.0 s of digital silence, AAC.
struct Speech {
    QString file;
    std::vector<double> pauseStarts;
    std::vector<double> pauseEnds;
};
Speech speechWithPauses();
// 10 minutes of 16 kHz mono tone, WAV.
QString longTone();

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

// About 17 s of espeak-ng speech with pauses, in the formats a split reading must match:
// AAC, MP3, Opus, PCM at 8 kHz mono, FLAC in 6 channels, and a QuickTime movie with two PCM
// tracks (the second the speech 1.3 s later).
QString speechAac();
QString speechMp3();
QString speechOpus();
QString speechPcm8kMono();
QString speechSixChannels();
QString speechTwoTracks();

// Bad input.
QString videoWithoutSound();
QString zeroDurationWav();
// 0.03 s of tone: shorter than the shortest keep.
QString tinyTone();
QString emptyFile();
QString textNamedMp3();
// An MP4 cut in half, with its index at the end (lost) and at the front (kept).
QString truncatedMp4();
QString truncatedFaststartMp4();
// 2 s of picture with a sound track that holds no packets (Matroska).
QString soundTrackWithoutSamples();
// A QuickTime movie whose sound codec FFmpeg does not know.
QString unknownSoundCodec();
// A WAV of 100 channels, more than the resampler takes.
QString hundredChannelWav();

// The length of a file's sound as ffmpeg decodes it (through a WAV it writes).
double decodedSeconds(const QString& path);

} // namespace EngineFixtures
