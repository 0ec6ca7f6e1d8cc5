#include "PausePlanner.h"

#include <cmath>

float quietThreshold(double thresholdDB)
{
    return static_cast<float>(std::pow(10.0, thresholdDB / 20.0));
}

std::vector<Segment> findSilences(const std::vector<float>& levels, double levelWindow,
                                  double thresholdDB, double minPause, double duration)
{
    const float threshold = quietThreshold(thresholdDB);
    // A NaN level compares false, so it counts as loud.
    auto isQuiet = [&](std::size_t i) { return levels[i] < threshold; };
    // Times are index × window every time: summing the window step by step would drift.
    auto timeAt = [&](std::size_t i) { return static_cast<double>(i) * levelWindow; };

    std::vector<Segment> silences;
    const std::size_t n = levels.size();
    std::size_t i = 0;
    while (i < n) {
        if (!isQuiet(i)) {
            ++i;
            continue;
        }
        std::size_t j = i;
        while (j + 1 < n && isQuiet(j + 1))
            ++j;
        if (j == n - 1) {
            if (duration - timeAt(i) >= minPause)
                silences.push_back({timeAt(i), duration});
            break;
        }
        if (timeAt(j + 1) - timeAt(i) >= minPause)
            silences.push_back({timeAt(i), timeAt(j + 1)});
        i = j + 2; // window j + 1 is loud
    }
    return silences;
}

std::vector<Segment> keepSegments(const std::vector<Segment>& silences, double duration,
                                  double padding, double minKeep)
{
    std::vector<Segment> keeps;
    double cursor = 0.0;
    for (const Segment& pause : silences) {
        const double end = pause.end > duration ? duration : pause.end;
        const Segment cut{pause.start + padding, end - padding};
        if (!(cut.start < cut.end))
            continue;
        if (cut.start - cursor >= minKeep)
            keeps.push_back({cursor, cut.start});
        if (cut.end > cursor)
            cursor = cut.end;
    }
    if (duration - cursor >= minKeep)
        keeps.push_back({cursor, duration});
    return keeps;
}
