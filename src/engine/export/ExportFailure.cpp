#include "ExportFailure.h"

#include "MediaError.h"
#include "TidleError.h"

void throwExportFailure(const char* step, int errorCode)
{
    throwExportFailure(step, ffmpegErrorText(errorCode));
}

void throwExportFailure(const char* step, const QString& detail)
{
    throw TidleError::exportFailed(QStringLiteral("%1: %2").arg(QString::fromUtf8(step), detail));
}
