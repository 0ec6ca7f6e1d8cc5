#pragma once

#include "Segment.h"

#include <vector>

// Runs of quiet windows lasting at least `minPause` seconds, in time order.
// A window is quiet when its level is strictly below the threshold; a run that reaches
// the last window ends at `duration`.
std::vector<Segment> findSilences(const std::vector<float>& levels, double levelWindow,
                                  double thresholdDB, double minPause, double duration);

// The linear amplitude below which a level counts as quiet.
float quietThreshold(double thresholdDB);

// The spans to keep around `silences`: each cut leaves `padding` of quiet on both sides, and
// a kept scrap shorter than `minKeep` goes with the cuts around it.
std::vector<Segment> keepSegments(const std::vector<Segment>& silences, double duration,
                                  double padding, double minKeep);
