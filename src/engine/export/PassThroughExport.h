#pragma once

#include "ExportJob.h"
#include "PassThroughPlan.h"

#include <vector>

class AudioTranscoder;
class AudioPacketCopier;
class OutputFile;

// A fast video export: the first video and first sound track copied without decoding.
// The spans start at keyframes (PassThroughPlan), so they may hold a little more than the
// keeps. Sound the container cannot hold as it is gets re-encoded as AAC, cut to the same
// spans.
class PassThroughExport {
public:
    explicit PassThroughExport(const ExportJob& job)
        : m_job(job) {}
    void run();

private:
    std::vector<VideoPacketTiming> scanVideo(int videoIndex);
    void copyPackets(const PassThroughPlan& plan, int videoIndex, int soundIndex);

    const ExportJob& m_job;
};
