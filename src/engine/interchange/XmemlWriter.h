#pragma once

#include "CutListSource.h"
#include "Segment.h"

#include <QString>
#include <vector>

// The kept spans as Final Cut Pro 7 XML (xmeml version 5): one sequence whose video track
// and audio track each hold one clip item per keep, linked in pairs, all pointing at the
// original recording by a file:// URL.
namespace XmemlWriter {

QString text(const CutListSource& source, const std::vector<Segment>& keeps, const QString& title);

} // namespace XmemlWriter
