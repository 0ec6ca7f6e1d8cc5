#include "ResultTexts.h"

#include "FormatTime.h"

#include <cmath>

namespace {

const QChar minusSign(0x2212);

int truncatedPercent(double fraction)
{
    return static_cast<int>(std::trunc(fraction * 100.0));
}

} // namespace

namespace ResultTexts {

QString progressPercent(double fraction)
{
    return QStringLiteral("%1 %").arg(truncatedPercent(fraction));
}

QString removedPercent(double fraction)
{
    return minusSign + QStringLiteral("%1 %").arg(truncatedPercent(fraction));
}

std::optional<int> heroPercent(double removedSeconds, double duration)
{
    if (removedSeconds < minRemovedSeconds || duration <= 0.0)
        return std::nullopt;
    return truncatedPercent(removedSeconds / duration);
}

QString heroPercentText(int percent)
{
    return minusSign + QStringLiteral("%1%").arg(percent);
}

QString durationChange(double duration, double kept)
{
    return formatTime(duration) + QStringLiteral(" \u2192 ") + formatTime(kept);
}

} // namespace ResultTexts
