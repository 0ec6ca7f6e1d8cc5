#pragma once

#include "Analysis.h"
#include "ExportProgress.h"
#include "Segment.h"

#include <QString>
#include <atomic>
#include <vector>

// Writes the kept spans of a recording to a new file. A recording without pictures gets
// its sound re-encoded to the sample; a video is re-encoded frame-accurately or copied
// from keyframe to keyframe (fast). Only the first video and first sound track go over.
class Exporter {
public:
    struct Request {
        QString input;
        QString destination;
        OutputContainer container = OutputContainer::MPEG4;
        std::vector<Segment> keeps;
        bool frameAccurate = true;
    };

    // Throws MediaError when the input cannot be opened, TidleError otherwise. Checks
    // `cancel` per packet. The destination is replaced only by a complete file; on any
    // failure nothing is left there, nor any temporary file.
    static void run(const Request& request, const std::atomic<bool>& cancel,
                    const ExportProgress::Callback& onProgress);
};
