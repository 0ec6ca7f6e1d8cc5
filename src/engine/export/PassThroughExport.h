#pragma once

#include "ExportJob.h"
#include "PassThroughPlan.h"
#include "SpliceEncoder.h"

#include <memory>
#include <optional>
#include <vector>

class AudioTranscoder;
class MediaFile;
class OutputFile;
struct AVStream;

// A fast video export: the first video and first sound track copied without decoding,
// cut where the keeps say. H.264 has the few pictures between a cut and the next point a
// copy can start at re-encoded to match (PassThroughPlan); other codecs start each span at
// such a point instead, so their spans may hold a little more than the keeps. Sound the
// container cannot hold as it is gets re-encoded as AAC, cut to the same spans.
class PassThroughExport {
public:
    explicit PassThroughExport(const ExportJob& job)
        : m_job(job)
    {
    }
    void run();

private:
    // The output's two streams: the video copied, the sound copied or re-encoded.
    struct Streams {
        int videoIndex = -1;
        int soundIndex = -1;
        const AVStream* videoOut = nullptr;
        const AVStream* soundOut = nullptr;
        std::unique_ptr<AudioTranscoder> soundEncoder;
    };

    // `spliceConfig`, when not empty, replaces the copied video's decoder configuration.
    static Streams addStreams(const MediaFile& source, int videoIndex, int soundIndex,
                              const QByteArray& spliceConfig, OutputFile& output);
    std::vector<VideoPacketTiming> scanVideo(int videoIndex, int64_t until);
    void copyPackets(const PassThroughPlan& plan, const MediaFile& source, const Streams& streams,
                     const std::optional<SpliceEncoder::Settings>& splice, OutputFile& output);

    const ExportJob& m_job;
};
