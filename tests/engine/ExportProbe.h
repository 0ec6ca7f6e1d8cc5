#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <vector>

// Looks at export results with ffprobe and ffmpeg, never with our own reader.
namespace ExportProbe {

// The streams of a file of one type ("audio", "video", "subtitle", "data").
std::vector<QJsonObject> streams(const QString& file, const QString& type);
QJsonObject format(const QString& file);
double streamDuration(const QJsonObject& stream);
// Frames of the first video stream, counted by decoding.
int countVideoFrames(const QString& file);
// The presentation time and an MD5 of the data of every packet of the first video stream:
// the same hash means the same bytes.
struct PacketHash {
    double time = 0.0;
    QString hash;
};
std::vector<PacketHash> videoPacketHashes(const QString& file);

// `length` seconds of sound from `start`, mono 16-bit at `rate`, decoded by ffmpeg.
std::vector<short> decodeSound(const QString& file, double start, double length, int rate);
// The frequency of a clean tone, from its zero crossings.
double toneFrequency(const std::vector<short>& samples, int rate);
// When the first picture with a mean luma above 128 is shown; negative when none is.
double firstBrightPicture(const QString& file);
// When the sound first gets louder than -20 dBFS, to within 5 ms; negative when never.
double firstLoudSound(const QString& file);

// The names of the files in a folder, hidden ones included.
QStringList folderEntries(const QString& folder);

} // namespace ExportProbe
