#pragma once

// The knobs of one analysis and one export.
struct TidleSettings {
    double thresholdDB = -35.0; // a level window quieter than this counts as quiet
    double minPause = 0.6;      // shortest quiet run, in seconds, that counts as a pause
    double padding = 0.15;      // quiet left on each side of every cut, in seconds
    bool frameAccurate = true;  // true: re-encode; false: copy the compressed streams

    bool operator==(const TidleSettings&) const = default;
};
