#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcMedia)

// Throws MediaError with FFmpeg's text for `errorCode`; the failing operation goes to the
// "hushpane.media" log, so the user sees FFmpeg's message and a developer sees where it arose.
[[noreturn]] void throwFfmpegError(const char* operation, int errorCode);
