#pragma once

#include <QString>

// The running total of pause time removed for the user, kept in the preference store
// under "totalSecondsSaved". Main thread only.
namespace Stats {

// Adds `seconds` when it is greater than zero; anything else is ignored.
void add(double seconds);
double totalSecondsSaved();
// The total as short localized text ("saved.hours", "saved.minutes" or "saved.seconds").
QString savedDescription();

} // namespace Stats
