#pragma once

#include "Segment.h"

#include <QPointF>
#include <QRectF>
#include <QSet>
#include <vector>

// Where things go on the timeline strip, as plain functions of its size and its data, so the
// widget only caches their results and draws them.
namespace TimelineGeometry {

inline constexpr double barPitch = 3.0;
inline constexpr double barWidth = 2.0;
inline constexpr double barCornerSize = 1.0;
inline constexpr double minimumHalfHeight = 1.5;
inline constexpr double verticalInset = 3.0;
inline constexpr float minimumPeak = 0.0001f;
inline constexpr double amplitudeExponent = 0.6;
inline constexpr double minimumPauseWidth = 8.0;
inline constexpr double playheadWidth = 3.0;
inline constexpr double dragThreshold = 10.0;

// What happens to the moment under a bar; also the order of precedence.
enum class BarKind { givenBack, kept, cut };

int barCount(double width);
// The largest level, but never so small that quiet recordings blow up into full bars.
float peakLevel(const std::vector<float>& levels);

// Half the height of each bar, left to right. Empty when there is nothing to draw.
std::vector<double> barHalfHeights(double width, double height, double duration,
                                   const std::vector<float>& levels, double levelWindow,
                                   float peak);
// The class of each bar, decided at its middle.
std::vector<BarKind> barKinds(double width, double duration, const std::vector<Segment>& keeps,
                              const std::vector<Segment>& givenBack);
QRectF barRect(int index, double halfHeight, double height);

// The pauses at `disabled`, in time order; indices outside `silences` are ignored.
std::vector<Segment> givenBackSpans(const std::vector<Segment>& silences,
                                    const QSet<int>& disabled);

// One click target per pause, in the order of `silences`; none without a duration.
std::vector<QRectF> pauseHitRects(const std::vector<Segment>& silences, double duration,
                                  double width, double height);
// The pause whose target lies under `x`; the later one where targets overlap, since it sits
// on top. -1 when none. `rects` must come from pauseHitRects (left and right edges ascend).
int pauseAt(const std::vector<QRectF>& rects, double x);

double playheadX(double playhead, double duration, double width);
QRectF playheadRect(double playhead, double duration, double width, double height);

// Whether a press that has moved from `from` to `to` has become a drag.
bool isDrag(QPointF from, QPointF to);
// The fraction of the recording under `x`.
double dragFraction(double x, double width);

} // namespace TimelineGeometry
