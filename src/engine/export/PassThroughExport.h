#pragma once

#include "ExportJob.h"
#include "PassThroughPlan.h"

#include <memory>
#include <vector>

class AudioTranscoder;
class MediaFile;
class OutputFile;
struct AVStream;

// A fast video export: the first video and first sound track copied without decoding.
// The spans start at keyframes (PassThroughPlan), so they may hold a little more than the
// keeps. Sound the container cannot hold as it is gets re-encoded as AAC, cut to the same
// spans.
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

    static Streams addStreams(const MediaFile& source, int videoIndex, int soundIndex,
                              OutputFile& output);
    std::vector<VideoPacketTiming> scanVideo(int videoIndex);
    void copyPackets(const PassThroughPlan& plan, const MediaFile& source, const Streams& streams,
                     OutputFile& output);

    const ExportJob& m_job;
};
