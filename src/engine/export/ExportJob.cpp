#include "ExportJob.h"

#include "MediaFile.h"

int64_t ExportJob::sourceOrigin() const
{
    const int64_t start = input.context()->start_time;
    return start == AV_NOPTS_VALUE ? 0 : start;
}
