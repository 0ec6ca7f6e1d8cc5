#pragma once

#include "ExportJob.h"

// A frame-accurate video export: the first video and first sound track decoded, and the
// pictures and samples of every cut re-encoded as H.264 and AAC.
class ReencodeExport {
public:
    explicit ReencodeExport(const ExportJob& job)
        : m_job(job)
    {
    }
    void run();

private:
    const ExportJob& m_job;
};
