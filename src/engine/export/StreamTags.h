#pragma once

#include "FfmpegPtr.h"

// What an export carries over from the source besides the pictures and the sound.
namespace StreamTags {

// Title, artist, creation time and the like; not the tags that describe the old container.
void copyFileMetadata(const AVFormatContext* source, AVFormatContext* target);
// The language tag and, for video, the display matrix (rotation and mirroring).
void copyStreamTags(const AVStream* source, AVStream* target);

} // namespace StreamTags
