#include "MediaError.h"

extern "C" {
#include <libavutil/error.h>
}

QString ffmpegErrorText(int errorCode)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(errorCode, text, sizeof text);
    return QString::fromUtf8(text);
}
