#pragma once

#include <QString>
#include <functional>

// Tells the user that long work has finished: the desktop's "complete" sound at once and a
// banner through the freedesktop notification service. Never blocks for long, never fails:
// with no session bus, no notification service or no sound server, that part is skipped.
namespace Completion {

// Checks once that the notification service answers; Linux asks no permission.
void requestPermission();
void notify(const QString& title, const QString& body);

// Where notify() hands its texts instead of the desktop; an empty function restores the
// desktop. Lets tests see what would have been announced without a sound or a banner.
// Main thread only.
using Delivery = std::function<void(const QString& title, const QString& body)>;
void setDelivery(Delivery delivery);

} // namespace Completion
