#include "Fixtures.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QUuid>
#include <stdexcept>

namespace Fixtures {

QString directory()
{
    return QStringLiteral(HUSHPANE_FIXTURE_DIR);
}

QString path(const QString& name)
{
    return QDir(directory()).filePath(name);
}

ProcessResult run(const QString& program, const QStringList& arguments, int timeoutMs)
{
    QProcess process;
    process.start(program, arguments);
    ProcessResult result;
    if (!process.waitForStarted(30000))
        throw std::runtime_error("cannot start " + program.toStdString());
    process.closeWriteChannel();
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        throw std::runtime_error(program.toStdString() + " timed out");
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.standardOutput = QString::fromUtf8(process.readAllStandardOutput());
    result.standardError = QString::fromUtf8(process.readAllStandardError());
    return result;
}

ProcessResult runHushpane(const QStringList& arguments, int timeoutMs)
{
    return run(QStringLiteral(HUSHPANE_BINARY), arguments, timeoutMs);
}

namespace {

// Makes `name` through `produce(temporaryPath)` unless it exists already.
template <typename Produce> QString makeOnce(const QString& name, Produce produce)
{
    const QString target = path(name);
    if (QFile::exists(target))
        return target;
    const QString suffix = name.contains('.') ? name.mid(name.lastIndexOf('.')) : QString();
    const QString temporary =
        path(".tmp-" + QUuid::createUuid().toString(QUuid::WithoutBraces) + suffix);
    produce(temporary);
    if (!QFile::rename(temporary, target)) {
        QFile::remove(temporary);
        if (!QFile::exists(target))
            throw std::runtime_error("cannot store fixture " + name.toStdString());
    }
    return target;
}

void check(const ProcessResult& result, const QString& what)
{
    if (result.exitCode != 0)
        throw std::runtime_error((what + " failed: " + result.standardError).toStdString());
}

} // namespace

QStringList args(const QString& line)
{
    return line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QString writeOnce(const QString& name, const QByteArray& bytes)
{
    return makeOnce(name, [&](const QString& temporary) {
        QFile file(temporary);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("cannot write fixture " + name.toStdString());
    });
}

QString makeWithFfmpeg(const QString& name, const QStringList& inputArguments)
{
    return makeOnce(name, [&](const QString& temporary) {
        QStringList arguments = {"-hide_banner", "-loglevel", "error", "-nostdin", "-y"};
        arguments << inputArguments << temporary;
        check(run("ffmpeg", arguments), "ffmpeg for " + name);
    });
}

QString makeSpeech(const QString& name, const QString& text)
{
    return makeOnce(name, [&](const QString& temporary) {
        check(run("espeak-ng", {"-v", "en", "-s", "150", "-w", temporary, text}),
              "espeak-ng for " + name);
    });
}

QJsonObject probe(const QString& file)
{
    const ProcessResult result = run(
        "ffprobe", {"-v", "error", "-print_format", "json", "-show_format", "-show_streams", file});
    check(result, "ffprobe of " + file);
    return QJsonDocument::fromJson(result.standardOutput.toUtf8()).object();
}

double probeDuration(const QString& file)
{
    return probe(file).value("format").toObject().value("duration").toString().toDouble();
}

QString decodeErrors(const QString& file)
{
    const ProcessResult result = run("ffmpeg", {"-v", "error", "-i", file, "-f", "null", "-"});
    return result.standardError + result.standardOutput;
}

} // namespace Fixtures
