#include "LaunchLocations.h"

std::optional<QUrl> initialFileURL;
std::optional<QUrl> initialBatchURL;
