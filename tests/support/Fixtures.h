#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

// Test media made by the ffmpeg and espeak-ng command-line tools, an oracle independent of
// our own decoding. Each fixture is made once per build tree under a fixed name; concurrent
// test processes write to a temporary name and rename, so none sees a half-made file.
namespace Fixtures {

QString directory();
QString path(const QString& name);

// Command-line arguments written as one line, split at spaces.
QStringList args(const QString& line);

// Writes `bytes` to fixture `name` unless it is there already.
QString writeOnce(const QString& name, const QByteArray& bytes);
// Runs ffmpeg with `inputArguments` (everything before the output file) into fixture `name`.
QString makeWithFfmpeg(const QString& name, const QStringList& inputArguments);
// Speech from espeak-ng, 16-bit mono WAV at 22.05 kHz.
QString makeSpeech(const QString& name, const QString& text);

struct ProcessResult {
    int exitCode = -1;
    QString standardOutput;
    QString standardError;
};
ProcessResult run(const QString& program, const QStringList& arguments, int timeoutMs = 120000);
// Runs the hushpane executable of this build.
ProcessResult runHushpane(const QStringList& arguments, int timeoutMs = 120000);

// ffprobe's JSON (-show_format -show_streams) for a file.
QJsonObject probe(const QString& file);
double probeDuration(const QString& file);
// What `ffmpeg -v error -i file -f null -` prints: empty when the file decodes cleanly.
QString decodeErrors(const QString& file);

} // namespace Fixtures
