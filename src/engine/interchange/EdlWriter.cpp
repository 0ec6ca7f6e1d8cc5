#include "EdlWriter.h"

#include "CutEvent.h"

#include <QFileInfo>

namespace {

constexpr int maxTitleLength = 70;
constexpr int maxReelLength = 8;

// Which tracks an event takes: the picture and up to two sound channels.
QString channels(const CutListSource& source)
{
    const QString sound = source.audioChannels >= 2   ? QStringLiteral("AA")
                          : source.audioChannels == 1 ? QStringLiteral("A")
                                                      : QString();
    if (!source.hasVideo)
        return sound.isEmpty() ? QStringLiteral("A") : sound;
    if (sound.isEmpty())
        return QStringLiteral("V");
    // "B" is the standard's name for the picture with the first sound channel.
    return sound == QLatin1String("A") ? QStringLiteral("B") : QStringLiteral("AA/V");
}

// Titles and notes are single lines.
QString oneLine(QString text)
{
    text.replace(QLatin1Char('\r'), QLatin1Char(' '));
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text;
}

} // namespace

namespace EdlWriter {

QString reelName(const QString& path)
{
    QString reel;
    for (const QChar c : QFileInfo(path).completeBaseName()) {
        if (reel.size() == maxReelLength)
            break;
        const bool plain = (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
                           (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
                           (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
        reel += plain ? c : QLatin1Char('_');
    }
    return reel.isEmpty() ? QStringLiteral("AX") : reel;
}

QString text(const CutListSource& source, const std::vector<Segment>& keeps, const QString& title)
{
    const TimecodeRate rate = source.rate;
    QString edl;
    edl += QStringLiteral("TITLE: ") + oneLine(title).left(maxTitleLength) + QLatin1Char('\n');
    edl += rate.dropFrame() ? QStringLiteral("FCM: DROP FRAME\n")
                            : QStringLiteral("FCM: NON-DROP FRAME\n");
    const QString reel = reelName(source.path);
    const QString tracks = channels(source);
    int number = 0;
    for (const CutEvent& event : CutEvent::fromKeeps(keeps, rate)) {
        edl += QLatin1Char('\n');
        edl +=
            QStringLiteral("%1  %2 %3 %4 %5 %6 %7 %8\n")
                .arg(++number, 3, 10, QLatin1Char('0'))
                .arg(reel, -maxReelLength)
                .arg(tracks, -5)
                .arg(QStringLiteral("C"), -8)
                .arg(Timecode::text(source.startFrame + event.sourceIn, rate),
                     Timecode::text(source.startFrame + event.sourceOut, rate),
                     Timecode::text(event.recordIn, rate), Timecode::text(event.recordOut, rate));
        edl +=
            QStringLiteral("* FROM CLIP NAME: ") + oneLine(source.clipName()) + QLatin1Char('\n');
        edl += QStringLiteral("* FROM FILE: ") + oneLine(source.path) + QLatin1Char('\n');
    }
    return edl;
}

} // namespace EdlWriter
