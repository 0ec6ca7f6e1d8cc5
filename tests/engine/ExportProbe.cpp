#include "ExportProbe.h"

#include "Fixtures.h"

#include <QDir>
#include <QJsonArray>
#include <QProcess>
#include <QRegularExpression>
#include <cstring>
#include <stdexcept>

namespace ExportProbe {

namespace {

QString probeCsv(const QStringList& arguments)
{
    const auto result = Fixtures::run("ffprobe", QStringList{"-v", "error"} + arguments);
    if (result.exitCode != 0)
        throw std::runtime_error("ffprobe failed: " + result.standardError.toStdString());
    return result.standardOutput;
}

// A lavfi source graph reading `file`; the fixture folder holds no characters that
// need escaping there, which the check makes sure of.
QString movieSource(const QString& filter, const QString& file)
{
    if (file.contains(QRegularExpression(R"([:,;'\[\]\\])")))
        throw std::runtime_error("path needs escaping: " + file.toStdString());
    return filter + "=" + file;
}

// The time of the first of ffprobe's "time,value" lines whose value exceeds `threshold`;
// negative when none does.
double firstAbove(const QString& csv, double threshold)
{
    for (const QString& line : csv.split('\n', Qt::SkipEmptyParts)) {
        const QStringList fields = line.split(',');
        if (fields.size() >= 2 && fields[1] != "-inf" && fields[1].toDouble() > threshold)
            return fields[0].toDouble();
    }
    return -1.0;
}

} // namespace

std::vector<QJsonObject> streams(const QString& file, const QString& type)
{
    std::vector<QJsonObject> found;
    for (const QJsonValue& stream : Fixtures::probe(file).value("streams").toArray()) {
        if (stream.toObject().value("codec_type").toString() == type)
            found.push_back(stream.toObject());
    }
    return found;
}

QJsonObject format(const QString& file)
{
    return Fixtures::probe(file).value("format").toObject();
}

double streamDuration(const QJsonObject& stream)
{
    return stream.value("duration").toString().toDouble();
}

int countVideoFrames(const QString& file)
{
    return probeCsv({"-count_frames", "-select_streams", "v:0", "-show_entries",
                     "stream=nb_read_frames", "-of", "csv=p=0", file})
        .section(',', 0, 0)
        .trimmed()
        .toInt();
}

std::vector<PacketHash> videoPacketHashes(const QString& file)
{
    std::vector<PacketHash> found;
    const QString csv =
        probeCsv({"-select_streams", "v:0", "-show_data_hash", "MD5", "-show_entries",
                  "packet=pts_time,data_hash", "-of", "csv=p=0", file});
    for (const QString& line : csv.split('\n', Qt::SkipEmptyParts)) {
        const QStringList fields = line.split(',');
        if (fields.size() >= 2)
            found.push_back({fields[0].toDouble(), fields[1]});
    }
    return found;
}

std::vector<short> decodeSound(const QString& file, double start, double length, int rate)
{
    QProcess process;
    process.start("ffmpeg", {"-v", "error", "-ss", QString::number(start, 'f', 4), "-t",
                             QString::number(length, 'f', 4), "-i", file, "-map", "0:a:0", "-f",
                             "s16le", "-ac", "1", "-ar", QString::number(rate), "-"});
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        throw std::runtime_error("ffmpeg could not decode " + file.toStdString());
    const QByteArray bytes = process.readAllStandardOutput();
    std::vector<short> samples(bytes.size() / 2);
    std::memcpy(samples.data(), bytes.constData(), samples.size() * 2);
    return samples;
}

double toneFrequency(const std::vector<short>& samples, int rate)
{
    if (samples.size() < 2)
        return 0.0;
    int crossings = 0;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        if ((samples[i - 1] < 0) != (samples[i] < 0))
            ++crossings;
    }
    return crossings / 2.0 / (double(samples.size()) / rate);
}

double firstBrightPicture(const QString& file)
{
    const QString csv =
        probeCsv({"-f", "lavfi", "-i", movieSource("movie", file) + ",signalstats", "-show_entries",
                  "frame=pts_time:frame_tags=lavfi.signalstats.YAVG", "-of", "csv=p=0"});
    return firstAbove(csv, 128.0);
}

double firstLoudSound(const QString& file)
{
    const QString csv =
        probeCsv({"-f", "lavfi", "-i",
                  movieSource("amovie", file) +
                      ",aresample=48000,asetnsamples=n=240,astats=metadata=1:reset=1",
                  "-show_entries", "frame=pts_time:frame_tags=lavfi.astats.Overall.Peak_level",
                  "-of", "csv=p=0"});
    return firstAbove(csv, -20.0);
}

QStringList folderEntries(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot | QDir::System);
}

} // namespace ExportProbe
