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
