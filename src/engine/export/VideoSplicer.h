#pragma once

#include "Decoder.h"
#include "PassThroughPlan.h"
#include "SpliceEncoder.h"

#include <deque>
#include <memory>
#include <optional>
#include <vector>

class OutputFile;

// Writes the video of a fast export as its plan lays it out: packets of copied runs go out
// as they are, re-timed; the pictures of encoded runs are decoded from the keyframe before
// them and re-encoded. The source's packets come in once, in decode order; what a run
// writes waits until every run before it has been written, so the stream stays in order.
class VideoSplicer {
public:
    // `encoder` is needed only when the plan has encoded runs. `output` writes to stream
    // `streamIndex`, whose time base is the source's.
    VideoSplicer(const AVStream* source, const PassThroughPlan& plan,
                 std::optional<SpliceEncoder::Settings> encoder, OutputFile& output,
                 int streamIndex);
    ~VideoSplicer();
    VideoSplicer(const VideoSplicer&) = delete;
    VideoSplicer& operator=(const VideoSplicer&) = delete;

    // The source's packet of decode index `index`; its contents may be taken.
    void take(std::size_t index, AVPacket* packet);
    // The source has no more packets.
    void finish();
    // True once no packet at or after `index` is needed.
    bool doneAfter(std::size_t index) const { return m_runs.empty() || index > m_lastNeeded; }

private:
    struct RunState;

    void decode(const AVPacket* packet);
    void takeFrame(AVFrame* frame);
    void show(AVFrame* frame, int64_t start, int64_t end);
    void showHeld();
    void completeEncodedRunsUpTo(std::size_t index);
    void complete(std::size_t run);
    void writeReady();
    void writeVideo(PacketPtr packet, bool startsRun);

    const AVStream* m_source;
    const PassThroughPlan& m_plan;
    const std::vector<VideoRun>& m_runs;
    std::optional<SpliceEncoder::Settings> m_encoderSettings;
    OutputFile& m_output;
    int m_streamIndex;
    std::vector<std::unique_ptr<RunState>> m_states;
    std::unique_ptr<SpliceEncoder> m_encoder; // one for all encoded runs
    std::size_t m_nextToWrite = 0;
    std::size_t m_lastNeeded = 0;

    // Decoding for the encoded runs: merged ranges of decode indices.
    std::vector<std::pair<std::size_t, std::size_t>> m_decodeRanges;
    std::size_t m_decodeRange = 0;
    std::unique_ptr<Decoder> m_decoder;
    FramePtr m_held = makeFrame();
    int64_t m_heldStart = AV_NOPTS_VALUE;
    int64_t m_nominalDuration = 1;
    std::size_t m_encodeCursor = 0;

    std::size_t m_copyRun = 0; // the copy run the next packet may fall into
    PacketPtr m_lastWritten;   // held back one packet, for an end-of-sequence mark
};
