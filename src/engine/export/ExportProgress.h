#pragma once

#include <chrono>
#include <functional>

// Hands an export's progress to its caller at most every 0.2 s, never going backwards,
// and 1.0 only once the file is in place.
class ExportProgress {
public:
    using Callback = std::function<void(double)>;

    explicit ExportProgress(Callback callback,
                            std::chrono::milliseconds interval = std::chrono::milliseconds(200));

    // A fraction of the work done; values outside [0, 1) are clamped below 1.
    void update(double fraction);
    void finish();

private:
    using Clock = std::chrono::steady_clock;
    Callback m_callback;
    std::chrono::milliseconds m_interval;
    Clock::time_point m_lastReport;
    double m_fraction = 0.0;
};
