#pragma once

#include "ExportJob.h"

// A recording without pictures: its first sound track, cut to the sample and encoded as
// AAC-LC.
class AudioOnlyExport {
public:
    explicit AudioOnlyExport(const ExportJob& job)
        : m_job(job)
    {
    }
    void run();

private:
    const ExportJob& m_job;
};
