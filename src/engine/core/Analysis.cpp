#include "Analysis.h"

double Analysis::keptSeconds() const
{
    double kept = 0.0;
    for (const Segment& keep : keeps)
        kept += keep.end - keep.start;
    return kept;
}

double Analysis::removedSeconds() const
{
    const double removed = duration - keptSeconds();
    return removed < 0.0 ? 0.0 : removed;
}
