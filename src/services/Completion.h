#pragma once

#include <QString>

// Tells the user that long work has finished: the desktop's "complete" sound at once and a
// banner through the freedesktop notification service. Never blocks for long, never fails:
// with no session bus, no notification service or no sound server, that part is skipped.
namespace Completion {

// Checks once that the notification service answers; Linux asks no permission.
void requestPermission();
void notify(const QString& title, const QString& body);

} // namespace Completion
