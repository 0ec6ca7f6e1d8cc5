#include "Timecode.h"

#include <QRegularExpression>
#include <array>
#include <cmath>

namespace {

struct CommonRate {
    double framesPerSecond;
    TimecodeRate rate;
};

constexpr std::array<CommonRate, 8> commonRates{{
    {24000.0 / 1001.0, {24, true}},
    {24.0, {24, false}},
    {25.0, {25, false}},
    {30000.0 / 1001.0, {30, true}},
    {30.0, {30, false}},
    {50.0, {50, false}},
    {60000.0 / 1001.0, {60, true}},
    {60.0, {60, false}},
}};

// Frame numbers skipped at the start of every minute but each tenth: 2 at 29.97, 4 at 59.94.
qint64 droppedPerMinute(TimecodeRate rate)
{
    return rate.dropFrame() ? rate.timebase / 15 : 0;
}

} // namespace

double TimecodeRate::framesPerSecond() const
{
    return ntsc ? timebase * 1000.0 / 1001.0 : double(timebase);
}

bool TimecodeRate::dropFrame() const
{
    return ntsc && timebase % 30 == 0;
}

TimecodeRate TimecodeRate::fromFrameRate(int numerator, int denominator)
{
    if (numerator <= 0 || denominator <= 0)
        return {};
    const double fps = double(numerator) / denominator;
    const CommonRate* nearest = nullptr;
    for (const CommonRate& common : commonRates) {
        if (!nearest ||
            std::abs(common.framesPerSecond - fps) < std::abs(nearest->framesPerSecond - fps))
            nearest = &common;
    }
    if (std::abs(nearest->framesPerSecond - fps) <= 0.02 * fps)
        return nearest->rate;
    // Screen recordings at 10 or 15 frames and the like keep their own whole rate.
    const double whole = std::round(fps);
    if (whole >= 1.0 && std::abs(whole - fps) < 0.001)
        return {int(whole), false};
    return {};
}

namespace Timecode {

qint64 frameAt(double seconds, TimecodeRate rate)
{
    return std::llround(seconds * rate.framesPerSecond());
}

QString text(qint64 frame, TimecodeRate rate)
{
    const qint64 base = rate.timebase;
    qint64 label = std::max<qint64>(frame, 0);
    if (const qint64 drop = droppedPerMinute(rate)) {
        // Count the frames that really pass, then add back the labels skipped so far.
        const qint64 perMinute = base * 60 - drop;
        const qint64 perTenMinutes = base * 600 - drop * 9;
        const qint64 tens = label / perTenMinutes;
        const qint64 rest = label % perTenMinutes;
        label += drop * 9 * tens;
        if (rest > drop)
            label += drop * ((rest - drop) / perMinute);
    }
    const qint64 frames = label % base;
    const qint64 totalSeconds = label / base;
    return QString::asprintf("%02lld:%02lld:%02lld%c%02lld", (totalSeconds / 3600) % 24,
                             (totalSeconds / 60) % 60, totalSeconds % 60,
                             rate.dropFrame() ? ';' : ':', frames);
}

std::optional<qint64> parse(const QString& text, TimecodeRate rate)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(\\d{2})[:;.](\\d{2})[:;.](\\d{2})[:;.](\\d{2,3})$"));
    const QRegularExpressionMatch match = pattern.match(text.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    const qint64 hours = match.captured(1).toLongLong();
    const qint64 minutes = match.captured(2).toLongLong();
    const qint64 seconds = match.captured(3).toLongLong();
    const qint64 frames = match.captured(4).toLongLong();
    if (minutes >= 60 || seconds >= 60 || frames >= rate.timebase)
        return std::nullopt;
    const qint64 drop = droppedPerMinute(rate);
    if (drop && seconds == 0 && frames < drop && minutes % 10 != 0)
        return std::nullopt;
    const qint64 totalMinutes = hours * 60 + minutes;
    return ((hours * 3600 + minutes * 60 + seconds) * rate.timebase + frames) -
           drop * (totalMinutes - totalMinutes / 10);
}

} // namespace Timecode
