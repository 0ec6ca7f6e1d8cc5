#include "StreamTags.h"

#include "ExportFailure.h"

#include <cstring>

extern "C" {
#include <libavutil/dict.h>
}

namespace StreamTags {

namespace {

// Written by the new container itself, or describing the old one.
bool describesContainer(const char* key)
{
    for (const char* own : {"major_brand", "minor_version", "compatible_brands", "encoder"}) {
        if (std::strcmp(key, own) == 0)
            return true;
    }
    return false;
}

} // namespace

void copyFileMetadata(const AVFormatContext* source, AVFormatContext* target)
{
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_get(source->metadata, "", entry, AV_DICT_IGNORE_SUFFIX))) {
        if (!describesContainer(entry->key))
            checkExportStep(av_dict_set(&target->metadata, entry->key, entry->value, 0),
                            "copying the metadata");
    }
}

void copyStreamTags(const AVStream* source, AVStream* target)
{
    if (const AVDictionaryEntry* language = av_dict_get(source->metadata, "language", nullptr, 0))
        checkExportStep(av_dict_set(&target->metadata, "language", language->value, 0),
                        "copying the metadata");

    size_t size = 0;
    const uint8_t* matrix = av_stream_get_side_data(source, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (!matrix)
        return;
    uint8_t* copy = av_stream_new_side_data(target, AV_PKT_DATA_DISPLAYMATRIX, size);
    if (!copy)
        throwExportFailure("copying the rotation", AVERROR(ENOMEM));
    std::memcpy(copy, matrix, size);
}

} // namespace StreamTags
