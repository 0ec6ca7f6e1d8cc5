#include "ExportProgress.h"

#include <algorithm>

ExportProgress::ExportProgress(Callback callback, std::chrono::milliseconds interval)
    : m_callback(std::move(callback))
    , m_interval(interval)
    , m_lastReport(Clock::now())
{
}

void ExportProgress::update(double fraction)
{
    // 1.0 means "written"; until the file is in place the work is not done.
    m_fraction = std::max(m_fraction, std::clamp(fraction, 0.0, 0.999));
    const Clock::time_point now = Clock::now();
    if (now - m_lastReport < m_interval)
        return;
    m_lastReport = now;
    if (m_callback)
        m_callback(m_fraction);
}

void ExportProgress::finish()
{
    if (m_callback)
        m_callback(1.0);
}
