#pragma once

#include "CutListSource.h"
#include "Segment.h"

#include <QString>
#include <vector>

// The kept spans as a CMX 3600 edit decision list: one cut event per keep, the recording as
// the only source reel, record timecodes end to end from 00:00:00:00.
namespace EdlWriter {

QString text(const CutListSource& source, const std::vector<Segment>& keeps, const QString& title);
// At most 8 letters, digits and underscores from the file's base name; "AX" when none are left.
QString reelName(const QString& path);

} // namespace EdlWriter
