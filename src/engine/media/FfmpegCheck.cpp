#include "FfmpegCheck.h"

#include "MediaError.h"

Q_LOGGING_CATEGORY(lcMedia, "hushpane.media")

void throwFfmpegError(const char* operation, int errorCode)
{
    const QString text = ffmpegErrorText(errorCode);
    qCWarning(lcMedia, "%s failed: %s", operation, qUtf8Printable(text));
    throw MediaError(text);
}
