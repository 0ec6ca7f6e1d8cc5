#pragma once

#include <QString>

// Export failures carry FFmpeg's message with the step that failed, for example
// "opening the H.264 encoder: Invalid argument".
[[noreturn]] void throwExportFailure(const char* step, int errorCode);
[[noreturn]] void throwExportFailure(const char* step, const QString& detail);

// Throws for a negative FFmpeg return code, naming the step; passes other values through.
inline int checkExportStep(int result, const char* step)
{
    if (result < 0)
        throwExportFailure(step, result);
    return result;
}
