#pragma once

#include <QString>
#include <stdexcept>

// A failure of the media library while opening or loading a file. It carries the
// library's own message unchanged; callers show it like any other error.
class MediaError : public std::runtime_error {
public:
    explicit MediaError(const QString& message)
        : std::runtime_error(message.toStdString())
    {
    }

    QString message() const { return QString::fromUtf8(what()); }
};

// FFmpeg's text for an AVERROR code, for example "No such file or directory".
QString ffmpegErrorText(int errorCode);
