#include "TimelineGeometry.h"

#include <algorithm>
#include <cmath>

namespace {

// The level window holding time `t` (truncated), saturating at `count`.
std::size_t windowAt(double t, double levelWindow, std::size_t count)
{
    const double position = t / levelWindow;
    if (!(position < static_cast<double>(count)))
        return count;
    return position > 0.0 ? static_cast<std::size_t>(position) : 0;
}

// Moves `cursor` past the spans that end before `t` and says whether the next one holds it.
// Bars are visited left to right, so a cursor never has to go back.
bool spanHolds(const std::vector<Segment>& spans, std::size_t& cursor, double t)
{
    while (cursor < spans.size() && spans[cursor].end < t)
        ++cursor;
    return cursor < spans.size() && spans[cursor].start <= t && t <= spans[cursor].end;
}

} // namespace

namespace TimelineGeometry {

int barCount(double width)
{
    const int count = width > 0.0 ? static_cast<int>(width / barPitch) : 0;
    return count < 2 ? 1 : count;
}

float peakLevel(const std::vector<float>& levels)
{
    float peak = minimumPeak;
    for (const float level : levels)
        peak = std::max(peak, level);
    return peak;
}

std::vector<double> barHalfHeights(double width, double height, double duration,
                                   const std::vector<float>& levels, double levelWindow, float peak)
{
    if (duration <= 0.0 || levels.empty() || !(levelWindow > 0.0))
        return {};
    const int count = barCount(width);
    const double secondsPerBar = duration / count;
    const double fullHalfHeight = height / 2.0 - verticalInset;
    const std::size_t levelCount = levels.size();
    std::vector<double> halfHeights(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double t0 = secondsPerBar * i;
        const double t1 = t0 + secondsPerBar;
        // Every bar reads at least one window, the last one once the bars run past the end.
        const std::size_t lo = std::min(windowAt(t0, levelWindow, levelCount), levelCount - 1);
        const std::size_t hi =
            std::min(std::max(lo + 1, windowAt(t1, levelWindow, levelCount)), levelCount);
        const float level =
            std::max(0.0f, *std::max_element(levels.begin() + static_cast<std::ptrdiff_t>(lo),
                                             levels.begin() + static_cast<std::ptrdiff_t>(hi)));
        const double amplitude = std::pow(static_cast<double>(level) / peak, amplitudeExponent);
        halfHeights[static_cast<std::size_t>(i)] =
            std::max(fullHalfHeight * amplitude, minimumHalfHeight);
    }
    return halfHeights;
}

std::vector<BarKind> barKinds(double width, double duration, const std::vector<Segment>& keeps,
                              const std::vector<Segment>& givenBack)
{
    if (duration <= 0.0)
        return {};
    const int count = barCount(width);
    const double secondsPerBar = duration / count;
    std::vector<BarKind> kinds(static_cast<std::size_t>(count));
    std::size_t keepCursor = 0;
    std::size_t givenBackCursor = 0;
    for (int i = 0; i < count; ++i) {
        const double t0 = secondsPerBar * i;
        const double t1 = t0 + secondsPerBar;
        const double middle = (t0 + t1) / 2.0;
        // A given-back pause lies inside a keep once re-planned; it still shows as given back.
        BarKind kind = BarKind::cut;
        if (spanHolds(givenBack, givenBackCursor, middle))
            kind = BarKind::givenBack;
        else if (spanHolds(keeps, keepCursor, middle))
            kind = BarKind::kept;
        kinds[static_cast<std::size_t>(i)] = kind;
    }
    return kinds;
}

QRectF barRect(int index, double halfHeight, double height)
{
    return {barPitch * index, height / 2.0 - halfHeight, barWidth, 2.0 * halfHeight};
}

std::vector<Segment> givenBackSpans(const std::vector<Segment>& silences, const QSet<int>& disabled)
{
    std::vector<int> indices(disabled.begin(), disabled.end());
    std::sort(indices.begin(), indices.end());
    std::vector<Segment> spans;
    spans.reserve(indices.size());
    for (const int index : indices)
        if (index >= 0 && static_cast<std::size_t>(index) < silences.size())
            spans.push_back(silences[static_cast<std::size_t>(index)]);
    return spans;
}

std::vector<QRectF> pauseHitRects(const std::vector<Segment>& silences, double duration,
                                  double width, double height)
{
    if (duration <= 0.0)
        return {};
    std::vector<QRectF> rects;
    rects.reserve(silences.size());
    for (const Segment& pause : silences) {
        const double w = std::max(pause.length() / duration * width, minimumPauseWidth);
        // Centred on start + w/2, so it begins where the pause does and a widened target
        // grows to the right.
        rects.emplace_back(pause.start / duration * width, 0.0, w, height);
    }
    return rects;
}

int pauseAt(const std::vector<QRectF>& rects, double x)
{
    // The last target starting at or before x; an earlier one ends no later, so if this one
    // does not reach x, none does.
    const auto after =
        std::upper_bound(rects.begin(), rects.end(), x,
                         [](double value, const QRectF& r) { return value < r.left(); });
    if (after == rects.begin())
        return -1;
    const auto candidate = std::prev(after);
    return x < candidate->right() ? static_cast<int>(candidate - rects.begin()) : -1;
}

double playheadX(double playhead, double duration, double width)
{
    if (duration <= 0.0)
        return 0.0;
    const double x = playhead / duration * width;
    return std::max(0.0, std::min(x, width - playheadWidth));
}

QRectF playheadRect(double playhead, double duration, double width, double height)
{
    return {playheadX(playhead, duration, width), 0.0, playheadWidth, height};
}

bool isDrag(QPointF from, QPointF to)
{
    const QPointF moved = to - from;
    return std::hypot(moved.x(), moved.y()) >= dragThreshold;
}

double dragFraction(double x, double width)
{
    if (width <= 0.0)
        return 0.0;
    return std::clamp(x / width, 0.0, 1.0);
}

} // namespace TimelineGeometry
