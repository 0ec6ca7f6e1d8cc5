#pragma once

#include <QString>
#include <optional>

// A frame rate as editors count it: whole frames per second on the clock (the timebase)
// and whether the picture really runs 1000/1001 slower (the NTSC rates 23.976, 29.97, 59.94).
struct TimecodeRate {
    // Audio has no frames; editors still need a rate to count in.
    static constexpr int audioOnlyTimebase = 25;

    int timebase = audioOnlyTimebase;
    bool ntsc = false;

    double framesPerSecond() const;
    // 29.97 and 59.94 are labelled in drop-frame timecode, which skips frame numbers so the
    // clock keeps up with real time; 23.976 is not.
    bool dropFrame() const;
    bool operator==(const TimecodeRate&) const = default;

    // The editor's rate for a stream's frame rate `numerator / denominator`: the nearest
    // common rate within 2 %, else the whole number when the rate is one, else 25.
    static TimecodeRate fromFrameRate(int numerator, int denominator);
};

namespace Timecode {

// The frame that is showing at `seconds`, rounded to the nearest frame start.
qint64 frameAt(double seconds, TimecodeRate rate);
// "HH:MM:SS:FF", or "HH:MM:SS;FF" in drop-frame; hours wrap at 24 as on any clock.
QString text(qint64 frame, TimecodeRate rate);
// The frame a timecode label names; none for malformed text or a label that drop-frame
// skips. Any of ":", ";" and "." separate the fields.
std::optional<qint64> parse(const QString& text, TimecodeRate rate);

} // namespace Timecode
