#pragma once

#include <QString>

// Seconds as clock text: "m:ss" under an hour, "h:mm:ss" from an hour on.
QString formatTime(double seconds);
