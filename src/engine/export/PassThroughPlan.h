#pragma once

#include "CutList.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Timing of one compressed video packet, as read (decode order), in its stream's time base.
struct VideoPacketTiming {
    int64_t pts = 0; // the decode time where the container gives no presentation time
    int64_t duration = 0;
    bool key = false;     // the container's keyframe flag: decoding can start here
    bool restart = false; // a copy can start here after other pictures (an IDR, say)
};

// A stretch of the output video: packets copied as they are, or pictures re-encoded.
struct VideoRun {
    enum class Kind { copy, encode };
    Kind kind = Kind::copy;
    // The source pictures shown during [from, to) go out at those times plus `shift`; the
    // first is raised to `from` when it started before.
    int64_t from = 0;
    int64_t to = 0;
    int64_t shift = 0;
    // Decode indices, inclusive: the packets copied, or those a decoder needs for the run.
    std::size_t first = 0;
    std::size_t last = 0;
    // Copy: packets shown before this time (the first keyframe's leading pictures, which
    // refer to pictures not copied) are left out.
    int64_t skipBefore = 0;
    // Copy: the output decode time of each packet copied, in order.
    std::vector<int64_t> decodeTimes;
};

// How a fast export lays out the kept spans of the video.
//
// With `reencodeEdges`, each span is cut where the cut list says (to the nearest picture): the
// pictures from its start to the first restart point are re-encoded, packets from there are copied
// as long as the copy holds every picture shown up to its end and none after the span, and the few
// pictures left before the span's end (those a B-frame anchor shown after the span holds
// back) are re-encoded too.
//
// Without, a copy starts at the restart point at or before each span's start (nothing kept
// is lost), and runs on until every picture shown before the span's end has been shown:
// spans may then hold a little more than the keeps, and spans that touch are merged.
//
// Decode times are made anew: the sorted presentation times less one delay for the whole
// stream, so they rise across every join and never pass a presentation time.
class PassThroughPlan {
public:
    // `cuts` in the video stream's time base, source times already offset by the file's
    // start time. `packets` in decode order; none when there is no video.
    // `frameDuration`, the nominal time between pictures, lets a steady stream keep whole
    // pictures at the joins (0: cut pictures short where the cuts fall).
    PassThroughPlan(const std::vector<VideoPacketTiming>& packets, const CutList& cuts,
                    bool reencodeEdges, double frameDuration = 0);

    const std::vector<VideoRun>& runs() const { return m_runs; }
    // The spans as cuts on the output timeline, for the sound.
    const CutList& cutList() const { return m_spans; }
    // Output decode time = output presentation time - delay, for encoded runs.
    int64_t decodeDelay() const { return m_delay; }

private:
    void setDecodeTimes(const std::vector<VideoPacketTiming>& packets);

    std::vector<VideoRun> m_runs;
    CutList m_spans;
    int64_t m_delay = 0;
};
