#pragma once

#include <QString>
#include <optional>

// Figures as the window writes them: whole percents truncated toward zero, removed amounts
// with the minus sign U+2212.
namespace ResultTexts {

// Below this much removed time the window treats a plan as removing nothing.
inline constexpr double minRemovedSeconds = 0.01;

// "37 %" for 0.379: progress of a running job.
QString progressPercent(double fraction);
// "−37 %" for 0.379: the share a finished file lost.
QString removedPercent(double fraction);
// The whole percent of the recording removed, for the large figure of the result row; none
// when less than minRemovedSeconds go.
std::optional<int> heroPercent(double removedSeconds, double duration);
// "−37%": the large figure's text.
QString heroPercentText(int percent);
// "12:04 → 10:23".
QString durationChange(double duration, double kept);

} // namespace ResultTexts
