#pragma once

#include "Segment.h"

#include <QString>
#include <QStringList>
#include <vector>

// Cut lists for video editors, written beside each other under one base name.
namespace CutListFiles {

// The files written for `basePath`: basePath.edl and basePath.xml. A base that already ends
// in one of the two extensions loses it first.
QStringList paths(const QString& basePath);

// Writes the keeps of `mediaPath` as a CMX 3600 EDL and as Final Cut Pro 7 XML, titled with
// the base name. Both files are complete or neither is touched, as far as the file system
// allows; the recording itself is never a destination. Throws TidleError (exportFailed) or
// MediaError when the recording cannot be opened.
void write(const QString& mediaPath, const std::vector<Segment>& keeps, const QString& basePath);

} // namespace CutListFiles
