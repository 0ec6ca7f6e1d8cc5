#pragma once

#include <QString>

// Recordings shared by the tests above the engine, made once per build tree by the ffmpeg and
// espeak-ng tools (see Fixtures.h).
namespace Recordings {

// Three spoken sentences with 1.5 s of digital silence between them, 22.05 kHz mono WAV.
QString speechWithPauses();
// 30 s at 16 kHz: a tone from 1 to 4 s and from 6 to 9 s, digital silence elsewhere.
QString toneWithGaps();
// 3 s of a steady tone, no pause in it.
QString steadyTone();
// 40 s of 640x360 H.264 whose AAC tone stops every other two seconds: a save or a batch file
// long enough to be stopped midway.
QString longVideo();
// 2 s of H.264 without any sound track.
QString videoWithoutSound();
// A file named like audio that holds no media at all.
QString brokenFile();

} // namespace Recordings
