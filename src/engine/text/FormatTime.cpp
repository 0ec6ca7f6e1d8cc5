#include "FormatTime.h"

#include <cmath>
#include <cstdint>

QString formatTime(double seconds)
{
    // std::llround rounds halves away from zero, as the clock text wants.
    const std::int64_t t = std::llround(seconds);
    const std::int64_t minutes = (t % 3600) / 60;
    const std::int64_t secs = t % 60;
    if (t < 3600)
        return QString::asprintf("%d:%02d", int(minutes), int(secs));
    return QString::asprintf("%lld:%02d:%02d", static_cast<long long>(t / 3600), int(minutes),
                             int(secs));
}
