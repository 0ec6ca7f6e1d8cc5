#pragma once

#include "Analysis.h"
#include "CutList.h"
#include "ExportProgress.h"

#include <QString>
#include <atomic>

class MediaFile;

// What every export strategy is given: the opened source, where to write, in which
// container, the kept spans, the cancel flag it must watch and where progress goes.
struct ExportJob {
    MediaFile& input;
    QString destination;
    OutputContainer container;
    CutList cuts;
    const std::atomic<bool>& cancel;
    ExportProgress& progress;

    // The file's start time in AV_TIME_BASE units: keeps count from here.
    int64_t sourceOrigin() const;
};
